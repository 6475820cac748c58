// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/columns.h"

#include <algorithm>

namespace reader {

namespace {

std::size_t WidthOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

} // namespace

std::string Padded(std::string text, std::size_t width) {
    const std::size_t own = WidthOf(text);
    text.append(own < width ? width - own : 0, ' ');
    return text;
}

std::string Table(const std::vector<std::vector<std::string>>& rows, const std::vector<bool>& areNumbers) {
    std::vector<std::size_t> widths(areNumbers.size());
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], WidthOf(row[i]));
    }
    std::string table;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string blanks(widths[i] - WidthOf(row[i]), ' ');
            const bool isLast = i + 1 == row.size();
            table += areNumbers[i] ? blanks + row[i] : row[i] + (isLast ? "" : blanks);
            table += isLast ? "\n" : "  ";
        }
    }
    return table;
}

std::string SizeText(std::int64_t bytes) {
    if (bytes < 1000)
        return std::to_string(bytes) + " B";
    const bool isLarge = bytes >= 1'000'000;
    const std::int64_t tenths = bytes / (isLarge ? 100'000 : 100);
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + (isLarge ? " MB" : " kB");
}

} // namespace reader
