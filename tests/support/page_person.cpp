// SPDX-License-Identifier: MIT
#include "tests/support/page_person.h"

#include "backends/loop/clock.h"

#include <nlohmann/json.hpp>

#include <vector>

namespace webtest {

using backends::web::PageEvent;

void PagePerson::Send(const char* kind, Numbers numbers, const Text& words) {
    Page_.stage.Look();
    nlohmann::json line = {{"kind", kind},
                           {"stage", Page_.stage.Screen()},
                           {"field", Page_.stage.Field()},
                           {"box", Page_.BoxNumber()},
                           {"units", std::vector<std::uint32_t>(words.begin(), words.end())}};
    for (const auto& [name, number] : numbers)
        line[name] = number;
    if (const auto event = backends::web::ReadPageEvent(line.dump()))
        Program_.Do(*event);
}

/// A row that the page does not show is scrolled to before it is tapped.
void PagePerson::PressCell(std::int32_t row, std::int32_t col) {
    auto& grid = Page_.grdMain;
    grid.BringOnPage(row);
    std::int32_t x = 1;
    std::int32_t y = 1;
    for (std::int32_t each = grid.TopRow(); each < row; ++each)
        y += grid.RowHeight(each);
    for (std::int32_t each = 0; each < col; ++each)
        x += grid.ColWidth(each);
    Send("press", {{"x", x}, {"y", y}});
}

void PagePerson::ClickItem(std::int32_t menu, std::int32_t item) {
    const auto& entry = Page_.menuItems[static_cast<std::size_t>(menu) - 1][static_cast<std::size_t>(item) - 1];
    Send("item", {{"menu", menu}, {"item", item}}, entry.Caption());
}

void PagePerson::StrikeKey(std::int32_t keyCode) {
    Send("keydown", {{"key", keyCode}});
    Send("keyup", {{"key", keyCode}});
}

/// Sends what a control of the browser holds after a change.
void PagePerson::SendText(const Text& text, std::size_t caret) {
    Send("edit", {{"caret", static_cast<std::int32_t>(caret)}}, text);
}

/// Enter and Backspace of the browser's control are no characters of the page: they go to the form's control, as the
/// keys of a device do.
void PagePerson::TypeCharacter(TextView character) {
    if (character[0] < u' ')
        Page_.focus.Holder()->EnterCharacter(character);
    else
        TypeText(character);
}

void PagePerson::TypeText(TextView characters) {
    const auto type = [&](auto& field) {
        if (Page_.focus.Holder() != &field)
            return;
        Text text = field.Contents();
        const auto caret = static_cast<std::size_t>(field.Caret());
        text.replace(caret, static_cast<std::size_t>(field.SelectedLength()), characters);
        SendText(text, caret + characters.size());
    };
    type(Page_.txtInputField);
    type(Page_.cboInputField);
    type(Page_.cbotxtInputField);
}

void PagePerson::ReplaceText(const Text& text) {
    SendText(text, text.size());
}

void PagePerson::ChooseDate(const CalendarDate& date) {
    Send("date", {}, modStringTools::FromBytes(backends::TextOfDate(date)));
}

void PagePerson::PressBoxButton(BoxAnswer answer) {
    Page_.stage.Look();
    Program_.Do({.Kind = "answer", .Box = Page_.BoxNumber(), .Yes = answer == BoxAnswer::Yes});
}

} // namespace webtest
