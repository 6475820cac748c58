// SPDX-License-Identifier: MIT
// Downloads as the tables of an SQLite database.
#pragma once

#include "exporting/table_view.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace exporting {

/// What the table "downloads" says of a download.
struct DownloadFacts {
    std::string File;
    std::string Alias;  ///< empty for none
    std::string Driver; ///< empty if it is not known
    std::string Device; ///< the name of this one
    std::string Sha256; ///< of the file, in hexadecimal digits
};

/// A column of numbers is INTEGER or REAL if no digit of any of them would be lost, and all its cells are numbers;
/// otherwise it has no type, and each cell is what it can be: a number or a text. All other columns are TEXT. What is
/// missing is NULL, and so is an empty cell among numbers, dates and times. A text with a NUL, or of bytes that are no
/// UTF-8, is a BLOB of its bytes.
class Database {
public:
    /// Makes a new file.
    explicit Database(const std::string& path);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /// Adds a table under the name of its file without its ending, and its row of "downloads". Adds what is odd, a line
    /// each.
    void Add(const TableView& view, const DownloadFacts& facts, std::vector<std::string>& odd);

    /// Completes the file. Returns why it is not whole, or an empty text.
    std::string Close();

private:
    struct File;
    std::unique_ptr<File> File_;
};

} // namespace exporting
