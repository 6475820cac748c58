// SPDX-License-Identifier: MIT
// Hears of what the form has no message for, looks at its state between two events, and keeps the notices of it.
#pragma once

#include "backends/loop/services.h"
#include "companion/losses.h"
#include "companion/notices.h"
#include "src/view/platform/onlooker.h"

#include <set>

namespace backends {

using namespace platform;

class FormOnlooker final : public Onlooker, public SaveWatcher, public EventSource {
public:
    FormOnlooker(const Clock& clock, Watcher& watcher);

    companion::Notices notices;
    companion::Losses losses;

    void NotSaved(const Text& file, const Text& why) override;
    std::size_t FailedSaves = 0; ///< that were told so far

    void RecordOpened(const OpenedRecord& record) override;
    void ReadingLost(const LostReading& reading) override;
    void ReadingWithoutValue(const Text& field) override;
    void ReadingWaits(const DateTime& since) override;
    void FolderReplaced(const Text& folder, const Text& instead,
                        ErrorNumber why) override; ///< tells once a run of each
    void ListIncomplete(const std::vector<Unlisted>& unlisted) override;
    void DeliveryStays(const Text& fullName, ErrorNumber why) override;
    void DeliveryKept(const Text& fullName, ErrorNumber why) override;
    void MailboxClear() override;

    // It is no event, but comes by between two of them.
    int Descriptor() override { return -1; }
    bool RaiseWhatIsPending() override;

private:
    const Clock& Time;
    Watcher& Told;
    std::set<Text> ReplacedFolders; ///< that were told of
};

} // namespace backends
