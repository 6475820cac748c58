// SPDX-License-Identifier: MIT
#include "exporting/zip_check.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <vector>
#include <zlib.h>

namespace exporting {

namespace {

// Places in the records of a ZIP file, in bytes; all numbers are little-endian.
constexpr std::size_t EndLength = 22;
constexpr std::size_t EntryLength = 46;
constexpr std::size_t LocalLength = 30;
constexpr std::string_view EndMark = "PK\x05\x06";
constexpr std::string_view EntryMark = "PK\x01\x02";
constexpr std::size_t EndKept = 256; // of either end of a document; no tag in question is longer

std::uint32_t NumberAt(std::string_view bytes, std::size_t at, std::size_t length) {
    std::uint32_t number = 0;
    for (std::size_t i = length; i-- > 0;)
        number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

std::string BytesAt(std::ifstream& file, std::uint64_t at, std::size_t count) {
    std::string bytes(count, '\0');
    file.clear();
    file.seekg(static_cast<std::streamoff>(at));
    file.read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

struct Entry {
    std::uint32_t Checksum, Packed, Place;
};

/// Returns nothing if the file has no directory of its entries.
std::vector<Entry> EntriesOf(std::ifstream& file) {
    file.seekg(0, std::ios::end);
    const auto size = static_cast<std::uint64_t>(file.tellg());
    const std::string end = size < EndLength ? std::string() : BytesAt(file, size - EndLength, EndLength);
    if (end.substr(0, 4) != EndMark)
        return {};
    const std::string directory = BytesAt(file, NumberAt(end, 16, 4), NumberAt(end, 12, 4));
    std::vector<Entry> entries;
    for (std::size_t at = 0; directory.size() - at >= EntryLength && directory.compare(at, 4, EntryMark) == 0;) {
        entries.push_back(
            {NumberAt(directory, at + 16, 4), NumberAt(directory, at + 20, 4), NumberAt(directory, at + 42, 4)});
        at += EntryLength + NumberAt(directory, at + 28, 2) + NumberAt(directory, at + 30, 2) +
              NumberAt(directory, at + 32, 2);
        if (at > directory.size())
            return {};
    }
    return entries.size() == NumberAt(end, 10, 2) ? entries : std::vector<Entry>();
}

/// True if a document that begins and ends so ends in the end tag of its outermost element.
bool EndsInItsEndTag(std::string_view head, std::string_view tail) {
    const std::size_t declaration = head.find("?>");
    const std::size_t tag = declaration == head.npos ? head.npos : head.find('<', declaration);
    if (tag == head.npos)
        return false;
    const std::string_view name = head.substr(tag + 1, head.find_first_of(" \n/>", tag) - tag - 1);
    const std::string end = "</" + std::string(name) + ">";
    tail = tail.substr(0, tail.find_last_not_of("\r\n") + 1);
    return tail.size() >= end.size() && tail.substr(tail.size() - end.size()) == end;
}

/// Unpacks one document, of which only the beginning and the end are kept.
class Unpacking {
public:
    Unpacking() { inflateInit2(&Stream_, -MAX_WBITS); }
    Unpacking(const Unpacking&) = delete;
    Unpacking& operator=(const Unpacking&) = delete;
    ~Unpacking() { inflateEnd(&Stream_); }

    bool Take(std::string& packed) {
        Stream_.next_in = reinterpret_cast<Bytef*>(packed.data());
        Stream_.avail_in = static_cast<uInt>(packed.size());
        while (Result_ == Z_OK) {
            std::array<char, 1 << 16> part;
            Stream_.next_out = reinterpret_cast<Bytef*>(part.data());
            Stream_.avail_out = static_cast<uInt>(part.size());
            Result_ = inflate(&Stream_, Z_NO_FLUSH);
            Keep({part.data(), part.size() - Stream_.avail_out});
            if (Result_ == Z_BUF_ERROR || (Result_ == Z_OK && Stream_.avail_in == 0 && Stream_.avail_out > 0)) {
                Result_ = Z_OK;
                break;
            }
        }
        return Result_ == Z_OK || Result_ == Z_STREAM_END;
    }
    bool IsWhole(std::uint32_t checksum) const {
        return Result_ == Z_STREAM_END && Checksum_ == checksum && EndsInItsEndTag(Head_, Tail_);
    }

private:
    void Keep(std::string_view part) {
        Checksum_ = crc32(Checksum_, reinterpret_cast<const Bytef*>(part.data()), static_cast<uInt>(part.size()));
        Head_ += part.substr(0, EndKept - std::min(EndKept, Head_.size()));
        Tail_ += part.substr(part.size() > EndKept ? part.size() - EndKept : 0);
        Tail_.erase(0, Tail_.size() > EndKept ? Tail_.size() - EndKept : 0);
    }

    z_stream Stream_ = {};
    int Result_ = Z_OK;
    uLong Checksum_ = 0;
    std::string Head_, Tail_;
};

bool IsWhole(std::ifstream& file, const Entry& entry) {
    const std::string local = BytesAt(file, entry.Place, LocalLength);
    if (local.size() < LocalLength)
        return false;
    std::uint64_t at = entry.Place + LocalLength + NumberAt(local, 26, 2) + NumberAt(local, 28, 2);
    Unpacking unpacking;
    constexpr std::uint32_t ReadAtOnce = 1 << 16;
    for (std::uint32_t rest = entry.Packed; rest > 0;) {
        std::string packed = BytesAt(file, at, std::min(rest, ReadAtOnce));
        if (packed.empty() || !unpacking.Take(packed))
            return false;
        rest -= static_cast<std::uint32_t>(packed.size());
        at += packed.size();
    }
    return unpacking.IsWhole(entry.Checksum);
}

} // namespace

bool IsWholeZipOfXml(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<Entry> entries = file ? EntriesOf(file) : std::vector<Entry>();
    for (const Entry& entry : entries)
        if (!IsWhole(file, entry))
            return false;
    return !entries.empty();
}

} // namespace exporting
