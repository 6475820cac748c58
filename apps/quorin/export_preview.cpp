// SPDX-License-Identifier: MIT
#include "apps/quorin/export_preview.h"

#include <nlohmann/json.hpp>

namespace quorin {

using backends::qt::ExportPreview;
using Json = nlohmann::ordered_json;

namespace {

constexpr std::size_t MostRecords = 10;

/// Takes the numbers as they are written, which a parser would turn into doubles.
struct Record : nlohmann::json_sax<Json> {
    std::vector<std::string> Names;
    std::vector<std::string> Cells;

    bool Take(const std::string& text) {
        Cells.push_back(text);
        return true;
    }
    bool null() override { return Take(""); }
    bool boolean(bool) override { return false; }
    bool number_integer(number_integer_t value) override { return Take(std::to_string(value)); }
    bool number_unsigned(number_unsigned_t value) override { return Take(std::to_string(value)); }
    /// The parser gives the text with the decimal sign of the locale.
    bool number_float(number_float_t, const string_t& text) override {
        std::string number = text;
        const std::size_t sign = number.find_first_not_of("+-0123456789eE");
        if (sign != std::string::npos)
            number[sign] = '.';
        return Take(number);
    }
    bool string(string_t& text) override { return Take(text); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return true; }
    bool key(string_t& name) override {
        Names.push_back(name);
        return true;
    }
    bool end_object() override { return true; }
    bool start_array(std::size_t) override { return false; }
    bool end_array() override { return false; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }
};

} // namespace

ExportPreview PreviewOf(const std::string& jsonLines) {
    ExportPreview preview;
    for (std::size_t start = 0, end; preview.Rows.size() < MostRecords; start = end + 1) {
        end = jsonLines.find('\n', start);
        if (end == std::string::npos)
            break;
        Record record;
        if (!Json::sax_parse(jsonLines.substr(start, end - start), &record) ||
            record.Names.size() != record.Cells.size())
            break;
        preview.Columns = record.Names;
        preview.Rows.push_back(record.Cells);
    }
    if (preview.Rows.empty())
        preview.Why = "The download has no records yet.";
    return preview;
}

} // namespace quorin
