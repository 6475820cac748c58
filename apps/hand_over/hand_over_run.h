// SPDX-License-Identifier: MIT
// Hands a device over: copies what is new on it to a folder, and writes what was done.
#pragma once

#include "apps/start/exit_status.h"
#include "backends/loop/back_end.h"
#include "handover/content.h"

#include <iosfwd>
#include <string>

namespace apps {

struct HandOverWish {
    std::string Program;      ///< its name, for standard error
    std::string Root;         ///< root folder of the device
    std::string Journal;      ///< folder of its journal; empty for none
    std::string Target;       ///< the folder to hand over to
    std::string DeviceName;   ///< as the folder at the target is called
    bool IsForPeople = false; ///< plain lines, not objects
};

/// Returns the time of now as a receipt has it.
std::string LocalTime();

/// The driver packages that lie in the data folder: an office does not collect them, another device needs them.
enum class Packages { Without, With };

/// Returns the files of a device: those of its data folder, its line databases, and the days of its journal in a folder
/// (empty for none). The open table of the form is closed.
handover::Listing FilesOf(const std::string& root, const std::string& journal, Packages packages = Packages::Without);

/// Hands over, and writes an object for each file. Reads the device only: another program may work on it.
start::ExitStatus HandOver(const HandOverWish& wish, backends::BackEnd& device, std::ostream& out);

/// Writes how many records were never handed over, as an object; 0 if no hand-over was ever made from this root folder.
start::ExitStatus CountNotHandedOver(const HandOverWish& wish, backends::BackEnd& device, std::ostream& out);

} // namespace apps
