// SPDX-License-Identifier: MIT
#include "src/view/soft_menus.h"

#include "src/view/display_state.h"
#include "src/view/platform/platform.h"

namespace WM5Menus {

using modPDAUI::Display;
using platform::Device;

namespace {

using Captions = std::array<Text, 6>;
using Markers = std::array<modQuorin::EntryMarker, 6>;
using Items = std::array<platform::MenuItem*, platform::MenuItemCount>;

/// A menu with a caption and no items gets one item with the same command, permanently in the table.
void CopyLoneCaption(Captions& captions, Markers& markers) {
    if (!captions[1].empty())
        return;
    captions[1] = captions[0];
    markers[1] = markers[0];
}

void PutOn(platform::MenuItem& button, const Items& items, const Captions& captions) {
    button.SetCaption(captions[0]);
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i]->SetCaption(captions[i + 1]);
        items[i]->SetVisible(!captions[i + 1].empty());
    }
    button.SetVisible(!captions[0].empty());
}

void SetSoftKey(platform::MenuItem& button, platform::MenuItem& firstItem, const Text& caption) {
    if (caption.empty())
        return;
    button.SetCaption(caption);
    firstItem.SetVisible(false);
}

} // namespace

void ApplyMenu(modQuorin::MenuId menu) {
    auto& device = Device();
    device.mnuButton1.SetVisible(false);
    device.mnuButton2.SetVisible(false);
    if (menu == 0)
        return;
    modQuorin::MenuDef& row = modQuorin::MenuRow(menu);
    CopyLoneCaption(row.Text1, row.Marker1);
    CopyLoneCaption(row.Text2, row.Marker2);
    PutOn(device.mnuButton1, device.mnuButtonO1, row.Text1);
    PutOn(device.mnuButton2, device.mnuButtonO2, row.Text2);
    if (!Display.SoftKeyMenus)
        return;
    if (device.mnuButton1.Caption() == device.mnuButtonO1[0]->Caption())
        SetSoftKey1(device.mnuButton1.Caption());
    if (device.mnuButton2.Caption() == device.mnuButtonO2[0]->Caption())
        SetSoftKey2(device.mnuButton2.Caption());
}

void SetSoftKey1(const Text& caption) {
    SetSoftKey(Device().mnuButton1, *Device().mnuButtonO1[0], caption);
}

void SetSoftKey2(const Text& caption) {
    SetSoftKey(Device().mnuButton2, *Device().mnuButtonO2[0], caption);
}

} // namespace WM5Menus
