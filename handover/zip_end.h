// SPDX-License-Identifier: MIT
// The end of a zip file with more files than 16 bits count.
#pragma once

#include "handover/zip_file.h"

#include <cstddef>
#include <cstdint>

namespace handover {

inline constexpr std::uint64_t MostCounted = 0xfffe; ///< files; 0xffff says that the number is in another record

/// Puts the record of the number of files before the end of a finished zip file, as the format asks for beyond
/// MostCounted. Some versions of the library leave it out: it is only written if it is missing. `comment`: the length
/// of the comment in bytes. Returns false on failure.
bool CompleteEnd(ZipFile& file, std::uint64_t files, std::size_t comment);

} // namespace handover
