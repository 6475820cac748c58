// SPDX-License-Identifier: MIT
// The formats of quorin-export, a row each.
#pragma once

#include "apps/download_files/csv_file.h"
#include "apps/quorin-export/collections.h"
#include "apps/quorin-export/sources.h"
#include "exporting/table_view.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exporter {

/// In which form a plot is written.
enum class PictureForm { Svg, Png, Pdf, Text };

struct FormatRow {
    const char* Name;
    const char* Ending; ///< of its files
    const char* Help;
    bool IsOneForAll; ///< several tables can follow each other in one output
    /// Null if there is Collect. Writes a table. `isFirst`: of the output. Adds what is odd, a line each.
    void (*Write)(const Table& table, const exporting::TableView& view, const Options& options, bool isFirst,
                  const Sink& sink, std::vector<std::string>& odd);
    /// Begins a collection in a new file, in a folder of its own.
    std::unique_ptr<Collection> (*Collect)(const std::string& path) = nullptr;
    std::optional<PictureForm> Picture = {}; ///< of a plot; Write is null then
};

const std::vector<FormatRow>& Formats();

/// Returns a line on all of them, for --help.
std::string FormatHelp();

} // namespace exporter
