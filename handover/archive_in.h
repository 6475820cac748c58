// SPDX-License-Identifier: MIT
// Reads a zip file of a device. It may come from anywhere: all of it is checked before a file of it is used.
#pragma once

#include "handover/zip_file.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace handover {

/// The comment of the zip file; a later format has a higher number. One that another tool has packed anew has none.
inline constexpr const char* ArchiveMark = "Quorin data ";
inline constexpr int ArchiveVersion = 1;

struct ArchiveEntry {
    std::string Name; ///< "qrn0001.txt", "Databases/drivers.sqlite"
    std::uint64_t Bytes = 0;
    std::uint64_t Packed = 0;                ///< bytes in the zip file
    std::uint64_t Directory = 0, Number = 0; ///< its place, for the library
};

class ArchiveIn {
public:
    ArchiveIn() = default;
    ArchiveIn(const ArchiveIn&) = delete;
    ArchiveIn& operator=(const ArchiveIn&) = delete;
    ~ArchiveIn();

    /// Opens a file by its descriptor, which must stay open, and checks all of it: names, kinds, sizes, each content by
    /// its checksum. Returns why it can't be used, as a part of a sentence; empty if it can.
    std::string Open(int file);

    const std::vector<ArchiveEntry>& Entries() const { return Entries_; } ///< in the order of the file
    const ArchiveEntry* Find(const std::string& name) const;              ///< null if there is none

    /// Reads a file. Returns why it can't, as a part of a sentence, or an empty text.
    std::string Read(const ArchiveEntry& entry, std::string& bytes);

private:
    std::string ReadComment();
    std::string ReadDirectory();
    std::string AddEntry();
    std::string CheckNames();
    std::string CheckContents();

    ZipFile File_;
    void* Zip_ = nullptr;
    std::vector<ArchiveEntry> Entries_;
    std::map<std::string, std::size_t> Index_; ///< of Entries_, by name
};

} // namespace handover
