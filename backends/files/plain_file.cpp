// SPDX-License-Identifier: MIT
#include "backends/files/plain_file.h"

#include "backends/descriptor/descriptor.h"
#include "backends/files/byte_order_mark.h"
#include "backends/files/host_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace backends {

namespace {

PlainFile Failed(int error) {
    return {.Bytes = {}, .Why = error == ELOOP ? "it is a link" : ReasonOf(error), .Error = error};
}

PlainFile Refused(const std::string& why) {
    return {.Bytes = {}, .Why = why, .Error = 0};
}

std::string SizeText(std::size_t bytes) {
    constexpr std::size_t Megabyte = 1'000'000;
    return std::to_string(bytes / Megabyte) + " MB";
}

} // namespace

PlainFile ReadPlainFile(const std::string& path, std::size_t largest, Links links, Mark mark) {
    const int noLinks = links == Links::Refuse ? O_NOFOLLOW : 0;
    const Descriptor file(Repeated([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | noLinks); }));
    if (file.Number() < 0)
        return Failed(errno);
    struct stat found {};
    if (::fstat(file.Number(), &found) != 0)
        return Failed(errno);
    if (S_ISDIR(found.st_mode))
        return Refused("it is a folder");
    if (!S_ISREG(found.st_mode))
        return Refused("it is no plain file");
    std::string bytes;
    bytes.reserve(std::min(static_cast<std::size_t>(found.st_size), largest));
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = Repeated([&] { return ::read(file.Number(), block.data(), block.size()); });
        if (count < 0)
            return Failed(errno);
        if (count == 0)
            break;
        bytes.append(block.data(), static_cast<std::size_t>(count));
        if (bytes.size() > largest)
            return Refused("it is larger than " + SizeText(largest));
    }
    if (mark == Mark::Drop)
        bytes.erase(0, bytes.size() - BehindMark(bytes).size());
    return {.Bytes = std::move(bytes), .Why = {}, .Error = 0};
}

} // namespace backends
