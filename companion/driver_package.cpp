// SPDX-License-Identifier: MIT
#include "companion/driver_package.h"

#include "src/drivers/inf_rows.h"
#include "src/storage/row_line.h"

namespace companion {

namespace {

void TakeCountedLine(DriverPackage& package, modQuorin::PackageLines& lines, TextView line, std::size_t number) {
    ++lines.CountedLines;
    if (lines.CountedLines == 1) {
        package.DriverLine = number;
        package.Driver = modQuorin::DriverRowOf(line);
    } else if (lines.CountedLines == 2) {
        package.HeaderLine = number;
        modFileSystem::Split(line, package.Header);
    } else {
        PackageRow& row = package.Rows.emplace_back();
        row.Line = number;
        modFileSystem::Split(line, row.Cells);
    }
}

} // namespace

DriverPackage ReadPackage(const std::vector<Text>& lines) {
    DriverPackage package;
    modQuorin::PackageLines state;
    std::vector<std::size_t> emptyOnes; // their numbers, since the last line that counts
    for (std::size_t number = 1; number <= lines.size(); ++number) {
        const Text& line = lines[number - 1];
        if (!modQuorin::LineCounts(state, line)) {
            if (line.empty())
                emptyOnes.push_back(number);
            continue;
        }
        for (; state.EmptyLines > 0; --state.EmptyLines)
            TakeCountedLine(package, state, {},
                            emptyOnes[emptyOnes.size() - static_cast<std::size_t>(state.EmptyLines)]);
        emptyOnes.clear();
        TakeCountedLine(package, state, line, number);
    }
    return package;
}

std::optional<std::size_t> ColumnIn(const std::vector<Text>& header, TextView name) {
    for (std::size_t i = 0; i < header.size(); ++i) {
        if (modStringTools::SameIgnoringCase(header[i], name))
            return i;
    }
    return std::nullopt;
}

Text TextIn(const DriverPackage& package, const PackageRow& row, TextView column) {
    const auto index = ColumnIn(package.Header, column);
    return index && *index < row.Cells.size() ? row.Cells[*index] : Text();
}

std::size_t PlaceIn(const DriverPackage& package, const PackageRow& row, TextView column) {
    const auto index = ColumnIn(package.Header, column);
    if (!index || *index >= row.Cells.size())
        return 1;
    std::size_t place = 1;
    for (std::size_t i = 0; i < *index; ++i)
        place += row.Cells[i].size() + 1;
    return place;
}

std::vector<modQuorin::InfField> FieldsOf(const DriverPackage& package) {
    std::vector<modQuorin::InfField> fields;
    for (const PackageRow& row : package.Rows) {
        modQuorin::InfField field;
        field.FieldName = TextIn(package, row, u"FIELDNAME");
        field.Visible = modQuorin::IsSet(TextIn(package, row, u"VISIBLE"));
        field.Copy = modQuorin::IsSet(TextIn(package, row, u"COPY"));
        field.Blob = TextIn(package, row, u"BLOB");
        field.Display = modQuorin::ColourOf(TextIn(package, row, u"DISPLAY")).value_or(platform::White);
        field.DataType = modQuorin::FieldTypeOf(TextIn(package, row, u"DATATYPE"));
        field.Formula = TextIn(package, row, u"FORMULA");
        fields.push_back(std::move(field));
    }
    return fields;
}

} // namespace companion
