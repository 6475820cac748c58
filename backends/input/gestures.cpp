// SPDX-License-Identifier: MIT
#include "backends/input/gestures.h"

namespace backends {

namespace {

constexpr std::int64_t LongPress = 1500; // milliseconds

const Refusal Done;

Refusal CellRefusal(const BackEnd& device, std::int32_t row, std::int32_t col) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    if (!device.Seen().grdMain.Visible())
        return "the grid is not visible";
    if (!device.Seen().grdMain.Enabled())
        return "the grid is disabled";
    if (!device.Seen().grdMain.Offers(row, col))
        return "there is no such cell";
    return Done;
}

bool IsMenu(std::int32_t menu) {
    return menu == 1 || menu == 2;
}

const MenuItem& Title(const BackEnd& device, std::int32_t menu) {
    return *device.Seen().menuTitles[static_cast<std::size_t>(menu) - 1];
}

const MenuItem& Item(const BackEnd& device, std::int32_t menu, std::int32_t item) {
    return *device.Seen().menuItems[static_cast<std::size_t>(menu) - 1][static_cast<std::size_t>(item) - 1];
}

bool Offered(const MenuItem& item) {
    return item.Visible() && item.Enabled();
}

Refusal TitleRefusal(const BackEnd& device, std::int32_t menu) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    if (!IsMenu(menu))
        return "the menus are 1 and 2";
    const MenuItem& title = Title(device, menu);
    if (!title.Visible())
        return "the menu is not visible";
    if (!title.Enabled())
        return "the menu is disabled";
    return Done;
}

Refusal ItemRefusal(const BackEnd& device, std::int32_t menu, std::int32_t item) {
    if (const Refusal refusal = TitleRefusal(device, menu); !refusal.empty())
        return refusal;
    if (item < 1 || item > MenuItemCount)
        return "the items are 1 to 5";
    const MenuItem& entry = Item(device, menu, item);
    if (!entry.Visible())
        return "the item is not visible";
    if (!entry.Enabled())
        return "the item is disabled";
    return Done;
}

} // namespace

Refusal FormRefusal(const BackEnd& device) {
    return device.Seen().boxes.Current() != nullptr ? "a message box is open" : Done;
}

Refusal Tap(Hand& hand, std::int32_t row, std::int32_t col) {
    if (const Refusal refusal = CellRefusal(hand.Device(), row, col); !refusal.empty())
        return refusal;
    hand.PressCell(row, col);
    hand.ReleaseCell();
    return Done;
}

Refusal Hold(Hand& hand, std::int32_t row, std::int32_t col) {
    if (const Refusal refusal = CellRefusal(hand.Device(), row, col); !refusal.empty())
        return refusal;
    hand.PressCell(row, col);
    hand.Device().loop.PassTime(LongPress);
    hand.ReleaseCell();
    return Done;
}

Refusal ClickItem(Hand& hand, std::int32_t menu, std::int32_t item) {
    if (const Refusal refusal = ItemRefusal(hand.Device(), menu, item); !refusal.empty())
        return refusal;
    hand.ClickItem(menu, item);
    return Done;
}

Refusal ClickTitle(Hand& hand, std::int32_t menu) {
    if (const Refusal refusal = TitleRefusal(hand.Device(), menu); !refusal.empty())
        return refusal;
    hand.ClickTitle(menu);
    return Done;
}

Refusal Choose(Hand& hand, const Text& caption) {
    if (const Refusal refusal = FormRefusal(hand.Device()); !refusal.empty())
        return refusal;
    for (std::int32_t menu = 1; menu <= 2; ++menu) {
        for (std::int32_t item = 1; item <= MenuItemCount; ++item) {
            if (Item(hand.Device(), menu, item).Caption() != caption || !ItemRefusal(hand.Device(), menu, item).empty())
                continue;
            hand.ClickTitle(menu); // opens the menu
            hand.ClickItem(menu, item);
            return Done;
        }
    }
    // A menu whose first item is hidden has no list: its caption is itself a key.
    for (std::int32_t menu = 1; menu <= 2; ++menu) {
        const MenuItem& title = Title(hand.Device(), menu);
        if (title.Caption() == caption && Offered(title) && !Item(hand.Device(), menu, 1).Visible()) {
            hand.ClickTitle(menu);
            return Done;
        }
    }
    return "no menu offers that";
}

Refusal FieldRefusal(const BackEnd& device) {
    if (const Refusal refusal = FormRefusal(device); !refusal.empty())
        return refusal;
    const FocusTarget* const holder = device.focus.Holder();
    return holder == nullptr || !holder->TakesText() ? "no input control has the focus" : Done;
}

Refusal SetInput(Hand& hand, const Text& text) {
    if (const Refusal refusal = FieldRefusal(hand.Device()); !refusal.empty())
        return refusal;
    Text set = text;
    modStringTools::BlankNuls(set);
    hand.ReplaceText(set);
    return Done;
}

Refusal CloseForm(Hand& hand) {
    if (const Refusal refusal = FormRefusal(hand.Device()); !refusal.empty())
        return refusal;
    hand.CloseWindow();
    return Done;
}

Refusal Answer(Hand& hand, BoxAnswer answer) {
    const DeviceBoxes::OpenBox* box = hand.Device().Seen().boxes.Current();
    if (box == nullptr)
        return "no message box is open";
    if ((box->Buttons == BoxButtons::Ok) != (answer == BoxAnswer::Ok))
        return box->Buttons == BoxButtons::Ok ? "the box has only an Ok button" : "the box has a Yes and a No button";
    hand.PressBoxButton(answer);
    return Done;
}

} // namespace backends
