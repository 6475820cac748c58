// SPDX-License-Identifier: MIT
#include "backends/web/mirror.h"

#include "backends/grid/paragraphs.h"
#include "backends/loop/clock.h"
#include "companion/form_state.h"
#include "journal/journal_lines.h"
#include "src/drivers/unsaved_record.h"
#include "src/text/utf8.h"
#include "src/view/display_state.h"
#include "src/view/input_fields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace backends::web {

namespace {

using headless::HeadlessControlSet;
using journal::Utf8;
using Json = journal::Line;

std::string ColourOf(std::int32_t colour) { // 0xBBGGRR
    std::array<char, 8> text;
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", static_cast<unsigned>(colour & 0xFF),
                  static_cast<unsigned>((colour >> 8) & 0xFF), static_cast<unsigned>((colour >> 16) & 0xFF));
    return text.data();
}

Json BoxOf(const Box& box) {
    return Json::array({std::lround(box.Left), std::lround(box.Top), std::lround(box.Width), std::lround(box.Height)});
}

Json FontOf(const PageFonts& fonts, FontHandle font) {
    return {{"pixels", fonts.LookOf(font).Pixels}, {"stretch", fonts.LookOf(font).Stretch}};
}

template <class Control>
FontHandle HandleOf(PageFonts& fonts, const Control& control) {
    return fonts.GetFont(control.FontName(), control.FontSize(), 0);
}

// --- grids -----------------------------------------------------------------------------------------------------------

/// The visible part of a cell.
struct Clip {
    std::int32_t Top = 0, Foot = 0;
};

/// A line of text at the start of its base line: [x, y, colour, text].
void AddLine(Json& lines, std::int32_t x, std::int32_t y, std::int32_t colour, TextView words) {
    const Text line = WithoutLineEnds(words);
    if (!line.empty())
        lines.push_back(Json::array({x, y, ColourOf(colour), Utf8(line)}));
}

/// Adds the lines of a text that are on the page: a long text has thousands of others.
void AddText(Json& added, PageFonts& fonts, FontHandle font, const PaintedText& text, const Clip& clip) {
    const std::int32_t ascent = fonts.Ascent(font);
    if (text.Width == 0 && text.Height == 0)
        return AddLine(added, text.X, text.Y + ascent, text.Colour, text.Words);
    const std::vector<TextView> lines = fonts.LinesOf(font, text.Words, text.Width);
    const std::int32_t step = fonts.FontHeight(font);
    const std::int32_t height = step * static_cast<std::int32_t>(lines.size());
    std::int32_t y = text.Y;
    if (text.Vertical == AlignY::Foot)
        y = text.Y + text.Height - height - step / 2;
    else if (text.Vertical == AlignY::Middle)
        y = text.Y + (text.Height - height) / 2;
    for (const TextView line : lines) {
        const std::int32_t room = text.Width - fonts.WidthOf(font, line);
        const std::int32_t x = text.X + (text.Horizontal == AlignX::Centre ? room / 2 : 0);
        if (y < clip.Foot && y + step > clip.Top)
            AddLine(added, x, y + ascent, text.Colour, line);
        y += step;
    }
}

Json CellOf(const CellPicture& picture, const Box& box, PageFonts& fonts, FontHandle font, const Clip& clip) {
    Json cell = {{"box", BoxOf(box)}, {"ground", ColourOf(picture.Background)}, {"lines", Json::array()}};
    if (picture.Frame)
        cell["frame"] = ColourOf(*picture.Frame);
    for (const PaintedText& text : picture.Texts)
        AddText(cell["lines"], fonts, font, text, clip);
    return cell;
}

/// Returns the cells on the page, each with its box in pixels of the grid.
Json CellsOf(const DrawnGrid& grid, PageFonts& fonts, FontHandle font) {
    Json cells = Json::array();
    const auto foot = static_cast<std::int32_t>(grid.Bounds().Height);
    std::int32_t y = 0;
    for (std::int32_t row = grid.TopRow(); row < grid.Rows() && y < foot; ++row) {
        const std::int32_t height = grid.RowHeight(row);
        std::int32_t x = 0;
        for (std::int32_t col = 0; col < grid.Cols() && height > 0; ++col) {
            const std::int32_t width = grid.ColWidth(col);
            const Box box{static_cast<float>(x), static_cast<float>(y), static_cast<float>(width),
                          static_cast<float>(height)};
            if (const CellPicture* const picture = grid.Picture(row, col); picture != nullptr && width > 0)
                cells.push_back(CellOf(*picture, box, fonts, font, {y, std::min(y + height, foot)}));
            x += width;
        }
        y += height;
    }
    return cells;
}

Json GridOf(const DrawnGrid& grid, PageFonts& fonts) {
    if (!grid.Visible())
        return nullptr;
    const FontHandle font = HandleOf(fonts, grid);
    return {{"box", BoxOf(grid.Bounds())},
            {"enabled", grid.Enabled()},
            {"lined", grid.Style() == GridStyle::Table},
            {"font", FontOf(fonts, font)},
            {"cells", CellsOf(grid, fonts, font)}};
}

/// Returns the names of what a person who does not see the grid would be read: the current row.
Json CurrentOf(const DrawnGrid& grid) {
    Json texts = Json::array();
    for (std::int32_t col = 0; col < grid.Cols(); ++col)
        texts.push_back(Utf8(grid.Cell(grid.Row(), col)));
    return texts;
}

Json MainGridOf(const HeadlessControlSet& seen, PageFonts& fonts, std::int32_t deviceType) {
    constexpr int ThinBar = 4; // pixels, on a device that draws the bar over the cells
    const DrawnGrid& grid = seen.grdMain;
    Json report = GridOf(grid, fonts);
    if (report.is_null())
        return report;
    report["row"] = grid.Row();
    report["col"] = grid.Col();
    report["rows"] = grid.Rows();
    report["top"] = grid.TopRow();
    report["last"] = std::max(grid.LastTop(), grid.TopRow());
    report["rowheight"] = std::max(grid.RowHeight(grid.TopRow()), 1);
    report["bar"] = TraitsOf(deviceType).BarOverCells ? ThinBar : std::lround(seen.scrollBar.Width());
    report["current"] = CurrentOf(grid);
    return report;
}

// --- input controls --------------------------------------------------------------------------------------------------

/// Returns the units of a text with bytes that are no UTF-8: JSON has no way to say them, and what is typed beside them
/// must not change them. Null for any other text.
Json UnitsOf(const Text& text) {
    if (modStringTools::IsUtf8(modStringTools::ToBytes(text)))
        return nullptr;
    return Json(std::vector<std::uint32_t>(text.begin(), text.end()));
}

template <class Field>
Json FieldOf(const char* kind, const Field& field, PageFonts& fonts) {
    return {{"kind", kind},
            {"box", BoxOf(field.Bounds())},
            {"text", Utf8(field.Contents())},
            {"units", UnitsOf(field.Contents())},
            {"caret", field.Caret()},
            {"selected", field.SelectedLength()},
            {"font", FontOf(fonts, HandleOf(fonts, field))}};
}

Json OpenFieldOf(const HeadlessControlSet& seen, PageFonts& fonts) {
    if (seen.dteInputField.Visible())
        return {{"kind", "date"},
                {"box", BoxOf(seen.dteInputField.Bounds())},
                {"text", TextOfDate(seen.dteInputField.Date())},
                {"font", FontOf(fonts, HandleOf(fonts, seen.grdMain))}};
    if (seen.txtInputField.Visible()) {
        Json field = FieldOf("text", seen.txtInputField, fonts);
        field["lines"] = seen.txtInputField.MultiLine();
        return field;
    }
    if (seen.cboInputField.Visible()) {
        Json field = FieldOf("combo", seen.cboInputField, fonts);
        field["list"] = Json::array();
        for (const Text& item : seen.cboInputField.Items())
            field["list"].push_back(Utf8(item));
        return field;
    }
    if (seen.cbotxtInputField.Visible())
        return FieldOf("text", seen.cbotxtInputField, fonts);
    return nullptr;
}

Json InputOf(const HeadlessControlSet& seen, PageFonts& fonts, std::int32_t number) {
    Json field = OpenFieldOf(seen, fonts);
    if (field.is_null())
        return field;
    field["id"] = number;
    field["name"] = Utf8(seen.grdMain.Visible() ? seen.grdMain.Cell(seen.grdMain.Row(), 0) : seen.grdTitle.Cell(0, 0));
    return field;
}

/// Returns a number for the kind of the open input control; 0 if none is open.
int KindOfField(const HeadlessControlSet& seen) {
    return seen.dteInputField.Visible()      ? 1
           : seen.txtInputField.Visible()    ? 2
           : seen.cboInputField.Visible()    ? 3
           : seen.cbotxtInputField.Visible() ? 4
                                             : 0;
}

// --- lists, menus, boxes ---------------------------------------------------------------------------------------------

Json ListOf(const ListBox& list) {
    if (!list.Visible())
        return nullptr;
    Json items = Json::array();
    for (std::int32_t i = 0; i < list.ItemCount(); ++i)
        items.push_back(Utf8(list.ItemText(i)));
    return {{"box", BoxOf(list.Bounds())}, {"items", items}, {"index", list.ListIndex()}};
}

Json EntryOf(const MenuItem& item) {
    return {{"caption", Utf8(item.Caption())}, {"visible", item.Visible()}, {"enabled", item.Enabled()}};
}

Json MenusOf(const HeadlessControlSet& seen) {
    Json menus = Json::array();
    for (std::size_t menu = 0; menu < seen.menuTitles.size(); ++menu) {
        Json report = EntryOf(seen.menuTitles[menu]);
        report["items"] = Json::array();
        for (const MenuItem& item : seen.menuItems[menu])
            report["items"].push_back(EntryOf(item));
        menus.push_back(report);
    }
    return menus;
}

Json OpenBoxOf(const DeviceBoxes& boxes, std::int32_t number) {
    const DeviceBoxes::OpenBox* const box = boxes.Current();
    if (box == nullptr)
        return nullptr;
    return {{"id", number},
            {"title", box->Title.empty() ? "Quorin" : Utf8(box->Title)},
            {"text", Utf8(box->Message)},
            {"asks", box->Buttons == BoxButtons::YesNo},
            {"piled", boxes.Piled()}};
}

const char* LookOf(companion::Severity weight) {
    switch (weight) {
    case companion::Severity::Note:
        break;
    case companion::Severity::Hint:
        return "hint";
    case companion::Severity::Warning:
        return "warning";
    case companion::Severity::Loss:
        return "loss";
    }
    return "note";
}

/// Returns what a person should know and the form does not say, the worst first.
Json NoticesOf(const companion::Notices& notices) {
    Json all = Json::array();
    for (const companion::Notice& notice : notices.Sorted()) {
        Json offers = Json::array();
        for (const companion::Offer& offer : notice.Offers)
            offers.push_back({{"name", Utf8(offer.Name)}, {"words", Utf8(offer.Words)}});
        all.push_back({{"about", Utf8(notice.About)},
                       {"text", Utf8(notice.Words)},
                       {"look", LookOf(notice.Weight)},
                       {"confirmed", notice.Action == companion::NoticeAction::Dismiss},
                       {"offers", offers}});
    }
    return all;
}

Json KeysOf(const std::vector<DeviceKey>& keys) {
    Json report = Json::array();
    for (const DeviceKey& key : keys)
        report.push_back({{"code", key.Code}, {"name", key.Name}});
    return report;
}

} // namespace

// --- numbers ---------------------------------------------------------------------------------------------------------

void Stage::Look() {
    if (ScreenShown_ != modQuorin::Screens.CurrentScreen)
        ++Screens_;
    ScreenShown_ = modQuorin::Screens.CurrentScreen;
    const int kind = KindOfField(Seen_);
    const modPDAUI::InputState& input = modPDAUI::Input;
    if (kind != 0 && (kind != FieldKind_ || input.EditRow != EditRow_ || input.EditCol != EditCol_))
        ++Fields_;
    FieldKind_ = kind;
    EditRow_ = input.EditRow;
    EditCol_ = input.EditCol;
}

/// Two boxes one after the other, or one upon the other, have two numbers, and so has a box that is seen again.
std::int32_t Stage::Box(std::int32_t opened) const {
    constexpr std::int32_t MostPiled = 16;
    const auto depth = static_cast<std::int32_t>(Seen_.boxes.Depth());
    return depth == 0 ? 0 : opened * MostPiled + depth % MostPiled;
}

std::string MirrorText(const HeadlessControlSet& seen, PageFonts& fonts, const Stage& stage, const Beside& beside) {
    const Box form = PixelsOf(seen.form);
    const Json report = {{"stage", stage.Screen()},
                         {"heard", beside.Heard},
                         {"title", Utf8(companion::WindowTitle())},
                         {"form", Json::array({std::lround(form.Width), std::lround(form.Height)})},
                         {"resizable", TraitsOf(beside.DeviceType).HasWindow},
                         {"heading", GridOf(seen.grdTitle, fonts)},
                         {"grid", MainGridOf(seen, fonts, beside.DeviceType)},
                         {"input", InputOf(seen, fonts, stage.Field())},
                         {"list", ListOf(seen.lstHoldMenu)},
                         {"menus", MenusOf(seen)},
                         {"softkeys", modPDAUI::Display.SoftKeyMenus},
                         {"keys", KeysOf(beside.Keys)},
                         {"notices", NoticesOf(beside.Notices)},
                         {"record", companion::RecordIsOpen()},
                         {"unsaved", modQuorin::RecordIsUnsaved()},
                         {"status", seen.lblStatus.Visible() ? Json(Utf8(seen.lblStatus.Caption())) : Json(nullptr)},
                         {"box", OpenBoxOf(seen.boxes, stage.Box(beside.BoxesOpened))}};
    return journal::TextOf(report);
}

} // namespace backends::web
