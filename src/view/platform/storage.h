// SPDX-License-Identifier: MIT
// Where text is kept. Paths are the device's: `\` between the parts, a trailing `\` on a folder. No path leads outside
// the device's storage: one that would is refused with PathRefused.
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
    /// The roots of the volumes, in an order that stays the same; an empty text ends the walk.
    virtual Text First() = 0;
    virtual Text Next() = 0;
    /// Space of a volume in bytes. It may wrap negative on a very large one, and fails where a volume can't be read or
    /// is out, as a card is that has been taken from the device.
    virtual ErrorNumber Space(const Text& root, std::int32_t& bytes) = 0;
};

/// What a list lacks because it could not be read.
struct Unlisted {
    Text Name;
    ErrorNumber Why = NoError;
    bool operator==(const Unlisted&) const = default;
};

class Folder {
public:
    virtual ~Folder() = default;
    /// The files in it as full names, in byte order of their names; an empty text ends the walk. What can't be read is
    /// left out.
    virtual Text FirstFile(std::int32_t attributes) = 0;
    virtual Text NextFile() = 0;
    /// Why the walk has left something out so far: the first reason, NoError where it has left out nothing.
    virtual ErrorNumber WalkError() const = 0;
};

/// Tells a file from the one that was there before, whatever its name. The numbers say nothing else.
struct FileStamp {
    std::uint64_t Identity = 0;
    std::int64_t Size = 0;
    std::int64_t Written = 0; ///< when its text was last written
    std::int64_t Changed = 0; ///< when anything of it was, its rights or its name
    bool operator==(const FileStamp&) const = default;
};

enum class Origin { Start = 0, End = 2 };

/// An open text file: UTF-8, one line a stream line, read with LF or CR LF and written with LF. Bytes that are no UTF-8
/// survive reading and writing. A line that is written behind a last line without a line end gets that line end first,
/// so that two lines never run together. A line feed inside a text is written as a blank, a NUL is read and written as
/// one, and a byte-order mark at the head is no part of the first line. Offsets count bytes.
class TextStream {
public:
    virtual ~TextStream() = default; ///< closes it, whatever comes of that
    virtual std::int64_t Position() const = 0;
    virtual std::int64_t Size() const = 0;
    virtual ErrorNumber Seek(std::int64_t offset, Origin origin) = 0;
    virtual ErrorNumber ReadLine(Text& line) = 0; ///< at the end: FileNotFound and an empty line
    /// Passes over at most `most` lines without looking at their text: fewer only at the end of the file, or before a
    /// failure. `passed` is how many there were; after a failure the position may lie inside a line.
    virtual ErrorNumber SkipLines(std::int64_t most, std::int64_t& passed) = 0;
    /// Takes lines as they are to be written again: the bytes that WriteLine would make of each. At most `most` of
    /// them, as many as are at hand; `taken` is how many, and 0 at the end alone. The bytes stay until the next call.
    virtual ErrorNumber ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) = 0;
    /// Another number whenever the file was seen, at a Seek, to have been changed since the one before. A Seek to where
    /// the stream stands need not look at what another program has done in the last few milliseconds.
    virtual std::int64_t Revision() const = 0;
    /// Of the file as it is now.
    virtual FileStamp Stamp() const = 0;
    virtual ErrorNumber WriteLine(const Text& line) = 0;
    /// Writes lines that ReadLines has taken, here or from another stream, as a WriteLine of each would.
    virtual ErrorNumber WriteLines(std::string_view lines) = 0;
    /// Looks up what the name that it was opened by leads to now: for who is about to put another file in its place.
    /// PathNotFound where that is no folder or not the one of the opening, FileNotFound where no file is there,
    /// FileChanged where it is another one. What was written into the file itself is seen as at a Seek.
    virtual ErrorNumber CheckName() = 0;
    /// What was written is on the medium when this returns without an error.
    virtual ErrorNumber Close() = 0;
};

enum class StreamMode {
    Create = 0,
    Existing = 1,
    Scratch, ///< as Create, for a file that is no data until it has been moved to where it belongs
};

class FileSystem {
public:
    virtual ~FileSystem() = default;
    /// With `create` a missing folder is made, with the folders above it; but a volume's own is not: it is out.
    virtual ErrorNumber OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) = 0;
    /// Create replaces any old content; Existing opens a file that is there, for reading and writing, or for reading
    /// alone where the file can't be written. What is written becomes the file's content as a whole when the stream is
    /// closed: until then, and where a write has failed, the file is what it was. A scratch file has each line at once.
    virtual ErrorNumber OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) = 0;
    /// Puts a file in the place of another one or under a new name. What is at the destination afterwards is the old
    /// text or the new one, never a part of either. Done in one step and without writing the text once more where both
    /// are on one file system. A failure leaves the source where it is, or the whole text at the destination where
    /// nothing but making it last has failed.
    virtual ErrorNumber MoveFile(const Text& source, const Text& destination) = 0;
    virtual ErrorNumber DeleteFile(const Text& fullName) = 0;
};

/// One line of a line database. A line feed or a NUL in it becomes a blank when it is written, as in a text file, and a
/// NUL when it is read, too.
struct LineRecord {
    std::int32_t LineNumber = 0;
    Text LineData;
};

using DatabaseId = std::int32_t; ///< 0 means none

enum class DatabaseMode : std::int32_t { Read = 9, ReadWrite = 11 };

/// What came of opening or making a line database.
struct OpenedDatabase {
    DatabaseId Id = 0;           ///< 0 after a failure
    ErrorNumber Error = NoError; ///< why it failed
};

/// Line databases: each is known by name, has a type and a creator code, and holds records in an order of their own
/// with a current one among them. A committed record survives the loss of power.
class RecordDatabase {
public:
    virtual ~RecordDatabase() = default;
    /// Fails with FileNotFound when there is no line database of that name, else with what kept it away.
    virtual OpenedDatabase Open(const Text& name, DatabaseMode mode) = 0;
    /// Makes a database that is not there yet.
    virtual OpenedDatabase Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) = 0;
    virtual ErrorNumber Delete(const Text& name) = 0; ///< not while it is open
    virtual void Close(DatabaseId database) = 0;

    /// Below 0, the error number with a minus, where the database could not be read at some time since it was opened:
    /// what seems to be missing in it need not be.
    virtual std::int32_t RecordCount(DatabaseId database) = 0;
    virtual ErrorNumber DeclareTable(DatabaseId database, const Text& name, const Text& definition) = 0;

    /// A new blank record behind the last one becomes the current one. Until it is committed it is not in the database.
    virtual ErrorNumber AddRecord(DatabaseId database) = 0;
    virtual ErrorNumber BeginEdit(DatabaseId database) = 0;
    virtual ErrorNumber WriteRecord(DatabaseId database, const LineRecord& record) = 0;
    virtual ErrorNumber Commit(DatabaseId database) = 0;
    virtual bool ReadRecord(DatabaseId database, LineRecord& record) = 0;
    virtual ErrorNumber DeleteRecord(DatabaseId database) = 0; ///< the record behind it becomes the current one
    /// Makes the record at a position the current one, and puts what each record from there on holds into the one
    /// behind it, with its line number raised by one. The last one's is lost. All are shifted or none: FileNotFound
    /// when one of them is missing.
    virtual ErrorNumber ShiftRecords(DatabaseId database, std::int32_t position) = 0;
    /// Gives each record the number of its place, from 1, and stands behind the last one. Only those that bear another
    /// number are written.
    virtual ErrorNumber RenumberRecords(DatabaseId database) = 0;

    /// Makes the record whose line number is `lineNumber` the current one.
    virtual ErrorNumber FindRecord(DatabaseId database, std::int32_t lineNumber) = 0;
    virtual std::int32_t Position(DatabaseId database) = 0; ///< of the current record, from 0; -1 for none

    /// Between the two nobody else writes to the database, and no read of it is kept from us by another program: where
    /// one has locked it InUse is given, after waiting for it. Nothing is written meanwhile. Inside a batch it is so
    /// anyway.
    virtual ErrorNumber BeginReading(DatabaseId database) = 0;
    virtual void EndReading(DatabaseId database) = 0;

    /// The commits between the two reach the medium together, or none does: when the power goes, the database is closed
    /// or the end of the batch fails meanwhile. After a failed end the batch is over and the first record is current.
    virtual ErrorNumber BeginBatch(DatabaseId database) = 0;
    virtual ErrorNumber EndBatch(DatabaseId database) = 0;

    /// The names of the databases with that type and creator (0 means any); an empty text ends the walk. What can't be
    /// read is left out.
    virtual Text FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) = 0;
    virtual Text NextDatabase() = 0;
    /// What the last walk has left out, whatever its type and creator. An empty name stands for all that there are.
    virtual const std::vector<Unlisted>& UnreadDatabases() const = 0;
};

/// Tells a person that something was not stored. The program goes on, as it does on a device, where nothing is said.
class SaveWatcher {
public:
    virtual ~SaveWatcher() = default;
    /// `file` is the bare name of the table or file that it was for, never that of a scratch file; `why` says in a few
    /// words what went wrong, without a full stop.
    virtual void NotSaved(const Text& file, const Text& why) = 0;
};

} // namespace platform
