// SPDX-License-Identifier: MIT
// A workbook for spreadsheets (XLSX, Office Open XML).
#pragma once

#include "exporting/table_view.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace exporting {

/// What spreadsheets can have.
struct SheetLimits {
    std::size_t Rows = 1048576; ///< of a sheet, with the header
    std::size_t Columns = 16384;
    std::size_t Characters = 32767; ///< of a cell
};

/// Writes tables into a workbook, a sheet each, or several where a table has more rows than a sheet can have. Only the
/// row that is being written is kept in memory: the others are in files without a name, in the folder of the workbook.
class Workbook {
public:
    /// `path`: of a file that is made when it is closed.
    explicit Workbook(const std::string& path, const SheetLimits& limits = {});
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;
    ~Workbook();

    /// Adds a table under a name as near to `name` as a sheet may have. A number keeps its decimal places on the
    /// screen. What would lose a digit or a day as a number stays text. A value is never a formula. Adds what is odd, a
    /// line each: what stays text, is cut, is replaced or is left out.
    void Add(const TableView& view, const std::string& name, std::vector<std::string>& odd);

    /// Writes the file. Returns why it is not whole, or an empty text.
    std::string Close();

private:
    struct Book;
    class Sheet;
    std::unique_ptr<Book> Book_;
};

} // namespace exporting
