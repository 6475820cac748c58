// SPDX-License-Identifier: MIT
// The formats whose files can't be written from front to back.
#pragma once

#include "apps/quorin-export/sources.h"
#include "exporting/table_view.h"

#include <memory>
#include <string>
#include <vector>

namespace exporter {

/// The tables of one output, collected in a file that can't be written from front to back.
class Collection {
public:
    Collection() = default;
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;
    virtual ~Collection() = default;
    /// How often it goes through the rows of a table.
    virtual std::size_t Passes() const = 0;
    /// Adds what is odd, a line each.
    virtual void Add(const Table& table, const exporting::TableView& view, const Options& options,
                     std::vector<std::string>& odd) = 0;
    /// Completes the file. Returns why it is not whole, or an empty text.
    virtual std::string Finish() = 0;
};

std::unique_ptr<Collection> CollectWorkbook(const std::string& path);
std::unique_ptr<Collection> CollectDatabase(const std::string& path);

} // namespace exporter
