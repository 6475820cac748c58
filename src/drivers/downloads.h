// SPDX-License-Identifier: MIT
// The register of all downloads of all drivers: the table "qrnctrl.txt", one row a download, oldest first.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

/// Line 1 of the register.
inline const Text ControlHeader = u"DRIVER|FILE|DATE|ALIAS";

struct DownloadState {
    std::vector<Text> DownloadFiles;   ///< files of the current driver's downloads; entry n has index n-1
    std::vector<Text> DownloadAliases; ///< their aliases, same index, empty for none
    Text DownloadLines; ///< their lines in the register, each ended by a line feed: one text, for registers that are
                        ///< long
};
inline DownloadState Downloads;

void LoadDownloadList(const Text& driver);

/// Fills ScrDownloads and selects the first download, if there is one.
void ShowDownloadList(const Text& driver);

/// Registers a download under the next number; its file is created when it is first opened. Does nothing if the name of
/// the last download in the register does not begin with "qrn". If that name has no number in it, it is a run-time
/// failure.
void NewDownload(const Text& driver);

// For what adds a download from outside of the form. REQUIRES: no record is on the screen, because the open table is
// closed.

/// Returns the file that NewDownload would register. Empty if it would register none. Nothing is created.
Text NextDownload();

/// Adds a row to the register. Returns false if the register does not have it afterwards.
bool RegisterDownload(const Text& driver, const Text& file, const Text& alias);

/// Deletes the file and its row of the register, without a question. Does nothing if the register has no such row.
void EraseDownload(const Text& driver, const Text& file);

/// Asks for an alias and stores it; the file keeps its name.
void RenameDownload(Text driver, Text file);

/// Deletes the file and its row, after asking twice.
void DeleteDownload(Text driver, Text file);

/// Returns the line of the register that names this file, as it was when the list was loaded last; empty if that list
/// does not have the file.
Text ListedLineOf(const Text& file);

/// A row of the register.
struct RegisteredDownload {
    Text Driver;
    Text File;
    Text Alias;
    Text Date; ///< of its creation, eight digits
};
/// Returns all rows of the register, and closes it. Nothing is created if there is none.
std::vector<RegisteredDownload> RegisteredDownloads();

/// Adds a row of another device's register, with its date, in one step: before the first row with a higher number, so
/// that the last row keeps the number from which NewDownload goes on. Returns false if the register does not have it
/// afterwards.
bool TakeUpDownload(const RegisteredDownload& download);

/// Returns today's date as the register writes it: eight digits, the year first.
Text Today();

/// Returns the line of the register that names this file, and closes the register; empty if there is none.
Text RegisterLineOf(const Text& file);

/// Returns a number in decimal, with zeros before it up to `width` characters.
Text PadNumber(std::int32_t value, std::int16_t width);

} // namespace modQuorin
