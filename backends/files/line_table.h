// SPDX-License-Identifier: MIT
// One open line database: its records, and the current one among them.
#pragma once

#include "backends/files/sql.h"
#include "src/view/platform/storage.h"

#include <memory>

namespace backends {

using namespace platform;

/// The codes that a line database bears.
struct DatabaseCodes {
    std::int32_t TypeCode = 0;
    std::int32_t CreatorCode = 0;
};

/// The file is a SQLite database with two tables:
///
///     "DATABASE"(TypeCode INTEGER, CreatorCode INTEGER)                                  one row
///     "TEXT"(Position INTEGER PRIMARY KEY, LineNumber INTEGER, LineData TEXT)            one row a record
///
/// Position is the place of the record in the order of the records, counted from 0 without gaps: the last one's gives
/// the count, and a move needs no search. LineData holds the bytes of the line as a text file would.
///
/// A committed line must survive the loss of power. The journal is the rolled-back one, for it leaves no second file
/// beside a database that is at rest; and synchronous=EXTRA, since with FULL the journal's removal itself may be lost
/// with the power, and the last commit is then taken back at the next opening.
class LineTable {
public:
    /// Opens a line database. Nothing when that fails: with FileNotFound where the file is missing or holds nothing at
    /// all. One that holds anything else, as a damaged database does, is not missing: it must not be made anew. Nor is
    /// one that holds what could keep a reader busy for ever.
    static std::unique_ptr<LineTable> Open(FileEntry file, bool writable, LockWait& patience, ErrorNumber& error);
    /// Makes one with no line table yet, in a file that is missing or empty. Nothing when that fails.
    static std::unique_ptr<LineTable> Make(FileEntry file, const DatabaseCodes& codes, LockWait& patience,
                                           ErrorNumber& error);

    const DatabaseCodes& Codes() const { return Stored; }

    /// Below 0 from the first failed read on, until it is opened again: its error number with a minus.
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

    explicit LineTable(bool writable) : Writable(writable) {}
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

    bool Writable;
    DatabaseCodes Stored;
    SqlConnection Connection; ///< stands before the statements, so that it goes after them
    SqlStatement LastPosition;
    SqlStatement Select;
    SqlStatement Find;
    SqlStatement InsertOne;
    SqlStatement UpdateOne;
    SqlStatement DeleteOne;
    SqlStatement CloseGap;
    SqlStatement ShiftNumbers;
    SqlStatement ShiftLines;
    SqlStatement Renumber;
    SqlStatement FirstPage;

    std::int64_t Current = 0; ///< from 0; the count of records when there is no current one
    Pending State = Pending::None;
    LineRecord Draft; ///< what the next commit stores, while something is pending
    bool InBatch = false;
    bool Reading = false;
    ErrorNumber FailedRead = NoError; ///< what kept a record from us that may well be there
};

} // namespace backends
