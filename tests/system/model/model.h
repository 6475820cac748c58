// SPDX-License-Identifier: MIT
// The program as a technician sees it: which screen comes, what the record must show, what each file must contain,
// which box opens and which tone sounds. It does not know how the program works.
#pragma once

#include "tests/system/model/calendar.h"
#include "tests/system/model/instrument_text.h"
#include "tests/system/model/tables.h"

#include <optional>

namespace shift {

enum class Place { Main, Drivers, Downloads, Record, DatePrompt, RenamePrompt, InstalledDrivers, Columns, Trace };

const char* NameOf(Place place);

/// How results reach a device.
enum class LinkKind { Serial, Server };

/// A message box that waits for an answer.
struct Question {
    enum class Kind { Replace, DeleteRecord, DeleteDownload, Notice } Why = Kind::Notice;
    bool Sure = false; ///< the second one, "Are you sure?"
    Reading Result;    ///< only for Replace, as Row and Type are, by which its row was found
    std::size_t Row = 0;
    std::string Type;
};

class Model {
public:
    Model(Ledger& results, LinkKind link) : Text(results), Results_(&results), KindOfLink_(link) {}

    // --- what the tests compare
    std::vector<std::string> Events; ///< boxes and tones since the last comparison
    DataFolder Files;
    Place At = Place::Main;
    std::vector<Question> Questions; ///< that are open, the innermost last
    std::vector<std::string> Cells;  ///< of the record
    std::string Title;               ///< of the record: the last state of the link, or the screen's name
    std::size_t RecordNumber = 0;    ///< from 1
    bool Dirty = false;
    bool FieldOpen = false; ///< in a cell, or in the prompt for a name
    std::string FieldText;
    bool LinkWanted = false, LinkOpen = false, PortOpen = false, ServerMode = false;
    bool CaretBehind = false; ///< true if the caret is after the text
    std::vector<bool> ColumnChoices;
    std::vector<std::string> TraceLines;
    std::string Driver, OpenFile;
    InstrumentText Text;

    // --- time
    Moment Now = 0;
    Moment NextTick = 0;             ///< of the link
    std::optional<Moment> RepaintAt; ///< until then a technician waits before touching the grid
    /// Starts the program.
    void Start(Moment now);
    /// Ends the program. All that it has not saved is lost.
    void End();
    /// Lets time pass, at most up to the link's next tick.
    void Pass(Moment milliseconds);
    /// Lets the device sleep.
    void Sleep(Moment milliseconds);
    /// Returns true if a complete record waits for a time of day that comes only tomorrow.
    bool WaitsForTomorrow() const;
    Moment TimeUntilTomorrow() const; ///< until it is decoded; 0 if it never is
    /// Returns true if a record has come and waits for half a second of quiet to be decoded.
    bool Quiet() const { return EndSeen_; }

    // --- the line, and the mailbox
    void Receive(const std::string& characters);
    void Drop();
    bool LinkIsHeld() const { return Questions.size() > 1; }
    void FailOpenings(int count) { FailuresLeft_ = count; }
    bool MailboxThere = false, MailboxLocked = false, ServerRuns = true;
    std::string Mailbox;

    // --- the technician
    void Answer(bool yes);
    void OpenDrivers();
    void OpenDriver(std::size_t row);
    void NewDownload();
    std::vector<std::string> Downloads() const;
    void SelectDownload(std::size_t index) { SelectedRow_ = index; }
    std::size_t SelectedDownload() const { return SelectedRow_; }
    void OpenDownload();
    void DeleteDownload();
    void Rename();
    void AcceptName();
    void Back();
    void Command(const std::string& caption);
    void TapCell(std::size_t row, bool onValue);
    void Type(const std::string& text);
    void PickDate(std::chrono::year_month_day date);
    void AcceptDate();
    void TypeBehind(const std::string& text) { Type(FieldText + text); }
    void OpenInstalledDrivers();
    void OpenTrace();
    void SelectDriver(std::size_t row);
    void ShowColumns();
    void ToggleColumn(std::size_t row) { ColumnChoices[row] = !ColumnChoices[row]; }

    const std::vector<Field>& Fields() const { return Infs_; }
    const std::string& NameInHand() const { return Accepted_; }
    std::size_t EditedRow() const { return EditRow_; }
    const DataFile& OpenTable() const { return Files.Read(OpenFile); }
    bool OnRecord() const { return At == Place::Record; }

private:
    void TakeAnswer(bool yes);
    void LoseHeld(Fate fate);
    void Tick();
    void EndRepaint();
    void DecodeAfterPause();
    void KeepLink();
    bool OpenPort();
    bool FindServer();
    void PollMailbox();
    void Repaint() { RepaintAt = RepaintAt.value_or(Now + 100); }

    void Deliver();
    bool Capture(const Reading& reading);
    void ListOnTrace(const Reading& reading);
    std::optional<std::size_t> FindRow(const Reading& reading, std::string& type) const;
    void Finish(const Reading& reading, const std::string& type);
    void Spread(const Reading& reading, const std::string& type);
    void FillDates();

    void PutCell(std::size_t row, const std::string& text, Fate ofTheOld);
    void LoadRecord(std::size_t number);
    void SaveRecord();
    void AddRecord(std::size_t number);
    void RemoveRecord();
    void ShowRecord();
    void LeaveRecord();
    void LeaveColumns();
    void ShowDownloads();
    void RemoveDownload();
    void LeavePrompt();

    void Ask(const Question& question, const std::string& text);
    void Tone(bool taken) { Events.push_back(taken ? "tone 1046 250" : "tone 369 300"); }

    Ledger* Results_;
    LinkKind KindOfLink_;

    // the link
    int LinkState_ = 0;
    bool EndSeen_ = false;
    float LastPoll_ = 0;
    Moment LastTick_ = 0; ///< in whole seconds
    int FailuresLeft_ = 0;
    std::string Held_; ///< what came over the line while two questions were open
    bool ServerFound_ = false, ServerMissed_ = false;

    // the record
    std::vector<Field> Infs_;
    Row Saved_; ///< as in the file
    std::size_t EditRow_ = 0;
    std::string TitleBelow_;               ///< the title after a prompt is closed
    std::chrono::year_month_day Picked_{}; ///< in the open date picker

    // lists and prompts
    std::size_t SelectedRow_ = 0;
    std::string Accepted_; ///< the name that was last accepted in a prompt
};

} // namespace shift
