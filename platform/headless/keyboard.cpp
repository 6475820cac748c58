// SPDX-License-Identifier: MIT
#include "platform/headless/keyboard.h"

#include "app/form.h"
#include "platform/common/key_codes.h"

#include <algorithm>

namespace platform::headless {

namespace {

constexpr std::int32_t NoShift = 0;

/// The codes between are those of the page, home and arrow keys, which write nothing.
bool IsCharacter(std::int32_t keyCode) {
    constexpr std::int32_t Written[] = {8, 9, 13, 27, 32};
    return std::find(std::begin(Written), std::end(Written), keyCode) != std::end(Written) ||
           (keyCode > 40 && keyCode < 127);
}

/// Whether the form has left the key to the control.
bool KeyDownPasses(std::int32_t keyCode) {
    std::int32_t key = keyCode;
    frmQuorin::Form_KeyDown(key, NoShift);
    if (key == 0 || !IsCharacter(keyCode))
        return key != 0;
    std::int32_t character = keyCode;
    frmQuorin::Form_KeyPress(character);
    return character != 0;
}

/// The length of the character at the head of a text: two units outside of the first 65,536.
std::size_t FirstLength(TextView text) {
    const bool pair =
        text.size() > 1 && text[0] >= 0xD800 && text[0] <= 0xDBFF && text[1] >= 0xDC00 && text[1] <= 0xDFFF;
    return pair ? 2 : 1;
}

/// While nothing has the focus, as after a Palm's page key has closed a field, the grid takes the keys.
FocusTarget* KeyTaker(HeadlessPlatform& device) {
    FocusTarget* const holder = device.focus.Holder();
    return holder != nullptr ? holder : &device.grdMain;
}

} // namespace

Refusal PressKey(HeadlessPlatform& device, std::int32_t keyCode) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    FocusTarget* const holder = KeyTaker(device);
    const bool passes = KeyDownPasses(keyCode);
    if (passes && device.grdMain.TurnsPages && (keyCode == common::KeyPageUp || keyCode == common::KeyPageDown)) {
        device.grdMain.ActOnKey(keyCode); // a Palm's grid scrolls whatever has the focus
    } else if (passes && KeyTaker(device) == holder) {
        if (IsCharacter(keyCode))
            holder->EnterCharacter(Text(1, static_cast<char16_t>(keyCode)));
        else
            holder->ActOnKey(keyCode);
    }
    std::int32_t key = keyCode;
    frmQuorin::Form_KeyUp(key, NoShift);
    return {};
}

Refusal TypeText(HeadlessPlatform& device, const Text& text) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    FocusTarget* const holder = device.focus.Holder();
    if (holder == nullptr || !holder->TakesText())
        return NoInputControl;
    TextView rest = text;
    while (!rest.empty()) {
        const std::size_t length = FirstLength(rest);
        holder->EnterCharacter(rest.substr(0, length));
        rest.remove_prefix(length);
    }
    return {};
}

Refusal PickDate(HeadlessPlatform& device, const CalendarDate& date) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    if (!device.dteInputField.Visible())
        return "no date picker is open";
    device.dteInputField.SetDate(date);
    frmQuorin::dteInputField_Closed();
    return {};
}

} // namespace platform::headless
