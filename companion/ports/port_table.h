// SPDX-License-Identifier: MIT
// The ports of a machine, as a person sees them: which there are, what they are called, and why one can't be used.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace companion {

/// What a device is called; a part that is not known is empty.
struct DeviceName {
    std::string Vendor;
    std::string Model;
    std::string SerialNumber;
};

/// Reason and remedy are one sentence each.
struct PortTrouble {
    std::string Reason;
    std::string Remedy;
    std::string Command = {}; ///< the command that the remedy names, for copying; empty if it names none
};

enum class PortState {
    Ready,   ///< it was opened, and closed again
    Ours,    ///< this program has it open
    Untried, ///< its permissions allow opening it; it was not opened
    InUse,
    Refused, ///< no permission
    Gone,
    Failing,
    Elsewhere, ///< an address that is no device of this machine; it was not opened
};

struct PortName {
    std::int32_t Number = 0; ///< 1 for "Com1"
    bool Pinned = false;     ///< assigned by the person, not by the rule
};

struct PortRow {
    std::string Path;                    ///< or the address, if it is Elsewhere
    std::vector<std::string> Links = {}; ///< names in `serial/by-id` that lead to the port
    DeviceName Name = {};
    std::vector<PortName> Numbers = {};
    PortState State = PortState::Ready;
    PortTrouble Trouble = {}; ///< empty for Ready, Ours, Untried and Elsewhere
};

/// Returns the state in words.
const char* StateWord(PortState state);
/// Returns the names of a port: "Com1, Com3 (pinned)"; empty if it has none.
std::string NumbersText(const std::vector<PortName>& numbers);

/// Returns the text that lists the ports, each line ended.
std::string PortTable(const std::vector<PortRow>& rows);

} // namespace companion
