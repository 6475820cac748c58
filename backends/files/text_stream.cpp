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

/// Bytes whose line feeds are counted at one go. One byte counts them, so there must not be more than 255.
constexpr std::size_t CountedAtOnce = 240;

/// How often this program has written to any text file: each stream looks at its file once more behind that.
std::uint64_t OwnWrites = 0;

/// A clock that moves on in steps of some milliseconds. Reading it takes no system call.
std::int64_t Tick() {
    std::timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// The number of bytes up to and including the next line feed; 0 when there is none.
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

/// The number of bytes up to and including the `most`th line feed; all bytes where there are fewer. `count` is how many
/// line feeds those are.
std::size_t PassLineFeeds(std::string_view bytes, std::int64_t most, std::int64_t& count) {
    std::size_t place = 0;
    count = 0;
    // Counting is many times as fast as looking for one line feed after another, and serves where none is the last one.
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

/// The line end that a line is written with.
const char* LineEndBehind(std::string_view line) {
    return !line.empty() && line.back() == '\r' ? "\r\n" : "\n";
}

/// What would end a line for other tools, or make the file none of text.
bool IsNoText(char byte) {
    return byte == '\n' || byte == '\0';
}

/// Lines of a file as writing each of them anew makes them: "a\r\n" becomes "a\n", a NUL a blank, and a last line gets
/// its end.
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

/// A scratch file that is there is a stale one of the same name.
ErrorNumber OpenScratch(const FileEntry& entry, Descriptor& file) {
    ErrorNumber error = OpenRegular(entry, O_RDWR, file);
    if (error == FileNotFound)
        return CreateRegular(entry.Folder, entry.Name, O_RDWR, file);
    if (error == NoError && Repeated([&] { return ::ftruncate(file.Number(), 0); }) != 0)
        error = FromErrno(errno);
    return error;
}

/// A file that others own, or a write-protected card's, can still be read; writing to it fails then.
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

/// A stream that is dropped has not done what it was to do.
HostTextStream::~HostTextStream() = default;

/// Takes up the file's size, and drops the block when somebody else may have written since it was read.
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

/// Whether reading goes on where it stopped, in the block at hand, and so soon that a look at the file is not worth its
/// system call: a walk over a table would pay it for each row. What this program writes itself is always worth it, and
/// what another one writes goes unseen for the rest of a clock tick, in which it might as well have come later.
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

/// Reads a block from the position on.
ErrorNumber HostTextStream::ReadBlock() {
    Block.resize(BlockSize);
    const std::int64_t taken = ReadAt(Number(), Block.data(), Block.size(), Place);
    BlockStart = Place;
    BlockUsed = taken > 0 ? static_cast<std::size_t>(taken) : 0;
    if (taken < 0)
        return FromErrno(errno);
    if (taken == 0)
        Length = Place; // somebody else made it shorter
    return NoError;
}

/// What the block holds from the position on; empty at the end of the file.
ErrorNumber HostTextStream::Ahead(std::string_view& bytes) {
    if (!InBlock(Place)) {
        if (const ErrorNumber error = ReadBlock(); error != NoError)
            return error;
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
    } catch (const std::bad_alloc&) { // a line longer than the memory
        LongLine = std::string();
        Place = start;
        return DeviceFailed;
    }
}

ErrorNumber HostTextStream::SkipLines(std::int64_t most, std::int64_t& passed) {
    bool insideLine = false;
    std::int64_t begin = Place; // of the line at hand
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
    passed += insideLine ? 1 : 0; // the last line may lack its end
    return NoError;
}

/// Whole lines of the block, as they stand in the file; none where the block ends before the first line does.
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
        return error == FileNotFound ? NoError : error; // somebody else made the file shorter
    } catch (const std::bad_alloc&) {                   // a line longer than the memory
        LongLine = Mended = std::string();
        Place = start;
        return DeviceFailed;
    }
}

/// The line end that the last line lacks, when it is the end of the file that is written to.
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

/// A disk may fill in the middle: the lines that it has room for are written then, as if each had come by itself.
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
    WriteError = before; // none is missing after all
    return NoError;
}

/// The entry under the name, in the folder of the opening: what is written must not go where nobody looks for it.
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

/// The same while the file under the name is the one that is open.
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
    const ErrorNumber error = Next ? FindAgain(entry) : FindUnchanged(entry); // what is being written has no name yet
    return error == NoError ? LookAgain() : error;
}

/// The file stays as it is until all has been written.
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

/// Writes whole lines at the position, with their line ends.
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
        // A full disk may have taken the beginning of the lines; no half line stays behind the last whole one.
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
