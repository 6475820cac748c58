// SPDX-License-Identifier: MIT
// Draws the device's screen on 80 columns: the painted cells of the two grids, what is over them, and the two menus
// below.
#include "apps/quorin-console/columns.h"
#include "apps/quorin-console/reports.h"

#include "src/view/input_fields.h"
#include "src/view/screen_table.h"

#include <algorithm>
#include <vector>

namespace console {

using backends::BackEnd;
using backends::CellPicture;
using backends::Controls;
using backends::DrawnGrid;
using backends::PaintedText;

namespace {

using Lines = std::vector<Text>;

constexpr std::size_t PictureWidth = 80;
constexpr std::size_t MarkWidth = 2; ///< width of the mark before a row: "> " for the selected one
constexpr std::size_t RoomForText = PictureWidth - MarkWidth;

/// Returns how many columns of the terminal each column of a grid gets. Of two columns, the first has the share that
/// the row of the screen table gives it, whether or not a scroll bar takes part of it.
std::vector<std::size_t> ColumnWidths(const DrawnGrid& grid) {
    if (grid.Cols() < 2)
        return {RoomForText};
    const auto percent = static_cast<std::size_t>(
        std::clamp(modQuorin::ScreenRow(modQuorin::Screens.CurrentScreen).ColumnPercent, 0, 100));
    const std::size_t first = RoomForText * percent / 100;
    return {first, RoomForText - first};
}

/// Returns what the painter wrote on a cell, wrapped where the painter wrapped it.
Lines PaintedLines(const CellPicture& picture, std::size_t width) {
    Lines lines;
    for (const PaintedText& text : picture.Texts) {
        if (text.Height == 0) {
            lines.push_back(WithoutControls(text.Words));
            continue;
        }
        if (text.Vertical == platform::AlignY::Foot)
            lines.emplace_back(); // it is painted apart from the text above it
        for (const Text& line : Wrapped(text.Words, width))
            lines.push_back(text.Horizontal == platform::AlignX::Centre ? Centred(line, width) : line);
    }
    return lines;
}

/// A cell outside of the page is not painted. Above the page its text is used, below it nothing.
Lines CellLines(const DrawnGrid& grid, std::int32_t row, std::int32_t col, std::size_t width) {
    if (const CellPicture* picture = grid.Picture(row, col))
        return PaintedLines(*picture, width);
    return row < grid.TopRow() ? Wrapped(grid.Cell(row, col), width) : Lines{Text()};
}

/// True while a prompt is open; it replaces the main grid.
bool Prompting() {
    return modQuorin::Screens.CurrentScreen == modQuorin::ScrInput;
}

/// True if the in-place text box is over this cell.
bool IsUnderEdit(const Controls& form, std::int32_t row, std::int32_t col) {
    return !Prompting() && form.txtInputField.Visible() && modPDAUI::Input.EditRow == row &&
           modPDAUI::Input.EditCol == col;
}

/// Returns the text of a field with its caret, cut to a width so that the caret can be seen.
Text FieldText(const Text& contents, std::int32_t caret, std::size_t columns) {
    Text before = WithoutControls(contents.substr(0, static_cast<std::size_t>(caret)));
    const Text behind = WithoutControls(contents.substr(static_cast<std::size_t>(caret)));
    if (ColumnsOf(before) + 2 > columns) // the caret, and the sign that shows that the text after it is cut off
        before = u"…" + Text(TailOf(before, columns - std::min<std::size_t>(columns, 3)));
    const Text whole = before + u"_" + behind;
    return ColumnsOf(whole) > columns ? Fitted(whole, columns) : whole;
}

/// Returns the in-place field, with its edges.
Text InPlaceField(const Controls& form, std::size_t columns) {
    const auto& field = form.txtInputField;
    return u"[" + FieldText(field.Contents(), field.Caret(), std::max<std::size_t>(columns, 4) - 2) + u"]";
}

Lines RowLines(const Controls& form, const DrawnGrid& grid, std::int32_t row, const Text& mark) {
    const std::vector<std::size_t> widths = ColumnWidths(grid);
    std::vector<Lines> cells;
    std::size_t height = 1;
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        const std::size_t width = std::max<std::size_t>(widths[static_cast<std::size_t>(col)], 2) - 1;
        const bool edited = &grid == &form.grdMain && IsUnderEdit(form, row, col);
        cells.push_back(edited ? Lines{InPlaceField(form, width)} : CellLines(grid, row, col, width));
        height = std::max(height, cells.back().size());
    }
    Lines lines;
    for (std::size_t i = 0; i < height; ++i) {
        Text line = i == 0 ? mark : Text(MarkWidth, u' ');
        for (std::size_t col = 0; col < cells.size(); ++col) {
            const Text text = i < cells[col].size() ? cells[col][i] : Text();
            line += Fitted(text, std::max<std::size_t>(widths[col], 1) - 1) + u" ";
        }
        lines.push_back(line);
    }
    return lines;
}

bool Marked(const DrawnGrid& grid, std::int32_t row) {
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        const CellPicture* picture = grid.Picture(row, col);
        if (picture != nullptr && picture->Frame)
            return true;
    }
    return false;
}

void Append(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

Text Rule() {
    return Text(PictureWidth, u'-');
}

Text MoreRows(std::int32_t count, const Text& where) {
    return u"  ... " + modStringTools::NumberText(count) + (count == 1 ? u" row " : u" rows ") + where;
}

std::int32_t ShownRows(const DrawnGrid& grid, std::int32_t from, std::int32_t to) {
    std::int32_t count = 0;
    for (std::int32_t row = from; row < to; ++row)
        count += grid.RowHeight(row) > 0 ? 1 : 0;
    return count;
}

Lines TitleLines(const Controls& form) {
    Lines lines;
    if (!form.grdTitle.Visible())
        return lines;
    for (std::int32_t row = 0; row < form.grdTitle.Rows(); ++row)
        Append(lines, RowLines(form, form.grdTitle, row, u"  "));
    lines.push_back(Rule());
    return lines;
}

/// Returns the first row to draw: the first row of all if all have room, else the first row of the page.
std::int32_t FirstRowDrawn(const DrawnGrid& grid) {
    std::int32_t height = 0;
    for (std::int32_t row = 0; row < grid.Rows(); ++row)
        height += grid.RowHeight(row);
    return static_cast<float>(height) <= grid.Bounds().Height ? 0 : grid.TopRow();
}

/// The rows of the page, and how many rows are above and below it.
Lines MainLines(const Controls& form) {
    const DrawnGrid& grid = form.grdMain;
    Lines lines;
    if (!grid.Visible() || Prompting())
        return lines;
    std::int32_t row = FirstRowDrawn(grid);
    if (const std::int32_t above = ShownRows(grid, 0, row); above > 0)
        lines.push_back(MoreRows(above, u"above"));
    float y = 0;
    for (; row < grid.Rows() && y < grid.Bounds().Height; ++row) {
        if (grid.RowHeight(row) > 0)
            Append(lines, RowLines(form, grid, row, Marked(grid, row) ? u"> " : u"  "));
        y += static_cast<float>(grid.RowHeight(row));
    }
    if (const std::int32_t below = ShownRows(grid, row, grid.Rows()); below > 0)
        lines.push_back(MoreRows(below, u"below"));
    return lines;
}

Text PromptLine(const Text& contents, std::int32_t caret) {
    constexpr std::size_t Inside = RoomForText - 4;
    return u"  [" + Fitted(FieldText(contents, caret, Inside), Inside) + u"]";
}

Lines PromptText(const Text& contents, std::int32_t caret) {
    Text text = contents;
    text.insert(static_cast<std::size_t>(caret), 1, u'_');
    Lines lines;
    for (const Text& line : Wrapped(text, RoomForText - 4))
        lines.push_back(u"  [" + Fitted(line, RoomForText - 4) + u"]");
    return lines;
}

/// The control of a prompt; an in-place box is drawn with its row.
Lines InputLines(const Controls& form) {
    Lines lines;
    const auto& text = form.txtInputField;
    const auto& combo = form.cboInputField;
    const auto& comboText = form.cbotxtInputField;
    if (form.dteInputField.Visible())
        lines.push_back(u"  [ " + modStringTools::FromBytes(IsoDate(form.dteInputField.Date())) + u" ]");
    if (text.Visible() && Prompting() && text.MultiLine())
        Append(lines, PromptText(text.Contents(), text.Caret()));
    else if (text.Visible() && Prompting())
        lines.push_back(PromptLine(text.Contents(), text.Caret()));
    if (combo.Visible()) {
        lines.push_back(PromptLine(combo.Contents(), combo.Caret()));
        for (const Text& item : combo.Items())
            lines.push_back(u"    " + Fitted(WithoutControls(item), RoomForText - 4));
    }
    if (comboText.Visible())
        lines.push_back(PromptLine(comboText.Contents(), comboText.Caret()));
    return lines;
}

Lines BoxLines(const Controls& form) {
    const auto* box = form.boxes.Current();
    if (box == nullptr)
        return {};
    const Text buttons = box->Buttons == platform::BoxButtons::Ok ? u"[ Ok ]" : u"[ Yes ]   [ No ]";
    constexpr std::size_t Widest = PictureWidth - 12;
    const Lines message = Wrapped(box->Message, Widest);
    std::size_t width = buttons.size();
    for (const Text& line : message)
        width = std::max(width, ColumnsOf(line));
    const Text newer = form.boxes.Piled() ? u"- the newer of two " : u"";
    width = std::max(width, newer.size());
    const Text edge = u"+" + Text(width + 2, u'-') + u"+";
    Lines lines = {u"+" + newer + edge.substr(1 + newer.size())};
    for (const Text& line : message)
        lines.push_back(u"| " + Fitted(line, width) + u" |");
    lines.push_back(u"| " + Text(width, u' ') + u" |");
    lines.push_back(u"| " + Centred(buttons, width) + u" |");
    lines.push_back(edge);
    return lines;
}

/// Draws lines over the middle of a picture, which is extended if it has fewer lines.
void LayOver(Lines& picture, const Lines& over) {
    if (over.empty())
        return;
    while (picture.size() < over.size() + 2)
        picture.emplace_back();
    const std::size_t top = (picture.size() - over.size()) / 2;
    const std::size_t left = (PictureWidth - ColumnsOf(over.front())) / 2;
    for (std::size_t i = 0; i < over.size(); ++i) {
        Text& line = picture[top + i];
        const Text whole = Fitted(line, PictureWidth);
        const Text head = Fitted(Text(HeadOf(whole, left)), left);
        const TextView behind = HeadOf(whole, left + ColumnsOf(over[i]));
        line = head + over[i] + whole.substr(behind.size());
    }
}

Text MenuText(const Controls& form, std::size_t menu) {
    const platform::MenuItem& title = *form.menuTitles[menu];
    if (!title.Visible())
        return {};
    Text items;
    for (const platform::MenuItem* item : form.menuItems[menu]) {
        if (item->Visible() && item->Caption() != title.Caption())
            items += (items.empty() ? u" " : u" | ") + item->Caption();
    }
    return u"[" + title.Caption() + u"]" + items;
}

Lines MenuLines(const Controls& form) {
    const Text left = MenuText(form, 0);
    const Text right = MenuText(form, 1);
    if (left.size() + right.size() + 2 <= PictureWidth)
        return {Rule(), Fitted(left, PictureWidth - right.size()) + right};
    const std::size_t indent = PictureWidth - std::min(right.size(), PictureWidth);
    return {Rule(), Fitted(left, PictureWidth), Text(indent, u' ') + right};
}

} // namespace

std::string Picture(const BackEnd& device) {
    const Controls& form = device.Seen();
    Lines lines = TitleLines(form);
    Append(lines, MainLines(form));
    Append(lines, InputLines(form));
    if (form.lblStatus.Visible())
        Append(lines, Wrapped(u"** " + form.lblStatus.Caption() + u" **", PictureWidth));
    LayOver(lines, BoxLines(form));
    Append(lines, MenuLines(form));
    std::string picture;
    for (Text& line : lines) {
        line.erase(line.find_last_not_of(u' ') + 1);
        picture += Utf8(line) + "\n";
    }
    return picture;
}

} // namespace console
