// SPDX-License-Identifier: MIT
// The files and folders of a run, as far as they depend on the command line and the environment.
#pragma once

#include "apps/quorin/window_options.h"
#include "backends/host/second_start.h"

#include <string>

namespace quorin {

/// Sets root and settings if they were not given. Returns an empty text, or a message about what is missing.
std::string FindPlaces(Options& options);

/// Returns the file of the form's settings. REQUIRES: FindPlaces has found all.
std::string SettingsOf(const Options& options);

/// Returns the folder from which relative paths start; empty if it was deleted.
std::string CurrentFolder();

/// Returns where second starts on a root folder reach the window that is open.
backends::StartPlace PlaceOfStarts(const std::string& root);

/// Where a run keeps what, as full paths. Empty for what is not kept.
struct KeptPlaces {
    std::string Root;
    std::string Settings;
    std::string WindowSettings;
    std::string Journal;
    std::string Drafts;
};

/// `windowSettings`: the file of the window's own settings.
KeptPlaces PlacesOf(const Options& options, const std::string& windowSettings);

/// Removes what killed programs have left half-written.
void RemoveLeftFiles(const Options& options);

} // namespace quorin
