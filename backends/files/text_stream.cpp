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
        ErrorNumber error = IdOf(entry.Folder, opened->Home_);
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
    if (Mode_ == StreamMode::Existing)
        return OpenExisting(entry, File_, ReadOnly_);
    if (Mode_ == StreamMode::Scratch)
        return OpenScratch(entry, File_);
    Next_.emplace(std::move(entry));
    return Next_->Begin();
}

/// A stream that is destroyed without Close discards what was written.
HostTextStream::~HostTextStream() = default;

/// Reads the file's size, and drops the block if another program may have written since it was read.
ErrorNumber HostTextStream::LookAgain() {
    WritesSeen_ = OwnWrites;
    TickSeen_ = Tick();
    struct stat now {};
    if (Repeated([&] { return ::fstat(Number(), &now); }) != 0)
        return FromErrno(errno);
    if (now.st_size == Length_ && now.st_mtim.tv_sec == Modified_.tv_sec && now.st_mtim.tv_nsec == Modified_.tv_nsec)
        return NoError;
    Length_ = now.st_size;
    Modified_ = now.st_mtim;
    ++Changes_;
    BlockUsed_ = 0;
    EndsInLineEnd_ = false;
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
    return offset >= BlockStart_ && offset < BlockStart_ + static_cast<std::int64_t>(BlockUsed_);
}

/// True if reading continues where it stopped, in the current block, and so soon that examining the file is not worth a
/// system call, which a walk over a table would make for each row. After a write of this program the file is always
/// examined. A write of another program stays unseen for the rest of a clock tick, in which it might as well have come
/// later.
bool HostTextStream::GoesOnFrom(std::int64_t offset) const {
    return offset == Position_ && InBlock(offset) && WritesSeen_ == OwnWrites && TickSeen_ == Tick();
}

ErrorNumber HostTextStream::Seek(std::int64_t offset, Origin origin) {
    if (origin == Origin::Start && GoesOnFrom(offset))
        return NoError;
    if (const ErrorNumber error = LookAgain(); error != NoError)
        return error;
    const std::int64_t base = origin == Origin::End ? Length_ : 0;
    if (offset < -base || offset > Length_ - base)
        return DeviceFailed;
    Position_ = base + offset;
    return NoError;
}

/// Reads a block from the current position.
ErrorNumber HostTextStream::ReadBlock() {
    Block_.resize(BlockSize);
    const std::int64_t taken = ReadAt(Number(), Block_.data(), Block_.size(), Position_);
    BlockStart_ = Position_;
    BlockUsed_ = taken > 0 ? static_cast<std::size_t>(taken) : 0;
    if (taken < 0)
        return FromErrno(errno);
    if (taken == 0)
        Length_ = Position_; // another program made it shorter
    return NoError;
}

/// Returns the bytes of the block from the current position on; empty at the end of the file.
ErrorNumber HostTextStream::Ahead(std::string_view& bytes) {
    if (!InBlock(Position_)) {
        if (const ErrorNumber error = ReadBlock(); error != NoError)
            return error;
    }
    const auto skip = static_cast<std::size_t>(Position_ - BlockStart_);
    bytes = std::string_view(Block_.data() + skip, BlockUsed_ - skip);
    return NoError;
}

/// Reads one line with its line end. The bytes stay valid until the next call.
ErrorNumber HostTextStream::CollectLine(std::string_view& line) {
    LongLine_.clear();
    bool whole = false;
    while (!whole && Position_ < Length_) {
        std::string_view bytes;
        if (const ErrorNumber error = Ahead(bytes); error != NoError)
            return error;
        const std::size_t upToEnd = LineFeedIn(bytes);
        whole = upToEnd > 0;
        line = whole ? bytes.substr(0, upToEnd) : bytes;
        Position_ += static_cast<std::int64_t>(line.size());
        if (whole && LongLine_.empty())
            return NoError;
        LongLine_ += line;
        if (LongLine_.size() > LongestLine)
            return TooLong;
    }
    line = LongLine_;
    return line.empty() ? FileNotFound : NoError;
}

ErrorNumber HostTextStream::ReadLine(Text& line) {
    line.clear();
    const std::int64_t start = Position_;
    try {
        std::string_view bytes;
        const ErrorNumber error = CollectLine(bytes);
        if (error != NoError) {
            Position_ = start;
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
        LongLine_ = std::string();
        Position_ = start;
        return DeviceFailed;
    }
}

ErrorNumber HostTextStream::SkipLines(std::int64_t most, std::int64_t& passed) {
    bool insideLine = false;
    std::int64_t begin = Position_; // of the current line
    passed = 0;
    while (passed < most && Position_ < Length_) {
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
            begin = Position_ + static_cast<std::int64_t>(bytes.substr(0, upTo).rfind('\n')) + 1;
        Position_ += static_cast<std::int64_t>(upTo);
        if (Position_ - begin > static_cast<std::int64_t>(LongestLine))
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
    if (bytes.find('\n') == std::string_view::npos && Position_ != BlockStart_) {
        if (const ErrorNumber error = ReadBlock(); error != NoError)
            return error;
        bytes = std::string_view(Block_.data(), BlockUsed_);
    }
    lines = bytes.substr(0, PassLineFeeds(bytes, most, count));
    lines = lines.substr(0, lines.rfind('\n') + 1);
    return NoError;
}

ErrorNumber HostTextStream::ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) {
    taken = 0;
    lines = {};
    if (most < 1 || Position_ >= Length_)
        return NoError;
    const std::int64_t start = Position_;
    try {
        ErrorNumber error = LinesAhead(most, lines, taken);
        if (error == NoError && lines.empty()) { // a line longer than a block, or the last one
            error = CollectLine(lines);
            taken = 1;
        } else {
            Position_ += static_cast<std::int64_t>(lines.size());
        }
        if (error == NoError) {
            lines = AsWritten(lines, Mended_);
            return NoError;
        }
        Position_ = start;
        lines = {};
        taken = 0;
        return error == FileNotFound ? NoError : error; // another program made the file shorter
    } catch (const std::bad_alloc&) {                   // no memory for the whole line
        LongLine_ = Mended_ = std::string();
        Position_ = start;
        return DeviceFailed;
    }
}

/// Returns the line end that the last line lacks, if writing is at the end of the file.
ErrorNumber HostTextStream::MissingLineEnd(std::string& lineEnd) {
    if (Position_ == 0 || Position_ != Length_ || EndsInLineEnd_)
        return NoError;
    char last = '\n';
    if (ReadAt(Number(), &last, 1, Length_ - 1) < 0)
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
    const ErrorNumber before = WriteError_;
    if (Write(lines) == NoError)
        return NoError;
    while (!lines.empty()) {
        const std::size_t upToEnd = LineFeedIn(lines);
        if (const ErrorNumber error = Write(lines.substr(0, upToEnd)); error != NoError)
            return error;
        lines.remove_prefix(upToEnd);
    }
    WriteError_ = before; // no line is missing
    return NoError;
}

/// Finds the entry again, in the folder of the opening: data must not be written to another folder.
ErrorNumber HostTextStream::FindAgain(FileEntry& entry) const {
    FolderId folder;
    const ErrorNumber error = FoundAnew([&] {
        const ErrorNumber found = Find_(entry);
        return found == NoError ? IdOf(entry.Folder, folder) : found;
    });
    if (error != NoError)
        return error == FileNotFound ? PathNotFound : error;
    return folder == Home_ ? NoError : PathNotFound;
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
    if (Repeated([&] { return ::fstat(File_.Number(), &opened); }) != 0)
        return FromErrno(errno);
    return named.st_dev == opened.st_dev && named.st_ino == opened.st_ino ? NoError : FileChanged;
}

ErrorNumber HostTextStream::CheckName() {
    FileEntry entry;
    const ErrorNumber error =
        Next_ ? FindAgain(entry) : FindUnchanged(entry); // a file that is being written has no name yet
    return error == NoError ? LookAgain() : error;
}

/// Begins a replacement, so that the file does not change until all has been written.
ErrorNumber HostTextStream::BeginToWrite() {
    if (ReadOnly_)
        return PermissionDenied;
    if (Mode_ == StreamMode::Scratch || Next_)
        return NoError;
    const ErrorNumber error = FoundAnew([&] {
        FileEntry entry;
        if (const ErrorNumber found = FindUnchanged(entry); found != NoError)
            return found;
        Next_.emplace(std::move(entry));
        return Next_->BeginWith(File_.Number());
    });
    if (error == NoError)
        File_.Close();
    else
        Next_.reset();
    return error;
}

/// Writes whole lines with their line ends at the current position.
ErrorNumber HostTextStream::Write(std::string_view lines) {
    if (const ErrorNumber error = BeginToWrite(); error != NoError)
        return WriteError_ = error;
    std::string joined;
    if (const ErrorNumber error = MissingLineEnd(joined); error != NoError)
        return WriteError_ = error;
    if (!joined.empty()) {
        joined += lines;
        lines = joined;
    }
    BlockUsed_ = 0;
    ++OwnWrites;
    if (const ErrorNumber error = WriteAll(Number(), lines, Position_); error != NoError) {
        // A full disk may have stored a part of the lines: a partial line after the last whole one is cut off.
        if (Position_ == Length_ && Repeated([&] { return ::ftruncate(Number(), Length_); }) != 0)
            EndsInLineEnd_ = false;
        return WriteError_ = error;
    }
    Position_ += static_cast<std::int64_t>(lines.size());
    if (Position_ >= Length_) {
        Length_ = Position_;
        EndsInLineEnd_ = true;
    }
    return NoError;
}

ErrorNumber HostTextStream::Commit() {
    FileEntry entry;
    const ErrorNumber error = WriteError_ != NoError ? WriteError_ : FindAgain(entry);
    if (error == NoError)
        return Next_->Commit();
    Next_->GiveUp();
    return WriteError_ = error;
}

ErrorNumber HostTextStream::Close() {
    if (Next_ && Next_->Begun())
        return Commit();
    if (!File_.Valid())
        return WriteError_;
    const bool mustLast = Mode_ == StreamMode::Scratch && WriteError_ == NoError;
    const auto bringToTheMedium = [&] { return ::fdatasync(File_.Number()); };
    const ErrorNumber synced = mustLast && Repeated(bringToTheMedium) != 0 ? FromErrno(errno) : WriteError_;
    const ErrorNumber closed = FromErrno(File_.Close());
    return synced != NoError ? synced : closed;
}

} // namespace backends
