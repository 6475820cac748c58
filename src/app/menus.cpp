// SPDX-License-Identifier: MIT
#include "src/app/menus.h"

#include "src/view/menu_table.h"

namespace modQuorin {

// clang-format off: a row a menu, its caption and up to five items

void AddInputMenus() {
    MenuInput = AddMenu({{{u"Back"}}}, {{{u"Ok"}}});
    MenuFileSelect = AddMenu({{{u"Back"}}}, {{{u"Options"}, {u"Select directory"}, {u"Select a volume"}}});
    MenuMessage = AddMenu({{{u"Back"}}}, {});
}

void AddApplicationMenus() {
    MenuBack = AddMenu({{{u"Back", EntryMarker::Back}}}, {});
    MenuBackCommand = AddMenu({{{u"Back"}}}, {});
    MenuMain = AddMenu({{{u"Main"}, {u"Start..."}, {u"Exit", EntryMarker::Back}}},
                       {{{u"Options"}, {u"Preferences..."}, {u"inf editor..."}, {u"Bluetooth Debug..."}}});
    MenuOk = AddMenu({{{u"Ok"}}}, {{{u"Back"}}});
    // The commands of MenuDriverColumns, which no screen carries, are reached from here.
    MenuDrivers = AddMenu(
        {{{u"File"}, {u"Edit"}, {u"Delete"}, {u"Show/Hide Columns..."}, {u"New"}, {u"Add Driver..."}}}, {{{u"Back"}}});
    MenuDriverColumns =
        AddMenu({{{u"File"}, {u"Show/Hide Columns..."}, {u"Add Driver..."}, {u"Delete"}}}, {{{u"Back"}}});
    MenuDownloads = AddMenu({{{u"File"}, {u"Open"}, {u"Delete"}, {u"Rename"}, {u"New"}}}, {{{u"Back"}}});
    MenuDownload = AddMenu({{{u"File"}, {u"Close", EntryMarker::Back}}}, {{{u"Options"}}});
    MenuSave = AddMenu({{{u"Save"}}}, {{{u"Back"}}});
    MenuRecord = AddMenu({{{u"File"},
                           {u"Next Record"},
                           {u"Previous Record"},
                           {u"First Record"},
                           {u"Last Record"},
                           {u"Close", EntryMarker::Back}}},
                         {{{u"Edit"}, {u"New Record"}, {u"Insert Record"}, {u"Delete Record"}}});
    MenuInstall = AddMenu({{{u"Install..."}}}, {{{u"Back"}}});
}
// clang-format on

} // namespace modQuorin
