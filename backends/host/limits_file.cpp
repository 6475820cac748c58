// SPDX-License-Identifier: MIT
#include "backends/host/limits_file.h"

#include "backends/descriptor/descriptor.h"
#include "backends/files/byte_order_mark.h"
#include "backends/files/host_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace backends {

namespace {

constexpr std::size_t LargestFile = 1'000'000;

/// True if a name leads to no other folder.
bool IsPlain(const std::string& name) {
    return !name.empty() && std::none_of(name.begin(), name.end(), [](char character) {
        return character == '/' || character == '\\' || static_cast<unsigned char>(character) < ' ';
    });
}

Text TextOf(int error) {
    return modStringTools::FromBytes(ReasonOf(error));
}

} // namespace

LimitsFile::Content LimitsFile::Read(const Text& driver) const {
    const std::string name = modStringTools::ToBytes(driver);
    if (!IsPlain(name))
        return {};
    const std::string path = Folder_ + "/" + name + ".limits";
    const Descriptor file(
        Repeated([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK); }));
    if (file.Number() < 0)
        return {.Table = {},
                .Why = errno == ENOENT || errno == ENAMETOOLONG ? Text()
                       : errno == ELOOP                         ? Text(u"it is a link")
                                                                : TextOf(errno)};
    struct stat found {};
    if (::fstat(file.Number(), &found) != 0)
        return {.Table = {}, .Why = TextOf(errno)};
    if (!S_ISREG(found.st_mode))
        return {.Table = {}, .Why = u"it is no plain file"};
    std::string bytes;
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = Repeated([&] { return ::read(file.Number(), block.data(), block.size()); });
        if (count < 0)
            return {.Table = {}, .Why = TextOf(errno)};
        if (count == 0)
            break;
        bytes.append(block.data(), static_cast<std::size_t>(count));
        if (bytes.size() > LargestFile)
            return {.Table = {}, .Why = u"it is larger than 1 MB"};
    }
    return {.Table = modStringTools::FromBytes(BehindMark(bytes)), .Why = {}};
}

} // namespace backends
