// SPDX-License-Identifier: MIT
#include "backends/host/limits_file.h"

#include "backends/files/plain_file.h"

#include <algorithm>
#include <cerrno>

namespace backends {

namespace {

constexpr std::size_t LargestFile = 1'000'000;

/// True if a name leads to no other folder.
bool IsPlain(const std::string& name) {
    return !name.empty() && std::none_of(name.begin(), name.end(), [](char character) {
        return character == '/' || character == '\\' || static_cast<unsigned char>(character) < ' ';
    });
}

} // namespace

LimitsFile::Content LimitsFile::Read(const Text& driver) const {
    const std::string name = modStringTools::ToBytes(driver);
    if (!IsPlain(name))
        return {};
    const std::string path = Folder_ + "/" + name + ".limits";
    const PlainFile file = ReadPlainFile(path, LargestFile, Links::Refuse);
    if (file.Error == ENOENT || file.Error == ENAMETOOLONG)
        return {};
    if (!file.Why.empty())
        return {.Table = {}, .Why = modStringTools::FromBytes(file.Why)};
    return {.Table = modStringTools::FromBytes(file.Bytes), .Why = {}};
}

} // namespace backends
