// SPDX-License-Identifier: MIT
// Finds the program that uses a serial device, as far as this user may see it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace backends {

struct PortHolder {
    std::string Program;  ///< its short name, such as "ModemManager"; empty if only a lock file shows it
    std::string Process;  ///< its process id; empty if not known
    std::string LockFile; ///< the lock file; empty if the program was seen with the device open
};

/// Returns which program has each of these devices open, by canonical path. Only root sees programs of other users.
/// This process is not included.
std::map<std::string, PortHolder> HoldersByProcess(const std::vector<std::string>& paths,
                                                   const std::string& processFolder = "/proc");

/// Returns the program that has locked the device of this name ("ttyUSB0") by a lock file. The lock of a process that
/// has ended is ignored; one that names no process is respected, because nothing shows that it is void. A lock of this
/// process is ignored.
std::optional<PortHolder> HolderByLock(const std::string& deviceName, const std::string& lockFolder = "/run/lock",
                                       const std::string& processFolder = "/proc");

} // namespace backends
