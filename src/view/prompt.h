// SPDX-License-Identifier: MIT
// Asks for one value on a screen of its own. The grids of the screen below are kept and put back.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/controls.h"

#include <vector>

namespace modPDAUI {

enum class PromptKind : std::int32_t {
    Line = 0, ///< one line of text
    List = 1, ///< a list to choose from, or to type in
    Date = 2,
    Text = 3, ///< text of several lines
};

/// A copy of one grid: up to two column widths, and of each row up to three cells and the height.
struct SavedGrid {
    struct SavedRow {
        std::vector<Text> Cells;
        std::int32_t Height = 0;
    };
    std::int32_t Cols = 0;
    std::vector<std::int32_t> Widths;
    std::vector<SavedRow> Rows;
    std::int32_t Row = 0, Col = 0, TopRow = 0; ///< kept for grdMain alone
    platform::Box Place;
};

struct PromptState {
    bool PromptModal = false;   ///< the prompt waits in its loop
    Text PromptResult;          ///< answer of the last modal prompt that was accepted
    bool PromptOpen = false;    ///< set up and not yet ended
    std::int32_t PromptRow = 0; ///< row of grdMain when it opened: a prompt that is not modal answers into it
    SavedGrid SavedTitle, SavedMain;
    Text DateText;                    ///< what a PromptKind::Date was opened on; empty for none
    platform::CalendarDate DateShown; ///< what the picker showed then
};
inline PromptState Prompt;

/// Opens the prompt. `list` holds the items of a PromptKind::List, parted by ",". With `keepGrids` the saved grids are
/// left as they are. With `modal` it waits, and `value` becomes the answer of the last prompt that was accepted, which
/// after a cancel is an older one's. Without it the answer goes into column 1 of the current row when the prompt ends.
/// A PromptKind::Date whose value is neither empty nor day/month/year is a run-time failure; one that is left as it was
/// read gives the text that it was read from.
void InputPrompt(const Text& title, PromptKind kind, Text& value, const Text& list, bool keepGrids, bool modal);

/// Asks for one line of text, with `answer` to begin with, and waits for the new one.
inline void AskForLine(const Text& title, Text& answer) {
    InputPrompt(title, PromptKind::Line, answer, u"", false, true);
}

/// Opens a prompt whose answer goes into column 1 of the current row when it ends, and does not wait.
inline void EditByPrompt(const Text& title, PromptKind kind, Text& value) {
    InputPrompt(title, kind, value, u"", false, false);
}

/// Ends the prompt, with its answer taken or not.
void EndInput(bool cancel);

void SaveGrids();
/// Puts the copies back. In a form that has another width by now the columns, and the rows that are shown, are as the
/// layout has made them.
void RestoreGrids();

/// Item `index` (from 1) of a list; an empty delimiter means "|". Empty behind the last item.
Text ListItem(const Text& list, std::int32_t index, const Text& delimiter);

} // namespace modPDAUI
