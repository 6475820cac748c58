// SPDX-License-Identifier: MIT
#include "src/drivers/inf_tables.h"

#include "src/drivers/inf_rows.h"
#include "src/drivers/record_editor.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/table_lack.h"
#include "src/storage/volumes.h"
#include "src/view/inf_fields.h"
#include "src/view/navigation.h"
#include "src/view/platform/application.h"
#include "src/view/platform/platform.h"

namespace modQuorin {

using namespace modFileSystem;
using modStringTools::NumberText;

namespace {

std::int32_t Colour(const Text& display) {
    const auto colour = ColourOf(display);
    if (!colour)
        platform::RuntimeFailure(u"DISPLAY \"" + display + u"\" is not a number (row " +
                                 NumberText(Table.TableRowIndex) + u" of " + Table.TableFile.name + u")");
    return *colour;
}

/// Adds what is missing: a table without a row can't be edited, and no download can be opened with it.
void MendInfTable(const Text& path, TableLack lack) {
    if (lack == TableLack::File || lack == TableLack::Header)
        MakeTable(path, InfHeader);
    if (lack != TableLack::Nothing)
        AddRow(-1);
}

InfField CurrentInfRow() {
    InfField field;
    field.Display = Colour(GetField(u"DISPLAY"));
    field.Blob = GetField(u"BLOB");
    field.Copy = IsSet(GetField(u"COPY"));
    field.FieldName = GetField(u"FIELDNAME");
    field.Visible = IsSet(GetField(u"VISIBLE"));
    field.Formula = GetField(u"FORMULA");
    field.DataType = FieldTypeOf(GetField(u"DATATYPE"));
    return field;
}

} // namespace

Text InfPath(const Text& driver) {
    LookAtTable(Paths.DriversFile);
    FindRow(NameSelection(driver)); // if it is not found, the last row is current, and its inf file is used
    const Text path = GetDataPath(ApplicationName) + GetField(u"INFFILE");
    CloseTable();
    return path;
}

bool OpenInfTable(const Text& path) {
    const TableLack lack = LookAtTable(path);
    if (lack != TableLack::File)
        MendInfTable(path, lack);
    return Table.TableFile.valid;
}

Text LoadInfFields() {
    const std::int32_t count = TableRowCount();
    if (count < 1)
        platform::RuntimeFailure(u"The inf table " + Table.TableFile.name + u" has no rows");
    FirstRow();
    Inf.InfFields.clear();
    Text header;
    for (std::int32_t i = 0; i < count; ++i) {
        Inf.InfFields.push_back(CurrentInfRow());
        if (i > 0)
            header += u"|";
        header += Inf.InfFields.back().FieldName;
        NextRow();
    }
    return header;
}

bool AnyFieldReceivesResults() {
    for (const InfField& field : Inf.InfFields) {
        if (!field.Blob.empty())
            return true;
    }
    return false;
}

void OpenInfEditor(const Text& driver) {
    if (driver.empty())
        return;
    Inf.InfFields.clear(); // no row of the editor is hidden or coloured
    const Text path = InfPath(driver);
    MendInfTable(path, LookAtTable(path));
    FirstRow();
    Screens.RecordReturnScreen = ScrInstalledDrivers;
    GotoScreen(ScrInfRecord);
    ShowRecordTitle(u"Inf Editor");
}

} // namespace modQuorin
