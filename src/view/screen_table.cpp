// SPDX-License-Identifier: MIT
#include "src/view/screen_table.h"

#include "src/view/platform/platform.h"

namespace modQuorin {

void ForgetScreenIds() {
    for (ScreenId* id : {&ScrInput, &ScrFileSelect, &ScrMessage, &ScrMain, &ScrDrivers, &ScrInstalledDrivers,
                         &ScrPreferences, &ScrList, &ScrDownloads, &ScrDownload, &ScrBluetoothDebug, &ScrFileDebug,
                         &ScrTextFile, &ScrDriverProperties, &ScrInfRecord, &ScrColumns, &ScrAddDriver})
        *id = 0;
}

ScreenId AddScreen(MenuId menu, BackStep backMode, ScreenId backScreen, std::int32_t gridRows, std::int32_t gridCols,
                   std::int32_t columnPercent, std::int32_t titleRows, std::int32_t titleCols, CellDrawing drawStyle) {
    ScreenDef row;
    row.BackMode = backMode;
    row.BackScreen = backScreen;
    row.GridRows = gridRows;
    row.GridCols = gridCols;
    row.ColumnPercent = columnPercent == 0 ? 100 : columnPercent;
    row.ColumnPixels = 0;
    row.TitleRows = titleRows;
    row.TitleCols = titleCols;
    row.Menu = menu;
    row.DrawStyle = drawStyle;
    Screens.Table.push_back(row);
    return static_cast<ScreenId>(Screens.Table.size());
}

ScreenDef& ScreenRow(ScreenId id) {
    if (id < 1 || id > static_cast<ScreenId>(Screens.Table.size()))
        platform::RuntimeFailure(u"Screen " + modStringTools::NumberText(id) + u" is not in the table of screens");
    return Screens.Table[static_cast<std::size_t>(id) - 1];
}

ScreenBehaviour BehaviourOf(ScreenId id) {
    return id == 0 ? ScreenBehaviour() : ScreenRow(id).Behaviour;
}

bool IsRecordScreen(ScreenId id) {
    return id == ScrDriverProperties || id == ScrInfRecord;
}

} // namespace modQuorin
