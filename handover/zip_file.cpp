// SPDX-License-Identifier: MIT
#include "handover/zip_file.h"

#include <algorithm>

namespace handover {

namespace {

ZipFile& FileOf(void* stream) {
    return *static_cast<ZipFile*>(stream);
}

void* Open(void* opaque, const void* /*name*/, int /*mode*/) {
    return opaque;
}

uLong Read(void* /*opaque*/, void* stream, void* bytes, uLong count) {
    ZipFile& file = FileOf(stream);
    uLong got = 0;
    while (got < count) {
        const std::int64_t more =
            backends::ReadAt(file.Number, static_cast<char*>(bytes) + got, count - got, file.Offset);
        if (more < 0)
            file.Error = backends::FromErrno(errno);
        if (more <= 0)
            break;
        file.Offset += more;
        got += static_cast<uLong>(more);
    }
    return got;
}

uLong Write(void* /*opaque*/, void* stream, const void* bytes, uLong count) {
    ZipFile& file = FileOf(stream);
    if (file.Error == backends::NoError)
        file.Error = backends::WriteAll(file.Number, {static_cast<const char*>(bytes), count}, file.Offset);
    if (file.Error != backends::NoError)
        return 0;
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
