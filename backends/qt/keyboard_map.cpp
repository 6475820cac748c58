// SPDX-License-Identifier: MIT
#include "backends/qt/keyboard_map.h"

#include "backends/simulated/device_profiles.h"

#include <algorithm>
#include <map>

namespace backends::qt {

using platform::Key;

namespace {

bool IsLetterOrDigit(int key) {
    return (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
}

bool Matches(const KeyRow& row, const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
    return row.QtKey == event.key() && row.Control == held.testFlag(Qt::ControlModifier) &&
           (!row.Shift || held.testFlag(Qt::ShiftModifier));
}

} // namespace

const std::vector<KeyRow>& KeyRows() {
    static const std::vector<KeyRow> rows = {
        {.Key = Key::Left, .QtKey = Qt::Key_Left, .Everywhere = true, .Name = "Left"},
        {.Key = Key::Up, .QtKey = Qt::Key_Up, .Everywhere = true, .Name = "Up"},
        {.Key = Key::Right, .QtKey = Qt::Key_Right, .Everywhere = true, .Name = "Right"},
        {.Key = Key::Down, .QtKey = Qt::Key_Down, .Everywhere = true, .Name = "Down"},
        {.Key = Key::PageUp, .QtKey = Qt::Key_PageUp, .Everywhere = true, .Name = "Page Up"},
        {.Key = Key::PageDown, .QtKey = Qt::Key_PageDown, .Everywhere = true, .Name = "Page Down"},
        {.Key = Key::Enter, .QtKey = Qt::Key_Return, .Everywhere = true, .Name = "Enter"},
        {.Key = Key::Enter, .QtKey = Qt::Key_Enter, .Everywhere = true, .Name = "Enter of the keypad"},
        {.Key = Key::Escape, .QtKey = Qt::Key_Escape, .Everywhere = true, .Name = "Esc"},
        {.Key = Key::Backspace, .QtKey = Qt::Key_Backspace, .Everywhere = true, .Name = "Backspace"},
        {.Key = Key::PalmLeft, .QtKey = Qt::Key_Left, .Control = true, .Name = "Ctrl+Left"},
        {.Key = Key::PalmRight, .QtKey = Qt::Key_Right, .Control = true, .Name = "Ctrl+Right"},
        {.Key = Key::PalmSelect,
         .QtKey = Qt::Key_Return,
         .Control = true,
         .Name = "Ctrl+Enter, or Space outside of a field"},
        {.Key = Key::PalmSelect, .QtKey = Qt::Key_Enter, .Control = true, .Name = "Ctrl+Enter of the keypad"},
        {.Key = Key::SoftKey2, .QtKey = Qt::Key_F3, .Name = "F3"},
        {.Key = Key::PalmApp1, .QtKey = Qt::Key_F5, .Name = "F5"},
        {.Key = Key::PalmApp2, .QtKey = Qt::Key_F6, .Name = "F6"},
        {.Key = Key::PalmApp3, .QtKey = Qt::Key_F7, .Name = "F7"},
        {.Key = Key::PalmApp4, .QtKey = Qt::Key_F8, .Name = "F8"},
        {.Key = Key::PalmApp5, .QtKey = Qt::Key_F9, .Name = "F9"},
        {.Key = Key::PalmLauncher, .QtKey = Qt::Key_F10, .Name = "F10"},
        {.Key = Key::PalmFind, .QtKey = Qt::Key_F11, .Name = "F11"},
        {.Key = Key::PalmCalculator, .QtKey = Qt::Key_F12, .Name = "F12"},
        {.Key = Key::PalmMenu, .QtKey = Qt::Key_M, .Control = true, .Name = "Ctrl+M"},
        {.Key = Key::PalmPowerOff, .QtKey = Qt::Key_Pause, .Shift = true, .Name = "Shift+Pause"},
        {.Key = Key::PalmPower, .QtKey = Qt::Key_Pause, .Name = "Pause"},
    };
    return rows;
}

std::optional<std::int32_t> CodeOf(const QKeyEvent& event, const std::vector<std::int32_t>& has) {
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier))
        return std::nullopt;
    for (const KeyRow& row : KeyRows()) {
        const std::int32_t code = platform::CodeOf(row.Key);
        const bool isThere = row.Everywhere || std::find(has.begin(), has.end(), code) != has.end();
        if (isThere && Matches(row, event))
            return code;
    }
    const bool plain = !(event.modifiers() & Qt::ControlModifier);
    if (plain && (IsLetterOrDigit(event.key()) || event.key() == Qt::Key_Space))
        return event.key();
    return std::nullopt;
}

bool IsTyped(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text()[0].isPrint() && !event.text()[0].isSpace();
}

bool IsQuestionMark(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    return event.text() == QLatin1String("?") && held == Qt::NoModifier;
}

int KeyOf(std::int32_t code) {
    for (const KeyRow& row : KeyRows()) {
        if (row.Everywhere && platform::CodeOf(row.Key) == code)
            return row.QtKey;
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
        std::string head = "  " + std::to_string(platform::CodeOf(row.Key));
        head.resize(std::max<std::size_t>(head.size() + 1, 8), ' ');
        const auto name = names.find(platform::CodeOf(row.Key));
        head += name != names.end() ? name->second : row.Key == Key::Backspace ? "backspace" : "";
        head.resize(std::max<std::size_t>(head.size() + 1, 26), ' ');
        help += head + row.Name + "\n";
    }
    help += "  on a desktop, outside of a field: Enter selects too, Tab opens the next field of a record,\n"
            "  Home and End go to the ends of a list\n"
            "  install a driver        Ctrl+O\n"
            "  open the data folder    Ctrl+Shift+O\n"
            "  form larger, smaller    Ctrl+Plus, Ctrl+Minus; Ctrl+0 for the usual size\n"
            "  readings of this run    F4\n"
            "  list of notices         Shift+F4\n"
            "  menu of the window      Shift+F10\n"
            "  help on the screen      Ctrl+F1, or ? outside of a field\n";
    return help;
}

} // namespace backends::qt
