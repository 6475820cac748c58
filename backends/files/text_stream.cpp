// SPDX-License-Identifier: MIT
#include "backends/files/text_stream.h"

#include "backends/files/byte_order_mark.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace backends {

namespace {

constexpr std::size_t BlockSize = 65536;
constexpr std::size_t LongestLine = 64 * 1024 * 1024;

/// Number of bytes whose line feeds are counted in one step. The count is kept in one byte, so at most 255.
constexpr std::size_t CountedAtOnce = 240;

/// How often this program has written to any text file: after each write every stream examines its file again.
std::uint64_t OwnWrites = 0;

/// Returns the nanoseconds of a coarse clock, with steps of some milliseconds. Reading it needs no system call.
std::int64_t Tick() {
    std::timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// Returns the number of bytes up to and including the next line feed; 0 if there is none.
std::size_t LineFeedIn(std::string_view bytes) {
    const void* found = std::memchr(bytes.data(), '\n', bytes.size());
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - bytes.data()) + 1 : 0;
}

std::int64_t LineFeedsAtOnce(const char* bytes) {
    std::uint8_t count = 0;
    for (std::size_t i = 0; i < CountedAtOnce; ++i)
        count = static_cast<std::uint8_t>(count + (bytes[i] == '\n' ? 1 : 0));
    return count;
}

/// Returns the number of bytes up to and including the `most`th line feed; all bytes if there are fewer. `count` is the
/// number of line feeds among them.
std::size_t PassLineFeeds(std::string_view bytes, std::int64_t most, std::int64_t& count) {
    std::size_t place = 0;
    count = 0;
    // Counting is many times as fast as searching for one line feed after another, and is used while the last one can't
    // be among them.
    while (bytes.size() - place >= CountedAtOnce && most - count > static_cast<std::int64_t>(CountedAtOnce)) {
        count += LineFeedsAtOnce(bytes.data() + place);
        place += CountedAtOnce;
    }
    while (count < most && place < bytes.size()) {
        const std::size_t upToEnd = LineFeedIn(bytes.substr(place));
        place += upToEnd > 0 ? upToEnd : bytes.size() - place;
        count += upToEnd > 0 ? 1 : 0;
    }
    return place;
}

void StripLineEnd(std::string_view& line) {
    if (line.empty() || line.back() != '\n')
        return;
    line.remove_suffix(1);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
}

/// Returns the line end to write after a line.
const char* LineEndBehind(std::string_view line) {
    return !line.empty() && line.back() == '\r' ? "\r\n" : "\n";
}

/// True for a byte that would end the line or make other tools take the file for binary.
bool IsNoText(char byte) {
    return byte == '\n' || byte == '\0';
}

/// Returns lines of a file as rewriting each of them would: "a\r\n" becomes "a\n", a NUL becomes a blank, and a last
/// line gets a line end.
std::string_view AsWritten(std::string_view lines, std::string& mended) {
    const auto has = [lines](char byte) { return lines.find(byte) != std::string_view::npos; };
    if (lines.back() == '\n' && !has('\r') && !has('\0'))
        return lines;
    mended.clear();
    while (!lines.empty()) {
        const std::size_t upToEnd = LineFeedIn(lines);
        std::string_view line = upToEnd > 0 ? lines.substr(0, upToEnd) : lines;
        lines.remove_prefix(line.size());
        StripLineEnd(line);
        mended += line;
        mended += LineEndBehind(line);
    }
    std::replace(mended.begin(), mended.end(), '\0', ' ');
    return mended;
}

/// An existing scratch file of this name is stale, and is emptied.
ErrorNumber OpenScratch(const FileEntry& entry, Descriptor& file) {
    ErrorNumber error = OpenRegular(entry, O_RDWR, file);
    if (error == FileNotFound)
        return CreateRegular(entry.Folder, entry.Name, O_RDWR, file);
    if (error == NoError && Repeated([&] { return ::ftruncate(file.Number(), 0); }) != 0)
        error = FromErrno(errno);
    return error;
}

/// A file of another owner, or one on a write-protected card, can still be read; only writing to it fails.
ErrorNumber OpenExisting(const FileEntry& entry, Descriptor& file, bool& readOnly) {
    const ErrorNumber error = OpenRegular(entry, O_RDWR, file);
    readOnly = error == PermissionDenied;
    return readOnly ? OpenRegular(entry, O_RDONLY, file) : error;
}

} // namespace

ErrorNumber HostTextStream::Open(const FindEntry& find, StreamMode mode, std::unique_ptr<TextStream>& stream) {
    return FoundAnew([&] {
        FileEntry entry;
        if (const ErrorNumber error = find(entry); error != NoError)
            return error;
        std::unique_ptr<HostTextStream> opened(new HostTextStream(find, mode));
        ErrorNumber error = IdOf(entry.Folder, opened->Home);
        if (error == NoError)
            error = opened->OpenFile(std::move(entry));
        OwnWrites += mode == StreamMode::Existing ? 0 : 1;
        if (error == NoError)
            error = opened->LookAgain();
        if (error == NoError)
            stream = std::move(opened);
        return error;
    });
}

ErrorNumber HostTextStream::OpenFile(FileEntry entry) {
    if (Mode == StreamMode::Existing)
        return OpenExisting(entry, File, ReadOnly);
    if (Mode == StreamMode::Scratch)
        return OpenScratch(entry, File);
    Next.emplace(std::move(entry));
    return Next->Begin();
}

/// A stream that is destroyed without Close discards what was written.
HostTextStream::~HostTextStream() = default;

/// Reads the file's size, and drops the block if another program may have written since it was read.
ErrorNumber HostTextStream::LookAgain() {
    WritesSeen = OwnWrites;
    TickSeen = Tick();
    struct stat now {};
    if (Repeated([&] { return ::fstat(Number(), &now); }) != 0)
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

FileStamp HostTextStream::Stamp() const {
    struct stat now {};
    if (Repeated([&] { return ::fstat(Number(), &now); }) != 0)
        return {};
    const auto nanoseconds = [](const std::timespec& time) {
        return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
    };
    return {now.st_ino, now.st_size, nanoseconds(now.st_mtim), nanoseconds(now.st_ctim)};
}

bool HostTextStream::InBlock(std::int64_t offset) const {
    return offset >= BlockStart && offset < BlockStart + static_cast<std::int64_t>(BlockUsed);
}

/// True if reading continues where it stopped, in the current block, and so soon that examining the file is not worth a
/// system call, which a walk over a table would make for each row. After a write of this program the file is always
/// examined. A write of another program stays unseen for the rest of a clock tick, in which it might as well have come
/// later.
bool HostTextStream::GoesOnFrom(std::int64_t offset) const {
    return offset == Place && InBlock(offset) && WritesSeen == OwnWrites && TickSeen == Tick();
}

ErrorNumber HostTextStream::Seek(std::int64_t offset, Origin origin) {
    if (origin == Origin::Start && GoesOnFrom(offset))
        return NoError;
    if (const ErrorNumber error = LookAgain(); error != NoError)
        return error;
    const std::int64_t base = origin == Origin::End ? Length : 0;
    if (offset < -base || offset > Length - base)
        return DeviceFailed;
    Place = base + offset;
    return NoError;
}

/// Reads a block from the current position.
ErrorNumber HostTextStream::ReadBlock() {
    Block.resize(BlockSize);
    const std::int64_t taken = ReadAt(Number(), Block.data(), Block.size(), Place);
    BlockStart = Place;
    BlockUsed = taken > 0 ? static_cast<std::size_t>(taken) : 0;
    if (taken < 0)
        return FromErrno(errno);
    if (taken == 0)
        Length = Place; // another program made it shorter
    return NoError;
}

/// Returns the bytes of the block from the current position on; empty at the end of the file.
ErrorNumber HostTextStream::Ahead(std::string_view& bytes) {
    if (!InBlock(Place)) {
        if (const ErrorNumber error = ReadBlock(); error != NoError)
            return error;
    }
    const auto skip = static_cast<std::size_t>(Place - BlockStart);
    bytes = std::string_view(Block.data() + skip, BlockUsed - skip);
    return NoError;
}

/// Reads one line with its line end. The bytes stay valid until the next call.
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
        if (LongLine.size() > LongestLine)
            return TooLong;
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
        if (start == 0)
            bytes = BehindMark(bytes);
        modStringTools::AppendBytes(line, bytes);
        if (bytes.find('\0') != std::string_view::npos)
            modStringTools::BlankNuls(line);
        return NoError;
    } catch (const std::bad_alloc&) { // no memory for the whole line
        LongLine = std::string();
        Place = start;
        return DeviceFailed;
    }
}

ErrorNumber HostTextStream::SkipLines(std::int64_t most, std::int64_t& passed) {
    bool insideLine = false;
    std::int64_t begin = Place; // of the current line
    passed = 0;
    while (passed < most && Place < Length) {
        std::string_view bytes;
        if (const ErrorNumber error = Ahead(bytes); error != NoError)
            return error;
        if (bytes.empty())
            break;
        std::int64_t count = 0;
        const std::size_t upTo = PassLineFeeds(bytes, most - passed, count);
        insideLine = bytes[upTo - 1] != '\n';
        passed += count;
        if (count > 0)
            begin = Place + static_cast<std::int64_t>(bytes.substr(0, upTo).rfind('\n')) + 1;
        Place += static_cast<std::int64_t>(upTo);
        if (Place - begin > static_cast<std::int64_t>(LongestLine))
            return TooLong;
    }
    passed += insideLine ? 1 : 0; // the last line may have no line end
    return NoError;
}

/// Returns whole lines of the block, unchanged; none if the block ends inside the first line.
ErrorNumber HostTextStream::LinesAhead(std::int64_t most, std::string_view& lines, std::int64_t& count) {
    std::string_view bytes;
    if (const ErrorNumber error = Ahead(bytes); error != NoError)
        return error;
    if (bytes.find('\n') == std::string_view::npos && Place != BlockStart) {
        if (const ErrorNumber error = ReadBlock(); error != NoError)
            return error;
        bytes = std::string_view(Block.data(), BlockUsed);
    }
    lines = bytes.substr(0, PassLineFeeds(bytes, most, count));
    lines = lines.substr(0, lines.rfind('\n') + 1);
    return NoError;
}

ErrorNumber HostTextStream::ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) {
    taken = 0;
    lines = {};
    if (most < 1 || Place >= Length)
        return NoError;
    const std::int64_t start = Place;
    try {
        ErrorNumber error = LinesAhead(most, lines, taken);
        if (error == NoError && lines.empty()) { // a line longer than a block, or the last one
            error = CollectLine(lines);
            taken = 1;
        } else {
            Place += static_cast<std::int64_t>(lines.size());
        }
        if (error == NoError) {
            lines = AsWritten(lines, Mended);
            return NoError;
        }
        Place = start;
        lines = {};
        taken = 0;
        return error == FileNotFound ? NoError : error; // another program made the file shorter
    } catch (const std::bad_alloc&) {                   // no memory for the whole line
        LongLine = Mended = std::string();
        Place = start;
        return DeviceFailed;
    }
}

/// Returns the line end that the last line lacks, if writing is at the end of the file.
ErrorNumber HostTextStream::MissingLineEnd(std::string& lineEnd) {
    if (Place == 0 || Place != Length || EndsInLineEnd)
        return NoError;
    char last = '\n';
    if (ReadAt(Number(), &last, 1, Length - 1) < 0)
        return FromErrno(errno);
    if (last != '\n')
        lineEnd = LineEndBehind({&last, 1});
    return NoError;
}

ErrorNumber HostTextStream::WriteLine(const Text& line) {
    std::string bytes = modStringTools::ToBytes(line);
    std::replace_if(bytes.begin(), bytes.end(), IsNoText, ' ');
    bytes += LineEndBehind(bytes);
    return Write(bytes);
}

/// The disk may become full in the middle: then the lines for which there is space are written, as if each had been
/// written separately.
ErrorNumber HostTextStream::WriteLines(std::string_view lines) {
    const ErrorNumber before = WriteError;
    if (Write(lines) == NoError)
        return NoError;
    while (!lines.empty()) {
        const std::size_t upToEnd = LineFeedIn(lines);
        if (const ErrorNumber error = Write(lines.substr(0, upToEnd)); error != NoError)
            return error;
        lines.remove_prefix(upToEnd);
    }
    WriteError = before; // no line is missing
    return NoError;
}

/// Finds the entry again, in the folder of the opening: data must not be written to another folder.
ErrorNumber HostTextStream::FindAgain(FileEntry& entry) const {
    FolderId folder;
    const ErrorNumber error = FoundAnew([&] {
        const ErrorNumber found = Find(entry);
        return found == NoError ? IdOf(entry.Folder, folder) : found;
    });
    if (error != NoError)
        return error == FileNotFound ? PathNotFound : error;
    return folder == Home ? NoError : PathNotFound;
}

/// The same, if the name still means the open file.
ErrorNumber HostTextStream::FindUnchanged(FileEntry& entry) const {
    struct stat named {};
    struct stat opened {};
    const ErrorNumber error = FoundAnew([&] {
        const ErrorNumber found = FindAgain(entry);
        return found == NoError ? LookAt(entry, named) : found;
    });
    if (error != NoError)
        return error;
    if (Repeated([&] { return ::fstat(File.Number(), &opened); }) != 0)
        return FromErrno(errno);
    return named.st_dev == opened.st_dev && named.st_ino == opened.st_ino ? NoError : FileChanged;
}

ErrorNumber HostTextStream::CheckName() {
    FileEntry entry;
    const ErrorNumber error =
        Next ? FindAgain(entry) : FindUnchanged(entry); // a file that is being written has no name yet
    return error == NoError ? LookAgain() : error;
}

/// Begins a replacement, so that the file does not change until all has been written.
ErrorNumber HostTextStream::BeginToWrite() {
    if (ReadOnly)
        return PermissionDenied;
    if (Mode == StreamMode::Scratch || Next)
        return NoError;
    const ErrorNumber error = FoundAnew([&] {
        FileEntry entry;
        if (const ErrorNumber found = FindUnchanged(entry); found != NoError)
            return found;
        Next.emplace(std::move(entry));
        return Next->BeginWith(File.Number());
    });
    if (error == NoError)
        File.Close();
    else
        Next.reset();
    return error;
}

/// Writes whole lines with their line ends at the current position.
ErrorNumber HostTextStream::Write(std::string_view lines) {
    if (const ErrorNumber error = BeginToWrite(); error != NoError)
        return WriteError = error;
    std::string joined;
    if (const ErrorNumber error = MissingLineEnd(joined); error != NoError)
        return WriteError = error;
    if (!joined.empty()) {
        joined += lines;
        lines = joined;
    }
    BlockUsed = 0;
    ++OwnWrites;
    if (const ErrorNumber error = WriteAll(Number(), lines, Place); error != NoError) {
        // A full disk may have stored a part of the lines: a partial line after the last whole one is cut off.
        if (Place == Length && Repeated([&] { return ::ftruncate(Number(), Length); }) != 0)
            EndsInLineEnd = false;
        return WriteError = error;
    }
    Place += static_cast<std::int64_t>(lines.size());
    if (Place >= Length) {
        Length = Place;
        EndsInLineEnd = true;
    }
    return NoError;
}

ErrorNumber HostTextStream::Commit() {
    FileEntry entry;
    const ErrorNumber error = WriteError != NoError ? WriteError : FindAgain(entry);
    if (error == NoError)
        return Next->Commit();
    Next->GiveUp();
    return WriteError = error;
}

ErrorNumber HostTextStream::Close() {
    if (Next && Next->Begun())
        return Commit();
    if (!File.Valid())
        return WriteError;
    const bool mustLast = Mode == StreamMode::Scratch && WriteError == NoError;
    const auto bringToTheMedium = [&] { return ::fdatasync(File.Number()); };
    const ErrorNumber synced = mustLast && Repeated(bringToTheMedium) != 0 ? FromErrno(errno) : WriteError;
    const ErrorNumber closed = FromErrno(File.Close());
    return synced != NoError ? synced : closed;
}

} // namespace backends
