// SPDX-License-Identifier: MIT
#include "exporting/data_package.h"

#include <nlohmann/json.hpp>

namespace exporting {

namespace {

using Json = nlohmann::ordered_json;

const char* TypeOf(const OutColumn& column) {
    if (column.OtherTexts > 0)
        return "any";
    switch (column.Type) {
    case CellType::Number:
        return "number";
    case CellType::Date:
        return "date";
    case CellType::Time:
        return "time";
    default:
        return "string";
    }
}

Json FieldOf(const OutColumn& column, const CsvForm& form) {
    Json field = {{"name", column.Name}, {"type", TypeOf(column)}};
    if (column.Type == CellType::Number && form.DecimalComma)
        field["decimalChar"] = ",";
    if (column.Type == CellType::Time && column.OtherTexts == 0)
        field["format"] = "any"; // hours and minutes, with or without seconds and a zone
    if (!column.Unit.empty())
        field["unit"] = column.Unit;
    if (!column.Field.empty())
        field["title"] = column.Field;
    return field;
}

} // namespace

std::string DataPackage(const CsvFile& file, const CsvForm& form, const std::vector<OutColumn>& columns) {
    Json fields = Json::array();
    for (const OutColumn& column : columns)
        fields.push_back(FieldOf(column, form));
    Json resource = {{"name", file.Source.substr(0, file.Source.rfind('.'))},
                     {"path", file.Name},
                     {"profile", "tabular-data-resource"},
                     {"format", "csv"},
                     {"mediatype", "text/csv"},
                     {"encoding", "utf-8"},
                     {"bytes", file.Bytes},
                     {"hash", "sha256:" + file.Sha256},
                     {"rows", file.Rows},
                     {"dialect",
                      {{"delimiter", std::string(1, form.Delimiter)},
                       {"lineTerminator", form.LineEnd},
                       {"doubleQuote", true},
                       {"header", true}}},
                     {"schema", {{"fields", fields}, {"missingValues", {""}}}},
                     {"sources", Json::array({{{"title", file.Source}}})}};
    if (!file.Alias.empty())
        resource["title"] = file.Alias;
    if (!file.Driver.empty())
        resource["driver"] = file.Driver;
    const Json package = {{"profile", "tabular-data-package"}, {"resources", Json::array({resource})}};
    return package.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace exporting
