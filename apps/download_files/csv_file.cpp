// SPDX-License-Identifier: MIT
#include "apps/download_files/csv_file.h"

namespace exporter {

void Buffer::FlushIfLarge() {
    constexpr std::size_t WrittenAtOnce = 1 << 18; // bytes
    if (Bytes.size() >= WrittenAtOnce)
        Flush();
}

void Buffer::Flush() {
    Sink_(Bytes);
    Bytes.clear();
}

void WriteCsvFile(const exporting::TableView& view, const exporting::CsvForm& form, const Sink& sink) {
    Buffer buffer(sink);
    exporting::CsvWriter writer(form, buffer.Bytes);
    writer.Header(view.Columns());
    view.ForEachRow([&](const std::vector<exporting::Cell>& cells) {
        writer.Row(cells);
        buffer.FlushIfLarge();
    });
}

} // namespace exporter
