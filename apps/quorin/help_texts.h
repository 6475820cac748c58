// SPDX-License-Identifier: MIT
// What the pages of the help are made of: documents that the build puts into the program, and facts of this run.
#pragma once

#include "apps/quorin/window_places.h"
#include "companion/help_pages.h"

#include <string>
#include <vector>

namespace quorin {

// The names of pages that are no documents.
inline constexpr const char* PageOfScreen = "screen.md";
inline constexpr const char* PageOfKeys = "keys.md";
inline constexpr const char* PageOfLeftFiles = "left-files.md";
inline constexpr const char* PageOfProgram = "about.md";
inline constexpr const char* RecoveryCard = "recovery-card.md";

/// Returns the text of a document by its file's name; empty if it is not built in.
std::string BuiltInDocument(const std::string& name);

/// Returns all pages, in the order of the list: the screen that is shown, the recovery card, the documents, and what is
/// made of the facts. `folder`: the one of the data, which is looked through for left-over files.
std::vector<companion::HelpPage> HelpPages(const KeptPlaces& places, const std::string& folder);

/// What is linked to the program, with its licence.
std::vector<companion::PartRow> PartsOfOthers();

} // namespace quorin
