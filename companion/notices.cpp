// SPDX-License-Identifier: MIT
#include "companion/notices.h"

#include <algorithm>

namespace companion {

void Notices::Raise(const Notice& notice) {
    const auto stands = std::find(List.begin(), List.end(), notice);
    if (stands != List.end())
        return;
    Withdraw(notice.About);
    List.push_back(notice);
    if (Told)
        Told(notice);
}

void Notices::Withdraw(const Text& about) {
    std::erase_if(List, [&about](const Notice& each) { return each.About == about; });
}

void Notices::Drop(Until until) {
    std::erase_if(List, [until](const Notice& each) { return each.Stands == until; });
}

const Notice* Notices::Worst() const {
    const Notice* worst = nullptr;
    for (const Notice& each : List) {
        if (worst == nullptr || each.Weight >= worst->Weight)
            worst = &each;
    }
    return worst;
}

} // namespace companion
