// SPDX-License-Identifier: MIT
#include "exporting/json_rows.h"

#include <nlohmann/json.hpp>

namespace exporting {

namespace {

using Json = nlohmann::json;

/// Sets `isReplaced` if the text is no UTF-8.
std::string JsonText(std::string_view text, bool& isReplaced) {
    const Json value(text);
    std::string written = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    const std::string ignoring = value.dump(-1, ' ', false, Json::error_handler_t::ignore);
    isReplaced = isReplaced || written != ignoring;
    return written;
}

} // namespace

JsonRows::JsonRows(const std::vector<OutColumn>& columns) {
    bool isReplaced = false;
    for (const OutColumn& column : columns)
        Names_.push_back(JsonText(column.Name, isReplaced) + ":");
}

std::string JsonRows::Line(const std::vector<Cell>& cells) {
    std::string line = "{";
    bool isReplaced = false;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += (i == 0 ? "" : ",") + Names_[i];
        if (cells[i].Text.empty())
            line += "null";
        else if (cells[i].Type == CellType::Number)
            line += cells[i].Text;
        else
            line += JsonText(cells[i].Text, isReplaced);
    }
    Replaced_ += isReplaced ? 1 : 0;
    return line + "}\n";
}

} // namespace exporting
