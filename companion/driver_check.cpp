// SPDX-License-Identifier: MIT
#include "companion/driver_check.h"

#include "companion/driver_fill_check.h"
#include "src/blob/capture.h"
#include "src/drivers/inf_rows.h"
#include "src/storage/line_files.h"
#include "src/storage/row_line.h"
#include "src/storage/settings.h"

#include <algorithm>
#include <array>

namespace companion {

using modQuorin::DriverRow;
using modQuorin::FieldType;
using modQuorin::InfField;
using modStringTools::SameIgnoringCase;

namespace {

/// A column of an inf table, and what follows if the header lacks it.
struct KnownColumn {
    const char16_t* Name;
    Grade Lacking;
    const char16_t* Consequence;
};

constexpr std::array<KnownColumn, 8> KnownColumns = {{
    {u"FIELDNAME", Grade::Error, u"the columns of downloads have no names"},
    {u"VISIBLE", Grade::Error, u"every field is hidden"},
    {u"COPY", Grade::Warning, u"no value is copied"},
    {u"BLOB", Grade::Error, u"no reading is received"},
    {u"DISPLAY", Grade::Warning, u"all rows are white"},
    {u"CSVNAME", Grade::Note, u"other tools may miss it"},
    {u"DATATYPE", Grade::Warning, u"no row is a date"},
    {u"FORMULA", Grade::Warning, u"no date and time is set"},
}};

/// The form asks every row for all columns but this one.
const Text UnusedColumn = u"CSVNAME";

/// Rows are compared with each other. No instrument has so many results.

Text Number(std::size_t number) {
    return modStringTools::NumberText(static_cast<std::int64_t>(number));
}

bool IsDigits(TextView text) {
    return std::all_of(text.begin(), text.end(), [](char16_t each) { return each >= u'0' && each <= u'9'; });
}

/// True for a name of this length that ends in ".txt" and has nothing but digits between.
bool IsNumbered(TextView name, TextView start, std::size_t digits) {
    constexpr TextView Ending = u".txt";
    return name.size() == start.size() + digits + Ending.size() &&
           SameIgnoringCase(name.substr(0, start.size()), start) && IsDigits(name.substr(start.size(), digits)) &&
           SameIgnoringCase(name.substr(start.size() + digits), Ending);
}

/// Returns what a package that names this inf file does; empty if nothing speaks against the name.
Text WrongWith(const Text& infFile) {
    if (infFile.empty())
        return u"the line names no inf file";
    if (infFile.find(u'|') != Text::npos)
        return u"the name of the inf file has a bar in it: " + Quoted(infFile);
    if (infFile.find_first_of(u"/\\") != Text::npos)
        return u"the inf file is a path, " + Quoted(infFile) + u", and not a bare name";
    if (SameIgnoringCase(infFile, u"drivers.txt"))
        return u"the inf file would replace the list of all drivers";
    if (SameIgnoringCase(infFile, u"qrnctrl.txt"))
        return u"the inf file would replace the register of all downloads";
    if (modQuorin::IsPackageName(infFile))
        return u"the inf file has the name of a driver package, " + Quoted(infFile) + u", which it may replace";
    constexpr std::size_t DigitsOfDownload = 4;
    constexpr std::size_t DigitsOfScratchFile = 8;
    if (IsNumbered(infFile, u"qrn", DigitsOfDownload))
        return u"the inf file would replace the download " + Quoted(infFile);
    if (IsNumbered(infFile, u"", DigitsOfScratchFile))
        return u"the inf file has the name of a scratch file, " + Quoted(infFile);
    return {};
}

class PackageCheck {
public:
    PackageCheck(const DriverPackage& package, const std::vector<DriverRow>& installed, std::vector<Finding>& found)
        : Package_(package), Installed_(installed), Found_(found), Fields_(FieldsOf(package)) {}

    void Run() {
        if (Package_.DriverLine == 0) {
            Found_.push_back({1, 1, Grade::Error, u"no line names a driver: the form installs nothing"});
            return;
        }
        CheckDriver();
        if (Package_.HeaderLine == 0) {
            Found_.push_back({Package_.DriverLine, 1, Grade::Error, u"the inf table is missing after this line"});
            return;
        }
        if (!CheckHeader())
            return;
        if (Package_.Rows.empty())
            Found_.push_back({Package_.HeaderLine, 1, Grade::Error, u"the inf table has no rows"});
        if (Package_.Rows.size() > MostCheckedRows) {
            Found_.push_back(
                {Package_.HeaderLine, 1, Grade::Warning,
                 u"the inf table has " + Number(Package_.Rows.size()) + u" rows: more than 1000 are not checked"});
            return;
        }
        for (std::size_t i = 0; i < Package_.Rows.size(); ++i)
            CheckRow(i);
        CheckFirstTwo();
        CheckFilling(Package_, Found_);
    }

private:
    void CheckDriver() {
        const auto add = [this](std::size_t column, const Text& words) {
            Found_.push_back({Package_.DriverLine, column, Grade::Error, words});
        };
        if (!Package_.Driver) {
            add(1, u"the line that names the driver has no |: nothing is installed");
            return;
        }
        const DriverRow& driver = *Package_.Driver;
        if (driver.Name.empty())
            add(1, u"the driver has no name: it can be neither edited nor deleted");
        const std::size_t place = driver.Name.size() + 2;
        if (const Text words = WrongWith(driver.InfFile); !words.empty())
            add(place, words);
        const auto same = std::find_if(Installed_.begin(), Installed_.end(),
                                       [&](const DriverRow& each) { return SameIgnoringCase(each.Name, driver.Name); });
        if (same != Installed_.end()) {
            add(1, u"the driver " + Quoted(same->Name) + u" is installed already");
            return;
        }
        for (const DriverRow& other : Installed_) {
            if (SameIgnoringCase(other.InfFile, driver.InfFile))
                add(place, u"the inf file would replace that of the installed driver " + Quoted(other.Name));
        }
    }

    /// Returns false if the line is no header at all.
    bool CheckHeader() {
        const auto add = [this](std::size_t column, Grade grade, const Text& words) {
            Found_.push_back({Package_.HeaderLine, column, grade, words});
        };
        const auto isThere = [this](const KnownColumn& column) {
            return ColumnIn(Package_.Header, column.Name).has_value();
        };
        if (std::none_of(KnownColumns.begin(), KnownColumns.end(), isThere)) {
            add(1, Grade::Error, u"this line must be the header of the inf table, FIELDNAME|VISIBLE|COPY|...");
            return false;
        }
        for (const KnownColumn& column : KnownColumns) {
            if (!isThere(column))
                add(1, column.Lacking, u"the header has no column " + Text(column.Name) + u": " + column.Consequence);
        }
        std::size_t place = 1;
        for (std::size_t i = 0; i < Package_.Header.size(); ++i) {
            const Text& name = Package_.Header[i];
            const auto isThis = [&](const KnownColumn& column) { return SameIgnoringCase(column.Name, name); };
            if (std::none_of(KnownColumns.begin(), KnownColumns.end(), isThis))
                add(place, Grade::Warning, u"the column " + Quoted(name) + u" is not used");
            else if (ColumnIn(Package_.Header, name) != i)
                add(place, Grade::Warning, u"the column " + Quoted(name) + u" is there already, and is not used");
            place += name.size() + 1;
        }
        return true;
    }

    void Add(std::size_t row, TextView column, Grade grade, const Text& words) {
        const PackageRow& place = Package_.Rows[row];
        Found_.push_back({place.Line, PlaceIn(Package_, place, column), grade, words});
    }

    void CheckRow(std::size_t index) {
        const PackageRow& row = Package_.Rows[index];
        if (!CheckLength(row))
            return;
        CheckName(index);
        for (const char16_t* flag : {u"VISIBLE", u"COPY"}) {
            const Text text = TextIn(Package_, row, flag);
            if (!text.empty() && text != u"0" && !modQuorin::IsSet(text))
                Add(index, flag, Grade::Warning, Text(flag) + u" " + Quoted(text) + u" counts as 0: only 1 is yes");
        }
        const Text display = TextIn(Package_, row, u"DISPLAY");
        if (!modQuorin::ColourOf(display))
            Add(index, u"DISPLAY", Grade::Error,
                u"DISPLAY " + Quoted(display) + u" is no number: the program ends when a download is opened");
        const Text kind = TextIn(Package_, row, u"DATATYPE");
        if (!kind.empty() && !SameIgnoringCase(kind, u"TEXT") && modQuorin::FieldTypeOf(kind) == FieldType::Text)
            Add(index, u"DATATYPE", Grade::Warning,
                u"DATATYPE " + Quoted(kind) + u" is unknown: the field is edited as text");
        const InfField& field = Fields_[index];
        if (field.Blob.empty() && !field.Formula.empty() && modBLob::FormulaValueAt({}, field.Formula, u"").empty())
            Add(index, u"FORMULA", Grade::Warning,
                u"the formula " + Quoted(field.Formula) + u" is unknown, and empties the field with each reading");
    }

    /// Returns false if the row can't be loaded.
    bool CheckLength(const PackageRow& row) {
        if (row.Cells.size() == 1 && row.Cells.front().empty()) {
            Found_.push_back(
                {row.Line, 1, Grade::Error, u"an empty line is a row: the program ends when a download is opened"});
            return false;
        }
        for (const KnownColumn& column : KnownColumns) {
            const auto index = ColumnIn(Package_.Header, column.Name);
            if (column.Name == UnusedColumn || !index || *index < row.Cells.size())
                continue;
            Found_.push_back({row.Line, 1, Grade::Error,
                              u"the row has no " + Text(column.Name) +
                                  u": bars are missing, and the program ends when a download is opened"});
            return false;
        }
        if (row.Cells.size() > Package_.Header.size())
            Found_.push_back({row.Line, 1, Grade::Warning,
                              u"the row has " + Number(row.Cells.size()) + u" fields, and the header " +
                                  Number(Package_.Header.size()) + u": a bar ends a value"});
        return true;
    }

    void CheckName(std::size_t index) {
        const Text& name = Fields_[index].FieldName;
        if (name.empty()) {
            Add(index, u"FIELDNAME", Grade::Warning, u"the field has no name");
            return;
        }
        for (std::size_t other = 0; other < index; ++other) {
            if (!SameIgnoringCase(Fields_[other].FieldName, name))
                continue;
            Add(index, u"FIELDNAME", Grade::Warning,
                u"line " + Number(Package_.Rows[other].Line) + u" has the name " + Quoted(name) + u" already");
            return;
        }
    }

    /// The screen of a driver's name uses the first two fields of the download that was opened last.
    void CheckFirstTwo() {
        for (std::size_t i = 0; i < Fields_.size() && i < 2; ++i) {
            const Text which = i == 0 ? u"NAME" : u"INFFILE";
            if (Fields_[i].DataType == FieldType::Date)
                Add(i, u"DATATYPE", Grade::Warning,
                    u"one of the first two fields is a date: a tap on " + which +
                        u" of a driver ends the program after a download was open");
            if (!Fields_[i].Visible)
                Add(i, u"VISIBLE", Grade::Warning,
                    u"one of the first two fields is hidden, and with it " + which +
                        u" of a driver after a download was open");
        }
        if (!Fields_.empty() &&
            std::none_of(Fields_.begin(), Fields_.end(), [](const InfField& field) { return field.Visible; }))
            Found_.push_back({Package_.HeaderLine, 1, Grade::Warning, u"no field is shown"});
    }

    const DriverPackage& Package_;
    const std::vector<DriverRow>& Installed_;
    std::vector<Finding>& Found_;
    std::vector<InfField> Fields_;
};

} // namespace

std::vector<Finding> CheckPackage(const std::vector<Text>& lines, const std::vector<DriverRow>& installed) {
    std::vector<Finding> found;
    PackageCheck(ReadPackage(lines), installed, found).Run();
    SortByPlace(found);
    return found;
}

std::vector<DriverRow> InstalledDrivers(const std::vector<Text>& lines) {
    std::vector<DriverRow> drivers;
    if (lines.empty())
        return drivers;
    std::vector<Text> header;
    std::vector<Text> cells;
    modFileSystem::Split(lines.front(), header);
    const auto name = ColumnIn(header, u"NAME");
    const auto file = ColumnIn(header, u"INFFILE");
    for (std::size_t i = 1; i < lines.size() && name && file; ++i) {
        modFileSystem::Split(lines[i], cells);
        if (std::max(*name, *file) < cells.size())
            drivers.push_back({cells[*name], cells[*file]});
    }
    return drivers;
}

std::vector<DriverRow> DriversOfDevice() {
    std::vector<Text> lines;
    const auto error =
        modFileSystem::ReadLines(modQuorin::Paths.DriversFile, modQuorin::DataType, modQuorin::DataCreator, lines);
    return error == platform::NoError ? InstalledDrivers(lines) : std::vector<DriverRow>();
}

} // namespace companion
