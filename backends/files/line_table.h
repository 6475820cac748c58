// SPDX-License-Identifier: MIT
// One open line database: its records and its current record.
#pragma once

#include "backends/files/sql.h"
#include "src/view/platform/storage.h"

#include <memory>

namespace backends {

using namespace platform;

/// The codes of a line database.
struct DatabaseCodes {
    std::int32_t TypeCode = 0;
    std::int32_t CreatorCode = 0;
};

/// The file is a SQLite database with two tables:
///
///     "DATABASE"(TypeCode INTEGER, CreatorCode INTEGER)                                  one row
///     "TEXT"(Position INTEGER PRIMARY KEY, LineNumber INTEGER, LineData TEXT)            one row a record
///
/// Position is the index of the record, counted from 0 without gaps: the last one gives the count, and a move needs no
/// search. LineData has the same bytes as the line would have in a text file.
///
/// A committed line must survive a loss of power. The journal mode is rollback (DELETE), because it leaves no second
/// file beside a database that is not in use. synchronous is EXTRA, because with FULL the removal of the journal may be
/// lost with the power, and the next opening then rolls the last commit back.
class LineTable {
public:
    /// Opens a line database. Returns null on failure, with FileNotFound if the file is missing or empty. A file with
    /// any other content, such as a damaged database, is not missing: it must not be created again. A file whose
    /// content could keep a reader busy without end is refused too.
    static std::unique_ptr<LineTable> Open(FileEntry file, bool writable, LockWait& patience, ErrorNumber& error);
    /// Creates a database without a line table in a file that is missing or empty. Returns null on failure.
    static std::unique_ptr<LineTable> Make(FileEntry file, const DatabaseCodes& codes, LockWait& patience,
                                           ErrorNumber& error);

    const DatabaseCodes& Codes() const { return Stored_; }

    /// Returns the negative error number from the first failed read on, until the database is reopened.
    std::int64_t RecordCount();
    ErrorNumber Declare();
    ErrorNumber AddRecord();
    ErrorNumber BeginEdit();
    ErrorNumber WriteRecord(const LineRecord& record);
    ErrorNumber Commit();
    bool ReadRecord(LineRecord& record);
    ErrorNumber DeleteRecord();
    ErrorNumber ShiftRecords(std::int64_t position);
    ErrorNumber RenumberRecords();
    ErrorNumber FindRecord(std::int32_t lineNumber);
    std::int64_t Position(); ///< -1 when there is no current record

    ErrorNumber BeginReading();
    void EndReading();
    ErrorNumber BeginBatch();
    ErrorNumber EndBatch();

private:
    enum class Pending { None, Added, Edited };

    explicit LineTable(bool writable) : Writable_(writable) {}
    bool IsPlain();
    bool HasRoomForItsPositions();
    bool ReadCodes();
    bool HoldsNothing();
    ErrorNumber CountRecords(std::int64_t& count);
    ErrorNumber NoteFailedRead();
    ErrorNumber MayWrite() const;
    ErrorNumber WriteCodes(const DatabaseCodes& codes);
    ErrorNumber Insert(std::int64_t position);
    ErrorNumber Update(std::int64_t position);
    ErrorNumber Remove(std::int64_t position);
    ErrorNumber ShiftFrom(std::int64_t position, std::int64_t moved);
    ErrorNumber BeginStep();
    ErrorNumber EndStep(ErrorNumber error);
    bool Load(std::int64_t position, LineRecord& record);
    void MoveTo(std::int64_t position);
    bool AtEnd();

    bool Writable_;
    DatabaseCodes Stored_;
    SqlConnection Connection_; ///< before the statements, so that it is destroyed after them
    SqlStatement LastPosition_;
    SqlStatement Select_;
    SqlStatement Find_;
    SqlStatement InsertOne_;
    SqlStatement UpdateOne_;
    SqlStatement DeleteOne_;
    SqlStatement CloseGap_;
    SqlStatement ShiftNumbers_;
    SqlStatement ShiftLines_;
    SqlStatement Renumber_;
    SqlStatement FirstPage_;

    std::int64_t Current_ = 0; ///< from 0; equal to the count of records if there is no current one
    Pending State_ = Pending::None;
    LineRecord Draft_; ///< what the next commit stores, if something is pending
    bool InBatch_ = false;
    bool Reading_ = false;
    ErrorNumber FailedRead_ = NoError; ///< why a record could not be read, which may exist
};

} // namespace backends
