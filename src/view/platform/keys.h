// SPDX-License-Identifier: MIT
// The numbers of the keys that the application or a control handles. A device has more.
#pragma once

#include <cstdint>

namespace platform {

enum class Key : std::int32_t {
    SoftKey2 = 2, ///< on Windows Mobile without a touch screen
    Backspace = 8,
    Tab = 9,
    Enter = 13,
    Escape = 27,
    Space = 32,
    PageUp = 33,
    PageDown = 34,
    Left = 37,
    Up = 38,
    Right = 39,
    Down = 40,
    PalmMenu = 261,
    PalmLauncher = 264,
    PalmFind = 266,
    PalmCalculator = 267,
    PalmPowerOff = 276,
    PalmLeft = 308,
    PalmRight = 309,
    PalmSelect = 310,
    PalmApp1 = 516, ///< the four buttons of a Palm OS device that start an application
    PalmApp2 = 517,
    PalmApp3 = 518,
    PalmApp4 = 519,
    PalmPower = 520,
    PalmApp5 = 1280,
};

/// The character that the key writes.
inline constexpr auto BackspaceCharacter = static_cast<char16_t>(Key::Backspace);

/// Returns the number of a key, as used in events and in the back-ends' tables.
constexpr std::int32_t CodeOf(Key key) {
    return static_cast<std::int32_t>(key);
}

} // namespace platform
