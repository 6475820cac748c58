// SPDX-License-Identifier: MIT
// The drafts of a device: kept while a record is on the screen, and given back before the form is started.
#pragma once

#include "backends/host/draft_folder.h"
#include "backends/loop/back_end.h"

#include <string>
#include <vector>

namespace backends {

class Drafts final : public EventSource {
public:
    /// `folder`: where the drafts are kept. `root`: the root folder of the device, which must exist.
    Drafts(const std::string& folder, const std::string& root);

    struct Unsaved {
        std::string Name;
        companion::Draft Content;
        Text WhyNot; ///< why it can't be put back; empty if it can
    };
    /// Returns the records of this root folder that were not saved, the oldest first. A draft whose record is in its
    /// file is removed. Call it, and Answer, before the form is started.
    std::vector<Unsaved> OfLastRuns(BackEnd& device);
    /// Writes the draft to its record and removes it. Returns why it could not; empty on success.
    Text PutBack(const Unsaved& draft);
    void Forget(const Unsaved& draft) { Folder_.Remove(draft.Name); }

    /// Keeps drafts of this device from now on. A draft that can't be written is a notice.
    void Attach(BackEnd& device);

    // Raises no event: it is an EventSource in order to be called in each round.
    bool RaiseWhatIsPending() override;

private:
    DraftFolder Folder_;
    companion::RootId Root_;
    companion::DraftKeeper Keeper_;
};

} // namespace backends
