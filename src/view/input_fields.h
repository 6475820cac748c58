// SPDX-License-Identifier: MIT
// The input controls, which are hidden until they are needed: in-place editing of a cell, and the events that keep the
// cell and the control equal.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/controls.h"

namespace modPDAUI {

struct InputState {
    std::int32_t EditRow = 0; ///< the cell under edit; BeginCellEdit sets both
    std::int32_t EditCol = 0;
    platform::Box CellBox;     ///< where that cell was when the text box was placed over it
    bool InputFocused = false; ///< txtInputField or cboInputField has the focus
    bool TakenAway = false;    ///< the text box was closed by a change of the record, perhaps while a person was typing
};
inline InputState Input;

/// Called at each change of the visible text box, on every screen. Start-up sets it, because the record on the screen
/// then differs from its file, and this module does not know the record.
inline void (*FieldChanged)() = nullptr;

/// Opens the text box over a cell of grdMain, with the cell's text in it.
void BeginCellEdit(std::int32_t row, std::int32_t col);

/// Stores the present place of the cell under edit as the place of the text box.
void NoteCellBox();

/// Moves the text box with its cell if the cell has moved or grown. Closes it, with its text in the cell, if its row is
/// no longer on the page.
void KeepFieldOverCell();

/// Returns the focus to the field of an open prompt, which may lose it only when the prompt ends.
void FocusPromptField();

/// Closes the text box over a cell as a loss of the focus does, before the grid shows another record or screen: text
/// typed later must not be written there. The grid has the focus afterwards. Returns true if a text box was open. The
/// field of a prompt is not closed.
bool CloseCellEdit();

bool AnyInputFieldVisible();

/// True on the prompt's screen, where an input field replaces grdMain.
bool OnPromptScreen();

/// Calls the current screen's CellEdited: an input field has closed with this text in the cell under edit.
void CellEdited(const Text& text);

void TextFieldGotFocus();
void TextFieldChanged(); ///< copies the text to the cell at each keystroke
void TextFieldLostFocus();
void ComboFieldGotFocus();
void ComboFieldLostFocus();

} // namespace modPDAUI
