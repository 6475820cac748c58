// SPDX-License-Identifier: MIT
// The actions of a user at a device without a window: calls of the form's handlers.
#pragma once

#include "backends/headless/headless_platform.h"
#include "backends/input/hand.h"

namespace backends::headless {

class HeadlessHand final : public Hand {
public:
    explicit HeadlessHand(HeadlessPlatform& platform) : Hand(platform), Platform_(platform) {}

    void PressCell(std::int32_t row, std::int32_t col) override;
    void ReleaseCell() override;
    void ClickItem(std::int32_t menu, std::int32_t item) override;
    void ClickTitle(std::int32_t menu) override;
    void StrikeKey(std::int32_t keyCode) override;
    void TypeCharacter(TextView character) override;
    void TypeCharacters(TextView characters) override;
    void ReplaceText(const Text& text) override;
    void ChooseDate(const CalendarDate& date) override;
    void CloseWindow() override;
    void PressBoxButton(BoxAnswer answer) override;

private:
    HeadlessPlatform& Platform_;
};

} // namespace backends::headless
