// SPDX-License-Identifier: MIT
// Collects without a person: opens a download of a driver, gives each burst of readings a record of its own and saves
// it at once. It stops in front of what a person has to decide.
#pragma once

#include "apps/guide/guide.h"
#include "apps/quorin-console/station_plan.h"
#include "apps/quorin-console/writer.h"
#include "apps/start/exit_status.h"
#include "apps/start/service_manager.h"
#include "backends/host/free_space.h"
#include "backends/host/host_back_end.h"
#include "backends/loop/ending.h"

#include <optional>
#include <string>
#include <vector>

namespace console {

class Station final : public platform::ReadingLog, public backends::EventSource {
public:
    /// All must exist for as long as the station.
    Station(StationPlan plan, backends::HostBackEnd& device, backends::Ending& ending, Writer& out);

    /// Opens the newest download of the driver, or makes the first one. REQUIRES: the form has been started, and this
    /// is the outermost level of the loop. Ends the program if nothing can be collected.
    void Begin();

    /// The exit status of a station that could not begin, or has stopped by itself; nothing if it did neither.
    std::optional<start::ExitStatus> Status() const { return Status_; }
    bool HasBegun() const { return HasBegun_; }

    /// Warns in time.
    backends::FreeSpace Space;
    /// With less than this free, in bytes, it stops: what the record on the screen, its draft and the journal need.
    static constexpr std::uintmax_t LeastSpace = 5'000'000;

    /// Begins a new record, if the one on the screen has no room for the result.
    void ResultComes(const platform::Reading& result) override;
    void TextReceived(platform::TextSource, TextView) override {}
    void DecodingBegins() override { IsFirst_ = true; }
    void TextEmptied(TextView) override {}
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange& change) override;

    // Raises no event: it is an EventSource in order to be called in each round.
    bool RaiseWhatIsPending() override;

private:
    Text ChoosePort() const;
    Text OpenNewest();
    Text WhyNotThisDriver() const;
    Text OpenAnother();
    Text NewRecord();
    void RunCommand(const Text& command);
    bool IsCollecting() const;
    bool MaySave() const;
    void SaveRecord();
    void LookWhereItIs();
    void LookAtLink();
    void LookWhoIsConnected();
    void LookAtDisk();
    void GoOnBehindMidnight();
    void RefuseWithRest(const platform::Reading& result);
    void Foreign(const platform::Verdict& verdict);
    void Stop(start::ExitStatus status, const Text& why);
    void Tell(const char* state, const Text& words, Json more = Json::object());

    StationPlan Plan_;
    backends::HostBackEnd& Device_;
    backends::Ending& Ending_;
    Writer& Out_;
    apps::Guide Guide_;
    start::ServiceManager Manager_;

    std::optional<start::ExitStatus> Status_;
    bool HasBegun_ = false;
    bool WasCollecting_ = false;     ///< at the last look
    bool IsFirst_ = false;           ///< no result of the batch has come to the record yet
    Text File_;                      ///< bare name of the download
    Text Day_;                       ///< of its creation, eight digits
    std::vector<Text> Unsaved_;      ///< readings that are on the screen alone
    Text Failure_;                   ///< why the last save failed; empty if it did not
    Text NoPlace_;                   ///< why the last reading on the screen can't be saved, likewise
    Text Instrument_;                ///< that has connected last
    Text Foreigner_;                 ///< origin of the last instrument that was refused
    bool LinkIsTold_ = false;        ///< that it is down
    std::int64_t LinkDownSince_ = 0; ///< in the clock's milliseconds
    std::int64_t NextSave_ = 0;      ///< in the clock's milliseconds
    std::int64_t NextLook_ = 0;      ///< at the disk, likewise
};

} // namespace console
