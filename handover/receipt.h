// SPDX-License-Identifier: MIT
// What was handed over, as it is kept on both sides.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace handover {

inline constexpr int ReceiptVersion = 1;
inline constexpr const char* ReceiptName = "hand-over.jsonl";

/// A file that is whole at a target.
struct HandedFile {
    std::string Time;   ///< local, "2026-11-23T17:30:05"
    std::string Device; ///< its name
    std::string Target; ///< the folder that was named
    std::string File;   ///< on the device: "qrn0001.txt", "Databases/qrn0001.sqlite", "journal/2026-11-23-....jsonl"
    std::string As;     ///< at the target, beneath the device's folder: "2026-11-23/qrn0001.txt"
    std::uint64_t Bytes = 0;
    std::uint64_t Records = 0; ///< 0 for what is no download
    std::string Sha256;        ///< of these bytes
};

/// A receipt: a line that says its version, and a line for each file.
class Receipt {
public:
    /// Reads a receipt; one that is missing is empty. Returns why it can't be used, as a part of a sentence: nothing
    /// may be written over it then.
    std::string Read(const std::string& path);
    /// Replaces the file as a whole. Returns why it could not, or an empty text.
    std::string Write(const std::string& path) const;

    /// Adds a file, unless the same content of it is there already.
    void Add(const HandedFile& file);
    /// Drops the lines of what had a file's place at the target before, which is not there any more.
    void DropReplacedBy(const HandedFile& file);
    /// Returns the line of a file with this content; null if there is none. Valid until the next change.
    const HandedFile* Find(const std::string& file, const std::string& sha256) const;
    const std::vector<HandedFile>& Files() const { return Files_; }
    /// Lines that are no line of a receipt. They are kept as they are.
    std::size_t OddLines() const { return Odd_.size(); }

private:
    std::vector<HandedFile> Files_;
    std::vector<std::string> Odd_;
};

} // namespace handover
