// SPDX-License-Identifier: MIT
#include "src/app/menus.h"

#include "src/view/menu_table.h"

namespace modQuorin {

// A row a menu: its caption and up to five items.

void AddInputMenus() {
    AddMenu(MenuInput, {{{u"Back"}}}, {{{u"Ok"}}});
    AddMenu(MenuFileSelect, {{{u"Back"}}}, {{{u"Options"}, {u"Select directory"}, {u"Select a volume"}}});
    AddMenu(MenuMessage, {{{u"Back"}}}, {});
}

void AddApplicationMenus() {
    AddMenu(MenuBack, {{{u"Back", EntryMarker::Back}}}, {});
    AddMenu(MenuBackCommand, {{{u"Back"}}}, {});
    AddMenu(MenuMain, {{{u"Main"}, {u"Start..."}, {u"Exit", EntryMarker::Back}}},
            {{{u"Options"}, {u"Preferences..."}, {u"inf editor..."}, {u"Bluetooth Debug..."}}});
    AddMenu(MenuOk, {{{u"Ok"}}}, {{{u"Back"}}});
    // No screen has MenuDriverColumns; its commands are in this menu.
    AddMenu(MenuDrivers, {{{u"File"}, {u"Edit"}, {u"Delete"}, {u"Show/Hide Columns..."}, {u"New"}, {u"Add Driver..."}}},
            {{{u"Back"}}});
    AddMenu(MenuDriverColumns, {{{u"File"}, {u"Show/Hide Columns..."}, {u"Add Driver..."}, {u"Delete"}}},
            {{{u"Back"}}});
    AddMenu(MenuDownloads, {{{u"File"}, {u"Open"}, {u"Delete"}, {u"Rename"}, {u"New"}}}, {{{u"Back"}}});
    AddMenu(MenuDownload, {{{u"File"}, {u"Close", EntryMarker::Back}}}, {{{u"Options"}}});
    AddMenu(MenuSave, {{{u"Save"}}}, {{{u"Back"}}});
    AddMenu(MenuRecord,
            {{{u"File"},
              {u"Next Record"},
              {u"Previous Record"},
              {u"First Record"},
              {u"Last Record"},
              {u"Close", EntryMarker::Back}}},
            {{{u"Edit"}, {u"New Record"}, {u"Insert Record"}, {u"Delete Record"}}});
    AddMenu(MenuInstall, {{{u"Install..."}}}, {{{u"Back"}}});
}

} // namespace modQuorin
