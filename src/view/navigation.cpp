// SPDX-License-Identifier: MIT
#include "src/view/navigation.h"

#include "src/view/input_fields.h"
#include "src/view/layout.h"
#include "src/view/platform/platform.h"
#include "src/view/soft_menus.h"

namespace modQuorin {

void GotoScreen(ScreenId id) {
    const bool closed = modPDAUI::CloseCellEdit();
    Screens.PreviousScreen = Screens.CurrentScreen;
    Screens.CurrentScreen = id;
    ShowScreen(id);
    if (closed)
        platform::Device().grdMain.SetFocus(); // the layout took the focus from it
}

void ShowScreen(ScreenId id) {
    modPDAUI::ShapeGrids();
    Screens.GridEditMode = false;
    FillScreen(id);
    WM5Menus::ApplyMenu(ScreenRow(id).Menu);
}

void FillScreen(ScreenId id) {
    if (const auto fill = ScreenRow(id).Behaviour.Fill)
        fill();
}

} // namespace modQuorin
