// SPDX-License-Identifier: MIT
// The table of screens: how the two grids are shaped for each, which menu it carries, what Back does, and the routines
// that make it behave. Data only; src/app/screens.cpp fills it at start-up, once.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

/// A row number of the screen table, from 1; 0 stands for no screen. Handed out at run time: no code may count on a
/// value.
using ScreenId = std::int32_t;
/// A row number of the menu table, from 1; 0 stands for no menu.
using MenuId = std::int32_t;

/// What a screen does, each of it optional.
struct ScreenBehaviour {
    void (*Fill)() = nullptr;                                     ///< puts the content into the shaped grids
    bool (*BeforeBack)() = nullptr;                               ///< runs before Back moves; true: it has moved itself
    void (*Select)(std::int32_t row, std::int32_t col) = nullptr; ///< OK on a cell of grdMain
    void (*RowChanged)() = nullptr;                               ///< the current cell of grdMain is another one

    // For screens to come: none of those there are reacts to these.
    void (*CellEdited)(std::int32_t row, std::int32_t col, const Text& text) = nullptr; ///< an in-place field closes
    void (*ArrowKey)(std::int32_t keyCode) = nullptr;           ///< 37 to 40, while no input field is on show
    void (*Held)(std::int32_t row, std::int32_t col) = nullptr; ///< a long press: the place for a hold menu
};

/// What Back does on a screen once its own routine has left it to the table.
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
    std::int32_t ColumnPixels = 0;  ///< the same in pixels; computed anew on every layout
    std::int32_t TitleRows = 0;     ///< rows of grdTitle; 0 hides it
    std::int32_t TitleCols = 0;     ///< columns of grdTitle
    MenuId Menu = 0;
    CellDrawing DrawStyle = CellDrawing::Table;
    ScreenBehaviour Behaviour = {};
    const char* Name = "";  ///< the name that the code gives the screen, for people and tools
    ScreenId* Id = nullptr; ///< the variable that holds the row's number; null where nothing does
};

struct ScreenState {
    std::vector<ScreenDef> Table;    ///< row n stands at n less 1; AddScreen adds, the layout writes ColumnPixels
    ScreenId CurrentScreen = 0;      ///< the screen on show; GotoScreen and the prompt write it
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

/// Empties the table, and puts the variables that hold its numbers back to 0, as at program start.
void ResetScreens();

/// Appends a row, with a `ColumnPercent` of 0 stored as 100, and puts its number into the screen's variable.
void AddScreen(ScreenId& id, const ScreenDef& row);

/// The same for a screen whose number is kept elsewhere. Returns that number.
ScreenId AddScreen(MenuId menu, BackStep backMode, ScreenId backScreen, std::int32_t gridRows, std::int32_t gridCols,
                   std::int32_t columnPercent, std::int32_t titleRows, std::int32_t titleCols, CellDrawing drawStyle);

/// A row of the table. A number that is not in the table is a run-time failure.
ScreenDef& ScreenRow(ScreenId id);

/// What a screen does; nothing for screen 0.
ScreenBehaviour BehaviourOf(ScreenId id);

/// The two screens that edit one row of the open table.
bool IsRecordScreen(ScreenId id);

} // namespace modQuorin
