// SPDX-License-Identifier: MIT
#include "src/storage/keyed_tables.h"

#include "src/storage/row_line.h"
#include "src/storage/scratch_file.h"
#include "src/text/characters.h"
#include "src/view/platform/platform.h"

#include <algorithm>

namespace modFileSystem {

using modStringTools::Bar;
using modStringTools::NumberText;
using platform::Device;
using platform::RowEvent;

namespace {

constexpr std::int32_t NotCounted = -1;
constexpr std::int32_t HeaderLine = 1;
constexpr std::int32_t FirstRowLine = 2;
constexpr std::int32_t AnyRow = -1;

void ReadTableHeader() {
    Table.TableColumns.clear();
    if (SeekFileLine(Table.TableFile, HeaderLine) != HeaderLine)
        return;
    std::int32_t line = HeaderLine;
    Split(ReadFileLine(Table.TableFile, line), Table.TableColumns);
}

void ReadTableRow() {
    if (Table.TableFile.nextLine < 1 && SeekFileLine(Table.TableFile, FirstRowLine) != FirstRowLine) {
        Table.TableValues.clear();
        return;
    }
    std::int32_t line = -1;
    ReadFileLine(Table.TableFile, line, Table.RowLine);
    Split(Table.RowLine, Table.TableValues);
}

/// The file's position, not TableRowIndex, decides which row is loaded.
void LoadRow() {
    Table.TableRowIndex = Table.TableFile.nextLine - 1;
    ReadTableRow();
    Table.RecordDirty = false;
}

/// What a move does when another program's lock on the table outlasts the wait.
enum class Held { Stops, LeavesTheRow };

Held WhenHeld() {
    return Table.RowMayStay ? Held::LeavesTheRow : Held::Stops;
}

/// True if a row can be loaded. With Held::Stops a lock stops the program: a walk over a table that skipped a row would
/// treat it as missing.
bool CanRead(const FileReading& reading, Held held) {
    Table.RowIsHeld = reading.Held();
    const FileHandle& file = Table.TableFile;
    if (Table.RowIsHeld && held == Held::Stops)
        platform::RuntimeFailure(u"Can't read " + file.path + file.name + u": " + platform::ErrorText(file.error));
    return !Table.RowIsHeld;
}

void ClearRow() {
    for (Text& value : Table.TableValues)
        value.clear();
}

void MoveTo(std::int32_t line, Held held) {
    const StorageStep step;
    const FileReading reading(Table.TableFile);
    if (!CanRead(reading, held)) {
        Table.TableFile.nextLine = Table.TableRowIndex + FirstRowLine; // after the row that stays
        return;
    }
    ClearRow();
    if (Table.TableFile.valid && SeekFileLine(Table.TableFile, line) == line)
        LoadRow();
}

bool WriteTableRow(FileHandle& handle, std::int32_t line) {
    return ChangeFileLine(handle, line, Join(Table.TableValues));
}

/// Reports a change of a row that was made.
void TellDone(RowEvent event, std::int32_t row, const Text& oldLine, const Text& newLine) {
    Device().readingLog.RowChanged({event, Table.TableName, row, oldLine, newLine, {}});
}

/// Reports that the last change of the table, that of the current row, has failed. The form itself shows no message.
void TellFailed(RowEvent event, const Text& newLine, const Text& more = {}) {
    const FileHandle& file = Table.TableFile;
    if (!file.valid)
        return;
    const Text why = platform::ErrorText(file.error) + more;
    Device().saveWatcher.NotSaved(file.name, why);
    Device().readingLog.RowChanged({event, Table.TableName, Table.TableRowIndex, Table.RowLine, newLine, why});
}

/// Opens the file that another program has put under the table's name. False if there is none or its columns differ.
bool TakeUpFile() {
    FileHandle found;
    OpenFile(found, Table.TableFile.path + Table.TableFile.name, u"r", Table.TableFile.fileType,
             Table.TableFile.creator);
    if (!found.valid)
        return false;
    const std::vector<Text> columns = Table.TableColumns;
    CloseFile(Table.TableFile);
    Table.TableFile = found;
    Table.TableRowTotal = NotCounted;
    TableRowCount();
    ReadTableHeader();
    return Table.TableColumns == columns;
}

/// True if this line of the table's file is the one that was loaded last.
bool HoldsLoadedLine(std::int32_t line) {
    return SeekFileLine(Table.TableFile, line) == line && ReadFileLine(Table.TableFile, line) == Table.RowLine;
}

/// True if the table may be changed: its file is unchanged or, after a change by another program, has the same columns.
/// With a row number, that row must also be at its place, because the screen shows it.
bool MayBeChanged(std::int32_t row) {
    if (!AnotherHasChanged(Table.TableFile))
        return true;
    const bool may = TakeUpFile() && (row == AnyRow || HoldsLoadedLine(row + 1));
    if (!may)
        Table.TableFile.error = platform::FileChanged;
    return may;
}

Text BlankRow() {
    const std::size_t columns = Table.TableColumns.size();
    return Text(columns > 0 ? columns - 1 : 0, Bar);
}

/// Returns the field of a column in the loaded row; null if there is no such column or no row is loaded.
Text* FieldOf(const Text& column) {
    if (Table.TableValues.empty())
        return nullptr;
    for (std::size_t i = 0; i < Table.TableColumns.size(); ++i) {
        if (!modStringTools::SameIgnoringCase(Table.TableColumns[i], column))
            continue;
        if (i >= Table.TableValues.size())
            platform::RuntimeFailure(u"Row " + NumberText(Table.TableRowIndex) + u" of " + Table.TableFile.name +
                                     u" is too short to have a field " + column);
        return &Table.TableValues[i];
    }
    return nullptr;
}

} // namespace

void OpenTable(const Text& fullName, Text& mode, const Text& fileType, const Text& creator) {
    const StorageStep step;
    CloseTable();
    Table.TableName = BareName(fullName);
    Table.TableRowTotal = NotCounted;
    Table.TableRowIndex = 0;
    Table.RowLine.clear();
    if (mode == u"w")
        mode = u"a";
    OpenFile(Table.TableFile, fullName, mode, fileType, creator);
    if (Table.TableFile.valid && mode == u"r") {
        // The mode only decides whether a missing file is created: every open table can be written to.
        CloseFile(Table.TableFile);
        OpenFile(Table.TableFile, fullName, u"a", fileType, creator);
    }
    if (Table.TableFile.kept)
        platform::RuntimeFailure(u"Can't open " + fullName + u": " + platform::ErrorText(Table.TableFile.error));
    if (!Table.TableFile.valid)
        return;
    TableRowCount();
    ReadTableHeader();
    Table.TableRowIndex = 1;
}

void OpenTable(const Text& fullName, const char16_t* mode, const Text& fileType, const Text& creator) {
    Text own = mode;
    OpenTable(fullName, own, fileType, creator);
}

void CreateTable(const Text& fullName, const Text& headerLine, const char16_t* mode, const Text& fileType,
                 const Text& creator) {
    const StorageStep step;
    OpenFile(Table.TableFile, fullName, u"w", fileType, creator);
    if (!Table.TableFile.valid)
        return;
    WriteFileLine(Table.TableFile, headerLine);
    CloseFile(Table.TableFile);
    OpenTable(fullName, mode, fileType, creator);
}

void CloseTable() {
    const StorageStep step;
    if (!Table.TableFile.valid)
        return;
    CloseFile(Table.TableFile);
    Table.TableRowIndex = 0;
    Table.TableRowTotal = NotCounted;
    Table.TableColumns.clear();
    Table.TableValues.clear();
}

std::int32_t HeldFields() {
    if (!Table.TableFile.valid || Table.TableRowIndex < 1 || Table.TableRowIndex > TableRowCount())
        return 0;
    return static_cast<std::int32_t>(std::min(Table.TableValues.size(), Table.TableColumns.size()));
}

std::int32_t TableRowCount() {
    if (!Table.TableFile.valid)
        return 0;
    if (Table.TableRowTotal == NotCounted)
        Table.TableRowTotal = FileLineCount(Table.TableFile) - 1;
    return Table.TableRowTotal;
}

void FirstRow() {
    MoveTo(FirstRowLine, WhenHeld());
}

void LastRow() {
    if (Table.TableFile.valid)
        GotoRow(TableRowCount());
}

void NextRow() {
    const StorageStep step;
    if (Table.TableRowIndex >= TableRowCount() || !Table.TableFile.valid)
        return;
    const FileReading reading(Table.TableFile);
    if (CanRead(reading, WhenHeld()))
        LoadRow(); // it replaces all values, so none has to be cleared
}

void PreviousRow() {
    if (Table.TableFile.valid && Table.TableRowIndex > 1)
        GotoRow(Table.TableRowIndex - 1);
}

void GotoRow(std::int32_t row) {
    MoveTo(row + 1, WhenHeld());
}

bool FindRow(const Text& selection) {
    const StorageStep step;
    const std::size_t equals = selection.find(u'=');
    if (!Table.TableFile.valid || equals == Text::npos)
        return false;
    const Text column = selection.substr(0, equals);
    Text wanted = selection.substr(equals + 1);
    if (!wanted.empty() && wanted.front() == u'"') // the last character goes too, a quote or not
        wanted = wanted.size() < 2 ? Text() : wanted.substr(1, wanted.size() - 2);
    const std::int32_t count = TableRowCount();
    FirstRow();
    for (std::int32_t row = 1; row <= count; ++row) {
        if (GetField(column) == wanted)
            return true;
        NextRow();
    }
    return false;
}

Text NameSelection(const Text& value) {
    return u"NAME=\"" + value + u"\"";
}

Text GetField(const Text& column) {
    const StorageStep step;
    const Text* field = FieldOf(column);
    return field != nullptr ? *field : Text();
}

void SetField(const Text& column, const Text& value) {
    const StorageStep step;
    Table.RecordDirty = true;
    if (Text* field = FieldOf(column))
        *field = value;
}

namespace {

/// Another program's table is not overwritten, and the row that was typed or measured is kept in a scratch file.
void TellRowIsKept() {
    const Text line = Join(Table.TableValues);
    const Text name = KeepLine(Table.TableFile, line);
    TellFailed(RowEvent::Saved, line, name.empty() ? Text() : u"; the row is kept in " + name);
}

} // namespace

void SaveRow() {
    const StorageStep step;
    const bool saved = MayBeChanged(Table.TableRowIndex) && WriteTableRow(Table.TableFile, Table.TableRowIndex + 1);
    Table.RowIsAnothers = !saved && Table.TableFile.error == platform::FileChanged;
    if (Table.RowIsAnothers)
        TellRowIsKept();
    else if (!saved)
        TellFailed(RowEvent::Saved, Join(Table.TableValues));
    else
        TellDone(RowEvent::Saved, Table.TableRowIndex, Table.RowLine, Join(Table.TableValues));
    MoveTo(Table.TableRowIndex + 1, Held::LeavesTheRow); // a rewrite has moved the position in the file
    Table.RecordDirty = !saved && Table.RowIsHeld;       // the row in memory has still to be saved
}

bool AddRow(std::int32_t row) {
    const StorageStep step;
    if (!Table.TableFile.valid)
        return false;
    bool added = MayBeChanged(row == AnyRow ? AnyRow : Table.TableRowIndex);
    const std::int32_t atEnd = Table.TableRowTotal + 1;
    if (added)
        added = row != AnyRow ? InsertFileLine(Table.TableFile, row + 1, InsertPosition::Before, BlankRow())
                              : InsertFileLine(Table.TableFile, atEnd, InsertPosition::After, BlankRow());
    if (!added) {
        TellFailed(RowEvent::Added, BlankRow());
        MoveTo(Table.TableRowIndex + 1, Held::LeavesTheRow);
        return false;
    }
    Table.TableRowTotal = atEnd;
    TellDone(RowEvent::Added, row != AnyRow ? row : atEnd, {}, BlankRow());
    MoveTo((row != AnyRow ? row : atEnd) + 1, Held::Stops); // the caller sets the fields of the new row next
    return true;
}

void DeleteRow() {
    const StorageStep step;
    if (!Table.TableFile.valid)
        return;
    const std::int32_t row = Table.TableRowIndex;
    const bool deleted = MayBeChanged(row) && DeleteFileLine(Table.TableFile, row + 1);
    if (deleted) {
        --Table.TableRowTotal;
        TellDone(RowEvent::Deleted, row, Table.RowLine, {});
    } else {
        TellFailed(RowEvent::Deleted, {});
    }
    // A deleted row must not stay in memory: it would be saved over the row that has its number now.
    const std::int32_t next = row > Table.TableRowTotal ? TableRowCount() : row;
    MoveTo(next + 1, deleted ? Held::Stops : Held::LeavesTheRow);
}

} // namespace modFileSystem
