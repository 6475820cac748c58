// SPDX-License-Identifier: MIT
#include "backends/files/line_table.h"

#include "backends/files/host_files.h"

#include <algorithm>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace backends {

namespace {

// Without cache spilling a batch needs the file exclusively only at its end, where it can still be discarded as a
// whole.
constexpr const char* Durability = "PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA; PRAGMA cache_spill=OFF";

constexpr const char* MakeLines =
    R"(CREATE TABLE IF NOT EXISTS "TEXT"(Position INTEGER PRIMARY KEY, LineNumber INTEGER, LineData TEXT);)"
    R"(CREATE INDEX IF NOT EXISTS "TEXT_LineNumber" ON "TEXT"(LineNumber))";

} // namespace

std::unique_ptr<LineTable> LineTable::Open(FileEntry file, bool writable, LockWait& patience, ErrorNumber& error) {
    // The file must be opened by SQLite alone: closing any other descriptor of it releases the locks of this process's
    // other connections.
    struct stat found {};
    error = LookAt(file, found);
    if (error == NoError && !S_ISREG(found.st_mode))
        error = FileNotFound;
    if (error != NoError) // a failed check must not count as a missing database, which would be created again
        return nullptr;
    std::unique_ptr<LineTable> table(new LineTable(writable));
    if (!table->Connection.Open(std::move(file), patience)) {
        error = table->Connection.LastError();
        return nullptr;
    }
    if (!table->IsPlain() || !table->HasRoomForItsPositions()) {
        error = Damaged;
        return nullptr;
    }
    if (!table->ReadCodes()) {
        error = table->Connection.LastError();
        if (error == FileNotFound && !table->HoldsNothing())
            error = Damaged;
        return nullptr;
    }
    error = table->Connection.Execute(Durability);
    return error == NoError ? std::move(table) : nullptr;
}

std::unique_ptr<LineTable> LineTable::Make(FileEntry file, const DatabaseCodes& codes, LockWait& patience,
                                           ErrorNumber& error) {
    // SQLite would create a file that the group can read. Its journals get the rights of this file.
    Descriptor made;
    error = CreateRegular(file.Folder, file.Name, O_WRONLY, made);
    const bool wasThere = error == FileExists;
    if (error != NoError && !wasThere)
        return nullptr;
    made.Close();
    const auto openAgain = [&] { return ::openat(file.Folder.Number(), ".", O_PATH | O_DIRECTORY | O_CLOEXEC); };
    const FileEntry again{Descriptor(Repeated(openAgain)), file.Name};
    std::unique_ptr<LineTable> table(new LineTable(true));
    error = table->Connection.Open(std::move(file), patience) ? NoError : table->Connection.LastError();
    if (error == NoError)
        error = table->Connection.Execute(Durability);
    if (error == NoError)
        error = table->WriteCodes(codes);
    if (error == NoError)
        return table;
    table.reset();
    if (!wasThere)
        static_cast<void>(RemoveFrom(again.Folder, again.Name));
    return nullptr;
}

/// A view, a trigger, a computed column or a virtual table would run code from whoever made the file, for any length of
/// time. A file that can't be examined is left to the code that reads it.
bool LineTable::IsPlain() {
    SqlStatement odd;
    constexpr const char* sql =
        "SELECT (SELECT COUNT(*) FROM sqlite_master WHERE type NOT IN ('table', 'index') OR rootpage < 1)"
        " + (SELECT COUNT(*) FROM pragma_table_xinfo('TEXT') WHERE hidden <> 0)"
        " + (SELECT COUNT(*) FROM pragma_table_xinfo('DATABASE') WHERE hidden <> 0)";
    return !odd.Prepare(Connection.Handle(), sql) || !odd.NextRow() || odd.Number(0) == 0;
}

/// A walk over the records uses their count, which is the highest position plus 1: a huge gap before the last one would
/// keep the walk busy almost without end. Records without gaps use at least one byte each.
bool LineTable::HasRoomForItsPositions() {
    SqlStatement beyond;
    constexpr const char* sql = R"(SELECT MAX(Position) >= page_count * page_size FROM "TEXT", pragma_page_count,)"
                                " pragma_page_size";
    return !beyond.Prepare(Connection.Handle(), sql) || !beyond.NextRow() || beyond.Number(0) == 0;
}

bool LineTable::ReadCodes() {
    SqlStatement codes;
    if (!codes.Prepare(Connection.Handle(), R"(SELECT TypeCode, CreatorCode FROM "DATABASE")") || !codes.NextRow())
        return false;
    Stored = {static_cast<std::int32_t>(codes.Number(0)), static_cast<std::int32_t>(codes.Number(1))};
    return true;
}

/// A killed program may have left a file without any content.
bool LineTable::HoldsNothing() {
    SqlStatement tables;
    return tables.Prepare(Connection.Handle(), "SELECT COUNT(*) FROM sqlite_master") && tables.NextRow() &&
           tables.Number(0) == 0;
}

/// Fails for a file that already holds a database: the tables can't be created twice.
ErrorNumber LineTable::WriteCodes(const DatabaseCodes& codes) {
    SqlStatement tables;
    if (!tables.Prepare(Connection.Handle(), "SELECT COUNT(*) FROM sqlite_master") || !tables.NextRow())
        return Connection.LastError();
    if (tables.Number(0) != 0)
        return FileExists;
    tables.Done();
    const std::string sql = R"(BEGIN IMMEDIATE; CREATE TABLE "DATABASE"(TypeCode INTEGER, CreatorCode INTEGER);)"
                            R"(INSERT INTO "DATABASE" VALUES()" +
                            std::to_string(codes.TypeCode) + "," + std::to_string(codes.CreatorCode) + "); COMMIT";
    Stored = codes;
    return Connection.Execute(sql.c_str());
}

/// Notes whether the last statement returned no row because of a failure. Going on after that would treat the lines as
/// missing and overwrite them.
ErrorNumber LineTable::NoteFailedRead() {
    switch (sqlite3_errcode(Connection.Handle())) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
    case SQLITE_ERROR: // no line table has been declared
        return FailedRead;
    default:
        FailedRead = Connection.LastError();
        if (FailedRead ==
            InUse) // InUse means that it can be done later, but a caller may have gone on without the record
            FailedRead = ReadKept;
        return FailedRead;
    }
}

ErrorNumber LineTable::CountRecords(std::int64_t& count) {
    count = 0;
    if (!LastPosition.Prepare(Connection.Handle(), R"(SELECT IFNULL(MAX(Position), -1) + 1 FROM "TEXT")"))
        return NoteFailedRead();
    if (LastPosition.NextRow())
        count = LastPosition.Number(0);
    const ErrorNumber error = NoteFailedRead();
    LastPosition.Done();
    return error;
}

std::int64_t LineTable::RecordCount() {
    std::int64_t count = 0;
    const ErrorNumber error = CountRecords(count);
    return error == NoError ? count : -error;
}

/// If SQLite has rolled a batch back because of a failure, such as a full disk, a further write would be committed on
/// its own. So it is refused until the batch is ended.
ErrorNumber LineTable::MayWrite() const {
    if (!Writable)
        return PermissionDenied;
    return InBatch && !Connection.InTransaction() ? DiskFull : NoError;
}

ErrorNumber LineTable::Declare() {
    const ErrorNumber error = MayWrite();
    return error == NoError ? Connection.Execute(MakeLines) : error;
}

ErrorNumber LineTable::AddRecord() {
    State = Pending::None;
    if (const ErrorNumber error = CountRecords(Current); error != NoError)
        return error;
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    if (!InsertOne.Prepare(Connection.Handle(), R"(INSERT INTO "TEXT" VALUES(?1, ?2, ?3))"))
        return FileNotFound; // no line table has been declared
    Draft = {};
    State = Pending::Added;
    return NoError;
}

ErrorNumber LineTable::BeginEdit() {
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    if (State != Pending::None)
        return NoError;
    if (!Load(Current, Draft))
        return FileNotFound;
    State = Pending::Edited;
    return NoError;
}

ErrorNumber LineTable::WriteRecord(const LineRecord& record) {
    if (State == Pending::None)
        return DeviceFailed;
    Draft = record;
    std::replace(Draft.LineData.begin(), Draft.LineData.end(), u'\n', u' ');
    modStringTools::BlankNuls(Draft.LineData);
    return NoError;
}

ErrorNumber LineTable::Commit() {
    if (State == Pending::None)
        return DeviceFailed;
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    if (State == Pending::Added) {
        if (const ErrorNumber error = CountRecords(Current); error != NoError)
            return error;
    }
    const ErrorNumber error = State == Pending::Added ? Insert(Current) : Update(Current);
    if (error == NoError)
        State = Pending::None;
    return error;
}

ErrorNumber LineTable::Insert(std::int64_t position) {
    const std::string bytes = modStringTools::ToBytes(Draft.LineData);
    InsertOne.Bind(1, position);
    InsertOne.Bind(2, std::int64_t{Draft.LineNumber});
    InsertOne.Bind(3, bytes);
    return InsertOne.Run();
}

ErrorNumber LineTable::Update(std::int64_t position) {
    constexpr const char* sql = R"(UPDATE "TEXT" SET LineNumber = ?2, LineData = ?3 WHERE Position = ?1)";
    if (!UpdateOne.Prepare(Connection.Handle(), sql))
        return Connection.LastError();
    const std::string bytes = modStringTools::ToBytes(Draft.LineData);
    UpdateOne.Bind(1, position);
    UpdateOne.Bind(2, std::int64_t{Draft.LineNumber});
    UpdateOne.Bind(3, bytes);
    return UpdateOne.Run();
}

bool LineTable::Load(std::int64_t position, LineRecord& record) {
    if (!Select.Prepare(Connection.Handle(), R"(SELECT LineNumber, LineData FROM "TEXT" WHERE Position = ?1)")) {
        NoteFailedRead();
        return false;
    }
    Select.Bind(1, position);
    const bool found = Select.NextRow();
    if (!found)
        NoteFailedRead();
    if (found) {
        record.LineNumber = static_cast<std::int32_t>(Select.Number(0));
        record.LineData = modStringTools::FromBytes(Select.Bytes(1));
        modStringTools::BlankNuls(record.LineData);
    }
    Select.Done();
    return found;
}

bool LineTable::ReadRecord(LineRecord& record) {
    if (State == Pending::None)
        return Load(Current, record);
    record = Draft;
    return true;
}

ErrorNumber LineTable::DeleteRecord() {
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    const bool wasOnlyAdded = State == Pending::Added;
    State = Pending::None;
    if (wasOnlyAdded)
        return NoError;
    std::int64_t count = 0;
    if (const ErrorNumber error = CountRecords(count); error != NoError)
        return error;
    if (Current >= count)
        return FileNotFound;
    const ErrorNumber error = BeginStep();
    return error == NoError ? EndStep(Remove(Current)) : error;
}

/// Begins a step that is done as a whole or not at all. Inside a batch the savepoint nests in its transaction.
ErrorNumber LineTable::BeginStep() {
    return Connection.Execute("SAVEPOINT Step");
}

ErrorNumber LineTable::EndStep(ErrorNumber error) {
    if (error == NoError)
        error = Connection.Execute("RELEASE Step");
    if (error != NoError) {
        Connection.Execute("ROLLBACK TO Step");
        Connection.Execute("RELEASE Step");
    }
    return error;
}

ErrorNumber LineTable::Remove(std::int64_t position) {
    // The records after the gap are updated in the order of their positions, so each moves to a free one.
    if (!DeleteOne.Prepare(Connection.Handle(), R"(DELETE FROM "TEXT" WHERE Position = ?1)") ||
        !CloseGap.Prepare(Connection.Handle(), R"(UPDATE "TEXT" SET Position = Position - 1 WHERE Position > ?1)"))
        return Connection.LastError();
    DeleteOne.Bind(1, position);
    if (const ErrorNumber error = DeleteOne.Run(); error != NoError)
        return error;
    CloseGap.Bind(1, position);
    return CloseGap.Run();
}

ErrorNumber LineTable::ShiftRecords(std::int64_t position) {
    MoveTo(position);
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    std::int64_t count = 0;
    if (const ErrorNumber error = CountRecords(count); error != NoError)
        return error;
    if (position < 0 || position >= count)
        return FileNotFound;
    if (const ErrorNumber error = BeginStep(); error != NoError)
        return error;
    return EndStep(ShiftFrom(position, count - 1 - position));
}

/// The positions, and so the order in the file, do not change: giving each record a new position costs five times as
/// much. Line numbers that are already in sequence, as all but the last one's are, are not written.
ErrorNumber LineTable::ShiftFrom(std::int64_t position, std::int64_t moved) {
    // A number that another tool has left out counts as 0.
    constexpr const char* numbers =
        R"(UPDATE "TEXT" SET LineNumber = coalesce(Before.LineNumber, 0) + 1 FROM "TEXT" AS Before )"
        R"(WHERE Before.Position = "TEXT".Position - 1 AND "TEXT".Position > ?1 )"
        R"(AND "TEXT".LineNumber IS NOT coalesce(Before.LineNumber, 0) + 1)";
    constexpr const char* lines = R"(UPDATE "TEXT" SET LineData = Before.LineData FROM "TEXT" AS Before )"
                                  R"(WHERE Before.Position = "TEXT".Position - 1 AND "TEXT".Position > ?1)";
    if (!ShiftNumbers.Prepare(Connection.Handle(), numbers) || !ShiftLines.Prepare(Connection.Handle(), lines))
        return FileNotFound;
    ShiftNumbers.Bind(1, position);
    if (const ErrorNumber error = ShiftNumbers.Run(); error != NoError)
        return error;
    ShiftLines.Bind(1, position);
    if (const ErrorNumber error = ShiftLines.Run(); error != NoError)
        return error;
    return Connection.Changed() == moved ? NoError : FileNotFound;
}

ErrorNumber LineTable::RenumberRecords() {
    constexpr const char* sql = R"(UPDATE "TEXT" SET LineNumber = Position + 1 WHERE LineNumber IS NOT Position + 1)";
    MoveTo(RecordCount());
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    return Renumber.Prepare(Connection.Handle(), sql) ? Renumber.Run() : FileNotFound;
}

ErrorNumber LineTable::FindRecord(std::int32_t lineNumber) {
    constexpr const char* sql = R"(SELECT Position FROM "TEXT" WHERE LineNumber = ?1 ORDER BY Position LIMIT 1)";
    State = Pending::None;
    if (!Find.Prepare(Connection.Handle(), sql))
        return NoteFailedRead() == NoError ? FileNotFound : FailedRead;
    Find.Bind(1, std::int64_t{lineNumber});
    const bool found = Find.NextRow();
    if (found)
        Current = Find.Number(0);
    const ErrorNumber error = found ? NoError : NoteFailedRead();
    Find.Done();
    return found || error != NoError ? error : FileNotFound;
}

std::int64_t LineTable::Position() {
    return AtEnd() ? -1 : Current;
}

void LineTable::MoveTo(std::int64_t position) {
    State = Pending::None;
    Current = position <= 0 ? 0 : std::min(position, std::max<std::int64_t>(RecordCount(), 0));
}

bool LineTable::AtEnd() {
    return State != Pending::Added && Current >= RecordCount();
}

/// Reads the first page, because only that acquires the lock for reading.
ErrorNumber LineTable::BeginReading() {
    if (Connection.InTransaction())
        return NoError;
    if (const ErrorNumber error = Connection.Execute("BEGIN"); error != NoError)
        return error;
    Reading = true;
    const bool read =
        FirstPage.Prepare(Connection.Handle(), "SELECT rootpage FROM sqlite_master LIMIT 1") && FirstPage.NextRow();
    const ErrorNumber error = read ? NoError : Connection.LastError();
    FirstPage.Done();
    if (error == InUse)
        EndReading();
    return error == InUse ? InUse : NoError; // other errors are reported by the reads that follow
}

void LineTable::EndReading() {
    if (Reading)
        Connection.Execute("COMMIT");
    Reading = false;
}

ErrorNumber LineTable::BeginBatch() {
    if (!Writable)
        return PermissionDenied;
    if (InBatch)
        return DeviceFailed;
    const ErrorNumber error = Connection.Execute("BEGIN IMMEDIATE");
    InBatch = error == NoError;
    return error;
}

ErrorNumber LineTable::EndBatch() {
    if (!InBatch)
        return DeviceFailed;
    ErrorNumber error = MayWrite();
    InBatch = false;
    if (error == NoError)
        error = Connection.Execute("COMMIT");
    if (error != NoError) {
        State = Pending::None;
        Connection.Execute("ROLLBACK");
        MoveTo(0);
    }
    return error;
}

} // namespace backends
