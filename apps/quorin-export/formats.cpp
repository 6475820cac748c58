// SPDX-License-Identifier: MIT
#include "apps/quorin-export/formats.h"

#include "exporting/csv.h"
#include "exporting/json_rows.h"

namespace exporter {

using exporting::Cell;
using exporting::TableView;

namespace {

void WriteCsv(const Table&, const TableView& view, const Options& options, bool, const Sink& sink,
              std::vector<std::string>&) {
    WriteCsvFile(view, options.Csv, sink);
}

void WriteJsonLines(const Table&, const TableView& view, const Options&, bool, const Sink& sink,
                    std::vector<std::string>& odd) {
    Buffer buffer(sink);
    exporting::JsonRows rows(view.Columns());
    view.ForEachRow([&](const std::vector<Cell>& cells) {
        buffer.Bytes += rows.Line(cells);
        buffer.FlushIfLarge();
    });
    if (rows.Replaced() > 0)
        odd.push_back(std::to_string(rows.Replaced()) + " rows have bytes that are no UTF-8: U+FFFD stands for them");
}

/// A line for each value that is there.
void WriteLong(const Table& table, const TableView& view, const Options& options, bool isFirst, const Sink& sink,
               std::vector<std::string>&) {
    Buffer buffer(sink);
    exporting::CsvWriter writer(options.Csv, buffer.Bytes);
    if (isFirst)
        writer.Header(
            {{.Name = "device"}, {.Name = "file"}, {.Name = "record"}, {.Name = "column"}, {.Name = "value"}});
    std::size_t record = 0;
    view.ForEachRow([&](const std::vector<Cell>& cells) {
        const std::string number = std::to_string(++record);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (cells[i].Text.empty())
                continue;
            for (const std::string_view text : {std::string_view(options.Name), std::string_view(table.Source.File),
                                                std::string_view(number), std::string_view(view.Columns()[i].Name)})
                writer.Field(text);
            writer.Value(cells[i]);
            writer.EndRow();
        }
        buffer.FlushIfLarge();
    });
}

} // namespace

const std::vector<FormatRow>& Formats() {
    static const std::vector<FormatRow> rows = {
        {"csv", ".csv", "comma-separated values", false, WriteCsv},
        {"jsonl", ".jsonl", "a JSON object a record", true, WriteJsonLines},
        {"long", ".csv", "CSV of a line for each value", true, WriteLong},
        {"xlsx", ".xlsx", "a workbook of a sheet a download", true, nullptr, CollectWorkbook},
        {"sqlite", ".sqlite", "a database of a table a download", true, nullptr, CollectDatabase},
        {"svg", ".svg", "a plot", true, nullptr, nullptr, PictureForm::Svg},
        {"png", ".png", "the same, by rsvg-convert", true, nullptr, nullptr, PictureForm::Png},
        {"pdf", ".pdf", "the same, by rsvg-convert", true, nullptr, nullptr, PictureForm::Pdf},
        {"text", ".txt", "a plot for a terminal", true, nullptr, nullptr, PictureForm::Text},
    };
    return rows;
}

std::string FormatHelp() {
    std::string help;
    for (const FormatRow& row : Formats())
        help += (help.empty() ? "" : "; ") + std::string(row.Name) + ": " + row.Help;
    return help;
}

} // namespace exporter
