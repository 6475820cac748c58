// SPDX-License-Identifier: MIT
#include "src/view/menu_table.h"

#include "src/view/platform/platform.h"

namespace modQuorin {

void ResetMenus() {
    for (const MenuDef& row : Menus.Table) {
        if (row.Id != nullptr)
            *row.Id = 0;
    }
    Menus = {};
}

void AddMenu(MenuId& id, const std::array<MenuEntry, 6>& menu1, const std::array<MenuEntry, 6>& menu2) {
    id = AddMenu(menu1, menu2);
    MenuRow(id).Id = &id;
}

MenuId AddMenu(const std::array<MenuEntry, 6>& menu1, const std::array<MenuEntry, 6>& menu2) {
    MenuDef row;
    for (std::size_t i = 0; i < menu1.size(); ++i) {
        row.Text1[i] = menu1[i].Caption;
        row.Marker1[i] = menu1[i].Marker;
        row.Text2[i] = menu2[i].Caption;
        row.Marker2[i] = menu2[i].Marker;
    }
    Menus.Table.push_back(row);
    return static_cast<MenuId>(Menus.Table.size());
}

MenuDef& MenuRow(MenuId id) {
    if (id < 1 || id > static_cast<MenuId>(Menus.Table.size()))
        platform::RuntimeFailure(u"Menu " + modStringTools::NumberText(id) + u" is not in the table of menus");
    return Menus.Table[static_cast<std::size_t>(id) - 1];
}

} // namespace modQuorin
