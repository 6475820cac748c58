// SPDX-License-Identifier: MIT
// The register of all downloads of all drivers: the table "qrnctrl.txt", one row a download, oldest first.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

/// Line 1 of the register.
inline const Text ControlHeader = u"DRIVER|FILE|DATE|ALIAS";

struct DownloadState {
    std::vector<Text> DownloadFiles;   ///< files of the current driver's downloads; entry n stands at n less 1
    std::vector<Text> DownloadAliases; ///< their given names, same index, empty for none
};
inline DownloadState Downloads;

void LoadDownloadList(const Text& driver);

/// Fills ScrDownloads and takes the first download in hand, if there is one.
void ShowDownloadList(const Text& driver);

/// Registers a download under the next number; its file comes with the first opening. Nothing when the last download
/// of the register does not bear a name of this system. A name with no number in it is a run-time failure.
void NewDownload(const Text& driver);

/// Asks for a name and stores it; the file keeps its own.
void RenameDownload(Text driver, Text file);

/// Deletes the file and its row after two questions.
void DeleteDownload(Text driver, Text file);

/// The decimal text of a number with zeros put in front up to `width`.
Text PadNumber(std::int32_t value, std::int16_t width);

} // namespace modQuorin
