// SPDX-License-Identifier: MIT
// Asks for one value on a screen of its own. The grids of the screen before are saved and restored.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/controls.h"

#include <vector>

namespace modPDAUI {

enum class PromptKind : std::int32_t {
    Line = 0, ///< one line of text
    List = 1, ///< a list to choose from or type in
    Date = 2,
    Text = 3, ///< text of several lines
};

/// A copy of one grid: up to two column widths and, of each row, up to three cells and the height.
struct SavedGrid {
    struct SavedRow {
        std::vector<Text> Cells;
        std::int32_t Height = 0;
    };
    std::int32_t Cols = 0;
    std::vector<std::int32_t> Widths;
    std::vector<SavedRow> Rows;
    std::int32_t Row = 0, Col = 0, TopRow = 0; ///< restored for grdMain only
    platform::Box Place;
};

struct PromptState {
    bool PromptModal = false; ///< the modal prompt is waiting in its loop
    Text PromptResult;        ///< the answer of the last modal prompt that was accepted
    bool PromptOpen = false;  ///< opened and not yet ended
    std::int32_t PromptRow =
        0; ///< row of grdMain when the prompt opened; a prompt that is not modal writes its answer there
    SavedGrid SavedTitle, SavedMain;
    Text DateText;                    ///< the value with which a PromptKind::Date was opened; empty: none
    platform::CalendarDate DateShown; ///< what the picker showed then
};
inline PromptState Prompt;

/// Opens the prompt. `list` has the items of a PromptKind::List, separated by ",". With `keepGrids` the saved grids are
/// not replaced. With `modal` it waits and sets `value` to the answer of the last modal prompt that was accepted; after
/// a cancel that is an older answer. Without `modal` the answer is written into column 1 of the current row when the
/// prompt ends. A PromptKind::Date whose value is neither empty nor day/month/year is a run-time failure. A date that
/// was not changed is answered with the text that it was read from.
void InputPrompt(const Text& title, PromptKind kind, Text& value, const Text& list, bool keepGrids, bool modal);

/// Asks for one line of text, with `answer` to begin with, and waits for the new one.
inline void AskForLine(const Text& title, Text& answer) {
    InputPrompt(title, PromptKind::Line, answer, u"", false, true);
}

/// Opens a prompt whose answer goes into column 1 of the current row when it ends, and does not wait.
inline void EditByPrompt(const Text& title, PromptKind kind, Text& value) {
    InputPrompt(title, kind, value, u"", false, false);
}

/// Ends the prompt. With `cancel` its answer is dropped.
void EndInput(bool cancel);
inline void AcceptInput() {
    EndInput(false);
}
inline void DropInput() {
    EndInput(true);
}

void SaveGrids();
/// Restores the grids from the copies. If the width of the grid has changed, column widths and the heights of visible
/// rows stay as the layout has set them.
void RestoreGrids();

/// Returns item `index` (from 1) of a list. An empty delimiter means "|". Returns an empty text after the last item.
Text ListItem(const Text& list, std::int32_t index, const Text& delimiter);

} // namespace modPDAUI
