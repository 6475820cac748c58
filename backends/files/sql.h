// SPDX-License-Identifier: MIT
// The part of SQLite's interface that the line databases need, with owners for its objects.
#pragma once

#include "backends/files/host_files.h"
#include "backends/files/lock_wait.h"

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace backends {

class SqlStatement {
public:
    SqlStatement() = default;
    SqlStatement(const SqlStatement&) = delete;
    SqlStatement& operator=(const SqlStatement&) = delete;
    ~SqlStatement();

    /// Prepares the statement if that has not been done. After a failure the next call tries again, because a table may
    /// still be missing.
    bool Prepare(sqlite3* connection, const char* sql);

    void Bind(int parameter, std::int64_t number); ///< parameters count from 1
    /// Binds without copying: the bytes must stay valid until the statement is done.
    void Bind(int parameter, std::string_view bytes);

    bool NextRow(); ///< false at the end and on failure
    std::int64_t Number(int column) const;
    std::string_view Bytes(int column) const; ///< valid until the next row

    /// Runs a statement that returns no rows to its end, and makes it ready for the next use.
    ErrorNumber Run();
    void Done();

private:
    sqlite3_stmt* Statement_ = nullptr;
};

class SqlConnection {
public:
    SqlConnection() = default;
    SqlConnection(const SqlConnection&) = delete;
    SqlConnection& operator=(const SqlConnection&) = delete;
    ~SqlConnection(); ///< rolls back what is not committed; its statements must be gone

    /// Opens an existing file that is not a link; an empty one is a database without tables. Its folder is held open.
    /// Each call that finds it locked waits as long as `patience` allows, and then fails with InUse.
    bool Open(FileEntry file, LockWait& patience);
    /// Returns why the last call has failed: FileNotFound if the requested table or row does not exist.
    ErrorNumber LastError() const;
    ErrorNumber Execute(const char* sql);
    /// Reads the whole database, as the bytes of its file. Within a transaction they are of its moment.
    ErrorNumber ReadAll(std::string& bytes) const;
    bool InTransaction() const;
    std::int64_t Changed() const; ///< number of rows changed by the last statement
    sqlite3* Handle() const { return Connection_; }

private:
    FileEntry File_;
    sqlite3* Connection_ = nullptr;
};

} // namespace backends
