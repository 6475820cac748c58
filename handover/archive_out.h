// SPDX-License-Identifier: MIT
// Writes the data of a device as one zip file. The same data is the same file, byte for byte.
#pragma once

#include "handover/content.h"

#include <cstdint>
#include <functional>
#include <string>

namespace handover {

struct ExportPlan {
    std::string Zip;  ///< the file to write; there must be none of this name
    std::string Root; ///< root folder of the device
    /// Lists the files of the device. It is asked again after the register was read, as for a hand-over.
    std::function<Listing()> List;
};

/// A file that is in the zip file.
struct ExportedFile {
    std::string Name;
    std::uint64_t Bytes = 0;
    std::uint64_t Records = 0; ///< of a download
    std::string Sha256;
};

struct ExportResult {
    std::string WhyNot;              ///< why nothing was begun, as a sentence; empty if it was
    std::vector<std::string> Failed; ///< why there is no zip file, as sentences; empty on success
    std::vector<ExportedFile> Files; ///< in the order of the zip file
    std::uint64_t Bytes = 0;         ///< of the zip file
};

/// Writes the zip file beside its name, reads it back from the medium, compares each file, and gives it the name. It is
/// there with all files, or not at all.
ExportResult ExportZip(const ExportPlan& plan);

} // namespace handover
