// SPDX-License-Identifier: MIT
#include "tests/reference/tables_reference.h"

namespace reference {

std::vector<Text> Tables::Split(const Text& line) {
    std::vector<Text> fields;
    std::size_t position = 1;
    for (;;) {
        std::size_t separator = position;
        while (separator <= line.size() && line[separator - 1] != u'|')
            ++separator;
        fields.push_back(line.substr(position - 1, separator - position));
        position = separator + 1;
        if (separator > line.size())
            return fields;
    }
}

void Tables::OpenTable(const Text& fullName, Text& mode, const Text& fileType, const Text& creator) {
    TableRowTotal = -1;
    TableRowIndex = 0;
    if (TableFile.valid)
        CloseTable();
    if (mode == u"w")
        mode = u"a";
    Files_.OpenFile(TableFile, fullName, mode, fileType, creator);
    if (TableFile.valid && mode == u"r") {
        Files_.CloseFile(TableFile);
        Files_.OpenFile(TableFile, fullName, u"a", fileType, creator);
    }
    if (TableFile.valid) {
        TableRowCount();
        ReadTableHeader();
        TableRowIndex = 1;
    }
}

void Tables::CreateTable(const Text& fullName, const Text& headerLine, Text& mode, const Text& fileType,
                         const Text& creator) {
    Files_.OpenFile(TableFile, fullName, u"w", fileType, creator);
    if (!TableFile.valid)
        return;
    Files_.WriteFileLine(TableFile, headerLine);
    Files_.CloseFile(TableFile);
    OpenTable(fullName, mode, fileType, creator);
}

void Tables::CloseTable() {
    if (!TableFile.valid)
        return;
    Files_.CloseFile(TableFile);
    TableRowIndex = 0;
    TableRowTotal = -1;
    TableColumns.clear();
    TableValues.clear();
}

void Tables::ReadTableHeader() {
    TableColumns.clear();
    if (Files_.SeekFileLine(TableFile, 1) != 1)
        return;
    std::int32_t line = 1;
    TableColumns = Split(Files_.ReadFileLine(TableFile, line));
}

void Tables::ReadTableRow() {
    TableValues.clear();
    if (TableFile.nextLine < 1 && Files_.SeekFileLine(TableFile, 2) != 2)
        return;
    std::int32_t line = -1;
    TableValues = Split(Files_.ReadFileLine(TableFile, line));
}

std::int32_t Tables::TableRowCount() {
    if (!TableFile.valid)
        return 0;
    if (TableRowTotal == -1)
        TableRowTotal = Files_.FileLineCount(TableFile) - 1;
    return TableRowTotal;
}

void Tables::ClearRow() {
    for (Text& value : TableValues)
        value = u"";
}

void Tables::LoadRow() {
    TableRowIndex = TableFile.nextLine - 1;
    ReadTableRow();
    RecordDirty = false;
}

void Tables::FirstRow() {
    ClearRow();
    if (TableFile.valid && Files_.SeekFileLine(TableFile, 2) == 2)
        LoadRow();
}

void Tables::GotoRow(std::int32_t row) {
    ClearRow();
    if (TableFile.valid && Files_.SeekFileLine(TableFile, row + 1) == row + 1)
        LoadRow();
}

void Tables::LastRow() {
    if (TableFile.valid)
        GotoRow(TableRowCount());
}

void Tables::NextRow() {
    if (TableRowIndex < TableRowCount() && TableFile.valid) {
        ClearRow();
        LoadRow();
    }
}

void Tables::PreviousRow() {
    if (TableFile.valid && TableRowIndex > 1)
        GotoRow(TableRowIndex - 1);
}

std::size_t Tables::IndexOf(const Text& name) const {
    if (TableValues.empty())
        return 0; // no row is loaded
    for (std::size_t i = 1; i <= TableColumns.size(); ++i) {
        if (modStringTools::LowerCase(TableColumns[i - 1]) != modStringTools::LowerCase(name))
            continue;
        if (i > TableValues.size())
            throw Stopped();
        return i;
    }
    return 0;
}

Text Tables::GetField(const Text& name) {
    const std::size_t i = IndexOf(name);
    return i > 0 ? TableValues[i - 1] : Text();
}

void Tables::SetField(const Text& name, const Text& value) {
    RecordDirty = true;
    const std::size_t i = IndexOf(name);
    if (i > 0)
        TableValues[i - 1] = value;
}

void Tables::SaveRow() {
    Text line;
    for (std::size_t i = 1; i <= TableValues.size(); ++i)
        line += (i > 1 ? u"|" : u"") + TableValues[i - 1];
    Files_.ChangeFileLine(TableFile, TableRowIndex + 1, line);
    GotoRow(TableRowIndex);
    RecordDirty = false;
}

/// A row that can't be added leaves the table as it was.
bool Tables::AddRow(std::int32_t where) {
    if (!TableFile.valid)
        return false;
    Text blank;
    for (std::size_t i = 1; i < TableColumns.size(); ++i)
        blank += u'|';
    ++TableRowTotal;
    const bool added = where != -1 ? Files_.InsertFileLine(TableFile, where + 1, 1, blank)
                                   : Files_.InsertFileLine(TableFile, TableRowTotal, 2, blank);
    if (!added) {
        --TableRowTotal;
        GotoRow(TableRowIndex);
        return false;
    }
    GotoRow(where != -1 ? where : TableRowTotal);
    return true;
}

void Tables::DeleteRow() {
    if (!TableFile.valid)
        return;
    const std::int32_t row = TableRowIndex;
    if (Files_.DeleteFileLine(TableFile, row + 1))
        --TableRowTotal;
    if (row > TableRowTotal)
        LastRow();
    else
        GotoRow(row);
}

bool Tables::FindRow(const Text& selection) {
    const std::size_t equals = selection.find(u'=');
    if (!TableFile.valid || equals == Text::npos)
        return false;
    const Text column = selection.substr(0, equals);
    Text wanted = selection.substr(equals + 1);
    if (!wanted.empty() && wanted[0] == u'"') {
        wanted.erase(0, 1);
        if (!wanted.empty())
            wanted.pop_back();
    }
    const std::int32_t n = TableRowCount();
    FirstRow();
    for (std::int32_t row = 1; row <= n; ++row) {
        if (GetField(column) == wanted)
            return true;
        NextRow();
    }
    return false;
}

} // namespace reference
