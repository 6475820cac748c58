// SPDX-License-Identifier: MIT
// Texts as a workbook can hold them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace exporting {

struct SheetText {
    std::string Text;        ///< UTF-8
    bool IsReplaced = false; ///< U+FFFD stands for bytes that are no UTF-8
    bool IsCut = false;      ///< it was longer
};

/// Returns the text of a cell, of at most so many characters as a spreadsheet counts them (one beyond U+FFFF is two). A
/// character that XML does not have becomes "_x0001_", as the standard of workbooks says, and a text that looks so
/// becomes "_x005F_x0001_": a reader gets the same characters back.
SheetText TextOfCell(std::string_view text, std::size_t mostCharacters);

/// Returns a name for a sheet, which may have 31 characters and some not, and adds it to those that are `taken`, of
/// which it is different without regard to case: by " (2)".
std::string SheetName(std::string_view wanted, std::vector<std::string>& taken);

} // namespace exporting
