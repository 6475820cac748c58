// SPDX-License-Identifier: MIT
// Observes what the form has no message for: receives reports, checks the form's state in each round of the loop, and
// keeps the notices.
#pragma once

#include "backends/loop/services.h"
#include "companion/losses.h"
#include "companion/notices.h"
#include "companion/value_limits.h"
#include "src/view/platform/onlooker.h"

#include <functional>
#include <optional>
#include <set>

namespace backends {

using namespace platform;

class FormOnlooker final : public Onlooker, public SaveWatcher, public EventSource {
public:
    FormOnlooker(const Clock& clock, Watcher& watcher);

    companion::Notices notices;
    companion::Losses losses;
    companion::ValueLimits limits; ///< of the driver of the record that was opened last

    /// Sets how the table of a driver's limits is read when a record is opened. `why` is set if it can't be read.
    std::function<std::optional<Text>(const Text& driver, Text& why)> FindLimits;

    void NotSaved(const Text& file, const Text& why) override;
    std::size_t FailedSaves = 0; ///< reported so far

    void RecordOpened(const OpenedRecord& record) override;
    void ReadingLost(const LostReading& reading) override;
    void ReadingWithoutValue(const Text& field) override;
    void ReadingWaits(const DateTime& since) override;
    void FolderReplaced(const Text& folder, const Text& instead,
                        ErrorNumber why) override; ///< each folder is reported once a run
    void ListIncomplete(const std::vector<Unlisted>& unlisted) override;
    void DeliveryStays(const Text& fullName, ErrorNumber why) override;
    void DeliveryKept(const Text& fullName, ErrorNumber why) override;
    void MailboxClear() override;

    // Raises no event: it is an EventSource in order to be called in each round.
    bool RaiseWhatIsPending() override;

private:
    const Clock& Time_;
    Watcher& Watcher_;
    void TakeLimits(const Text& driver);

    std::set<Text> ReplacedFolders_; ///< already reported
};

} // namespace backends
