// SPDX-License-Identifier: MIT
// Copies what is new on a device to a folder, under the device's name and the day. Nothing there is ever replaced by
// something that does not hold it, and a file is there whole or not at all.
#pragma once

#include "handover/content.h"
#include "handover/receipt.h"

#include <functional>
#include <string>
#include <vector>

namespace handover {

struct Plan {
    std::string Device; ///< its name, as a person gave it
    std::string Time;   ///< local, "2026-11-23T17:30:05"; its day is that of the folder
    std::string Target; ///< an existing folder
    std::string Root;   ///< the root folder, which keeps a receipt
    /// Lists the files of the device. It is asked again after the register was read: a download that is begun between
    /// is in a list that is newer than the register which is handed over.
    std::function<Listing()> List;
};

/// What became of a file. Told as it happens.
struct FileResult {
    HandedFile File;
    bool Copied = false; ///< false if it was there already
    std::string Why;     ///< why it was not handed over, with what to do; empty on success. Without a name it is a
                         ///< sentence about the whole
};

struct Result {
    std::string WhyNot; ///< why nothing was begun, as a sentence; empty if it was
    std::size_t Copied = 0;
    std::size_t Same = 0;      ///< there already
    std::size_t Failed = 0;    ///< files and receipts
    std::size_t OddLines = 0;  ///< of the receipts, which are kept
    std::uint64_t Records = 0; ///< that were handed over for the first time
};

using Tell = std::function<void(const FileResult&)>;

Result HandOver(const Plan& plan, const Tell& tell);

/// Returns how many records of downloads a receipt does not have: those behind the ones that were handed over, and all
/// of a download in which one of these was changed. A file that can't be read counts as none.
std::uint64_t RecordsNotHandedOver(const std::vector<Source>& sources, const Receipt& receipt);

/// Returns a name without the characters that some file system refuses, which become "_", and not longer than 100
/// bytes; "device" for none.
std::string FolderNameOf(const std::string& device);

} // namespace handover
