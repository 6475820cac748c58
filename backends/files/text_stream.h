// SPDX-License-Identifier: MIT
// A text file of the host, as the stream that the line files read and write.
#pragma once

#include "backends/files/host_files.h"
#include "src/view/platform/storage.h"

#include <ctime>
#include <functional>
#include <optional>
#include <vector>

namespace backends {

using namespace platform;

/// Reads in large blocks and keeps one of them; a line that extends beyond a block is assembled.
///
/// From the first write on, the stream works on a file beside the original, which takes the original's name when the
/// stream is closed. Each line is passed to the host at once, so that a full disk is reported at the line that it
/// affects. A stream that is not closed, or could not write a line, leaves the file unchanged. A change by another
/// program is seen at the next Seek; if that Seek is to the current position, it may be seen one tick of the kernel's
/// clock later.
///
/// A line feed inside a text would be read as a line end, so it is written as a blank. A NUL is read and written as a
/// blank, because it makes other tools take the file for binary data. A byte-order mark at the start of the file is not
/// part of its first line, but is kept if that line is copied. A line of more than 64 MB fails with TooLong.
///
/// A text that ends in a carriage return is written with CR LF after it, because reading removes CR LF as one line end:
/// so "a\r" is read back unchanged. For the same reason a last line "a\r" without a line end is completed with CR LF
/// before the next line is written, not with LF.
class HostTextStream final : public TextStream {
public:
    /// Finds the entry that a name leads to now.
    using FindEntry = std::function<ErrorNumber(FileEntry&)>;

    /// Opens a regular file, or begins a new one in its place. The entry is looked up again before it is replaced: no
    /// folder is held open meanwhile, because that would prevent the removal of a card.
    static ErrorNumber Open(const FindEntry& find, StreamMode mode, std::unique_ptr<TextStream>& stream);
    ~HostTextStream() override;

    std::int64_t Position() const override { return Position_; }
    std::int64_t Size() const override { return Length_; }
    /// An offset outside of the file is refused, and the position does not change.
    ErrorNumber Seek(std::int64_t offset, Origin origin) override;
    ErrorNumber ReadLine(Text& line) override;
    ErrorNumber SkipLines(std::int64_t most, std::int64_t& passed) override;
    ErrorNumber ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) override;
    std::int64_t Revision() const override { return Changes_; }
    FileStamp Stamp() const override;
    ErrorNumber WriteLine(const Text& line) override;
    ErrorNumber WriteLines(std::string_view lines) override;
    ErrorNumber CheckName() override;
    ErrorNumber Close() override;

private:
    HostTextStream(const FindEntry& find, StreamMode mode) : Find_(find), Mode_(mode) {}
    int Number() const { return Next_ ? Next_->File() : File_.Number(); }
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

    FindEntry Find_;
    FolderId Home_;                   ///< folder in which the file was found
    Descriptor File_;                 ///< the existing file; none if it is newly created
    std::optional<Replacement> Next_; ///< its replacement, from the first write on
    StreamMode Mode_;
    bool ReadOnly_ = false;
    ErrorNumber WriteError_ = NoError; ///< error of the line that was not written
    std::int64_t Position_ = 0;
    std::int64_t Length_ = 0;
    std::timespec Modified_{};
    std::int64_t Changes_ = 0;
    std::uint64_t WritesSeen_ = 0; ///< value of OwnWrites when the file was last examined
    std::int64_t TickSeen_ = 0;    ///< clock tick at that moment
    bool EndsInLineEnd_ = false;   ///< true if known; false means that it must be read

    std::vector<char> Block_;
    std::int64_t BlockStart_ = 0; ///< offset of the block in the file
    std::size_t BlockUsed_ = 0;   ///< number of valid bytes in the block
    std::string LongLine_;        ///< a line that extends beyond a block
    std::string Mended_;          ///< lines of the block in their rewritten form, if that differs
};

} // namespace backends
