// SPDX-License-Identifier: MIT
#include "backends/input/keyboard.h"

#include "src/text/characters.h"

#include <algorithm>

namespace backends {

namespace {

/// Returns the number of UTF-16 units before the first control character, which does not write text.
std::size_t LengthWritten(TextView text) {
    const auto* const control = std::find_if(text.begin(), text.end(), [](char16_t unit) { return unit < u' '; });
    return static_cast<std::size_t>(control - text.begin());
}

} // namespace

std::size_t FirstLength(TextView text) {
    return text.empty() ? 1 : modStringTools::FirstCharacter(text).Length;
}

Refusal PressKey(Hand& hand, std::int32_t keyCode) {
    if (const Refusal refusal = FormRefusal(hand.Device()); !refusal.empty())
        return refusal;
    hand.StrikeKey(keyCode);
    return {};
}

Refusal TypeText(Hand& hand, const Text& text) {
    if (const Refusal refusal = FieldRefusal(hand.Device()); !refusal.empty())
        return refusal;
    Text typed = text;
    modStringTools::BlankNuls(typed);
    // Typing a long text character by character would copy all of the text before it each time.
    TextView rest = typed;
    while (!rest.empty()) {
        const std::size_t written = LengthWritten(rest);
        if (written > 0)
            hand.TypeCharacters(rest.substr(0, written));
        else
            hand.TypeCharacter(rest.substr(0, 1));
        rest.remove_prefix(std::max<std::size_t>(written, 1));
    }
    return {};
}

Refusal PickDate(Hand& hand, const CalendarDate& date) {
    if (const Refusal refusal = FormRefusal(hand.Device()); !refusal.empty())
        return refusal;
    if (!hand.Device().Seen().dteInputField.Visible())
        return "no date picker is open";
    hand.ChooseDate(date);
    return {};
}

} // namespace backends
