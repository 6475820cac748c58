// SPDX-License-Identifier: MIT
// Storage of text. Paths are the device's: `\` between the parts, a trailing `\` on a folder. A path that leads outside
// the device's storage is refused with PathRefused.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <memory>
#include <string_view>
#include <vector>

namespace platform {

class Volumes {
public:
    virtual ~Volumes() = default;
    /// Walk over the roots of the volumes, in an order that does not change. An empty text ends the walk.
    virtual Text First() = 0;
    virtual Text Next() = 0;
    /// Sets `bytes` to the space of a volume, which may wrap to a negative number for a very large one. Fails if the
    /// volume can't be read or is out, such as a card that was removed.
    virtual ErrorNumber Space(const Text& root, std::int32_t& bytes) = 0;
};

/// An entry that is missing in a list because it could not be read.
struct Unlisted {
    Text Name;
    ErrorNumber Why = NoError;
    bool operator==(const Unlisted&) const = default;
};

class Folder {
public:
    virtual ~Folder() = default;
    /// Walk over the full names of the files in the folder, in byte order of their names. An empty text ends the walk.
    /// Files that can't be read are left out.
    virtual Text FirstFile(std::int32_t attributes) = 0;
    virtual Text NextFile() = 0;
    /// Returns the error of the first file that the walk has left out so far; NoError if it has left out none.
    virtual ErrorNumber WalkError() const = 0;
};

/// Shows, by comparison, whether a file is another one than before or was changed, whatever its name. The numbers have
/// no other meaning.
struct FileStamp {
    std::uint64_t Identity = 0;
    std::int64_t Size = 0;
    std::int64_t Written = 0; ///< when its text was last written
    std::int64_t Changed = 0; ///< when anything of it was last changed, such as its permissions or its name
    bool operator==(const FileStamp&) const = default;
};

enum class Origin { Start = 0, End = 2 };

/// An open text file in UTF-8. Lines end with LF or CR LF when read, and with LF when written. Bytes that are not UTF-8
/// survive reading and writing. If the last line has no line end, the next write adds it first, so that two lines never
/// run together. A line feed inside a text is written as a blank; a NUL is read and written as a blank. A byte-order
/// mark at the start is not part of the first line. Offsets count bytes.
class TextStream {
public:
    virtual ~TextStream() = default; ///< drops what was written and not closed, except in a scratch file
    virtual std::int64_t Position() const = 0;
    virtual std::int64_t Size() const = 0;
    virtual ErrorNumber Seek(std::int64_t offset, Origin origin) = 0;
    virtual ErrorNumber ReadLine(Text& line) = 0; ///< at the end: FileNotFound and an empty text
    /// Skips at most `most` lines without decoding them, and sets `passed` to the number of lines skipped. There are
    /// fewer only at the end of the file or after a failure. After a failure the position may be inside a line.
    virtual ErrorNumber SkipLines(std::int64_t most, std::int64_t& passed) = 0;
    /// Reads at most `most` lines, possibly fewer, and sets `lines` to the bytes that WriteLine would write for them
    /// and `taken` to their number. On success `taken` is 0 only at the end of the file. The bytes are valid until the
    /// next call.
    virtual ErrorNumber ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) = 0;
    /// Returns a number that changes when a Seek finds that the file was changed since the Seek before. A Seek to the
    /// current position may miss a change that another program made in the last few milliseconds.
    virtual std::int64_t Revision() const = 0;
    /// The stamp of the file as it is now.
    virtual FileStamp Stamp() const = 0;
    virtual ErrorNumber WriteLine(const Text& line) = 0;
    /// Writes lines that ReadLines of this or another stream has set, as a WriteLine of each would.
    virtual ErrorNumber WriteLines(std::string_view lines) = 0;
    /// Checks what the name that was opened leads to now, for a caller that is about to replace the file. Returns
    /// PathNotFound if the folder is missing or is another one than at the opening, FileNotFound if the file is
    /// missing, FileChanged if it is another file. A change inside the file changes Revision, as at a Seek.
    virtual ErrorNumber CheckName() = 0;
    /// Closes the file. On success what was written is on the medium.
    virtual ErrorNumber Close() = 0;
};

enum class StreamMode {
    Create = 0,
    Existing = 1,
    Scratch, ///< as Create, for a file that is not data until it is moved to its place
};

class FileSystem {
public:
    virtual ~FileSystem() = default;
    /// Opens a folder. With `create` a missing folder and its parents are created, but not the root of a volume: a
    /// volume without its root is out.
    virtual ErrorNumber OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) = 0;
    /// Opens a text file. Create replaces any old content. Existing opens a file that exists, for reading and writing,
    /// or only for reading if it can't be written. What is written becomes the content of the file, as a whole, when
    /// the stream is closed: until then, and after a failed write, the file is unchanged. Lines of a scratch file are
    /// written at once.
    virtual ErrorNumber OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) = 0;
    /// Renames a file, and replaces the destination if it exists. Afterwards the destination has the old text or the
    /// new text, never a part of either. On one file system this is one step that does not write the text again. On
    /// failure the source is still there, or, if only syncing the destination to the medium failed, the whole text is
    /// at the destination.
    virtual ErrorNumber MoveFile(const Text& source, const Text& destination) = 0;
    virtual ErrorNumber DeleteFile(const Text& fullName) = 0;
};

/// One line of a line database. As in a text file, a line feed or a NUL becomes a blank when it is written, and a NUL
/// also when it is read.
struct LineRecord {
    std::int32_t LineNumber = 0;
    Text LineData;
};

using DatabaseId = std::int32_t; ///< 0 means none

enum class DatabaseMode : std::int32_t { Read = 9, ReadWrite = 11 };

/// The result of opening or creating a line database.
struct OpenedDatabase {
    DatabaseId Id = 0;           ///< 0 on failure
    ErrorNumber Error = NoError; ///< why it failed; NoError on success
};

/// Line databases. Each has a name, a type code, a creator code, and an ordered list of records, one of which is the
/// current one. A committed record survives a loss of power.
class RecordDatabase {
public:
    virtual ~RecordDatabase() = default;
    /// Opens a database. Fails with FileNotFound if there is no line database of that name, otherwise with the error
    /// that prevented opening it.
    virtual OpenedDatabase Open(const Text& name, DatabaseMode mode) = 0;
    /// Creates a database. Fails with FileExists if it exists.
    virtual OpenedDatabase Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) = 0;
    virtual ErrorNumber Delete(const Text& name) = 0; ///< fails while it is open
    virtual void Close(DatabaseId database) = 0;

    /// Returns the number of records. If any read since the opening has failed, returns the negative error number:
    /// records that seem to be missing may exist.
    virtual std::int32_t RecordCount(DatabaseId database) = 0;
    virtual ErrorNumber DeclareTable(DatabaseId database, const Text& name, const Text& definition) = 0;

    /// Makes a new blank record after the last one, which becomes the current one. It is not in the database until it
    /// is committed.
    virtual ErrorNumber AddRecord(DatabaseId database) = 0;
    virtual ErrorNumber BeginEdit(DatabaseId database) = 0;
    virtual ErrorNumber WriteRecord(DatabaseId database, const LineRecord& record) = 0;
    virtual ErrorNumber Commit(DatabaseId database) = 0;
    virtual bool ReadRecord(DatabaseId database, LineRecord& record) = 0;
    virtual ErrorNumber DeleteRecord(DatabaseId database) = 0; ///< the record after it becomes the current one
    /// Makes the record at `position` (from 0) the current one, and copies each record from there on into the one after
    /// it, with its line number raised by one. The content of the last record is lost. Either all records are shifted
    /// or none. Returns FileNotFound if one of them is missing.
    virtual ErrorNumber ShiftRecords(DatabaseId database, std::int32_t position) = 0;
    /// Sets the line number of each record to its place, from 1, and moves past the last record. Only records with
    /// another number are written.
    virtual ErrorNumber RenumberRecords(DatabaseId database) = 0;

    /// Makes the record with this line number the current one. Returns FileNotFound if there is none.
    virtual ErrorNumber FindRecord(DatabaseId database, std::int32_t lineNumber) = 0;
    virtual std::int32_t Position(DatabaseId database) = 0; ///< of the current record, from 0; -1 if there is none

    /// Between the two calls no other program can write to the database or block a read of it. Returns InUse if another
    /// program still has it locked after waiting. REQUIRES: nothing is written between the calls. Inside a batch the
    /// calls have no effect, because the batch has the lock.
    virtual ErrorNumber BeginReading(DatabaseId database) = 0;
    virtual void EndReading(DatabaseId database) = 0;

    /// The commits between the two calls reach the medium together. None does if the power fails or the database is
    /// closed before EndBatch, or if EndBatch fails. After a failed EndBatch the batch is over and the first record is
    /// the current one.
    virtual ErrorNumber BeginBatch(DatabaseId database) = 0;
    virtual ErrorNumber EndBatch(DatabaseId database) = 0;

    /// Walk over the names of the databases with that type and creator (0 means any). An empty text ends the walk.
    /// Databases that can't be read are left out.
    virtual Text FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) = 0;
    virtual Text NextDatabase() = 0;
    /// Returns what the last walk has left out, of any type and creator. An empty name means all databases.
    virtual const std::vector<Unlisted>& UnreadDatabases() const = 0;
};

/// An observer of failed saves, which informs a person. The program goes on, as on a device, which shows no message.
class SaveWatcher {
public:
    virtual ~SaveWatcher() = default;
    /// `file` is the bare name of the table or file that was to be written, never that of a scratch file; `why` is the
    /// reason in a few words, without a full stop.
    virtual void NotSaved(const Text& file, const Text& why) = 0;
};

} // namespace platform
