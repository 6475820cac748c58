// SPDX-License-Identifier: MIT
#include "src/drivers/record_editor.h"

#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/row_line.h"
#include "src/view/grids.h"
#include "src/view/inf_fields.h"
#include "src/view/input_fields.h"
#include "src/view/navigation.h"
#include "src/view/platform/platform.h"
#include "src/view/prompt.h"
#include "src/view/questions.h"
#include "src/view/status_strip.h"

#include <algorithm>

namespace modQuorin {

using namespace modFileSystem;
using platform::Device;

namespace {

/// Returns how many fields both the record and the grid have. A record with more fields than the table has columns
/// keeps the fields that no row of the grid shows.
std::int32_t SharedFields() {
    return std::min(HeldFields(), Device().grdMain.Rows());
}

void ShowPosition() {
    Device().grdTitle.SetCell(
        0, 1, modStringTools::NumberText(Table.TableRowIndex) + u"/" + modStringTools::NumberText(TableRowCount()));
}

/// Stores the values to carry over from the last record. Returns true if there was such a field.
bool RememberCopiedFields() {
    if (Inf.InfFields.empty())
        return false;
    LastRow();
    if (Table.RowIsHeld)
        return false;
    bool any = false;
    for (InfField& field : Inf.InfFields) {
        if (!field.Copy)
            continue;
        field.CopyValue = GetField(field.FieldName);
        any = true;
    }
    return any;
}

void PutCopiedFields() {
    for (const InfField& field : Inf.InfFields) {
        if (field.Copy)
            SetField(field.FieldName, field.CopyValue);
    }
}

void NewRecord() {
    const bool copied = RememberCopiedFields();
    if (AddRow(-1) && copied)
        PutCopiedFields(); // marks the record as changed: it is saved with the next command or when it is left
}

void InsertRecord() {
    AddRow(Table.TableRowIndex);
}

struct RecordCommandRow {
    const char16_t* Name;
    void (*Run)();
};

constexpr RecordCommandRow RecordCommands[] = {
    {u"NEXT", NextRow},  {u"PREV", PreviousRow},    {u"FIRST", FirstRow},   {u"LAST", LastRow},
    {u"NEW", NewRecord}, {u"INSERT", InsertRecord}, {u"DELETE", DeleteRow},
};

/// Readings go into the record of a download only: the record of another table has no fields for them.
bool TakesReadings() {
    return Screens.CurrentScreen == ScrInfRecord && !Inf.InfFields.empty();
}

/// While it exists, a move that finds the table locked by another program keeps the record instead of stopping the
/// program.
struct RecordMayStay {
    RecordMayStay() { Table.RowMayStay = true; }
    RecordMayStay(const RecordMayStay&) = delete;
    RecordMayStay& operator=(const RecordMayStay&) = delete;
    ~RecordMayStay() { Table.RowMayStay = false; }
};

/// Saves what was changed on the screen. Returns false if the record has to stay there: it can't be saved because of
/// another program, until it can be; or that program's row is in its place by now, which is shown before a command acts
/// on it.
bool SaveEdits() {
    CollectRecordEdits();
    if (!Table.RecordDirty)
        return true;
    SaveRecordFromGrid();
    return !Table.RecordDirty && !Table.RowIsAnothers;
}

/// Shows the current row and its position. A table on the record screen always has at least one record.
void ShowCurrent() {
    if (Table.TableRowTotal == 0)
        AddRow(-1);
    ShowRecord();
    ShowPosition();
    if (TakesReadings())
        modBluetooth::TellWhatWaits();
}

std::vector<Text> ColumnOfGrid(std::int32_t column) {
    const auto& grdMain = Device().grdMain;
    std::vector<Text> texts;
    for (std::int32_t row = 0; row < grdMain.Rows(); ++row)
        texts.push_back(grdMain.Cell(row, column));
    return texts;
}

FieldType EditKind(std::int32_t row) {
    if (row < 0 || row >= static_cast<std::int32_t>(Inf.InfFields.size()))
        return FieldType::Text;
    return Inf.InfFields[static_cast<std::size_t>(row)].DataType;
}

void AskForDate(std::int32_t row) {
    const Text title = Device().grdMain.Cell(row, 0);
    Text value = Device().grdMain.Cell(row, Device().grdMain.Col());
    modPDAUI::EditByPrompt(title, modPDAUI::PromptKind::Date, value);
    Table.RecordDirty = true;
}

} // namespace

void ShowRecord() {
    if (!Table.TableFile.valid)
        return;
    auto& grdMain = Device().grdMain;
    const auto columns = static_cast<std::int32_t>(Table.TableColumns.size());
    grdMain.SetRows(columns);
    grdMain.SetCol(ValueColumn);
    grdMain.SetTopRow(0);
    for (std::int32_t row = 0; row < columns; ++row) {
        const auto i = static_cast<std::size_t>(row);
        const bool hasValue = i < Table.TableValues.size();
        grdMain.SetCell(row, 0, Table.TableColumns[i]);
        grdMain.SetCell(row, ValueColumn, hasValue ? Table.TableValues[i] : Text());
        if (hasValue && i < Inf.InfFields.size() && !Inf.InfFields[i].Visible)
            grdMain.SetRowHeight(row, 0);
    }
    modPDAUI::RepaintGridsSoon();
}

void CollectRecordEdits() {
    Device().txtInputField.Commit();
    for (std::int32_t row = 0; row < SharedFields(); ++row) {
        Text& value = Table.TableValues[static_cast<std::size_t>(row)];
        const Text shown = Device().grdMain.Cell(row, ValueColumn);
        if (shown == value)
            continue;
        value = shown;
        Table.RecordDirty = true;
    }
}

void SaveRecordFromGrid() {
    if (!Table.TableFile.valid) {
        TellWhatHasNoField({});
        return;
    }
    Device().txtInputField.Commit();
    modPDAUI::ShowBusy(true);
    const std::vector<Text> texts = TextsOfGrid();
    TellWhatHasNoField(texts);
    SaveTexts(texts);
    modPDAUI::ShowBusy(false);
}

std::vector<Text> NamesOfGrid() {
    return ColumnOfGrid(0);
}

std::vector<Text> TextsOfGrid() {
    return ColumnOfGrid(ValueColumn);
}

/// SaveRow reports nothing if there is no file.
void TellNoFile(const std::vector<Text>& texts) {
    const Text why = u"the file could not be created";
    Device().saveWatcher.NotSaved(Table.TableName, why);
    Device().readingLog.RowChanged(
        {.Event = platform::RowEvent::Saved, .File = Table.TableName, .NewLine = Join(texts), .Why = why});
}

void TellWhatHasNoField(const std::vector<Text>& texts) {
    const std::vector<Text>& columns = Table.TableColumns;
    Text names;
    for (auto i = static_cast<std::size_t>(HeldFields()); i < texts.size() && i < columns.size(); ++i) {
        if (!texts[i].empty())
            names += (names.empty() ? u" " : u", ") + columns[i];
    }
    if (!Table.TableFile.valid)
        TellNoFile(texts);
    else if (!names.empty())
        Device().saveWatcher.NotSaved(Table.TableName, u"the record in the file has no field" + names);
}

void SaveTexts(const std::vector<Text>& texts) {
    const std::size_t shared = std::min(texts.size(), static_cast<std::size_t>(HeldFields()));
    std::copy_n(texts.begin(), shared, Table.TableValues.begin());
    SaveRow();
}

void RecordCommand(const Text& command) {
    if (!Table.TableFile.valid)
        return;
    const RecordMayStay staying;
    const Text name = SaveEdits() ? modStringTools::UpperCase(command) : Text();
    if (name == u"DELETE" && !modPDAUI::AskTwice(u"Delete Record?"))
        return;
    modPDAUI::CloseCellEdit();
    for (const RecordCommandRow& row : RecordCommands) {
        if (name == row.Name)
            row.Run();
    }
    ShowCurrent();
}

Text GoToRecordRefusal(std::int32_t number) {
    if (Screens.CurrentScreen == ScrInput)
        return u"a prompt is open, only Ok and Back are possible";
    if (!TakesReadings() || !Table.TableFile.valid)
        return u"no record of a download is on the screen";
    if (number < 1 || number > TableRowCount())
        return u"there is no record " + modStringTools::NumberText(number);
    return Text();
}

Text GoToRecord(std::int32_t number) {
    if (const Text refusal = GoToRecordRefusal(number); !refusal.empty())
        return refusal;
    const RecordMayStay staying;
    const bool isFree = SaveEdits();
    modPDAUI::CloseCellEdit();
    // The save has found another program's rows if there are fewer of them now.
    const bool isThere = isFree && number <= TableRowCount();
    if (isThere)
        GotoRow(number);
    ShowCurrent();
    return isThere && !Table.RowIsHeld ? Text() : u"another program is using or has changed the table";
}

void ShowRecordTitle(const Text& title) {
    Device().grdTitle.SetCell(0, 0, title);
    ShowPosition();
}

bool LeaveRecord() {
    if (Device().txtInputField.Visible() || Table.RecordDirty)
        SaveRecordFromGrid();
    GotoScreen(Screens.RecordReturnScreen != 0 ? Screens.RecordReturnScreen : Screens.PreviousScreen);
    return true;
}

bool IsEditedInPlace(std::int32_t row) {
    return EditKind(row) == FieldType::Text || EditKind(row) == FieldType::Time;
}

void SelectRecordCell(std::int32_t, std::int32_t) {
    const std::int32_t row = Device().grdMain.Row();
    const std::int32_t col = Device().grdMain.Col();
    if (col != ValueColumn)
        return;
    switch (EditKind(row)) {
    case FieldType::Text:
    case FieldType::Time:
        modPDAUI::BeginCellEdit(row, col);
        break;
    case FieldType::Date:
        AskForDate(row);
        break;
    default:
        break;
    }
}

} // namespace modQuorin
