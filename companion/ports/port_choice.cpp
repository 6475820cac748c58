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

bool IsCalled(const PortRow& row, const std::string& address) {
    return row.Path == address || std::find(row.Links.begin(), row.Links.end(), address) != row.Links.end();
}

bool HasNumber(const PortRow& row, std::int32_t number) {
    return std::any_of(row.Numbers.begin(), row.Numbers.end(),
                       [number](const PortName& name) { return name.Number == number; });
}

} // namespace

PortChoice ChoiceOf(const std::vector<PortRow>& rows, std::size_t row) {
    const PortRow& chosen = rows[row];
    return {chosen.Numbers.empty() ? LowestFree(rows) : NumberOf(chosen),
            chosen.Links.empty() ? chosen.Path : chosen.Links.front()};
}

PortChoice ChoiceOfAddress(const std::vector<PortRow>& rows, const std::string& address) {
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&address](const PortRow& each) { return IsCalled(each, address); });
    return {row == rows.end() || row->Numbers.empty() ? LowestFree(rows) : NumberOf(*row), address};
}

std::string ForgottenText(const std::vector<PortRow>& rows, std::int32_t number) {
    const auto row =
        std::find_if(rows.begin(), rows.end(), [number](const PortRow& each) { return HasNumber(each, number); });
    const std::string name = "Com" + std::to_string(number);
    return name + " is not pinned any more: " +
           (row == rows.end() ? "there is no port for it now." : "it is " + row->Path + " now.");
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
