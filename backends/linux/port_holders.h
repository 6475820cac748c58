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
    std::string Process;  ///< its number; empty when that is not known
    std::string LockFile; ///< what tells of it; empty when the program has been seen with the device open
};

/// Who has which of these devices open, by canonical path. Programs of other users are seen by root alone. This process
/// does not count.
std::map<std::string, PortHolder> HoldersByProcess(const std::vector<std::string>& paths,
                                                   const std::string& processFolder = "/proc");

/// Who has put a lock file for a device called so ("ttyUSB0"). A lock of a process that has ended counts for nothing;
/// one that does not name its process counts, since nothing shows that it is void.
std::optional<PortHolder> HolderByLock(const std::string& deviceName, const std::string& lockFolder = "/run/lock",
                                       const std::string& processFolder = "/proc");

} // namespace backends
