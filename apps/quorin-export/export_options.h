// SPDX-License-Identifier: MIT
// What quorin-export is asked for.
#pragma once

#include "backends/host/host_device.h"
#include "exporting/csv.h"
#include "exporting/table_view.h"

#include <string>
#include <vector>

namespace exporter {

struct FormatRow;

struct Options {
    backends::DeviceOptions Device;   ///< with its root folder
    std::vector<std::string> Sources; ///< downloads, aliases and files, as they were named
    std::string Driver;               ///< for all of them; empty for the one that each has
    const FormatRow* Format = nullptr;
    std::string Output; ///< a file, or a folder for several; empty for standard output
    std::string Name;   ///< of the device, in the format "long"
    bool Raw = false;
    exporting::CsvForm Csv;
    exporting::Plan Plan;
};

} // namespace exporter
