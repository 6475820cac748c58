// SPDX-License-Identifier: MIT
#include "handover/keyed_rows.h"

#include "companion/values/table_text.h"
#include "src/text/text.h"

#include <algorithm>

namespace handover {

std::vector<KeyedRow> KeyedRowsOf(std::string_view table) {
    std::vector<KeyedRow> rows;
    std::vector<std::string> columns;
    std::vector<std::string_view> fields;
    values::LineWalk walk(table);
    if (walk.Next())
        values::Split(walk.Line(), fields);
    for (const std::string_view field : fields)
        columns.push_back(modStringTools::ToBytes(modStringTools::UpperCase(modStringTools::FromBytes(field))));
    while (walk.Next()) {
        values::Split(walk.Line(), fields);
        KeyedRow row;
        for (std::size_t i = 0; i < std::min(columns.size(), fields.size()); ++i)
            row.emplace(columns[i], fields[i]);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string FieldOf(const KeyedRow& row, const std::string& column) {
    const auto found = row.find(column);
    return found == row.end() ? std::string() : found->second;
}

std::vector<std::string_view> RawLines(std::string_view bytes) {
    std::vector<std::string_view> lines;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        lines.push_back(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return lines;
}

} // namespace handover
