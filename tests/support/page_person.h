// SPDX-License-Identifier: MIT
// The actions of a user at the page: each is one or more lines as the page sends them, about what it was shown last.
#pragma once

#include "backends/input/hand.h"
#include "backends/web/page_hand.h"

#include <initializer_list>
#include <string>
#include <utility>

namespace webtest {

using namespace platform;

class PagePerson final : public backends::Hand {
public:
    explicit PagePerson(backends::web::WebPlatform& page) : Hand(page), Page_(page), Program_(page) {}

    void PressCell(std::int32_t row, std::int32_t col) override;
    void ReleaseCell() override { Send("release"); }
    void ClickItem(std::int32_t menu, std::int32_t item) override;
    void ClickTitle(std::int32_t menu) override { Send("title", {{"menu", menu}}); }
    void StrikeKey(std::int32_t keyCode) override;
    void TypeCharacter(TextView character) override;
    void TypeCharacters(TextView characters) override { TypeText(characters); }
    void ReplaceText(const Text& text) override;
    void ChooseDate(const CalendarDate& date) override;
    void CloseWindow() override { Send("close"); }
    void PressBoxButton(BoxAnswer answer) override;

private:
    using Numbers = std::initializer_list<std::pair<const char*, std::int32_t>>;

    void Send(const char* kind, Numbers numbers = {}, const Text& words = {});
    void SendText(const Text& text, std::size_t caret);
    void TypeText(TextView characters);

    backends::web::WebPlatform& Page_;
    backends::web::PageHand Program_;
};

} // namespace webtest
