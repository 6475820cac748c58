// SPDX-License-Identifier: MIT
#include "handover/zip_end.h"

#include <string>

namespace handover {

namespace {

constexpr std::size_t EndLength = 22;     // without the comment
constexpr std::size_t LocatorLength = 20; // of the record that leads to the one with the number
constexpr std::size_t DirectoryPlace = 12;
constexpr std::uint32_t NumberRecord = 0x06064b50;
constexpr std::uint32_t Locator = 0x07064b50;
constexpr std::uint64_t Version = 45; // of the format

/// The numbers of a zip file have their lowest byte first.
std::string Number(std::uint64_t number, std::size_t bytes) {
    std::string text;
    for (; bytes > 0; --bytes, number >>= 8)
        text += static_cast<char>(number & 0xff);
    return text;
}

bool ReadPart(ZipFile& file, std::int64_t at, std::string& bytes) {
    return backends::ReadAt(file.Number, bytes.data(), bytes.size(), at) == static_cast<std::int64_t>(bytes.size());
}

} // namespace

bool CompleteEnd(ZipFile& file, std::uint64_t files, std::size_t comment) {
    if (files <= MostCounted)
        return true;
    std::string end(EndLength + comment, '\0');
    std::string before(LocatorLength, '\0');
    const std::int64_t at = file.Size - static_cast<std::int64_t>(end.size());
    if (!ReadPart(file, at, end) || !ReadPart(file, at - static_cast<std::int64_t>(LocatorLength), before))
        return false;
    if (before.starts_with(Number(Locator, 4)))
        return true;
    const std::string zeros(4, '\0');
    const std::string directory = end.substr(DirectoryPlace, 4) + zeros + end.substr(DirectoryPlace + 4, 4) + zeros;
    const std::string record = Number(Version, 2) + Number(Version, 2) + Number(0, 8) + Number(files, 8) +
                               Number(files, 8) + directory; // its size and its place
    const std::string all = Number(NumberRecord, 4) + Number(record.size(), 8) + record + Number(Locator, 4) +
                            Number(0, 4) + Number(static_cast<std::uint64_t>(at), 8) + Number(1, 4) + end;
    file.Error = backends::WriteAll(file.Number, all, at);
    file.Size = at + static_cast<std::int64_t>(all.size());
    return file.Error == backends::NoError;
}

} // namespace handover
