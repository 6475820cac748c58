// SPDX-License-Identifier: MIT
// An open file as the zip library reads and writes it.
#pragma once

#include "backends/files/host_files.h"

#include <minizip/ioapi.h>

#include <cstdint>
#include <string>

namespace handover {

struct ZipFile {
    int Number = -1; ///< its descriptor
    std::int64_t Offset = 0;
    std::int64_t Size = 0;
    bool IsShort = false;    ///< something was asked for behind its end: the library takes zeros for it
    std::string Part = {};   ///< of the file, as it was read: the library reads numbers byte by byte
    std::int64_t PartAt = 0; ///< its place
    backends::ErrorNumber Error = backends::NoError; ///< the first failure of the machine
};

/// Returns the calls of the library for a file, which must exist as long as they are used.
zlib_filefunc64_def CallsOn(ZipFile& file);

} // namespace handover
