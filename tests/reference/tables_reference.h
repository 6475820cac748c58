// SPDX-License-Identifier: MIT
// The keyed tables step by step, on the literal line files.
#pragma once

#include "tests/reference/line_files_reference.h"

#include <vector>

namespace reference {

class Tables {
public:
    explicit Tables(LineFiles& files) : Files_(files) {}

    void OpenTable(const Text& fullName, Text& mode, const Text& fileType, const Text& creator);
    void CreateTable(const Text& fullName, const Text& headerLine, Text& mode, const Text& fileType,
                     const Text& creator);
    void CloseTable();
    std::int32_t TableRowCount();
    void FirstRow();
    void LastRow();
    void NextRow();
    void PreviousRow();
    void GotoRow(std::int32_t row);
    bool FindRow(const Text& selection);
    Text GetField(const Text& name);
    void SetField(const Text& name, const Text& value);
    void SaveRow();
    bool AddRow(std::int32_t where);
    void DeleteRow();

    FileHandle TableFile;
    std::vector<Text> TableColumns;
    std::vector<Text> TableValues;
    std::int32_t TableRowIndex = 0;
    std::int32_t TableRowTotal = 0;
    bool RecordDirty = false;

private:
    static std::vector<Text> Split(const Text& line);
    void ReadTableHeader();
    void ReadTableRow();
    void ClearRow();
    void LoadRow();
    std::size_t IndexOf(const Text& name) const; ///< from 1; 0 for none

    LineFiles& Files_;
};

} // namespace reference
