// SPDX-License-Identifier: MIT
// Another program that uses a line database: reads it, changes it, or keeps it locked.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace support {

class OtherTool {
public:
    OtherTool() = default;
    explicit OtherTool(const std::filesystem::path& file) { Open(file); }
    OtherTool(const OtherTool&) = delete;
    OtherTool& operator=(const OtherTool&) = delete;
    ~OtherTool() { Close(); }

    /// Opens the file; creates it if it is missing.
    void Open(const std::filesystem::path& file) {
        Close();
        EXPECT_EQ(sqlite3_open(file.c_str(), &Connection_), SQLITE_OK) << file;
    }
    /// Closes the file, which releases all locks.
    void Close() {
        sqlite3_close(Connection_);
        Connection_ = nullptr;
    }

    void Lock() { Do("BEGIN EXCLUSIVE"); }
    /// Starts to read. No other program can commit a change until LetGo.
    void Read() { Do(R"(BEGIN; SELECT * FROM "TEXT")"); }
    void LetGo() { Do("ROLLBACK"); }

    /// Returns the rows that the statements result in, the columns of each joined by `|`.
    std::vector<std::string> Do(const std::string& sql) {
        std::vector<std::string> rows;
        EXPECT_EQ(sqlite3_exec(Connection_, sql.c_str(), Collect, &rows, nullptr), SQLITE_OK)
            << sql << ": " << sqlite3_errmsg(Connection_);
        return rows;
    }
    /// Returns true if the statements succeed.
    bool Can(const std::string& sql) {
        return sqlite3_exec(Connection_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    }

private:
    static int Collect(void* rows, int columns, char** values, char**) {
        std::string row;
        for (int i = 0; i < columns; ++i)
            row += (i > 0 ? "|" : "") + std::string(values[i] ? values[i] : "NULL");
        static_cast<std::vector<std::string>*>(rows)->push_back(row);
        return 0;
    }

    sqlite3* Connection_ = nullptr;
};

} // namespace support
