// SPDX-License-Identifier: MIT
#include "handover/zip_file.h"

#include <algorithm>
#include <string_view>

namespace handover {

namespace {

ZipFile& FileOf(void* stream) {
    return *static_cast<ZipFile*>(stream);
}

void* Open(void* opaque, const void* /*name*/, int /*mode*/) {
    return opaque;
}

constexpr std::size_t ReadAtOnce = 16384; // bytes

/// Returns what is held of the file from the offset on; it is read if nothing is.
std::string_view PartHere(ZipFile& file) {
    const std::int64_t place = file.Offset - file.PartAt;
    if (place >= 0 && place < static_cast<std::int64_t>(file.Part.size()))
        return std::string_view(file.Part).substr(static_cast<std::size_t>(place));
    file.Part.resize(ReadAtOnce);
    const std::int64_t count = backends::ReadAt(file.Number, file.Part.data(), ReadAtOnce, file.Offset);
    if (count < 0)
        file.Error = backends::FromErrno(errno);
    file.Part.resize(static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
    file.PartAt = file.Offset;
    return file.Part;
}

uLong Read(void* /*opaque*/, void* stream, void* bytes, uLong count) {
    ZipFile& file = FileOf(stream);
    uLong got = 0;
    while (got < count) {
        const std::string_view part = PartHere(file).substr(0, count - got);
        if (part.empty())
            break;
        part.copy(static_cast<char*>(bytes) + got, part.size());
        got += part.size();
        file.Offset += static_cast<std::int64_t>(part.size());
    }
    file.IsShort = file.IsShort || got < count;
    return got;
}

/// Tells no failure, after which the library leaks memory: `Error` has it, and nothing more is written.
uLong Write(void* /*opaque*/, void* stream, const void* bytes, uLong count) {
    ZipFile& file = FileOf(stream);
    file.Part.clear();
    if (file.Error == backends::NoError)
        file.Error = backends::WriteAll(file.Number, {static_cast<const char*>(bytes), count}, file.Offset);
    file.Offset += static_cast<std::int64_t>(count);
    file.Size = std::max(file.Size, file.Offset);
    return count;
}

ZPOS64_T Tell(void* /*opaque*/, void* stream) {
    return static_cast<ZPOS64_T>(FileOf(stream).Offset);
}

long Seek(void* /*opaque*/, void* stream, ZPOS64_T offset, int origin) {
    ZipFile& file = FileOf(stream);
    const std::int64_t from = origin == ZLIB_FILEFUNC_SEEK_CUR   ? file.Offset
                              : origin == ZLIB_FILEFUNC_SEEK_END ? file.Size
                                                                 : 0;
    const std::int64_t target = from + static_cast<std::int64_t>(offset);
    if (target < 0)
        return -1;
    file.Offset = target;
    return 0;
}

int Close(void* /*opaque*/, void* /*stream*/) {
    return 0;
}

int HasFailed(void* /*opaque*/, void* stream) {
    return FileOf(stream).Error == backends::NoError ? 0 : -1;
}

} // namespace

zlib_filefunc64_def CallsOn(ZipFile& file) {
    return {.zopen64_file = Open,
            .zread_file = Read,
            .zwrite_file = Write,
            .ztell64_file = Tell,
            .zseek64_file = Seek,
            .zclose_file = Close,
            .zerror_file = HasFailed,
            .opaque = &file};
}

} // namespace handover
