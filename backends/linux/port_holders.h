// SPDX-License-Identifier: MIT
// Which program uses a serial device, as far as this user may see that.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace backends {

struct PortHolder {
    std::string Program;  ///< its short name, such as "ModemManager"; empty when only a lock file tells of it
    std::string Process;  ///< its process id; empty if not known
    std::string LockFile; ///< the lock file; empty if the program was seen with the device open
};

/// Returns which program has each of these devices open, by canonical path. Only root sees programs of other users.
/// This process is not included.
std::map<std::string, PortHolder> HoldersByProcess(const std::vector<std::string>& paths,
                                                   const std::string& processFolder = "/proc");

/// Who has put a lock file for a device called so ("ttyUSB0"). A lock of a process that has ended counts for nothing;
/// one that does not name its process counts, since nothing shows that it is void.
std::optional<PortHolder> HolderByLock(const std::string& deviceName, const std::string& lockFolder = "/run/lock",
                                       const std::string& processFolder = "/proc");

} // namespace backends
