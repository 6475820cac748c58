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
    if (!table->Connection_.Open(std::move(file), patience)) {
        error = table->Connection_.LastError();
        return nullptr;
    }
    if (!table->IsPlain() || !table->HasRoomForItsPositions()) {
        error = Damaged;
        return nullptr;
    }
    if (!table->ReadCodes()) {
        error = table->Connection_.LastError();
        if (error == FileNotFound && !table->HoldsNothing())
            error = Damaged;
        return nullptr;
    }
    error = table->Connection_.Execute(Durability);
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
    error = table->Connection_.Open(std::move(file), patience) ? NoError : table->Connection_.LastError();
    if (error == NoError)
        error = table->Connection_.Execute(Durability);
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
    return !odd.Prepare(Connection_.Handle(), sql) || !odd.NextRow() || odd.Number(0) == 0;
}

/// A walk over the records uses their count, which is the highest position plus 1: a huge gap before the last one would
/// keep the walk busy almost without end. Records without gaps use at least one byte each.
bool LineTable::HasRoomForItsPositions() {
    SqlStatement beyond;
    constexpr const char* sql = R"(SELECT MAX(Position) >= page_count * page_size FROM "TEXT", pragma_page_count,)"
                                " pragma_page_size";
    return !beyond.Prepare(Connection_.Handle(), sql) || !beyond.NextRow() || beyond.Number(0) == 0;
}

bool LineTable::ReadCodes() {
    SqlStatement codes;
    if (!codes.Prepare(Connection_.Handle(), R"(SELECT TypeCode, CreatorCode FROM "DATABASE")") || !codes.NextRow())
        return false;
    Stored_ = {static_cast<std::int32_t>(codes.Number(0)), static_cast<std::int32_t>(codes.Number(1))};
    return true;
}

/// A killed program may have left a file without any content.
bool LineTable::HoldsNothing() {
    SqlStatement tables;
    return tables.Prepare(Connection_.Handle(), "SELECT COUNT(*) FROM sqlite_master") && tables.NextRow() &&
           tables.Number(0) == 0;
}

/// Fails for a file that already holds a database: the tables can't be created twice.
ErrorNumber LineTable::WriteCodes(const DatabaseCodes& codes) {
    SqlStatement tables;
    if (!tables.Prepare(Connection_.Handle(), "SELECT COUNT(*) FROM sqlite_master") || !tables.NextRow())
        return Connection_.LastError();
    if (tables.Number(0) != 0)
        return FileExists;
    tables.Done();
    const std::string sql = R"(BEGIN IMMEDIATE; CREATE TABLE "DATABASE"(TypeCode INTEGER, CreatorCode INTEGER);)"
                            R"(INSERT INTO "DATABASE" VALUES()" +
                            std::to_string(codes.TypeCode) + "," + std::to_string(codes.CreatorCode) + "); COMMIT";
    Stored_ = codes;
    return Connection_.Execute(sql.c_str());
}

/// Notes whether the last statement returned no row because of a failure. Going on after that would treat the lines as
/// missing and overwrite them.
ErrorNumber LineTable::NoteFailedRead() {
    switch (sqlite3_errcode(Connection_.Handle())) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
    case SQLITE_ERROR: // no line table has been declared
        return FailedRead_;
    default:
        FailedRead_ = Connection_.LastError();
        if (FailedRead_ ==
            InUse) // InUse means that it can be done later, but a caller may have gone on without the record
            FailedRead_ = ReadKept;
        return FailedRead_;
    }
}

ErrorNumber LineTable::CountRecords(std::int64_t& count) {
    count = 0;
    if (!LastPosition_.Prepare(Connection_.Handle(), R"(SELECT IFNULL(MAX(Position), -1) + 1 FROM "TEXT")"))
        return NoteFailedRead();
    if (LastPosition_.NextRow())
        count = LastPosition_.Number(0);
    const ErrorNumber error = NoteFailedRead();
    LastPosition_.Done();
    return error;
}

std::int64_t LineTable::RecordCount() {
    std::int64_t count = 0;
    const ErrorNumber error = CountRecords(count);
    return error == NoError ? count : -NumberOf(error);
}

/// If SQLite has rolled a batch back because of a failure, such as a full disk, a further write would be committed on
/// its own. So it is refused until the batch is ended.
ErrorNumber LineTable::MayWrite() const {
    if (!Writable_)
        return PermissionDenied;
    return InBatch_ && !Connection_.InTransaction() ? DiskFull : NoError;
}

ErrorNumber LineTable::Declare() {
    const ErrorNumber error = MayWrite();
    return error == NoError ? Connection_.Execute(MakeLines) : error;
}

ErrorNumber LineTable::AddRecord() {
    State_ = Pending::None;
    if (const ErrorNumber error = CountRecords(Current_); error != NoError)
        return error;
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    if (!InsertOne_.Prepare(Connection_.Handle(), R"(INSERT INTO "TEXT" VALUES(?1, ?2, ?3))"))
        return FileNotFound; // no line table has been declared
    Draft_ = {};
    State_ = Pending::Added;
    return NoError;
}

ErrorNumber LineTable::BeginEdit() {
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    if (State_ != Pending::None)
        return NoError;
    if (!Load(Current_, Draft_))
        return FileNotFound;
    State_ = Pending::Edited;
    return NoError;
}

ErrorNumber LineTable::WriteRecord(const LineRecord& record) {
    if (State_ == Pending::None)
        return DeviceFailed;
    Draft_ = record;
    std::replace(Draft_.LineData.begin(), Draft_.LineData.end(), u'\n', u' ');
    modStringTools::BlankNuls(Draft_.LineData);
    return NoError;
}

ErrorNumber LineTable::Commit() {
    if (State_ == Pending::None)
        return DeviceFailed;
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    if (State_ == Pending::Added) {
        if (const ErrorNumber error = CountRecords(Current_); error != NoError)
            return error;
    }
    const ErrorNumber error = State_ == Pending::Added ? Insert(Current_) : Update(Current_);
    if (error == NoError)
        State_ = Pending::None;
    return error;
}

ErrorNumber LineTable::Insert(std::int64_t position) {
    const std::string bytes = modStringTools::ToBytes(Draft_.LineData);
    InsertOne_.Bind(1, position);
    InsertOne_.Bind(2, std::int64_t{Draft_.LineNumber});
    InsertOne_.Bind(3, bytes);
    return InsertOne_.Run();
}

ErrorNumber LineTable::Update(std::int64_t position) {
    constexpr const char* sql = R"(UPDATE "TEXT" SET LineNumber = ?2, LineData = ?3 WHERE Position = ?1)";
    if (!UpdateOne_.Prepare(Connection_.Handle(), sql))
        return Connection_.LastError();
    const std::string bytes = modStringTools::ToBytes(Draft_.LineData);
    UpdateOne_.Bind(1, position);
    UpdateOne_.Bind(2, std::int64_t{Draft_.LineNumber});
    UpdateOne_.Bind(3, bytes);
    return UpdateOne_.Run();
}

bool LineTable::Load(std::int64_t position, LineRecord& record) {
    if (!Select_.Prepare(Connection_.Handle(), R"(SELECT LineNumber, LineData FROM "TEXT" WHERE Position = ?1)")) {
        NoteFailedRead();
        return false;
    }
    Select_.Bind(1, position);
    const bool found = Select_.NextRow();
    if (!found)
        NoteFailedRead();
    if (found) {
        record.LineNumber = static_cast<std::int32_t>(Select_.Number(0));
        record.LineData = modStringTools::FromBytes(Select_.Bytes(1));
        modStringTools::BlankNuls(record.LineData);
    }
    Select_.Done();
    return found;
}

bool LineTable::ReadRecord(LineRecord& record) {
    if (State_ == Pending::None)
        return Load(Current_, record);
    record = Draft_;
    return true;
}

ErrorNumber LineTable::DeleteRecord() {
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    const bool wasOnlyAdded = State_ == Pending::Added;
    State_ = Pending::None;
    if (wasOnlyAdded)
        return NoError;
    std::int64_t count = 0;
    if (const ErrorNumber error = CountRecords(count); error != NoError)
        return error;
    if (Current_ >= count)
        return FileNotFound;
    const ErrorNumber error = BeginStep();
    return error == NoError ? EndStep(Remove(Current_)) : error;
}

/// Begins a step that is done as a whole or not at all. Inside a batch the savepoint nests in its transaction.
ErrorNumber LineTable::BeginStep() {
    return Connection_.Execute("SAVEPOINT Step");
}

ErrorNumber LineTable::EndStep(ErrorNumber error) {
    if (error == NoError)
        error = Connection_.Execute("RELEASE Step");
    if (error != NoError) {
        Connection_.Execute("ROLLBACK TO Step");
        Connection_.Execute("RELEASE Step");
    }
    return error;
}

ErrorNumber LineTable::Remove(std::int64_t position) {
    // The records after the gap are updated in the order of their positions, so each moves to a free one.
    if (!DeleteOne_.Prepare(Connection_.Handle(), R"(DELETE FROM "TEXT" WHERE Position = ?1)") ||
        !CloseGap_.Prepare(Connection_.Handle(), R"(UPDATE "TEXT" SET Position = Position - 1 WHERE Position > ?1)"))
        return Connection_.LastError();
    DeleteOne_.Bind(1, position);
    if (const ErrorNumber error = DeleteOne_.Run(); error != NoError)
        return error;
    CloseGap_.Bind(1, position);
    return CloseGap_.Run();
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
    if (!ShiftNumbers_.Prepare(Connection_.Handle(), numbers) || !ShiftLines_.Prepare(Connection_.Handle(), lines))
        return FileNotFound;
    ShiftNumbers_.Bind(1, position);
    if (const ErrorNumber error = ShiftNumbers_.Run(); error != NoError)
        return error;
    ShiftLines_.Bind(1, position);
    if (const ErrorNumber error = ShiftLines_.Run(); error != NoError)
        return error;
    return Connection_.Changed() == moved ? NoError : FileNotFound;
}

ErrorNumber LineTable::RenumberRecords() {
    constexpr const char* sql = R"(UPDATE "TEXT" SET LineNumber = Position + 1 WHERE LineNumber IS NOT Position + 1)";
    MoveTo(RecordCount());
    if (const ErrorNumber error = MayWrite(); error != NoError)
        return error;
    return Renumber_.Prepare(Connection_.Handle(), sql) ? Renumber_.Run() : FileNotFound;
}

ErrorNumber LineTable::FindRecord(std::int32_t lineNumber) {
    constexpr const char* sql = R"(SELECT Position FROM "TEXT" WHERE LineNumber = ?1 ORDER BY Position LIMIT 1)";
    State_ = Pending::None;
    if (!Find_.Prepare(Connection_.Handle(), sql))
        return NoteFailedRead() == NoError ? FileNotFound : FailedRead_;
    Find_.Bind(1, std::int64_t{lineNumber});
    const bool found = Find_.NextRow();
    if (found)
        Current_ = Find_.Number(0);
    const ErrorNumber error = found ? NoError : NoteFailedRead();
    Find_.Done();
    return found || error != NoError ? error : FileNotFound;
}

std::int64_t LineTable::Position() {
    return AtEnd() ? -1 : Current_;
}

void LineTable::MoveTo(std::int64_t position) {
    State_ = Pending::None;
    Current_ = position <= 0 ? 0 : std::min(position, std::max<std::int64_t>(RecordCount(), 0));
}

bool LineTable::AtEnd() {
    return State_ != Pending::Added && Current_ >= RecordCount();
}

/// Reads the first page, because only that acquires the lock for reading.
ErrorNumber LineTable::BeginReading() {
    if (Connection_.InTransaction())
        return NoError;
    if (const ErrorNumber error = Connection_.Execute("BEGIN"); error != NoError)
        return error;
    Reading_ = true;
    const bool read =
        FirstPage_.Prepare(Connection_.Handle(), "SELECT rootpage FROM sqlite_master LIMIT 1") && FirstPage_.NextRow();
    const ErrorNumber error = read ? NoError : Connection_.LastError();
    FirstPage_.Done();
    if (error == InUse)
        EndReading();
    return error == InUse ? InUse : NoError; // other errors are reported by the reads that follow
}

void LineTable::EndReading() {
    if (Reading_)
        Connection_.Execute("COMMIT");
    Reading_ = false;
}

ErrorNumber LineTable::BeginBatch() {
    if (!Writable_)
        return PermissionDenied;
    if (InBatch_)
        return DeviceFailed;
    const ErrorNumber error = Connection_.Execute("BEGIN IMMEDIATE");
    InBatch_ = error == NoError;
    return error;
}

ErrorNumber LineTable::EndBatch() {
    if (!InBatch_)
        return DeviceFailed;
    ErrorNumber error = MayWrite();
    InBatch_ = false;
    if (error == NoError)
        error = Connection_.Execute("COMMIT");
    if (error != NoError) {
        State_ = Pending::None;
        Connection_.Execute("ROLLBACK");
        MoveTo(0);
    }
    return error;
}

} // namespace backends
