// SPDX-License-Identifier: MIT
// The ports that a machine has, as people see them: what is there, what it is called, and why it can't be used.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace companion {

/// What a device is called; empty where nobody knows.
struct DeviceName {
    std::string Vendor;
    std::string Model;
    std::string SerialNumber;
};

/// One sentence each.
struct PortTrouble {
    std::string Reason;
    std::string Remedy;
};

enum class PortState {
    Ready,   ///< it was opened, and closed again
    Untried, ///< it may be opened as far as its permissions go
    InUse,
    Refused, ///< for want of permission
    Gone,
    Failing,
    Elsewhere, ///< behind an address that is no device of this machine, and was not opened
};

struct PortName {
    std::int32_t Number = 0; ///< 1 for "Com1"
    bool Pinned = false;     ///< by the person, and not by the rule
};

struct PortRow {
    std::string Path;               ///< or the address of what is elsewhere
    std::vector<std::string> Links; ///< names in `serial/by-id` that lead to it
    DeviceName Name;
    std::vector<PortName> Numbers;
    PortState State = PortState::Ready;
    PortTrouble Trouble; ///< empty for Ready, Untried and Elsewhere
};

/// The lines that a person reads, each with its end.
std::string PortTable(const std::vector<PortRow>& rows);

} // namespace companion
