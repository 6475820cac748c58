// SPDX-License-Identifier: MIT
// The actions of a user at a window, as clicks and keys on its widgets.
#pragma once

#include "backends/input/hand.h"
#include "backends/qt/qt_platform.h"

namespace windowtest {

class WindowHand final : public backends::Hand {
public:
    explicit WindowHand(backends::qt::QtPlatform& window) : Hand(window), Window_(window) {}

    void PressCell(std::int32_t row, std::int32_t col) override;
    void ReleaseCell() override;
    void ClickItem(std::int32_t menu, std::int32_t item) override;
    void ClickTitle(std::int32_t menu) override;
    void StrikeKey(std::int32_t keyCode) override;
    void TypeCharacter(TextView character) override;
    void TypeCharacters(TextView characters) override;
    void ReplaceText(const Text& text) override;
    void ChooseDate(const platform::CalendarDate& date) override;
    void CloseWindow() override;
    void PressBoxButton(platform::BoxAnswer answer) override;

private:
    void Commit(const QString& text);

    backends::qt::QtPlatform& Window_;
};

} // namespace windowtest
