// SPDX-License-Identifier: MIT
#include "companion/notices.h"

#include <algorithm>

namespace companion {

void Notices::Raise(const Notice& notice) {
    const auto stands = std::find(List_.begin(), List_.end(), notice);
    if (stands != List_.end())
        return;
    Withdraw(notice.About);
    List_.push_back(notice);
    if (Told)
        Told(notice);
}

void Notices::Withdraw(const Text& about) {
    std::erase_if(List_, [&about](const Notice& each) { return each.About == about; });
}

void Notices::Drop(Until until) {
    std::erase_if(List_, [until](const Notice& each) { return each.Stands == until; });
}

void Notices::Act(const Text& about) {
    std::erase_if(List_,
                  [&about](const Notice& each) { return each.About == about && each.Action == NoticeAction::Dismiss; });
}

std::vector<Notice> Notices::Sorted() const {
    std::vector<Notice> sorted(List_.rbegin(), List_.rend());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Notice& a, const Notice& b) { return a.Weight > b.Weight; });
    return sorted;
}

std::size_t Notices::Behind() const {
    const auto count =
        std::count_if(List_.begin(), List_.end(), [](const Notice& each) { return each.Weight >= Severity::Warning; });
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(count - 1, 0));
}

} // namespace companion
