// SPDX-License-Identifier: MIT
// Finds a download by what a person calls it.
#pragma once

#include "src/text/text.h"

namespace companion {

struct DownloadFound {
    Text Driver;
    Text File;   ///< without a folder; empty if there is none, or not one alone
    Text Alias;  ///< empty for none
    Text WhyNot; ///< why it can't be opened, as a sentence; empty if it can
};

/// Finds a download of any driver by the name of its file or, if there is none, by its alias. REQUIRES: no record is on
/// the screen, because the open table is closed.
DownloadFound FindDownload(const Text& name);

} // namespace companion
