// SPDX-License-Identifier: MIT
#include "platform/device/keyboard.h"

namespace platform::device {

namespace {

/// The length of the character at the head of a text: two units outside of the first 65,536.
std::size_t FirstLength(TextView text) {
    const bool pair =
        text.size() > 1 && text[0] >= 0xD800 && text[0] <= 0xDBFF && text[1] >= 0xDC00 && text[1] <= 0xDFFF;
    return pair ? 2 : 1;
}

} // namespace

Refusal PressKey(BackEnd& device, std::int32_t keyCode) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    device.StrikeKey(keyCode);
    return {};
}

Refusal TypeText(BackEnd& device, const Text& text) {
    if (const Refusal refusal = FieldRefusal(device); !refusal.empty())
        return refusal;
    Text typed = text;
    modStringTools::BlankNuls(typed);
    TextView rest = typed;
    while (!rest.empty()) {
        const std::size_t length = FirstLength(rest);
        device.TypeCharacter(rest.substr(0, length));
        rest.remove_prefix(length);
    }
    return {};
}

Refusal PickDate(BackEnd& device, const CalendarDate& date) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    if (!device.Seen().dteInputField.Visible())
        return "no date picker is open";
    device.ChooseDate(date);
    return {};
}

} // namespace platform::device
