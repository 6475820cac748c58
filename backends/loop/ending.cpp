// SPDX-License-Identifier: MIT
#include "backends/loop/ending.h"

#include "backends/loop/form_events.h"
#include "src/app/form.h"
#include "src/blob/decoding.h"
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

Ending::Ending(BackEnd& device) : Device_(device) {
    Device_.loop.LastAct = [this] { LeaveScreen(); };
}

void Ending::Begin(const std::string& why) {
    if (Begun())
        return;
    Reason_ = why;
    Device_.loop.BeginEnding();
}

void Ending::BeginToSave() {
    Undecoded_ = modBluetooth::Receive.ReadyText.size() + Device_.serial.WaitingCharacters();
    ReadingsWait_ = modBLob::ResultsWait(modBLob::Decoder);
    State_ = modQuorin::RecordIsUnsaved() ? Record::Saving : Record::NothingToSave;
    Row_ = RowForPeople();
}

/// Leaves the screen as a user would. The calendar is a prompt over a record, and Back returns to that record. Any
/// other prompt is left open, because Back would count as an answer to it.
void Ending::LeaveScreen() {
    if (Screens.CurrentScreen == modQuorin::ScrInput && modPDAUI::Prompt.PromptModal) {
        BeginToSave();
        State_ = Record::UnderPrompt;
        return;
    }
    if (Screens.CurrentScreen == modQuorin::ScrInput)
        AskToClose();
    BeginToSave();
    const std::size_t failures = Device_.onlooker.FailedSaves;
    if (modQuorin::ScreenRow(Screens.CurrentScreen).BackMode != modQuorin::BackStep::EndsProgram)
        AskToClose();
    if (State_ == Record::Saving)
        State_ = Device_.onlooker.FailedSaves == failures ? Record::Saved : Record::Lost;
    bool cancel = false;
    frmQuorin::Form_QueryUnload(cancel, frmQuorin::UnloadMode::System); // nothing can cancel an end by the system
    frmQuorin::Form_Unload();
}

void Ending::SaveAtOnce(const std::string& why) {
    Reason_ = why;
    Device_.loop.BeginEnding();
    BeginToSave();
    if (State_ != Record::Saving)
        return;
    State_ = Record::Lost;
    if (!modQuorin::RecordToRescue())
        return;
    const std::size_t failures = Device_.onlooker.FailedSaves;
    modQuorin::RescueRecord();
    State_ = Device_.onlooker.FailedSaves == failures ? Record::Saved : Record::Lost;
}

std::string Ending::Words() const {
    std::string words = "ended by " + Reason_ + "; ";
    switch (State_) {
    case Record::Saved:
        words += Row_ + " was saved";
        break;
    case Record::Saving:
    case Record::Lost:
        words += Row_ + NotSaved;
        break;
    case Record::UnderPrompt:
        words += "there was nothing to save, and the open prompt was not answered";
        break;
    case Record::NotReached:
    case Record::NothingToSave:
        words += "there was nothing to save";
        break;
    }
    for (const Text& text : Device_.Seen().boxes.LeftUnanswered())
        words += "; not answered: \"" + OneLine(text) + "\"";
    if (ReadingsWait_)
        words += "; readings that waited for another burst of the instrument are in no record";
    if (Undecoded_ > 0)
        words += "; " + std::to_string(Undecoded_) + " characters of the instrument were not decoded";
    return words;
}

std::string StateWords(bool isKept) {
    const std::string unsaved = UnsavedRecordWords();
    const std::string state = "Every file is as the last completed save left it.";
    if (unsaved.empty())
        return state;
    return state + (isKept ? " The next start offers what is on the screen: " : " What is on the screen is lost: ") +
           unsaved + ".";
}

std::string UnsavedRecordWords() {
    return modQuorin::RecordIsUnsaved() ? RowForPeople() + NotSaved : "";
}

} // namespace backends
