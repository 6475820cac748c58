// SPDX-License-Identifier: MIT
// What quorin-export is asked for.
#pragma once

#include "backends/host/host_device.h"
#include "exporting/csv.h"
#include "exporting/table_view.h"
#include "plotting/request.h"

#include <string>
#include <vector>

namespace exporter {

struct FormatRow;

struct PlotOptions {
    plotting::Request Request;
    bool HasKind = false;      ///< it was asked for
    int Width = 0, Height = 0; ///< pixels, or columns and rows; 0 for what is usual
    bool Watch = false;
};

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
    PlotOptions Plot;
};

} // namespace exporter
