// SPDX-License-Identifier: MIT
#include "backends/qt/keyboard_map.h"

#include "backends/simulated/device_profiles.h"

#include <algorithm>
#include <map>

namespace backends::qt {

namespace {

constexpr bool Control = true;
constexpr bool Shift = true;
constexpr bool Everywhere = true;

bool IsLetterOrDigit(int key) {
    return (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
}

bool Matches(const KeyRow& row, const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
    return row.Key == event.key() && row.Control == held.testFlag(Qt::ControlModifier) &&
           (!row.Shift || held.testFlag(Qt::ShiftModifier));
}

} // namespace

const std::vector<KeyRow>& KeyRows() {
    // clang-format off
    static const std::vector<KeyRow> rows = {
        {37,   Qt::Key_Left,      !Control, !Shift, Everywhere,  "Left"},
        {38,   Qt::Key_Up,        !Control, !Shift, Everywhere,  "Up"},
        {39,   Qt::Key_Right,     !Control, !Shift, Everywhere,  "Right"},
        {40,   Qt::Key_Down,      !Control, !Shift, Everywhere,  "Down"},
        {33,   Qt::Key_PageUp,    !Control, !Shift, Everywhere,  "Page Up"},
        {34,   Qt::Key_PageDown,  !Control, !Shift, Everywhere,  "Page Down"},
        {13,   Qt::Key_Return,    !Control, !Shift, Everywhere,  "Enter"},
        {13,   Qt::Key_Enter,     !Control, !Shift, Everywhere,  "Enter of the keypad"},
        {27,   Qt::Key_Escape,    !Control, !Shift, Everywhere,  "Esc"},
        {8,    Qt::Key_Backspace, !Control, !Shift, Everywhere,  "Backspace"},
        {308,  Qt::Key_Left,      Control,  !Shift, !Everywhere, "Ctrl+Left"},
        {309,  Qt::Key_Right,     Control,  !Shift, !Everywhere, "Ctrl+Right"},
        {310,  Qt::Key_Return,    Control,  !Shift, !Everywhere, "Ctrl+Enter, or Space outside of a field"},
        {310,  Qt::Key_Enter,     Control,  !Shift, !Everywhere, "Ctrl+Enter of the keypad"},
        {2,    Qt::Key_F3,        !Control, !Shift, !Everywhere, "F3"},
        {516,  Qt::Key_F5,        !Control, !Shift, !Everywhere, "F5"},
        {517,  Qt::Key_F6,        !Control, !Shift, !Everywhere, "F6"},
        {518,  Qt::Key_F7,        !Control, !Shift, !Everywhere, "F7"},
        {519,  Qt::Key_F8,        !Control, !Shift, !Everywhere, "F8"},
        {1280, Qt::Key_F9,        !Control, !Shift, !Everywhere, "F9"},
        {264,  Qt::Key_F10,       !Control, !Shift, !Everywhere, "F10"},
        {266,  Qt::Key_F11,       !Control, !Shift, !Everywhere, "F11"},
        {267,  Qt::Key_F12,       !Control, !Shift, !Everywhere, "F12"},
        {261,  Qt::Key_M,         Control,  !Shift, !Everywhere, "Ctrl+M"},
        {276,  Qt::Key_Pause,     !Control, Shift,  !Everywhere, "Shift+Pause"},
        {520,  Qt::Key_Pause,     !Control, !Shift, !Everywhere, "Pause"},
    };
    // clang-format on
    return rows;
}

std::optional<std::int32_t> CodeOf(const QKeyEvent& event, const std::vector<std::int32_t>& has) {
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier))
        return std::nullopt;
    for (const KeyRow& row : KeyRows()) {
        const bool isThere = row.Everywhere || std::find(has.begin(), has.end(), row.Code) != has.end();
        if (isThere && Matches(row, event))
            return row.Code;
    }
    const bool plain = !(event.modifiers() & Qt::ControlModifier);
    if (plain && (IsLetterOrDigit(event.key()) || event.key() == Qt::Key_Space))
        return event.key();
    return std::nullopt;
}

int KeyOf(std::int32_t code) {
    for (const KeyRow& row : KeyRows()) {
        if (row.Everywhere && row.Code == code)
            return row.Key;
    }
    return 0;
}

std::string KeyboardHelp() {
    std::map<std::int32_t, std::string> names;
    for (const auto& profile : DeviceProfiles()) {
        for (const auto& key : profile.Keys)
            names.emplace(key.Code, key.Name);
    }
    std::string help;
    for (const KeyRow& row : KeyRows()) {
        std::string head = "  " + std::to_string(row.Code);
        head.resize(std::max<std::size_t>(head.size() + 1, 8), ' ');
        const auto name = names.find(row.Code);
        head += name != names.end() ? name->second : row.Code == 8 ? "backspace" : "";
        head.resize(std::max<std::size_t>(head.size() + 1, 26), ' ');
        help += head + row.Name + "\n";
    }
    return help;
}

} // namespace backends::qt
