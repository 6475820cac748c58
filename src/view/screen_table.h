// SPDX-License-Identifier: MIT
// The table of screens. For each screen: the shape of the two grids, its menu, what Back does, and its routines. Data
// only; src/app/screens.cpp fills it at start-up, once.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

/// A row number of the screen table, from 1; 0 means no screen. Assigned at run time: no code may depend on a value.
using ScreenId = std::int32_t;
/// A row number of the menu table, from 1; 0 means no menu.
using MenuId = std::int32_t;

/// The routines of a screen. Each is optional.
struct ScreenBehaviour {
    void (*Fill)() = nullptr;       ///< fills the shaped grids
    bool (*BeforeBack)() = nullptr; ///< called before Back moves; returns true if it has moved itself
    void (*Select)(std::int32_t row, std::int32_t col) = nullptr; ///< OK on a cell of grdMain
    void (*RowChanged)() = nullptr;                               ///< the current cell of grdMain has changed

    // For future screens: no screen uses these so far.
    void (*CellEdited)(std::int32_t row, std::int32_t col, const Text& text) = nullptr; ///< an in-place field closes
    void (*ArrowKey)(std::int32_t keyCode) = nullptr;           ///< 37 to 40, while no input field is visible
    void (*Held)(std::int32_t row, std::int32_t col) = nullptr; ///< a long press; may open a hold menu
};

/// What Back does on a screen if the screen's own routine has not moved.
enum class BackStep : std::int32_t {
    Nothing = 0,
    ToScreen = 1, ///< to `BackScreen`
    EndsProgram = 2,
    ToPrevious = 3,
};

enum class CellDrawing : std::int32_t {
    Table = 0, ///< a table drawn per screen
    List = 1,  ///< a list with a highlighted row
    Cell = 2,  ///< one cell that fills the grid
};

struct ScreenDef {
    BackStep BackMode = BackStep::Nothing;
    ScreenId BackScreen = 0;
    std::int32_t GridRows = 0;      ///< rows of grdMain when it is shaped; the fill sets the real count
    std::int32_t GridCols = 0;      ///< columns of grdMain
    std::int32_t ColumnPercent = 0; ///< width of its first column in percent of the usable width
    std::int32_t ColumnPixels = 0;  ///< the same in pixels; computed again on every layout
    std::int32_t TitleRows = 0;     ///< rows of grdTitle; 0 hides it
    std::int32_t TitleCols = 0;     ///< columns of grdTitle
    MenuId Menu = 0;
    CellDrawing DrawStyle = CellDrawing::Table;
    ScreenBehaviour Behaviour = {};
    const char* Name = "";  ///< the screen's name in the code, for people and tools
    ScreenId* Id = nullptr; ///< the variable that holds the row's number; null: none
};

struct ScreenState {
    std::vector<ScreenDef> Table;    ///< row n is at index n - 1; AddScreen adds, the layout writes ColumnPixels
    ScreenId CurrentScreen = 0;      ///< the screen that is shown; GotoScreen and the prompt write it
    ScreenId PreviousScreen = 0;     ///< the screen before the last GotoScreen; 0 until the first one
    Text ListKind;                   ///< which list ScrList shows; set by the command that opens it
    bool GridEditMode = false;       ///< a record's cells can be edited in the grid; ShowScreen clears, fills set it
    ScreenId RecordReturnScreen = 0; ///< where Back leads from a record screen; set when one is opened, never cleared
};
inline ScreenState Screens;

inline ScreenId ScrInput = 0, ScrFileSelect = 0, ScrMessage = 0, ScrMain = 0, ScrDrivers = 0, ScrInstalledDrivers = 0,
                ScrPreferences = 0, ScrList = 0, ScrDownloads = 0, ScrDownload = 0, ScrBluetoothDebug = 0,
                ScrFileDebug = 0, ScrTextFile = 0, ScrDriverProperties = 0, ScrInfRecord = 0, ScrColumns = 0,
                ScrAddDriver = 0;

/// Empties the table and sets the variables that hold its row numbers to 0, as at program start.
void ResetScreens();

/// Appends a row and sets `id` to its number. A `ColumnPercent` of 0 is stored as 100.
void AddScreen(ScreenId& id, const ScreenDef& row);

/// The same for a screen whose number is kept elsewhere. Returns that number.
ScreenId AddScreen(MenuId menu, BackStep backMode, ScreenId backScreen, std::int32_t gridRows, std::int32_t gridCols,
                   std::int32_t columnPercent, std::int32_t titleRows, std::int32_t titleCols, CellDrawing drawStyle);

/// Returns a row of the table. A number that is not in the table is a run-time failure.
ScreenDef& ScreenRow(ScreenId id);

/// Returns the routines of a screen; none for screen 0.
ScreenBehaviour BehaviourOf(ScreenId id);

/// True for the two screens that edit one row of the open table.
bool IsRecordScreen(ScreenId id);

} // namespace modQuorin
