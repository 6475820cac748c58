// SPDX-License-Identifier: MIT
// The tables of a root folder, read as the application reads them.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace reader {

/// What was found under the name of a table.
struct TableLines {
    std::optional<std::vector<std::string>> Lines; ///< nothing if there is no such table
    std::string Trouble; ///< why it can't be read, or that there are two of that name; empty otherwise
};

/// Searches all folders beneath the root: which one has the data depends on the device and on its volumes. `name` is
/// bare; that of a line database may have an ending.
TableLines ReadTable(const std::string& root, const std::string& name);

} // namespace reader
