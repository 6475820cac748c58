// SPDX-License-Identifier: MIT
// The key of a keyboard for each key of a device: one row for each key.
#pragma once

#include "src/view/platform/keys.h"

#include <QKeyEvent>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace backends::qt {

struct KeyRow {
    platform::Key Key{}; ///< of the device
    int QtKey = 0;
    bool Control = false;    ///< with the Ctrl key
    bool Shift = false;      ///< with the Shift key
    bool Everywhere = false; ///< also on a device that has no such key
    const char* Name = "";   ///< for people
};

const std::vector<KeyRow>& KeyRows();

/// Returns the device's code of a key event; nothing for a key that Qt alone handles. A letter has the code of its
/// capital, as in the devices' own key events. `has`: the codes of the keys that the device has.
std::optional<std::int32_t> CodeOf(const QKeyEvent& event, const std::vector<std::int32_t>& has);

/// True for a character other than a blank, which is the select key where no field is open.
bool IsTyped(const QKeyEvent& event);
bool IsQuestionMark(const QKeyEvent& event);

/// Returns Qt's key for a code, to be sent to a control; 0 for a key that no control reacts to.
int KeyOf(std::int32_t code);

/// Returns the table as text for the user, one line for each key, and then the keys of the window itself.
std::string KeyboardHelp();

} // namespace backends::qt
