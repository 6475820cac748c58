// SPDX-License-Identifier: MIT
#include "backends/loop/ending.h"

#include "backends/loop/form_events.h"
#include "src/app/form.h"
#include "src/drivers/unsaved_record.h"
#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/view/prompt.h"
#include "src/view/screen_table.h"

#include <algorithm>

namespace backends {

namespace {

using modQuorin::Screens;
using modStringTools::ToBytes;

const char* const NotSaved = " was NOT saved";

std::string OneLine(const Text& text) {
    std::string line;
    for (const char character : ToBytes(text)) {
        const bool isBlank = character == ' ' || character == '\r' || character == '\n';
        if (!isBlank)
            line += character;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    return line;
}

std::string RowForPeople() {
    const auto& table = modFileSystem::Table;
    if (table.TableRowIndex < 1) // the file could not be created
        return "the record of " + ToBytes(table.TableName);
    return "row " + std::to_string(table.TableRowIndex) + " of " + ToBytes(table.TableName);
}

} // namespace

Ending::Ending(BackEnd& device) : Device(device) {
    Device.loop.LastAct = [this] { LeaveScreen(); };
}

void Ending::Begin(const std::string& why) {
    if (Begun())
        return;
    Why = why;
    Device.loop.BeginEnding();
}

void Ending::BeginToSave() {
    Undecoded = modBluetooth::Receive.ReadyText.size() + Device.serial.WaitingCharacters();
    State = modQuorin::RecordIsUnsaved() ? Record::Saving : Record::NothingToSave;
    Row = RowForPeople();
}

/// Leaves the screen as a user would. The calendar is a prompt over a record, and Back returns to that record. Any
/// other prompt is left open, because Back would count as an answer to it.
void Ending::LeaveScreen() {
    if (Screens.CurrentScreen == modQuorin::ScrInput && modPDAUI::Prompt.PromptModal) {
        BeginToSave();
        State = Record::UnderPrompt;
        return;
    }
    if (Screens.CurrentScreen == modQuorin::ScrInput)
        RaiseCloseRequest();
    BeginToSave();
    const std::size_t failures = Device.onlooker.FailedSaves;
    if (modQuorin::ScreenRow(Screens.CurrentScreen).BackMode != modQuorin::BackStep::EndsProgram)
        RaiseCloseRequest();
    if (State == Record::Saving)
        State = Device.onlooker.FailedSaves == failures ? Record::Saved : Record::Lost;
    bool cancel = false;
    frmQuorin::Form_QueryUnload(cancel, frmQuorin::UnloadMode::System); // nothing can cancel an end by the system
    frmQuorin::Form_Unload();
}

void Ending::SaveAtOnce(const std::string& why) {
    Why = why;
    Device.loop.BeginEnding();
    BeginToSave();
    if (State != Record::Saving)
        return;
    State = Record::Lost;
    if (!modQuorin::RecordToRescue())
        return;
    const std::size_t failures = Device.onlooker.FailedSaves;
    modQuorin::RescueRecord();
    State = Device.onlooker.FailedSaves == failures ? Record::Saved : Record::Lost;
}

std::string Ending::Words() const {
    std::string words = "ended by " + Why + "; ";
    switch (State) {
    case Record::Saved:
        words += Row + " was saved";
        break;
    case Record::Saving:
    case Record::Lost:
        words += Row + NotSaved;
        break;
    case Record::UnderPrompt:
        words += "there was nothing to save, and the open prompt was not answered";
        break;
    case Record::NotReached:
    case Record::NothingToSave:
        words += "there was nothing to save";
        break;
    }
    for (const Text& text : Device.Seen().boxes.LeftUnanswered())
        words += "; not answered: \"" + OneLine(text) + "\"";
    if (Undecoded > 0)
        words += "; " + std::to_string(Undecoded) + " characters of the instrument were not decoded";
    return words;
}

std::string StateWords() {
    const std::string unsaved = UnsavedRecordWords();
    const std::string state = "Every file is as the last completed save left it.";
    return unsaved.empty() ? state : state + " What is on the screen is lost: " + unsaved + ".";
}

std::string UnsavedRecordWords() {
    return modQuorin::RecordIsUnsaved() ? RowForPeople() + NotSaved : "";
}

} // namespace backends
