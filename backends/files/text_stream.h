// SPDX-License-Identifier: MIT
// A text file of the host as the stream that the line files read and write.
#pragma once

#include "backends/files/host_files.h"
#include "src/view/platform/storage.h"

#include <ctime>
#include <functional>
#include <optional>
#include <vector>

namespace backends {

using namespace platform;

/// Reads in large blocks and keeps one of them; a line that is longer than a block is put together.
///
/// From the first write on the stream works on a file beside the one that it was opened on, which takes its name when
/// the stream is closed. Each line goes to the host at once, so that a full disk is told at the line that it hit; a
/// stream that is not closed, or could not write a line, leaves the file as it was. What another writer has done to the
/// file is seen from the next Seek on; at the latest a tick of the kernel's clock later where that Seek is to the place
/// at which the stream stands anyway.
///
/// A line feed inside a text would be read as the end of a line: it is written as a blank. A NUL is read and written as
/// one: it makes a file "data" for other tools. A byte-order mark at the head of the file is no part of its first line,
/// and stays there where that line is copied. A line of more than 64 MB is refused as TooLong.
///
/// A text that itself ends in a carriage return is written with CR LF behind it, since reading takes CR LF off as one
/// line end: "a\r" comes back as it went. For the same reason a last line without an end, "a\r", gets CR LF before the
/// next line is written, not LF.
class HostTextStream final : public TextStream {
public:
    /// Looks up the entry that a name leads to at this moment.
    using FindEntry = std::function<ErrorNumber(FileEntry&)>;

    /// Opens a regular file, or makes it anew. The entry is looked up again where something is to take its place: no
    /// folder is held open meanwhile, which would keep a card from being taken out.
    static ErrorNumber Open(const FindEntry& find, StreamMode mode, std::unique_ptr<TextStream>& stream);
    ~HostTextStream() override;

    std::int64_t Position() const override { return Place; }
    std::int64_t Size() const override { return Length; }
    /// A place outside the file is refused, and the position stays.
    ErrorNumber Seek(std::int64_t offset, Origin origin) override;
    ErrorNumber ReadLine(Text& line) override;
    ErrorNumber SkipLines(std::int64_t most, std::int64_t& passed) override;
    ErrorNumber ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) override;
    std::int64_t Revision() const override { return Changes; }
    FileStamp Stamp() const override;
    ErrorNumber WriteLine(const Text& line) override;
    ErrorNumber WriteLines(std::string_view lines) override;
    ErrorNumber CheckName() override;
    ErrorNumber Close() override;

private:
    HostTextStream(const FindEntry& find, StreamMode mode) : Find(find), Mode(mode) {}
    int Number() const { return Next ? Next->File() : File.Number(); }
    ErrorNumber OpenFile(FileEntry entry);
    ErrorNumber FindAgain(FileEntry& entry) const;
    ErrorNumber FindUnchanged(FileEntry& entry) const;
    ErrorNumber BeginToWrite();
    ErrorNumber Commit();
    ErrorNumber LookAgain();
    bool GoesOnFrom(std::int64_t offset) const;
    bool InBlock(std::int64_t offset) const;
    ErrorNumber ReadBlock();
    ErrorNumber Ahead(std::string_view& bytes);
    ErrorNumber CollectLine(std::string_view& line);
    ErrorNumber LinesAhead(std::int64_t most, std::string_view& lines, std::int64_t& count);
    ErrorNumber MissingLineEnd(std::string& lineEnd);
    ErrorNumber Write(std::string_view lines);

    FindEntry Find;
    FolderId Home;                   ///< the folder that the file was found in
    Descriptor File;                 ///< as it is; none when it is made anew
    std::optional<Replacement> Next; ///< what it becomes, from the first write on
    StreamMode Mode;
    bool ReadOnly = false;
    ErrorNumber WriteError = NoError; ///< of the line that is missing
    std::int64_t Place = 0;
    std::int64_t Length = 0;
    std::timespec Modified{};
    std::int64_t Changes = 0;
    std::uint64_t WritesSeen = 0; ///< of this program's writes, those that were done before the last look
    std::int64_t TickSeen = 0;    ///< the tick of the clock at which that look was
    bool EndsInLineEnd = false;   ///< known to be so; false means that it has to be looked up

    std::vector<char> Block;
    std::int64_t BlockStart = 0; ///< offset of the block in the file
    std::size_t BlockUsed = 0;   ///< bytes of it that are of the file
    std::string LongLine;        ///< a line that reaches over the end of a block
    std::string Mended;          ///< lines of the block that would be written otherwise than they were read
};

} // namespace backends
