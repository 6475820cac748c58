// SPDX-License-Identifier: MIT
#include "view/navigation.h"

#include "view/layout.h"
#include "view/soft_menus.h"

namespace modQuorin {

void GotoScreen(ScreenId id) {
    Screens.PreviousScreen = Screens.CurrentScreen;
    Screens.CurrentScreen = id;
    ShowScreen(id);
}

void ShowScreen(ScreenId id) {
    modPDAUI::LayoutScreen(true);
    Screens.GridEditMode = false;
    FillScreen(id);
    WM5Menus::ApplyMenu(ScreenRow(id).Menu);
}

void FillScreen(ScreenId id) {
    if (const auto fill = ScreenRow(id).Behaviour.Fill)
        fill();
}

} // namespace modQuorin
