// SPDX-License-Identifier: MIT
// The data of a device as one zip file, out and in, and what was done.
#pragma once

#include "apps/start/exit_status.h"
#include "backends/loop/back_end.h"

#include <iosfwd>
#include <string>

namespace apps {

struct ArchiveWish {
    std::string Program; ///< its name, for standard error
    std::string Root;    ///< root folder of the device
    std::string Journal; ///< folder of its journal; empty for none
    std::string Zip;
    bool IsForPeople = false;       ///< plain lines, not objects
    std::ostream* Errors = nullptr; ///< what a person must know; null for standard error
};

/// Writes the zip file, and an object for each file in it. Reads the device only: another program may work on it.
start::ExitStatus ExportZip(const ArchiveWish& wish, backends::BackEnd& device, std::ostream& out);

/// Takes the zip file in, and writes an object for each file and for each record that differs. The caller has the lock
/// of the root folder.
start::ExitStatus ImportZip(const ArchiveWish& wish, backends::BackEnd& device, std::ostream& out);

} // namespace apps
