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

    using Kept = DraftFolder::Kept;

    /// Returns the drafts of this root folder, the newest first: of two drafts of one record the newer one has more.
    std::vector<Kept> OfLastRuns() const { return Folder_.Of(Root_); }

    /// Returns those of them whose record is not in its file, and removes the others. The device must serve the
    /// application (BackEnd::Serve).
    std::vector<Kept> Unsaved();

    /// Returns a line for each draft that can't be read, of whatever root folder: its path and the reason.
    std::vector<Text> Unreadable() const { return Folder_.Unreadable(); }

    // What can be done with a draft before the form is started. The device must serve the application (BackEnd::Serve).

    /// Returns false, and removes the draft, if its record is in the file. Else sets why it can't be put back.
    bool IsUnsaved(const Kept& draft, Text& whyNot);
    /// Writes the draft to its record and removes it. Returns why it could not; empty on success.
    Text PutBack(const Kept& draft);
    void Forget(const Kept& draft);

    /// Keeps drafts of this device from now on, and follows what becomes of the records of those that are left. A draft
    /// that can't be written is a notice.
    void Attach(BackEnd& device);

    /// True if the draft of what is on the screen is on the medium.
    bool KeepsRecord() const { return Keeper_.Keeps(); }

    // Raises no event: it is an EventSource in order to be called in each round.
    bool RaiseWhatIsPending() override;

private:
    DraftFolder Folder_;
    companion::RootId Root_;
    companion::DraftKeeper Keeper_;
    BackEnd* Device_ = nullptr; ///< since Attach
};

} // namespace backends
