// SPDX-License-Identifier: MIT
// Keeps the journal of a device: what it received, what became of it, and what a person did. docs/formats.md has the
// lines. A journal that can't be written is a notice, and changes nothing else.
#pragma once

#include "backends/host/host_back_end.h"
#include "backends/host/journal_file.h"
#include "backends/host/sync_worker.h"
#include "backends/loop/acts.h"
#include "journal/journal_lines.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace backends {

struct JournalPlan {
    std::string Folder;
    std::string Root; ///< root folder of the device
    JournalLimits Limits;
};

/// The program that keeps a journal, as its first line has it.
struct ProgramName {
    std::string Name;
    std::string Version;
    std::vector<std::string> Words; ///< of the command line, after the program's name
};

class Journal final : public platform::ReadingLog, public EventSource {
public:
    /// The device must exist for as long as the journal. Only one journal may exist. `sync` writes the file of a
    /// descriptor to the medium, as fdatasync does.
    Journal(const JournalPlan& plan, ProgramName program, HostBackEnd& device, SyncWorker::Sync sync = SyncData);
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    ~Journal() override;

    /// Writes that the program has ended. `by`: what has ended it from outside, such as a signal; empty for nothing.
    void End(const ProgramOver& over, const std::string& by = {});

    void TextReceived(platform::TextSource source, TextView characters) override;
    void DecodingBegins() override;
    void TextEmptied(TextView characters) override;
    /// Its line is written in the next round, or before the next line: the results of a batch do not wait for it.
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange& change) override;

    // Raises no event: it is an EventSource in order to be called in each round.
    bool RaiseWhatIsPending() override;

private:
    /// The text field that is open, and where.
    struct OpenField {
        const Control* Box = nullptr; ///< null if none is open
        std::int32_t Row = 0;
        std::int32_t Col = 0;
        bool operator==(const OpenField&) const = default;
    };

    /// A reading whose line has not been written.
    struct Judged {
        journal::Stamp When;
        platform::Verdict Verdict;
        std::string Limit; ///< the limit that the value is outside of; empty for none
    };

    static int SyncData(int file);
    journal::Run Run() const;
    journal::Stamp Now();
    void Write(const journal::Line& event);
    void Append(const journal::Line& event);
    void WriteReadings();
    void BeginDay();
    void Put(const std::string& lines);
    void OpenDay(const std::string& day);
    void Stop(const Text& why);
    void SyncLines();
    void SyncDelivery();

    void Begins(const Act& act);
    void Asked(const Text& question);
    void LeftUnanswered(const Text& question);
    void PortStepped(DeviceSerial::Step step, const std::string& why);
    std::pair<OpenField, Text> FieldNow() const;
    void TakeFieldAsItIs();
    void LookAtField();
    void WriteField();
    void LookAtLink();
    void LookAtClock();

    HostBackEnd& Device_;
    ProgramName Program_;
    std::string Root_; ///< path without links
    JournalFile File_;
    SyncWorker Syncs_;
    journal::ReadingLines Readings_;
    std::vector<Judged> Judged_;
    journal::Stamp LastStamp_;
    std::optional<std::int64_t> LastSecond_; ///< of LastStamp_, as the form's clock counts
    bool Stopped_ = false;
    bool Unsynced_ = false; ///< there are lines that SyncLines has not seen
    bool Slow_ = false;     ///< reported

    OpenField Field_;
    Text FieldText_;    ///< at the last look
    Text FieldWritten_; ///< as the journal has it, or as it was when the field was opened
    bool LinkOpen_ = false;
    std::int64_t ClockIsOff_ = 0; ///< seconds between the shown time and the one that can't be set
    std::optional<std::pair<std::string, std::string>> LastFailure_; ///< of the port: address and reason
};

} // namespace backends
