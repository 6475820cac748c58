// SPDX-License-Identifier: MIT
#include "companion/ports/port_choice.h"

#include <algorithm>
#include <iterator>

namespace companion {

namespace {

std::int32_t NumberOf(const PortRow& row) {
    const auto pinned =
        std::find_if(row.Numbers.begin(), row.Numbers.end(), [](const PortName& each) { return each.Pinned; });
    return pinned == row.Numbers.end() ? row.Numbers.front().Number : pinned->Number;
}

std::int32_t LowestFree(const std::vector<PortRow>& rows) {
    std::set<std::int32_t> taken;
    for (const PortRow& row : rows)
        for (const PortName& name : row.Numbers)
            taken.insert(name.Number);
    std::int32_t number = 1;
    while (taken.count(number) != 0)
        ++number;
    return number;
}

} // namespace

PortChoice ChoiceOf(const std::vector<PortRow>& rows, std::size_t row) {
    const PortRow& chosen = rows[row];
    return {chosen.Numbers.empty() ? LowestFree(rows) : NumberOf(chosen),
            chosen.Links.empty() ? chosen.Path : chosen.Links.front()};
}

std::string ProductOf(const DeviceName& name) {
    return name.Model.empty() ? name.Vendor : name.Model;
}

std::vector<std::string> PluggedIn::Look(const std::vector<std::string>& paths) {
    std::vector<std::string> arrived;
    if (HasLooked_)
        std::copy_if(paths.begin(), paths.end(), std::back_inserter(arrived),
                     [this](const std::string& path) { return Known_.count(path) == 0; });
    Known_ = {paths.begin(), paths.end()};
    HasLooked_ = true;
    return arrived;
}

} // namespace companion
