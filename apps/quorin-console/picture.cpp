// SPDX-License-Identifier: MIT
#include "reports.h"

#include "view/painting.h"
#include "view/screen_table.h"

#include <algorithm>

namespace console {

using platform::headless::HeadlessGrid;
using platform::headless::HeadlessPlatform;

namespace {

constexpr std::size_t PictureWidth = 80;
constexpr std::size_t MarkWidth = 2; ///< what stands before a row: "> " for the selected one
constexpr std::size_t RoomForText = PictureWidth - MarkWidth;

/// Cuts a text to a width, with a sign that something is missing, or fills it up with blanks. Line ends become blanks.
Text Fitted(Text text, std::size_t width) {
    for (char16_t& character : text) {
        if (character < u' ')
            character = u' ';
    }
    if (text.size() > width)
        return text.substr(0, width - 1) + u'…';
    return text + Text(width - text.size(), u' ');
}

void AddLine(std::string& picture, Text line) {
    line.erase(line.find_last_not_of(u' ') + 1);
    picture += Utf8(line) + "\n";
}

Text Rule() {
    return Text(PictureWidth, u'-');
}

/// One row of a grid. Two columns share the width half and half, which is near enough what every screen has.
Text RowText(const HeadlessGrid& grid, std::int32_t row, const Text& mark) {
    const auto columns = static_cast<std::size_t>(std::max(grid.Cols(), 1));
    const std::size_t each = RoomForText / columns;
    Text line = mark;
    for (std::int32_t col = 0; col < grid.Cols(); ++col)
        line += Fitted(grid.Cell(row, col), each - (columns > 1 ? 1 : 0)) + (columns > 1 ? u" " : u"");
    return line;
}

Text Centred(const Text& text) {
    return Text((PictureWidth - std::min(text.size(), PictureWidth)) / 2, u' ') + text;
}

void DrawTitle(std::string& picture, const HeadlessPlatform& device) {
    if (!device.grdTitle.Visible())
        return;
    for (std::int32_t row = 0; row < device.grdTitle.Rows(); ++row)
        AddLine(picture, RowText(device.grdTitle, row, u"  "));
    AddLine(picture, Rule());
}

void DrawStartScreen(std::string& picture) {
    AddLine(picture, u"");
    AddLine(picture, Centred(u"Velmor"));
    AddLine(picture, Centred(u"Tallybook"));
    AddLine(picture, u"");
    AddLine(picture, Centred(modPDAUI::VersionLine(modPDAUI::VersionMajor, modPDAUI::VersionMinor)));
    AddLine(picture, u"");
}

void DrawGrid(std::string& picture, const HeadlessPlatform& device) {
    if (modQuorin::Screens.CurrentScreen == modQuorin::ScrMain) {
        DrawStartScreen(picture);
        return;
    }
    if (!device.grdMain.Visible())
        return;
    for (std::int32_t row = 0; row < device.grdMain.Rows(); ++row) {
        if (device.grdMain.RowHeight(row) > 0)
            AddLine(picture, RowText(device.grdMain, row, row == device.grdMain.Row() ? u"> " : u"  "));
    }
}

void DrawInput(std::string& picture, const HeadlessPlatform& device) {
    const Json input = [&device] { return ScreenReport(device)["input"]; }();
    if (input.is_null())
        return;
    const std::string text = input.contains("date") ? input["date"] : input["text"];
    AddLine(picture, u"  [" + modStringTools::FromBytes(text) + u"_]");
    for (const auto& item : input.value("list", Json::array()))
        AddLine(picture, u"    " + modStringTools::FromBytes(item.get<std::string>()));
}

void DrawBox(std::string& picture, const HeadlessPlatform& device) {
    const auto* box = device.boxes.Current();
    if (box == nullptr)
        return;
    AddLine(picture, u"  +" + Text(PictureWidth - 8, u'-') + u"+");
    Text rest = box->Message;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(u"\r\n"), rest.size());
        AddLine(picture, u"  | " + Fitted(rest.substr(0, end), PictureWidth - 10) + u" |");
        rest.erase(0, std::min(end + 2, rest.size()));
    }
    const Text buttons = box->Buttons == platform::BoxButtons::Ok ? u"[ Ok ]" : u"[ Yes ]  [ No ]";
    AddLine(picture, u"  | " + Fitted(buttons, PictureWidth - 10) + u" |");
    AddLine(picture, u"  +" + Text(PictureWidth - 8, u'-') + u"+");
}

Text MenuText(const HeadlessPlatform& device, std::size_t menu) {
    const auto& title = device.menuTitles[menu];
    if (!title.Visible())
        return {};
    Text text = title.Caption();
    Text items;
    for (const auto& item : device.menuItems[menu]) {
        if (item.Visible() && item.Caption() != title.Caption())
            items += (items.empty() ? u"" : u" | ") + item.Caption();
    }
    return u"[" + text + u"]" + (items.empty() ? u"" : u" " + items);
}

void DrawMenus(std::string& picture, const HeadlessPlatform& device) {
    AddLine(picture, Rule());
    const Text left = MenuText(device, 0);
    const Text right = MenuText(device, 1);
    if (left.size() + right.size() + 2 <= PictureWidth) {
        AddLine(picture, left + Text(PictureWidth - left.size() - right.size(), u' ') + right);
        return;
    }
    AddLine(picture, left);
    AddLine(picture, Text(PictureWidth - std::min(right.size(), PictureWidth), u' ') + right);
}

} // namespace

std::string Picture(const HeadlessPlatform& device) {
    std::string picture;
    DrawTitle(picture, device);
    DrawGrid(picture, device);
    DrawInput(picture, device);
    if (device.lblStatus.Visible())
        AddLine(picture, u"  ** " + device.lblStatus.Caption() + u" **");
    DrawBox(picture, device);
    DrawMenus(picture, device);
    return picture;
}

} // namespace console
