// SPDX-License-Identifier: MIT
#include "companion/ports/port_table.h"

#include "src/text/printable.h"

#include <algorithm>

namespace companion {

using modStringTools::Printable;

const char* StateWord(PortState state) {
    switch (state) {
    case PortState::Ready:
        return "ready";
    case PortState::Ours:
        return "open in this window";
    case PortState::Untried:
        return "looks ready, was not opened";
    case PortState::InUse:
        return "in use";
    case PortState::Refused:
        return "no permission";
    case PortState::Gone:
        return "gone";
    case PortState::Failing:
        return "can't be opened";
    case PortState::Elsewhere:
        return "elsewhere, was not opened";
    }
    return "";
}

std::string NumbersText(const std::vector<PortName>& numbers) {
    std::string text;
    for (const PortName& name : numbers) {
        text += (text.empty() ? "Com" : ", Com") + std::to_string(name.Number);
        text += name.Pinned ? " (pinned)" : "";
    }
    return text;
}

namespace {

std::string NameText(const DeviceName& name) {
    std::string text = name.Vendor;
    if (!name.Model.empty())
        text += (text.empty() ? "" : ", ") + name.Model;
    if (!name.SerialNumber.empty())
        text += (text.empty() ? "serial number " : ", serial number ") + name.SerialNumber;
    return text;
}

/// A line under the line of a device, indented.
std::string Below(const std::string& text) {
    return text.empty() ? "" : "    " + Printable(text) + "\n";
}

std::string RowText(const PortRow& row) {
    const std::string numbers = NumbersText(row.Numbers);
    std::string text = Printable(row.Path) + ": " + (numbers.empty() ? "no number, pin it to use it" : numbers) + "; " +
                       StateWord(row.State) + "\n";
    text += Below(NameText(row.Name));
    for (const std::string& link : row.Links)
        text += Below("also " + link);
    return text + Below(row.Trouble.Reason) + Below(row.Trouble.Remedy);
}

} // namespace

std::string PortTable(const std::vector<PortRow>& rows) {
    if (rows.empty())
        return "There is no serial port. Plug an adapter in, or bind a Bluetooth device by rfcomm.\n";
    std::string text;
    for (const PortRow& row : rows)
        text += RowText(row);
    const bool pinnable = std::any_of(rows.begin(), rows.end(), [](const PortRow& row) { return !row.Links.empty(); });
    if (pinnable)
        text += "Numbers follow the order of plugging in. To keep a number for one adapter, pin it:\n"
                "    --port 1=/dev/serial/by-id/NAME\n";
    return text;
}

} // namespace companion
