// SPDX-License-Identifier: MIT
#include "src/view/screen_table.h"

#include "src/view/platform/platform.h"

namespace modQuorin {

namespace {

ScreenId Append(const ScreenDef& row) {
    Screens.Table.push_back(row);
    if (row.ColumnPercent == 0)
        Screens.Table.back().ColumnPercent = 100;
    return static_cast<ScreenId>(Screens.Table.size());
}

} // namespace

void ResetScreens() {
    for (const ScreenDef& row : Screens.Table) {
        if (row.Id != nullptr)
            *row.Id = 0;
    }
    Screens = {};
}

void AddScreen(ScreenId& id, const ScreenDef& row) {
    id = Append(row);
    ScreenRow(id).Id = &id;
}

ScreenId AddScreen(MenuId menu, BackStep backMode, ScreenId backScreen, std::int32_t gridRows, std::int32_t gridCols,
                   std::int32_t columnPercent, std::int32_t titleRows, std::int32_t titleCols, CellDrawing drawStyle) {
    return Append({.BackMode = backMode,
                   .BackScreen = backScreen,
                   .GridRows = gridRows,
                   .GridCols = gridCols,
                   .ColumnPercent = columnPercent,
                   .TitleRows = titleRows,
                   .TitleCols = titleCols,
                   .Menu = menu,
                   .DrawStyle = drawStyle});
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
