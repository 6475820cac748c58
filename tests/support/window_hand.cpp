// SPDX-License-Identifier: MIT
#include "tests/support/window_hand.h"

#include "backends/input/keyboard.h"
#include "backends/qt/conversions.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCalendarWidget>
#include <QInputMethodEvent>
#include <QMenu>

namespace windowtest {

namespace {

using backends::qt::ToQt;
using platform::BoxAnswer;

QMessageBox::StandardButton ButtonOf(BoxAnswer answer) {
    switch (answer) {
    case BoxAnswer::Yes:
        return QMessageBox::Yes;
    case BoxAnswer::No:
        return QMessageBox::No;
    case BoxAnswer::Ok:
        break;
    }
    return QMessageBox::Ok;
}

} // namespace

void WindowHand::PressCell(std::int32_t row, std::int32_t col) {
    Window_.grdMain.Widget().PointerDown(row, col);
}

void WindowHand::ReleaseCell() {
    Window_.grdMain.Widget().PointerUp();
}

void WindowHand::ClickItem(std::int32_t menu, std::int32_t item) {
    Window_.menus.FollowIfChanged();
    Window_.menus.List(menu).actions()[item - 1]->trigger();
}

void WindowHand::ClickTitle(std::int32_t menu) {
    Window_.menus.PressTitle(menu);
}

void WindowHand::StrikeKey(std::int32_t keyCode) {
    Window_.window.KeyPressed(keyCode);
    Window_.window.KeyReleased(keyCode);
}

void WindowHand::TypeCharacter(TextView character) {
    const QString text = ToQt(character);
    backends::FocusTarget& holder = *Window_.focus.Holder();
    if (character[0] < u' ')
        holder.EnterCharacter(character);
    else if (text.size() == 1 && text[0].isPrint())
        Window_.SendKey(holder, text[0].toUpper().unicode(), text);
    else
        Commit(text);
}

/// Enters text as an input method does, for characters that have no key.
void WindowHand::Commit(const QString& text) {
    QWidget* const widget = Window_.native.WidgetOf(*Window_.focus.Holder());
    if (widget == nullptr)
        return;
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QWidget* const line = widget->focusProxy() != nullptr ? widget->focusProxy() : widget;
    QCoreApplication::sendEvent(line, &commit);
}

/// Types short texts key by key, as a user does. A field lays out all of its text again at each key, so a long text is
/// entered at once.
void WindowHand::TypeCharacters(TextView characters) {
    constexpr std::size_t MostKeys = 200;
    if (characters.size() > MostKeys)
        return Commit(ToQt(characters));
    while (!characters.empty() && Window_.focus.Holder() != nullptr) {
        const std::size_t length = backends::FirstLength(characters);
        TypeCharacter(characters.substr(0, length));
        characters.remove_prefix(length);
    }
}

void WindowHand::ReplaceText(const Text& text) {
    Window_.focus.Holder()->ReplaceText(text);
}

void WindowHand::ChooseDate(const platform::CalendarDate& date) {
    QCalendarWidget& month = Window_.dteInputField.Calendar();
    const QDate day(date.Year, date.Month, date.Day);
    month.setSelectedDate(day);
    Q_EMIT month.clicked(day);
}

void WindowHand::CloseWindow() {
    Window_.window.close();
}

void WindowHand::PressBoxButton(BoxAnswer answer) {
    Window_.boxes.Dialog()->button(ButtonOf(answer))->click();
}

} // namespace windowtest
