// SPDX-License-Identifier: MIT
// The device's screen on 80 columns: what was painted of the two grids, what lies over them, the two menus at the foot.
#include "reports.h"

#include "view/input_fields.h"
#include "view/screen_table.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace console {

using platform::headless::CellPicture;
using platform::headless::HeadlessGrid;
using platform::headless::HeadlessPlatform;
using platform::headless::PaintedText;

namespace {

using Lines = std::vector<Text>;

constexpr std::size_t PictureWidth = 80;
constexpr std::size_t MarkWidth = 2; ///< what stands before a row: "> " for the selected one
constexpr std::size_t RoomForText = PictureWidth - MarkWidth;
constexpr std::int32_t AlignFoot = 1;
constexpr std::int32_t AlignCentre = 2;

/// Cuts a text to a width, with a sign that something is missing, or fills it up with blanks.
Text Fitted(const Text& text, std::size_t width) {
    if (text.size() > width)
        return width == 0 ? Text() : text.substr(0, width - 1) + u'…';
    return text + Text(width - text.size(), u' ');
}

Text Centred(const Text& text, std::size_t width) {
    return text.size() >= width ? Fitted(text, width) : Fitted(Text((width - text.size()) / 2, u' ') + text, width);
}

Text WithoutControls(Text text) {
    for (char16_t& character : text) {
        if (character < u' ' || character == 0x7F)
            character = u' ';
    }
    return text;
}

/// The lines of a text, ended by CR LF, CR or LF, each wrapped at blanks to a width.
Lines Wrapped(const Text& text, std::size_t width) {
    Lines lines;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n", start), text.size());
        Text rest = WithoutControls(text.substr(start, end - start));
        while (rest.size() > width) {
            const std::size_t blank = rest.rfind(u' ', width);
            const std::size_t cut = blank == Text::npos || blank == 0 ? width : blank;
            lines.push_back(rest.substr(0, cut));
            rest.erase(0, rest[cut] == u' ' ? cut + 1 : cut);
        }
        lines.push_back(rest);
        start = end + (text.compare(end, 2, u"\r\n") == 0 ? 2 : 1);
    }
    return lines;
}

/// How many characters each column of a grid gets: as much of the line as it has of the grid's width.
std::vector<std::size_t> ColumnWidths(const HeadlessGrid& grid, std::size_t room) {
    std::int32_t pixels = 0;
    for (std::int32_t col = 0; col < grid.Cols(); ++col)
        pixels += grid.ColWidth(col);
    std::vector<std::size_t> widths;
    std::size_t left = room;
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        const double share = static_cast<double>(grid.ColWidth(col)) / std::max(pixels, 1);
        const bool last = col == grid.Cols() - 1;
        const auto wanted = static_cast<std::size_t>(std::lround(share * static_cast<double>(room)));
        widths.push_back(last ? left : std::min(wanted, left));
        left -= widths.back();
    }
    return widths;
}

/// What the painter wrote on a cell, wrapped where the painter wrapped it.
Lines PaintedLines(const CellPicture& picture, std::size_t width) {
    Lines lines;
    for (const PaintedText& text : picture.Texts) {
        if (text.Height == 0) {
            lines.push_back(WithoutControls(text.Words));
            continue;
        }
        if (text.VerticalAlign == AlignFoot)
            lines.emplace_back(); // it stands away from what is above it
        for (const Text& line : Wrapped(text.Words, width))
            lines.push_back(text.HorizontalAlign == AlignCentre ? Centred(line, width) : line);
    }
    return lines;
}

/// A cell that is not on the page is not painted; its text tells what is in it.
Lines CellLines(const HeadlessGrid& grid, std::int32_t row, std::int32_t col, std::size_t width) {
    if (const CellPicture* picture = grid.Picture(row, col))
        return PaintedLines(*picture, width);
    return row < grid.TopRow() ? Wrapped(grid.Cell(row, col), width) : Lines{Text()};
}

/// The prompt takes the place of the main grid, whatever that shows behind it.
bool Prompting() {
    return modQuorin::Screens.CurrentScreen == modQuorin::ScrInput;
}

/// The in-place text box lies over the cell that it edits.
bool IsUnderEdit(const HeadlessPlatform& device, std::int32_t row, std::int32_t col) {
    return !Prompting() && device.txtInputField.Visible() && modPDAUI::Input.EditRow == row &&
           modPDAUI::Input.EditCol == col;
}

/// The title's columns stand over those of the main grid.
const HeadlessGrid& GridForWidths(const HeadlessPlatform& device, const HeadlessGrid& grid) {
    return device.grdMain.Visible() && device.grdMain.Cols() == grid.Cols() ? device.grdMain : grid;
}

Lines RowLines(const HeadlessPlatform& device, const HeadlessGrid& grid, std::int32_t row, const Text& mark) {
    const std::vector<std::size_t> widths = ColumnWidths(GridForWidths(device, grid), RoomForText);
    std::vector<Lines> cells;
    std::size_t height = 1;
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        const std::size_t width = std::max<std::size_t>(widths[static_cast<std::size_t>(col)], 2) - 1;
        const bool edited = &grid == &device.grdMain && IsUnderEdit(device, row, col);
        cells.push_back(edited ? Lines{u"[" + WithoutControls(device.txtInputField.Contents()) + u"_]"}
                               : CellLines(grid, row, col, width));
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

bool Marked(const HeadlessGrid& grid, std::int32_t row) {
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

std::int32_t ShownRows(const HeadlessGrid& grid, std::int32_t from, std::int32_t to) {
    std::int32_t count = 0;
    for (std::int32_t row = from; row < to; ++row)
        count += grid.RowHeight(row) > 0 ? 1 : 0;
    return count;
}

Lines TitleLines(const HeadlessPlatform& device) {
    Lines lines;
    if (!device.grdTitle.Visible())
        return lines;
    for (std::int32_t row = 0; row < device.grdTitle.Rows(); ++row)
        Append(lines, RowLines(device, device.grdTitle, row, u"  "));
    lines.push_back(Rule());
    return lines;
}

/// Where the picture begins: at the first row when there is room for all, else where the page does.
std::int32_t FirstRowDrawn(const HeadlessGrid& grid) {
    std::int32_t height = 0;
    for (std::int32_t row = 0; row < grid.Rows(); ++row)
        height += grid.RowHeight(row);
    return static_cast<float>(height) <= grid.Bounds().Height ? 0 : grid.TopRow();
}

/// The rows of the page, and how many lie above and below it.
Lines MainLines(const HeadlessPlatform& device) {
    const HeadlessGrid& grid = device.grdMain;
    Lines lines;
    if (!grid.Visible() || Prompting())
        return lines;
    std::int32_t row = FirstRowDrawn(grid);
    if (const std::int32_t above = ShownRows(grid, 0, row); above > 0)
        lines.push_back(MoreRows(above, u"above"));
    float y = 0;
    for (; row < grid.Rows() && y < grid.Bounds().Height; ++row) {
        if (grid.RowHeight(row) > 0)
            Append(lines, RowLines(device, grid, row, Marked(grid, row) ? u"> " : u"  "));
        y += static_cast<float>(grid.RowHeight(row));
    }
    if (const std::int32_t below = ShownRows(grid, row, grid.Rows()); below > 0)
        lines.push_back(MoreRows(below, u"below"));
    return lines;
}

/// The control of a prompt; an in-place box is drawn with its row.
Lines InputLines(const HeadlessPlatform& device) {
    Lines lines;
    if (device.dteInputField.Visible())
        lines.push_back(u"  [ " + modStringTools::FromBytes(IsoDate(device.dteInputField.Date())) + u" ]");
    if (device.txtInputField.Visible() && Prompting()) {
        for (const Text& line : Wrapped(device.txtInputField.Contents() + u"_", RoomForText - 4))
            lines.push_back(u"  [" + Fitted(line, RoomForText - 4) + u"]");
    }
    if (device.cboInputField.Visible()) {
        lines.push_back(u"  [" + Fitted(device.cboInputField.Contents() + u"_", RoomForText - 4) + u"]");
        for (const Text& item : device.cboInputField.Items())
            lines.push_back(u"    " + Fitted(item, RoomForText - 4));
    }
    if (device.cbotxtInputField.Visible())
        lines.push_back(u"  [" + Fitted(device.cbotxtInputField.Contents() + u"_", RoomForText - 4) + u"]");
    return lines;
}

Lines BoxLines(const HeadlessPlatform& device) {
    const auto* box = device.boxes.Current();
    if (box == nullptr)
        return {};
    const Text buttons = box->Buttons == platform::BoxButtons::Ok ? u"[ Ok ]" : u"[ Yes ]   [ No ]";
    constexpr std::size_t Widest = PictureWidth - 12;
    const Lines message = Wrapped(box->Message, Widest);
    std::size_t width = buttons.size();
    for (const Text& line : message)
        width = std::max(width, line.size());
    const Text edge = u"+" + Text(width + 2, u'-') + u"+";
    Lines lines = {edge};
    for (const Text& line : message)
        lines.push_back(u"| " + Fitted(line, width) + u" |");
    lines.push_back(u"| " + Text(width, u' ') + u" |");
    lines.push_back(u"| " + Centred(buttons, width) + u" |");
    lines.push_back(edge);
    return lines;
}

/// Lays lines over the middle of a picture, which grows when they are more than it has.
void LayOver(Lines& picture, const Lines& over) {
    if (over.empty())
        return;
    while (picture.size() < over.size() + 2)
        picture.emplace_back();
    const std::size_t top = (picture.size() - over.size()) / 2;
    const std::size_t left = (PictureWidth - over.front().size()) / 2;
    for (std::size_t i = 0; i < over.size(); ++i) {
        Text& line = picture[top + i];
        line = Fitted(line, PictureWidth);
        line.replace(left, over[i].size(), over[i]);
    }
}

Text MenuText(const HeadlessPlatform& device, std::size_t menu) {
    const auto& title = device.menuTitles[menu];
    if (!title.Visible())
        return {};
    Text items;
    for (const auto& item : device.menuItems[menu]) {
        if (item.Visible() && item.Caption() != title.Caption())
            items += (items.empty() ? u" " : u" | ") + item.Caption();
    }
    return u"[" + title.Caption() + u"]" + items;
}

Lines MenuLines(const HeadlessPlatform& device) {
    const Text left = MenuText(device, 0);
    const Text right = MenuText(device, 1);
    if (left.size() + right.size() + 2 <= PictureWidth)
        return {Rule(), Fitted(left, PictureWidth - right.size()) + right};
    const std::size_t indent = PictureWidth - std::min(right.size(), PictureWidth);
    return {Rule(), Fitted(left, PictureWidth), Text(indent, u' ') + right};
}

} // namespace

std::string Picture(const HeadlessPlatform& device) {
    Lines lines = TitleLines(device);
    Append(lines, MainLines(device));
    Append(lines, InputLines(device));
    if (device.lblStatus.Visible())
        Append(lines, Wrapped(u"** " + device.lblStatus.Caption() + u" **", PictureWidth));
    LayOver(lines, BoxLines(device));
    Append(lines, MenuLines(device));
    std::string picture;
    for (Text& line : lines) {
        line.erase(line.find_last_not_of(u' ') + 1);
        picture += Utf8(line) + "\n";
    }
    return picture;
}

} // namespace console
