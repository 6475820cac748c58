// SPDX-License-Identifier: MIT
#include "platform/headless/gestures.h"

#include "app/form.h"

namespace platform::headless {

namespace {

constexpr std::int64_t LongPress = 1500; // milliseconds

const Refusal Done;

Refusal CellRefusal(const HeadlessPlatform& device, std::int32_t row, std::int32_t col) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    if (!device.grdMain.Visible())
        return "the grid is not on show";
    if (!device.grdMain.Enabled())
        return "the grid is disabled";
    if (!device.grdMain.Offers(row, col))
        return "there is no such cell";
    return Done;
}

void PressCell(HeadlessPlatform& device, std::int32_t row, std::int32_t col) {
    device.grdMain.SetFocus();
    device.grdMain.SetCurrentCell(row, col);
    frmQuorin::grdMain_Press();
}

bool IsMenu(std::int32_t menu) {
    return menu == 1 || menu == 2;
}

std::size_t Index(std::int32_t number) {
    return static_cast<std::size_t>(number) - 1;
}

bool Offered(const HeadlessMenuItem& item) {
    return item.Visible() && item.Enabled();
}

Refusal TitleRefusal(const HeadlessPlatform& device, std::int32_t menu) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    if (!IsMenu(menu))
        return "there are the menus 1 and 2";
    const HeadlessMenuItem& title = device.menuTitles[Index(menu)];
    if (!title.Visible())
        return "the menu is not on show";
    if (!title.Enabled())
        return "the menu is disabled";
    return Done;
}

Refusal ItemRefusal(const HeadlessPlatform& device, std::int32_t menu, std::int32_t item) {
    if (const Refusal refusal = TitleRefusal(device, menu); !refusal.empty())
        return refusal;
    if (item < 1 || item > MenuItemCount)
        return "a menu has the items 1 to 5";
    const HeadlessMenuItem& entry = device.menuItems[Index(menu)][Index(item)];
    if (!entry.Visible())
        return "the item is not on show";
    if (!entry.Enabled())
        return "the item is disabled";
    return Done;
}

void RaiseTitleClick(std::int32_t menu) {
    menu == 1 ? frmQuorin::mnuButton1_Click() : frmQuorin::mnuButton2_Click();
}

void RaiseItemClick(std::int32_t menu, std::int32_t item) {
    menu == 1 ? frmQuorin::mnuButtonO1_Click(item) : frmQuorin::mnuButtonO2_Click(item);
}

/// Opens the menu, which is a click on its caption, and then clicks the item.
void OpenAndClick(std::int32_t menu, std::int32_t item) {
    RaiseTitleClick(menu);
    RaiseItemClick(menu, item);
}

} // namespace

Refusal FormRefusal(const HeadlessPlatform& device) {
    return device.boxes.Current() != nullptr ? "a message box is open" : Done;
}

Refusal Tap(HeadlessPlatform& device, std::int32_t row, std::int32_t col) {
    if (const Refusal refusal = CellRefusal(device, row, col); !refusal.empty())
        return refusal;
    PressCell(device, row, col);
    frmQuorin::grdMain_Release();
    return Done;
}

Refusal Hold(HeadlessPlatform& device, std::int32_t row, std::int32_t col) {
    if (const Refusal refusal = CellRefusal(device, row, col); !refusal.empty())
        return refusal;
    PressCell(device, row, col);
    device.loop.PassTime(LongPress);
    frmQuorin::grdMain_Release();
    return Done;
}

Refusal ClickItem(HeadlessPlatform& device, std::int32_t menu, std::int32_t item) {
    if (const Refusal refusal = ItemRefusal(device, menu, item); !refusal.empty())
        return refusal;
    RaiseItemClick(menu, item);
    return Done;
}

Refusal ClickTitle(HeadlessPlatform& device, std::int32_t menu) {
    if (const Refusal refusal = TitleRefusal(device, menu); !refusal.empty())
        return refusal;
    RaiseTitleClick(menu);
    return Done;
}

Refusal Choose(HeadlessPlatform& device, const Text& caption) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    for (std::int32_t menu = 1; menu <= 2; ++menu) {
        for (std::int32_t item = 1; item <= MenuItemCount; ++item) {
            if (device.menuItems[Index(menu)][Index(item)].Caption() != caption ||
                !ItemRefusal(device, menu, item).empty())
                continue;
            OpenAndClick(menu, item);
            return Done;
        }
    }
    // A caption whose first item is not on show is a key of its own.
    for (std::int32_t menu = 1; menu <= 2; ++menu) {
        const HeadlessMenuItem& title = device.menuTitles[Index(menu)];
        if (title.Caption() == caption && Offered(title) && !device.menuItems[Index(menu)][0].Visible()) {
            RaiseTitleClick(menu);
            return Done;
        }
    }
    return "no menu offers that";
}

Refusal SetInput(HeadlessPlatform& device, const Text& text) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    FocusTarget* const holder = device.focus.Holder();
    if (holder == nullptr || !holder->TakesText())
        return NoInputControl;
    holder->ReplaceText(text);
    return Done;
}

Refusal CloseForm(HeadlessPlatform& device) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    bool cancel = false;
    frmQuorin::Form_QueryUnload(cancel, 0);
    return Done;
}

Refusal Answer(HeadlessPlatform& device, BoxAnswer answer) {
    HeadlessBoxes::OpenBox* box = device.boxes.Current();
    if (box == nullptr)
        return "no message box is open";
    if ((box->Buttons == BoxButtons::Ok) != (answer == BoxAnswer::Ok))
        return box->Buttons == BoxButtons::Ok ? "the box has an Ok button alone" : "the box has a Yes and a No button";
    box->Answer = answer;
    box->Answered = true;
    return Done;
}

} // namespace platform::headless
