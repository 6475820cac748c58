// SPDX-License-Identifier: MIT
#include "drivers/unsaved_record.h"

#include "storage/keyed_tables.h"
#include "view/platform/platform.h"
#include "view/prompt.h"
#include "view/screen_table.h"

#include <algorithm>

namespace modQuorin {

using modFileSystem::Table;
using platform::Device;

namespace {

constexpr std::int32_t ValueColumn = 1;

/// A prompt has kept the record's grid; its own is one cell, which must not get into the record.
bool PromptCoversRecord() {
    return Screens.CurrentScreen == ScrInput && IsRecordScreen(Screens.PreviousScreen);
}

std::vector<Text> TextsOfGrid() {
    const auto& grdMain = Device().grdMain;
    std::vector<Text> texts;
    for (std::int32_t row = 0; row < grdMain.Rows(); ++row)
        texts.push_back(grdMain.Cell(row, ValueColumn));
    return texts;
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
    // Typing into any prompt marks the record as changed, hence the look at the screens.
    return onShow && Table.RecordDirty;
}

/// A record without a row in the file has nowhere to go: the header stands where it would be written.
bool RecordToRescue() {
    return RecordIsUnsaved() && modFileSystem::HeldFields() > 0 && modFileSystem::Slots.Running == 0;
}

void RescueRecord() {
    if (Rescue.RecordRescued || !RecordToRescue())
        return;
    Rescue.RecordRescued = true;
    const std::vector<Text> texts = PromptCoversRecord() ? TextsOfCoveredGrid() : TextsOfGrid();
    const std::size_t shared = std::min(texts.size(), static_cast<std::size_t>(modFileSystem::HeldFields()));
    std::copy_n(texts.begin(), shared, Table.TableValues.begin());
    modFileSystem::SaveRow();
}

} // namespace modQuorin
