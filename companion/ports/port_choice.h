// SPDX-License-Identifier: MIT
// The choice of a port from the list of a machine's ports.
#pragma once

#include "companion/ports/port_table.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace companion {

/// What is stored when a person chooses a port.
struct PortChoice {
    std::int32_t Number = 1; ///< the N of "ComN"
    /// What N is pinned to: the name that follows the device wherever it is plugged in, or its path if it has none.
    std::string Address;
    bool operator==(const PortChoice&) const = default;
};

/// Returns the choice of a row: with the number that it has already, the pinned one first, else with the lowest number
/// that no row has.
PortChoice ChoiceOf(const std::vector<PortRow>& rows, std::size_t row);
/// Returns the choice of an address that a person has typed: with the number of the row that has it already, by its
/// path or by another name of it, else with the lowest number that no row has.
PortChoice ChoiceOfAddress(const std::vector<PortRow>& rows, const std::string& address);

/// Returns what is said when a number is not pinned any more: what it stands for by these rows.
std::string ForgottenText(const std::vector<PortRow>& rows, std::int32_t number);

/// Returns what a person calls the device: its model, else its vendor, else nothing.
std::string ProductOf(const DeviceName& name);

/// Notices devices that are plugged in.
class PluggedIn {
public:
    /// Returns those of these paths that were not there at the last call; none at the first call.
    std::vector<std::string> Look(const std::vector<std::string>& paths);

private:
    std::set<std::string> Known_;
    bool HasLooked_ = false;
};

} // namespace companion
