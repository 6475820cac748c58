// SPDX-License-Identifier: MIT
#pragma once

#include "exporting/csv.h"
#include "exporting/table_view.h"

#include <functional>
#include <string>
#include <string_view>

namespace exporter {

/// Takes the bytes of an export as they are made. Returns false if they can't be written any more.
using Sink = std::function<bool(std::string_view bytes)>;

/// Collects what a format makes, and passes it on in large parts.
class Buffer {
public:
    explicit Buffer(const Sink& sink) : Sink_(sink) {}
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer() { Flush(); }

    std::string Bytes;
    void FlushIfLarge();

private:
    void Flush();
    const Sink& Sink_;
};

/// Writes a table as comma-separated values, with its header.
void WriteCsvFile(const exporting::TableView& view, const exporting::CsvForm& form, const Sink& sink);

} // namespace exporter
