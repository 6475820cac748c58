// SPDX-License-Identifier: MIT
// The content of files, read in one consistent state and written as a whole.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace handover {

enum class Kind { Table, Download, Register, Database, DownloadDatabase, Journal };

/// A file of the device.
struct Source {
    std::string Name; ///< beneath the folder of a day: "qrn0001.txt", "Databases/drivers.sqlite"
    std::string Path; ///< on the host
    Kind Is = Kind::Table;
};

/// The files of a device, and why others could not be listed, as sentences.
struct Listing {
    std::vector<Source> Sources = {};
    std::vector<std::string> Problems = {};
};

struct Content {
    std::string Bytes;
    std::uint64_t Records = 0; ///< of a download
};

/// Reads a file while other programs may work on it: text tables are replaced as a whole, a line database is read under
/// its lock, and of a journal the lines that are complete. Returns why it can't, or an empty text.
std::string ReadContent(const Source& source, Content& content);

/// Writes a file beside the one of this name, has it on the medium, reads it back, compares the hashes, and gives it
/// the name. Returns why it could not, or an empty text: what had the name is as it was then.
std::string WriteWhole(const std::string& path, std::string_view bytes);

} // namespace handover
