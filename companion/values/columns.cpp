// SPDX-License-Identifier: MIT
#include "companion/values/columns.h"

#include "companion/values/table_text.h"
#include "src/blob/targets.h"
#include "src/drivers/inf_rows.h"
#include "src/text/text.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace values {

bool IsName(std::string_view one, std::string_view other) {
    using modStringTools::FromBytes;
    return modStringTools::SameIgnoringCase(FromBytes(one), FromBytes(other));
}

std::optional<std::size_t> NumberedColumn(std::string_view name) {
    std::size_t number = 0;
    const char* const end = name.data() + name.size();
    if (name.size() < 2 || name.front() != '|')
        return std::nullopt;
    const auto [stop, error] = std::from_chars(name.data() + 1, end, number);
    return error == std::errc() && stop == end && number > 0 ? std::optional(number - 1) : std::nullopt;
}

namespace {

/// The cell of a row under a name of the header; empty if there is none.
class Cells {
public:
    explicit Cells(std::string_view header) { Split(header, Names_); }
    void Take(std::string_view line) { Split(line, Row_); }
    std::string_view Under(std::string_view name) const {
        for (std::size_t i = 0; i < std::min(Names_.size(), Row_.size()); ++i)
            if (IsName(Names_[i], name))
                return Row_[i];
        return {};
    }

private:
    std::vector<std::string_view> Names_, Row_;
};

ColumnKind KindOf(std::string_view dataType, std::string_view blob) {
    switch (modQuorin::FieldTypeOf(modStringTools::FromBytes(dataType))) {
    case modQuorin::FieldType::Date:
        return ColumnKind::Date;
    case modQuorin::FieldType::Time:
        return ColumnKind::Time;
    case modQuorin::FieldType::Text:
        break;
    }
    const Text& mark = modBLob::VariableMark;
    const bool isVariable =
        modStringTools::SameIgnoringCase(modStringTools::FromBytes(blob).substr(0, mark.size()), mark);
    return blob.empty() || isVariable ? ColumnKind::Text : ColumnKind::Measured;
}

std::string NameOf(const FieldRow* field, std::string_view ofHeader, std::size_t number) {
    if (field != nullptr && !field->CsvName.empty())
        return field->CsvName;
    return ofHeader.empty() ? "column " + std::to_string(number) : std::string(ofHeader);
}

/// Returns the name, or the first of name_2, name_3 ... that is free.
std::string FreeName(const std::string& name, std::set<std::string>& taken) {
    std::string free = name;
    for (int count = 2; !taken.insert(free).second; ++count)
        free = name + "_" + std::to_string(count);
    return free;
}

} // namespace

std::vector<FieldRow> FieldRowsOf(const std::vector<std::string_view>& lines) {
    std::vector<FieldRow> rows;
    if (lines.empty())
        return rows;
    Cells cells(lines.front());
    for (std::size_t i = 1; i < lines.size(); ++i) {
        cells.Take(lines[i]);
        rows.push_back({std::string(cells.Under("FIELDNAME")), std::string(cells.Under("CSVNAME")),
                        KindOf(cells.Under("DATATYPE"), cells.Under("BLOB")),
                        modQuorin::IsSet(modStringTools::FromBytes(cells.Under("VISIBLE")))});
    }
    return rows;
}

std::vector<Column> ColumnsOf(const std::vector<std::string_view>& header, const std::vector<FieldRow>& fields) {
    std::vector<Column> columns;
    std::set<std::string> taken;
    for (const std::string_view cell : header) {
        const auto found = std::find_if(fields.begin(), fields.end(),
                                        [cell](const FieldRow& field) { return IsName(field.Field, cell); });
        const FieldRow* const field = found == fields.end() ? nullptr : &*found;
        Column column{.Field = std::string(cell),
                      .Name = FreeName(NameOf(field, cell, columns.size() + 1), taken),
                      .Kind = field == nullptr ? ColumnKind::Text : field->Kind,
                      .IsShown = field == nullptr || field->IsShown,
                      .IsKnown = field != nullptr};
        columns.push_back(column);
    }
    return columns;
}

} // namespace values
