// SPDX-License-Identifier: MIT
// The folder of the drafts: one file for each record that is not saved yet.
#pragma once

#include "companion/draft_keeper.h"

#include <string>
#include <vector>

namespace backends {

class DraftFolder final : public companion::DraftStore {
public:
    /// The folder is created with the first draft, accessible to its owner alone.
    explicit DraftFolder(std::string folder) : Folder_(std::move(folder)) {}

    Text Write(const std::string& name, const std::string& bytes) override;
    void Remove(const std::string& name) override;

    struct Kept {
        std::string Name;
        companion::Draft Content;
    };
    /// Returns the drafts of a root folder, the newest first. What can't be read is left out, and left where it is.
    std::vector<Kept> Of(const companion::RootId& root) const;
    /// Returns a line for each file that is no draft, of whatever root folder: its path, and what is wrong with it.
    std::vector<Text> Unreadable() const;

private:
    std::string Folder_;
};

/// Returns what identifies a root folder; all zeros if it can't be opened.
companion::RootId RootIdOf(const std::string& folder);

} // namespace backends
