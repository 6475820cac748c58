// SPDX-License-Identifier: MIT
#include "handover/archive_in.h"

#include "handover/archive_names.h"
#include "handover/keyed_rows.h"
#include "handover/zip_end.h"
#include "src/text/text.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <sys/stat.h>

namespace handover {

namespace {

constexpr std::uint64_t LongestName = 1000;     // bytes
constexpr std::size_t ReadAtOnce = 1 << 18;     // bytes
constexpr unsigned long Encrypted = 0x1 | 0x40; // flags of an entry
constexpr int KindShift = 16;                   // of the mode of a Unix file in the attributes of an entry
constexpr const char* CutOrNone = "it is no zip file, or was cut off: copy it again";
constexpr const char* Damaged = "it is damaged: copy it again";

/// Returns why an entry of this kind is refused; empty for a file, or a folder.
std::string WhyNoFile(const unz_file_info64& info, bool isFolder) {
    const unsigned long kind = (info.external_fa >> KindShift) & S_IFMT;
    if (kind != 0 && kind != (isFolder ? S_IFDIR : S_IFREG))
        return "it is a link or another special file";
    if ((info.flag & Encrypted) != 0)
        return "it is encrypted";
    if (info.compression_method != 0 && info.compression_method != Z_DEFLATED)
        return "it is packed in a way that is not read here";
    return isFolder && info.uncompressed_size != 0 ? "it is a folder with a content" : "";
}

std::string WhyTooLarge(const ArchiveEntry& entry) {
    if (entry.Bytes > LargestFile)
        return "it is larger than any file of a device";
    if (entry.Bytes > FreelyPacked && entry.Bytes / MostRatio > entry.Packed)
        return "it would unpack to more than " + std::to_string(MostRatio) + " times its size";
    return {};
}

std::string About(const std::string& name, const std::string& why) {
    return why.empty() ? why : "\"" + name + "\": " + why;
}

} // namespace

ArchiveIn::~ArchiveIn() {
    if (Zip_ != nullptr)
        unzClose(Zip_);
}

std::string ArchiveIn::Open(int file) {
    struct stat found {};
    if (::fstat(file, &found) != 0)
        return backends::ReasonOf(errno);
    File_ = {.Number = file, .Size = found.st_size};
    zlib_filefunc64_def calls = CallsOn(File_);
    Zip_ = unzOpen2_64("", &calls);
    if (Zip_ == nullptr)
        return File_.Error == backends::NoError ? CutOrNone : Damaged;
    std::string why = ReadComment();
    if (why.empty())
        why = ReadDirectory();
    if (why.empty())
        why = CheckNames();
    return why.empty() ? CheckContents() : why;
}

std::string ArchiveIn::ReadComment() {
    std::array<char, 64> text{};
    if (unzGetGlobalComment(Zip_, text.data(), text.size() - 1) < 0)
        return Damaged;
    const std::string_view comment = text.data();
    const std::string_view mark = ArchiveMark;
    int version = 0;
    if (comment.starts_with(mark))
        std::from_chars(comment.data() + mark.size(), comment.data() + comment.size(), version);
    return version > ArchiveVersion ? "a newer program has written it: read it with that one" : "";
}

std::string ArchiveIn::ReadDirectory() {
    unz_global_info64 info{};
    if (unzGetGlobalInfo64(Zip_, &info) != UNZ_OK)
        return Damaged;
    if (info.number_entry > MostFiles)
        return "it has more files than any device";
    std::uint64_t count = 0;
    int at = unzGoToFirstFile(Zip_);
    for (; at == UNZ_OK; at = unzGoToNextFile(Zip_), ++count)
        if (std::string why = AddEntry(); !why.empty())
            return why;
    // The library takes 65535 for a number that had no room, and fails behind the last one.
    if (at != UNZ_END_OF_LIST_OF_FILE && (at != UNZ_BADZIPFILE || info.number_entry != MostCounted + 1))
        return Damaged;
    if (count != info.number_entry)
        return Damaged;
    std::uint64_t bytes = 0;
    std::uint64_t packed = 0;
    for (const ArchiveEntry& each : Entries_) {
        bytes += each.Bytes;
        packed += each.Packed;
    }
    if (packed > static_cast<std::uint64_t>(File_.Size))
        return "its files lie one upon the other";
    return bytes > LargestTotal ? "it would unpack to more than any device has" : "";
}

std::string ArchiveIn::AddEntry() {
    unz_file_info64 info{};
    std::string name(LongestName, '\0');
    unz64_file_pos place{};
    if (unzGetCurrentFileInfo64(Zip_, &info, name.data(), name.size(), nullptr, 0, nullptr, 0) != UNZ_OK ||
        unzGetFilePos64(Zip_, &place) != UNZ_OK)
        return Damaged;
    if (info.size_filename > name.size())
        return "a name in it is too long";
    name.resize(info.size_filename);
    const bool isFolder = name == "Databases/" || name == "journal/";
    if (std::string why = WhyNoFile(info, isFolder); !why.empty())
        return About(name, why);
    if (isFolder)
        return {};
    const ArchiveEntry entry{name, info.uncompressed_size, info.compressed_size, place.pos_in_zip_directory,
                             place.num_of_file};
    Index_.emplace(name, Entries_.size());
    Entries_.push_back(entry);
    return About(name, WhyTooLarge(entry));
}

std::string ArchiveIn::CheckNames() {
    std::set<std::string> registered;
    if (const ArchiveEntry* const entry = Find(RegisterName)) {
        std::string bytes;
        if (std::string why = Read(*entry, bytes); !why.empty())
            return About(entry->Name, why);
        for (const KeyedRow& row : KeyedRowsOf(bytes))
            registered.insert(FieldOf(row, "FILE"));
    }
    ArchiveNames names(std::move(registered));
    for (const ArchiveEntry& each : Entries_)
        if (std::string why = names.Add(each.Name); !why.empty())
            return About(each.Name, why);
    return {};
}

std::string ArchiveIn::CheckContents() {
    std::string bytes;
    for (const ArchiveEntry& each : Entries_)
        if (std::string why = Read(each, bytes); !why.empty())
            return About(each.Name, why);
    return {};
}

const ArchiveEntry* ArchiveIn::Find(const std::string& name) const {
    const auto found = Index_.find(name);
    return found == Index_.end() ? nullptr : &Entries_[found->second];
}

std::string ArchiveIn::Read(const ArchiveEntry& entry, std::string& bytes) {
    const unz64_file_pos place{entry.Directory, entry.Number};
    bytes.clear();
    if (unzGoToFilePos64(Zip_, &place) != UNZ_OK || unzOpenCurrentFile(Zip_) != UNZ_OK)
        return Damaged;
    int count = 0;
    do {
        const std::size_t held = bytes.size();
        const std::uint64_t left = entry.Bytes - held + 1; // one more shows where there is more
        bytes.resize(held + static_cast<std::size_t>(std::min<std::uint64_t>(ReadAtOnce, left)));
        count = unzReadCurrentFile(Zip_, bytes.data() + held, static_cast<unsigned>(bytes.size() - held));
        bytes.resize(held + static_cast<std::size_t>(std::max(count, 0)));
    } while (count > 0 && bytes.size() <= entry.Bytes);
    const int end = unzCloseCurrentFile(Zip_); // compares the checksum
    if (File_.Error != backends::NoError)
        return modStringTools::ToBytes(platform::ErrorText(File_.Error));
    return count != 0 || end != UNZ_OK || File_.IsShort || bytes.size() != entry.Bytes ? Damaged : "";
}

} // namespace handover
