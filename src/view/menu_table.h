// SPDX-License-Identifier: MIT
// The table of menus: the captions and items of the two soft menus of a screen. Data only; src/app/menus.cpp fills it,
// once.
#pragma once

#include "src/view/screen_table.h"

#include <array>
#include <vector>

namespace modQuorin {

enum class EntryMarker : std::int32_t {
    Command = 0, ///< the entry's text is a command
    Back = 999,  ///< the entry goes Back, and its text is never dispatched
};

/// An entry of a menu. An entry with an empty caption is not shown.
struct MenuEntry {
    Text Caption;
    EntryMarker Marker = EntryMarker::Command;
};

/// The two soft menus; entry 0 is the menu's own caption, 1 to 5 are its items.
struct MenuDef {
    std::array<Text, 6> Text1;
    std::array<EntryMarker, 6> Marker1{};
    std::array<Text, 6> Text2;
    std::array<EntryMarker, 6> Marker2{};
    MenuId* Id = nullptr; ///< the variable that holds the row's number; null: none
};

struct MenuState {
    std::vector<MenuDef> Table; ///< row n is at index n - 1; ApplyMenu permanently copies the caption of a menu without
                                ///< items into entry 1
};
inline MenuState Menus;

inline MenuId MenuInput = 0, MenuFileSelect = 0, MenuMessage = 0, MenuBack = 0, MenuBackCommand = 0, MenuMain = 0,
              MenuOk = 0, MenuDrivers = 0, MenuDriverColumns = 0, MenuDownloads = 0, MenuDownload = 0, MenuSave = 0,
              MenuRecord = 0, MenuInstall = 0;

/// Empties the table and sets the variables that hold its row numbers to 0, as at program start.
void ResetMenus();

/// Appends a row of two menus with entries 0 to 5 each; omitted entries are empty. Sets `id` to the row's number.
void AddMenu(MenuId& id, const std::array<MenuEntry, 6>& menu1, const std::array<MenuEntry, 6>& menu2);
/// The same for a menu whose number is kept elsewhere. Returns that number.
MenuId AddMenu(const std::array<MenuEntry, 6>& menu1, const std::array<MenuEntry, 6>& menu2);

/// Returns a row of the table. A number that is not in the table is a run-time failure.
MenuDef& MenuRow(MenuId id);

} // namespace modQuorin
