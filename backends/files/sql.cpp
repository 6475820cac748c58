// SPDX-License-Identifier: MIT
#include "backends/files/sql.h"

#include "backends/files/folder_vfs.h"

#include <new>
#include <sqlite3.h>

namespace backends {

namespace {

/// The greatest length of a text or row of a file, in bytes. An expression in a file could ask for any length.
constexpr int LongestText = 1 << 28;

/// SQLite allocates by itself and reports a lack of memory. The program handles it in the same way as a failed `new`.
[[noreturn]] void EndWithoutMemory() {
    if (const std::new_handler handler = std::get_new_handler())
        handler();
    throw std::bad_alloc();
}

/// Every result of SQLite is checked here: a failure for lack of memory must not be taken for a real result.
int Looked(int result) {
    if ((result & 0xFF) == SQLITE_NOMEM)
        EndWithoutMemory();
    return result;
}

/// Returns why the host refused SQLite a file. A file that has disappeared meanwhile is a device failure.
ErrorNumber FromHost(sqlite3* connection) {
    const ErrorNumber error = FromErrno(sqlite3_system_errno(connection));
    return error == NoError || IsMissing(error) ? DeviceFailed : error;
}

ErrorNumber FromSqlite(int result, sqlite3* connection) {
    switch (Looked(result) & 0xFF) { // the low byte is the error, the rest is the extended code
    case SQLITE_OK:
    case SQLITE_DONE:
    case SQLITE_ROW:
        return NoError;
    case SQLITE_FULL:
        return DiskFull;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return PermissionDenied;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return InUse;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return Damaged;
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
        return FromHost(connection);
    default:
        return DeviceFailed;
    }
}

int WaitForTheOther(void* patience, int) {
    return static_cast<LockWait*>(patience)->Wait() ? 1 : 0;
}

} // namespace

SqlStatement::~SqlStatement() {
    sqlite3_finalize(Statement_);
}

bool SqlStatement::Prepare(sqlite3* connection, const char* sql) {
    return Statement_ || Looked(sqlite3_prepare_v3(connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &Statement_,
                                                   nullptr)) == SQLITE_OK;
}

void SqlStatement::Bind(int parameter, std::int64_t number) {
    Looked(sqlite3_bind_int64(Statement_, parameter, number));
}

void SqlStatement::Bind(int parameter, std::string_view bytes) {
    // An empty view may have a null address, which would be bound as NULL; so would a text for which there is no memory
    // in a database of another encoding.
    Looked(sqlite3_bind_text64(Statement_, parameter, bytes.empty() ? "" : bytes.data(), bytes.size(), SQLITE_STATIC,
                               SQLITE_UTF8));
}

bool SqlStatement::NextRow() {
    return Looked(sqlite3_step(Statement_)) == SQLITE_ROW;
}

std::int64_t SqlStatement::Number(int column) const {
    return sqlite3_column_int64(Statement_, column);
}

std::string_view SqlStatement::Bytes(int column) const {
    const unsigned char* bytes = sqlite3_column_text(Statement_, column);
    const auto count = static_cast<std::size_t>(sqlite3_column_bytes(Statement_, column));
    if (bytes == nullptr) // NULL, or no memory for it
        Looked(sqlite3_errcode(sqlite3_db_handle(Statement_)));
    return bytes ? std::string_view(reinterpret_cast<const char*>(bytes), count) : std::string_view();
}

ErrorNumber SqlStatement::Run() {
    const ErrorNumber error = FromSqlite(sqlite3_step(Statement_), sqlite3_db_handle(Statement_));
    Done();
    return error;
}

void SqlStatement::Done() {
    sqlite3_reset(Statement_);
    sqlite3_clear_bindings(Statement_);
}

SqlConnection::~SqlConnection() {
    sqlite3_close(Connection_);
}

bool SqlConnection::Open(FileEntry file, LockWait& patience) {
    File_ = std::move(file);
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_NOFOLLOW;
    const char* const fileSystem = FolderFileSystem();
    if (fileSystem == nullptr) // null would select the default one
        return false;
    if (sqlite3_open_v2(NameForSqlite(File_).c_str(), &Connection_, flags, fileSystem) != SQLITE_OK)
        return false;
    sqlite3_busy_handler(Connection_, WaitForTheOther, &patience);
    sqlite3_limit(Connection_, SQLITE_LIMIT_LENGTH, LongestText);
    return true;
}

ErrorNumber SqlConnection::LastError() const {
    const int result = sqlite3_errcode(Connection_) & 0xFF;
    // SQLITE_ERROR is the result for a statement that names a missing table.
    const bool isMissing = result == SQLITE_ERROR || result == SQLITE_DONE || result == SQLITE_OK;
    return isMissing ? FileNotFound : FromSqlite(result, Connection_);
}

ErrorNumber SqlConnection::ReadAll(std::string& bytes) const {
    sqlite3_int64 size = 0;
    unsigned char* const all = sqlite3_serialize(Connection_, "main", &size, 0);
    if (all == nullptr)
        return size > 0 ? FromErrno(ENOMEM) : LastError();
    bytes.assign(reinterpret_cast<const char*>(all), static_cast<std::size_t>(size));
    sqlite3_free(all);
    return NoError;
}

ErrorNumber SqlConnection::Execute(const char* sql) {
    return FromSqlite(sqlite3_exec(Connection_, sql, nullptr, nullptr, nullptr), Connection_);
}

std::int64_t SqlConnection::Changed() const {
    return sqlite3_changes64(Connection_);
}

bool SqlConnection::InTransaction() const {
    return sqlite3_get_autocommit(Connection_) == 0;
}

} // namespace backends
