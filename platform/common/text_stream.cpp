// SPDX-License-Identifier: MIT
#include "platform/common/text_stream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::common {

namespace {

constexpr std::size_t BlockSize = 65536;

ssize_t ReadAt(int file, char* bytes, std::size_t count, std::int64_t offset) {
    for (;;) {
        const ssize_t taken = ::pread(file, bytes, count, offset);
        if (taken >= 0 || errno != EINTR)
            return taken;
    }
}

/// The number of bytes up to and including the next line feed; 0 when there is none.
std::size_t LineFeedIn(std::string_view bytes) {
    const void* found = std::memchr(bytes.data(), '\n', bytes.size());
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - bytes.data()) + 1 : 0;
}

void StripLineEnd(std::string_view& line) {
    if (line.empty() || line.back() != '\n')
        return;
    line.remove_suffix(1);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
}

const char* LineEndBehind(char last) {
    return last == '\r' ? "\r\n" : "\n";
}

} // namespace

ErrorNumber HostTextStream::Open(const std::string& hostPath, StreamMode mode, std::unique_ptr<TextStream>& stream) {
    Descriptor file;
    std::string newIn;
    ErrorNumber error = OpenRegular(hostPath, O_RDWR, file);
    // A file that others own, or a write-protected card's, can still be read; writing to it fails then.
    const bool readOnly = error == PermissionDenied && mode == StreamMode::Existing;
    if (readOnly)
        error = OpenRegular(hostPath, O_RDONLY, file);
    if (mode == StreamMode::Create && error == FileNotFound) {
        error = CreateRegular(hostPath, O_RDWR, file);
        newIn = FolderOf(hostPath);
    } else if (mode == StreamMode::Create && error == NoError && ::ftruncate(file.Number(), 0) != 0) {
        error = FromErrno(errno);
    }
    if (error != NoError)
        return error;
    std::unique_ptr<HostTextStream> opened(new HostTextStream(std::move(file), std::move(newIn)));
    opened->Written = mode == StreamMode::Create;
    opened->ReadOnly = readOnly;
    if (error = opened->LookAgain(); error == NoError)
        stream = std::move(opened);
    return error;
}

HostTextStream::HostTextStream(Descriptor file, std::string newIn) : File(std::move(file)), NewIn(std::move(newIn)) {
}

HostTextStream::~HostTextStream() {
    HostTextStream::Close();
}

/// Takes up the file's size, and drops the block when somebody else may have written since it was read.
ErrorNumber HostTextStream::LookAgain() {
    struct stat now {};
    if (::fstat(File.Number(), &now) != 0)
        return FromErrno(errno);
    if (now.st_size == Length && now.st_mtim.tv_sec == Modified.tv_sec && now.st_mtim.tv_nsec == Modified.tv_nsec)
        return NoError;
    Length = now.st_size;
    Modified = now.st_mtim;
    ++Changes;
    BlockUsed = 0;
    EndsInLineEnd = false;
    return NoError;
}

ErrorNumber HostTextStream::Seek(std::int64_t offset, Origin origin) {
    if (const ErrorNumber error = LookAgain(); error != NoError)
        return error;
    const std::int64_t base = origin == Origin::End ? Length : 0;
    if (offset < -base || offset > Length - base)
        return DeviceFailed;
    Place = base + offset;
    return NoError;
}

/// What the block holds from the position on; empty at the end of the file.
ErrorNumber HostTextStream::Ahead(std::string_view& bytes) {
    if (Place < BlockStart || Place >= BlockStart + static_cast<std::int64_t>(BlockUsed)) {
        Block.resize(BlockSize);
        const ssize_t taken = ReadAt(File.Number(), Block.data(), Block.size(), Place);
        BlockStart = Place;
        BlockUsed = taken > 0 ? static_cast<std::size_t>(taken) : 0;
        if (taken < 0)
            return FromErrno(errno);
        if (taken == 0)
            Length = Place; // somebody else made it shorter
    }
    const auto skip = static_cast<std::size_t>(Place - BlockStart);
    bytes = std::string_view(Block.data() + skip, BlockUsed - skip);
    return NoError;
}

/// Takes the bytes of one line with its line end. They stay valid until the next call.
ErrorNumber HostTextStream::CollectLine(std::string_view& line) {
    LongLine.clear();
    bool whole = false;
    while (!whole && Place < Length) {
        std::string_view bytes;
        if (const ErrorNumber error = Ahead(bytes); error != NoError)
            return error;
        const std::size_t upToEnd = LineFeedIn(bytes);
        whole = upToEnd > 0;
        line = whole ? bytes.substr(0, upToEnd) : bytes;
        Place += static_cast<std::int64_t>(line.size());
        if (whole && LongLine.empty())
            return NoError;
        LongLine += line;
    }
    line = LongLine;
    return line.empty() ? FileNotFound : NoError;
}

ErrorNumber HostTextStream::ReadLine(Text& line) {
    line.clear();
    const std::int64_t start = Place;
    try {
        std::string_view bytes;
        const ErrorNumber error = CollectLine(bytes);
        if (error != NoError) {
            Place = start;
            return error;
        }
        StripLineEnd(bytes);
        line = modStringTools::FromBytes(bytes);
        return NoError;
    } catch (const std::bad_alloc&) { // a line longer than the memory
        LongLine = std::string();
        Place = start;
        return DeviceFailed;
    }
}

ErrorNumber HostTextStream::SkipLines(std::int64_t most, std::int64_t& passed) {
    std::int64_t count = 0;
    bool insideLine = false;
    while (count < most && Place < Length) {
        std::string_view bytes;
        if (const ErrorNumber error = Ahead(bytes); error != NoError) {
            passed = count;
            return error;
        }
        if (bytes.empty())
            break;
        const std::size_t before = bytes.size();
        while (count < most && !bytes.empty()) {
            const std::size_t upToEnd = LineFeedIn(bytes);
            insideLine = upToEnd == 0;
            bytes.remove_prefix(insideLine ? bytes.size() : upToEnd);
            count += insideLine ? 0 : 1;
        }
        Place += static_cast<std::int64_t>(before - bytes.size());
    }
    passed = insideLine ? count + 1 : count; // the last line may lack its end
    return NoError;
}

/// The line end that the last line lacks, when it is the end of the file that is written to.
ErrorNumber HostTextStream::MissingLineEnd(std::string& lineEnd) {
    if (Place == 0 || Place != Length || EndsInLineEnd)
        return NoError;
    char last = '\n';
    if (ReadAt(File.Number(), &last, 1, Length - 1) < 0)
        return FromErrno(errno);
    if (last != '\n')
        lineEnd = LineEndBehind(last);
    return NoError;
}

ErrorNumber HostTextStream::WriteLine(const Text& line) {
    if (ReadOnly)
        return PermissionDenied;
    std::string bytes;
    if (const ErrorNumber error = MissingLineEnd(bytes); error != NoError)
        return error;
    std::string text = modStringTools::ToBytes(line);
    std::replace(text.begin(), text.end(), '\n', ' ');
    bytes += text;
    bytes += LineEndBehind(line.empty() ? '\n' : bytes.back());
    BlockUsed = 0;
    Written = true;
    if (const ErrorNumber error = WriteAll(File.Number(), bytes, Place); error != NoError) {
        // A full disk may have taken the beginning of the line; no half line stays behind the last whole one.
        if (Place == Length && File.Valid() && ::ftruncate(File.Number(), Length) != 0)
            EndsInLineEnd = false;
        return error;
    }
    Place += static_cast<std::int64_t>(bytes.size());
    if (Place >= Length) {
        Length = Place;
        EndsInLineEnd = true;
    }
    return NoError;
}

ErrorNumber HostTextStream::Close() {
    if (!File.Valid())
        return NoError;
    ErrorNumber error = NoError;
    if (Written && ::fdatasync(File.Number()) != 0)
        error = FromErrno(errno);
    if (Written && error == NoError && !NewIn.empty())
        error = SyncFolder(NewIn);
    const ErrorNumber closed = File.Close();
    return error != NoError ? error : closed;
}

} // namespace platform::common
