// SPDX-License-Identifier: MIT
#include "src/view/prompt.h"

#include "src/text/ranges.h"
#include "src/view/date_text.h"
#include "src/view/grids.h"
#include "src/view/input_fields.h"
#include "src/view/navigation.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"

#include <algorithm>

namespace modPDAUI {

using modQuorin::Screens;
using platform::CalendarDate;
using platform::Device;

namespace {

constexpr std::int32_t KeptWidths = 2;
constexpr std::int32_t KeptCells = 3;

SavedGrid CopyOf(const platform::OwnerDrawGrid& grid) {
    SavedGrid copy;
    copy.Cols = grid.Cols();
    for (std::int32_t col = 0; col < std::min(grid.Cols(), KeptWidths); ++col)
        copy.Widths.push_back(grid.ColWidth(col));
    for (std::int32_t row = 0; row < grid.Rows(); ++row) {
        SavedGrid::SavedRow kept;
        for (std::int32_t col = 0; col < std::min(grid.Cols(), KeptCells); ++col)
            kept.Cells.push_back(grid.Cell(row, col));
        kept.Height = grid.RowHeight(row);
        copy.Rows.push_back(kept);
    }
    copy.Row = grid.Row();
    copy.Col = grid.Col();
    copy.TopRow = grid.TopRow();
    copy.Place = grid.Bounds();
    return copy;
}

void PutBack(platform::OwnerDrawGrid& grid, const SavedGrid& copy, bool withSelection) {
    const bool visible = grid.Visible();
    const bool fits = grid.Bounds().Width == copy.Place.Width;
    grid.SetVisible(false);
    grid.SetRows(static_cast<std::int32_t>(copy.Rows.size()));
    grid.SetCols(copy.Cols);
    for (std::size_t col = 0; fits && col < copy.Widths.size(); ++col)
        grid.SetColWidth(static_cast<std::int32_t>(col), copy.Widths[col]);
    for (std::size_t row = 0; row < copy.Rows.size(); ++row) {
        const auto& kept = copy.Rows[row];
        for (std::size_t col = 0; col < kept.Cells.size(); ++col)
            grid.SetCell(static_cast<std::int32_t>(row), static_cast<std::int32_t>(col), kept.Cells[col]);
        if (fits || kept.Height == 0)
            grid.SetRowHeight(static_cast<std::int32_t>(row), kept.Height);
    }
    if (withSelection) {
        grid.SetRow(copy.Row);
        grid.SetCol(copy.Col);
        grid.SetTopRow(copy.TopRow);
    }
    grid.SetVisible(visible);
}

[[noreturn]] void FailOnDate(const Text& text) {
    Text message = u"\"" + text + u"\" is not a date of the form day/month/year";
    // The properties of a driver are edited by the fields of the download that was open last.
    if (Screens.PreviousScreen == modQuorin::ScrDriverProperties)
        message += u": open a download of another driver first, whose first two fields are no dates";
    else
        message += u": correct it in the file of the table with any editor";
    platform::RuntimeFailure(message);
}

/// Returns the date of a cell such as "05/03/2007". Any text that is not a date stops the program.
CalendarDate DateFromText(const Text& text) {
    const auto date = DateOf(text);
    if (!date)
        FailOnDate(text);
    return *date;
}

std::int32_t CaretBehind(const Text& text) {
    return static_cast<std::int32_t>(text.size());
}

void TakeFontOfGrid(platform::FontControl& control) {
    control.SetFontName(Device().grdMain.FontName());
    control.SetFontSize(Device().grdMain.FontSize());
}

float OneLineHeight() {
    auto& fonts = Device().fontServer;
    const auto& grdMain = Device().grdMain;
    return static_cast<float>(fonts.FontHeight(fonts.GetFont(grdMain.FontName(), grdMain.FontSize(), 0)));
}

void OpenTextField(const Text& value, bool multiLine, float lineHeight) {
    auto& field = Device().txtInputField;
    platform::Box box = Device().grdMain.Bounds();
    if (!multiLine)
        box.Height = lineHeight + 4;
    TakeFontOfGrid(field);
    field.SetMultiLine(multiLine);
    field.SetBounds(box);
    field.SetContents(value);
    field.Select(CaretBehind(value), 0);
    field.SetVisible(true);
    field.SetFocus();
}

void OpenDatePicker(const Text& value) {
    auto& field = Device().dteInputField;
    field.SetBounds(Device().grdMain.Bounds());
    field.SetDate(value.empty() ? Device().clock.Now().Date : DateFromText(value));
    Prompt.DateText = value;
    Prompt.DateShown = field.Date();
    field.SetVisible(true);
    field.SetFocus();
}

void OpenListField(const Text& value, const Text& list) {
    auto& field = Device().cboInputField;
    platform::Box box = Device().grdMain.Bounds();
    box.Height = field.Bounds().Height;
    TakeFontOfGrid(field);
    field.SetBounds(box);
    field.Clear();
    // The first empty item ends the list: "a,,c" offers only "a".
    std::int32_t index = 1;
    for (Text item = ListItem(list, index, u","); !item.empty(); item = ListItem(list, ++index, u","))
        field.AddItem(item);
    field.SetContents(value);
    field.Select(CaretBehind(value), 0);
    field.SetVisible(true);
    field.SetFocus();
}

void OpenField(PromptKind kind, const Text& value, const Text& list, float lineHeight) {
    if (kind == PromptKind::Date)
        OpenDatePicker(value);
    else if (kind != PromptKind::List)
        OpenTextField(value, kind == PromptKind::Text, lineHeight);
    else if (!platform::Traits().ListFieldIsText) // there cbotxtInputField replaces it, and is not prepared
        OpenListField(value, list);
}

/// An unchanged date is returned as the text that it was read from: "5/3/07" stays "5/3/07".
Text DateAnswer(const CalendarDate& date) {
    const bool unchanged = !Prompt.DateText.empty() && date == Prompt.DateShown;
    return unchanged ? Prompt.DateText : TextOfDate(date);
}

/// Returns the answer of the visible field.
Text Answer() {
    auto& device = Device();
    Text answer;
    if (device.dteInputField.Visible())
        answer = DateAnswer(device.dteInputField.Date());
    if (device.txtInputField.Visible())
        answer = device.txtInputField.Contents();
    if (device.cboInputField.Visible())
        answer = device.cboInputField.Contents();
    if (device.cbotxtInputField.Visible())
        answer = device.cbotxtInputField.Contents();
    return answer;
}

void HideAllFields() {
    Device().dteInputField.SetVisible(false);
    Device().txtInputField.SetVisible(false);
    Device().cboInputField.SetVisible(false);
    Device().cbotxtInputField.SetVisible(false);
}

} // namespace

void InputPrompt(const Text& title, PromptKind kind, Text& value, const Text& list, bool keepGrids, bool modal) {
    CloseCellEdit(); // otherwise its text would be read as the answer
    Prompt.PromptModal = modal;
    if (!keepGrids) {
        Prompt.PromptRow = Device().grdMain.Row();
        SaveGrids();
    }
    Screens.PreviousScreen = Screens.CurrentScreen;
    Screens.CurrentScreen = modQuorin::ScrInput;
    modQuorin::ShowScreen(modQuorin::ScrInput);
    Device().grdTitle.SetCell(0, 0, title);
    Device().grdMain.SetVisible(false);
    const float lineHeight = OneLineHeight();
    Screens.GridEditMode = true;
    OpenField(kind, value, list, lineHeight);
    Prompt.PromptOpen = true;
    if (!modal)
        return;
    while (Screens.CurrentScreen == modQuorin::ScrInput && Prompt.PromptModal)
        Device().runTime.WaitEvents();
    // A cancelled prompt returns the last accepted answer, not an empty text: after "abc" was accepted once, a cancel
    // returns "abc".
    value = Prompt.PromptResult;
}

void EndInput(bool cancel) {
    if (!cancel)
        Device().txtInputField.Commit();
    const Text answer = cancel ? Text() : Answer();
    HideAllFields();
    modQuorin::GotoScreen(Screens.PreviousScreen);
    RestoreGrids();
    if (!cancel) {
        if (Prompt.PromptModal) {
            Prompt.PromptResult = answer;
            Prompt.PromptModal = false;
        } else {
            Device().grdMain.SetCell(Prompt.PromptRow, 1, answer);
        }
    }
    Device().grdMain.SetFocus();
    Device().txtInputField.SetMultiLine(false);
    Prompt.PromptOpen = false;
}

void SaveGrids() {
    Prompt.SavedTitle = CopyOf(Device().grdTitle);
    Prompt.SavedMain = CopyOf(Device().grdMain);
}

void RestoreGrids() {
    PutBack(Device().grdTitle, Prompt.SavedTitle, false);
    auto& grdMain = Device().grdMain;
    PutBack(grdMain, Prompt.SavedMain, true);
    if (grdMain.Bounds() != Prompt.SavedMain.Place)
        ScrollRowIntoView();
    // No row-change event is raised, because its handler would store the row as a choice.
    if (grdMain.RowHeight(grdMain.Row()) > 0)
        Grids.LastVisibleRow = grdMain.Row();
}

Text ListItem(const Text& list, std::int32_t index, const Text& delimiter) {
    const Text end = delimiter.empty() ? Text(u"|") : delimiter;
    Text item;
    modStringTools::GetToken(list + end, end, index, item);
    return item;
}

} // namespace modPDAUI
