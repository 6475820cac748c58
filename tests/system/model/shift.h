// SPDX-License-Identifier: MIT
// A long shift: instruments send, a technician works, things go wrong, and after each step the program must be in the
// state of the model.
#pragma once

#include "tests/system/model/handheld.h"
#include "tests/system/model/instrument.h"
#include "tests/system/model/model.h"

#include <deque>
#include <functional>
#include <string>

namespace shift {

/// What happened in a shift, in numbers.
struct Tally {
    std::uint64_t Steps = 0, Questions = 0, Yes = 0, No = 0, Prompts = 0, Nested = 0, Diverted = 0;
    std::uint64_t Restarts = 0, Kills = 0, RealKills = 0, InsideASave = 0, NewState = 0;
    std::uint64_t Drops = 0, FailedOpenings = 0, Sleeps = 0, Midnights = 0, Tomorrows = 0, Notices = 0, Locks = 0;
    std::uint64_t NewRecords = 0, Inserted = 0, DeletedRecords = 0, NewDownloads = 0, DeletedDownloads = 0;
    std::uint64_t Renamed = 0, Edits = 0, Dates = 0, ColumnChanges = 0, FilesCompared = 0;
    std::uint64_t Hours = 0; ///< of questions without an answer
    std::uint64_t HighTones = 0, LowTones = 0;
};

class Shift {
public:
    Shift(const Kind& kind, std::uint64_t seed, std::uint32_t results);

    /// Runs the shift. Returns an empty text, or the difference and the last steps before it.
    std::string Run();

    Tally Counts;
    Ledger Results;
    const Instrument& Sender() const { return Meter_; }
    /// The number of results that are in the files or were copied with one, and those that should be and are not.
    std::uint32_t Kept = 0;
    std::vector<ResultId> LostWithoutARule;
    std::uint32_t LostBy[static_cast<std::size_t>(Fate::FateCount)] = {};

private:
    using Doing = std::function<void()>;

    // --- one run of the program after the other
    void RunOnce();
    void Step();
    void Account();
    void TellProgress();

    // --- setting the device up
    void PlanSetUp();
    void TapText(const std::string& text);

    // --- what comes next
    void Act();
    void ActOnQuestion();
    void ActOnMain();
    void ActOnDrivers();
    void ActOnDownloads();
    void ActOnRecord();
    void ActOnRecordCommand();
    void ActOnCell();
    void ActInField();
    void ActInDatePrompt();
    void ActInRenamePrompt();
    void ActOnInstalledDrivers();
    void ActOnColumns();
    void ActOnTrace();
    void GoBack();
    void GoHome();

    // --- the instrument and the line
    bool ActOnLine();
    void Send();
    void Transmit();
    void Deliver(const std::string& bytes);
    void LoseWhatIsInFlight();
    void Serve();
    bool Trouble();
    void TroubleAtTheServer();
    void SwitchServer();

    // --- time and ends
    void WaitALittle();
    void WaitForTick();
    void Wait(Moment time);
    void WaitForTomorrow();
    void LetQuestionsStand();
    void TakeANap();
    void Sleep(Moment time);
    void Leave();
    void Kill();

    /// A save in which a child process is killed.
    struct SavingPlan {
        Model Before; ///< with the record on screen
        std::size_t Driver = 0, Download = 0, Row = 0;
        std::string Text{}, Command{};
    };
    std::optional<SavingPlan> PlanASave();
    std::vector<std::string> StatesOf(const SavingPlan& plan);
    [[noreturn]] void SaveInAChild(const SavingPlan& plan, int pipe);
    bool RunChild(const SavingPlan& plan, std::optional<unsigned> delay);
    void KillInsideASave();

    // --- doing and comparing
    void Do(const std::string& what, const Doing& model, const std::function<std::string()>& device);
    void Choose(const std::string& caption, const Doing& model);
    void Tap(std::size_t row, std::size_t col, const Doing& model);
    void Note(const std::string& step);
    void Compare();
    void CompareFiles(const std::set<std::string>& names);
    void CompareAllFiles();
    void CompareRecord();
    std::vector<std::string> Column(std::int32_t col);
    void Expect(const std::string& what, const std::string& found, const std::string& expected);
    void Expect(const std::string& what, bool found, bool expected);
    bool Settled() const { return !Model_.RepaintAt; }
    backends::headless::HeadlessPlatform& Device() { return Hand_->Device(); }
    backends::Hand& User() { return Hand_->User(); }
    const Outfit& OutfitInHand() const;
    std::uint32_t Below(std::size_t count) { return Chance_.Below(static_cast<std::uint32_t>(count)); }

    Kind KindOfDevice_;
    std::uint32_t Wanted_;
    Choices Chance_;
    Instrument Meter_;
    Model Model_;
    DeviceFolder Folder_;
    std::unique_ptr<Handheld> Hand_;

    std::deque<Doing> Script_; ///< the next steps, if they are not random
    bool SetUp_ = false, Over_ = false;
    std::string InFlight_; ///< one or several records that are being sent
    std::size_t Gone_ = 0; ///< how many characters of them have been sent
    Moment Began_ = 0;
    std::string Difference_;
    std::deque<std::string> LastSteps_;
    unsigned KillDelay_ = 300; ///< microseconds
    std::chrono::steady_clock::time_point LastWord_ = std::chrono::steady_clock::now();
};

} // namespace shift
