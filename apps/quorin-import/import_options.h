// SPDX-License-Identifier: MIT
// What quorin-import is asked for.
#pragma once

#include "backends/host/host_device.h"

#include <string>
#include <vector>

namespace importer {

/// A column of the CSV file that fills a field of another name.
struct Mapping {
    std::string Column;
    std::string Field;
};

struct Options {
    backends::DeviceOptions Device; ///< with its root folder
    std::string File;
    std::string Driver;
    std::string Alias; ///< empty for none
    std::vector<Mapping> Maps;
    char Delimiter = ',';
    std::string LineEnd = "\r\n"; ///< of raw CSV
    bool Raw = false;
    bool DryRun = false;
};

} // namespace importer
