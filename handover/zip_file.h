// SPDX-License-Identifier: MIT
// An open file as the zip library reads and writes it.
#pragma once

#include "backends/files/host_files.h"

#include <minizip/ioapi.h>

#include <cstdint>

namespace handover {

struct ZipFile {
    int Number = -1; ///< its descriptor
    std::int64_t Offset = 0;
    std::int64_t Size = 0;
    backends::ErrorNumber Error = backends::NoError; ///< the first failure of the machine
};

/// Returns the calls of the library for a file, which must exist as long as they are used.
zlib_filefunc64_def CallsOn(ZipFile& file);

} // namespace handover
