// SPDX-License-Identifier: MIT
#include "src/drivers/unsaved_record.h"

#include "src/drivers/record_editor.h"
#include "src/storage/keyed_tables.h"
#include "src/view/inf_fields.h"
#include "src/view/prompt.h"
#include "src/view/screen_table.h"

namespace modQuorin {

using modFileSystem::Table;

namespace {

/// A prompt saves the record's grid and shows its own, of one cell, which must not get into the record.
bool PromptCoversRecord() {
    return Screens.CurrentScreen == ScrInput && IsRecordScreen(Screens.PreviousScreen);
}

std::vector<Text> TextsOfCoveredGrid() {
    std::vector<Text> texts;
    for (const auto& row : modPDAUI::Prompt.SavedMain.Rows) {
        if (row.Cells.size() > ValueColumn)
            texts.push_back(row.Cells[ValueColumn]);
    }
    return texts;
}

} // namespace

bool RecordIsUnsaved() {
    const bool onShow = IsRecordScreen(Screens.CurrentScreen) || PromptCoversRecord();
    // Typing into any prompt marks the record as changed, so the screens are checked too.
    return onShow && Table.RecordDirty;
}

std::vector<Text> TextsOfRecord() {
    return PromptCoversRecord() ? TextsOfCoveredGrid() : TextsOfGrid();
}

bool RecordToRescue() {
    return RecordIsUnsaved() && modFileSystem::Slots.Running == 0;
}

void RescueRecord() {
    if (Rescue.RecordRescued || !RecordToRescue())
        return;
    Rescue.RecordRescued = true;
    const std::vector<Text> texts = TextsOfRecord();
    TellWhatHasNoField(texts);
    // A record without a row in the file can't be stored: it would be written over the header.
    if (modFileSystem::HeldFields() > 0)
        SaveTexts(texts);
}

} // namespace modQuorin
