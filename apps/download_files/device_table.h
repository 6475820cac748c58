// SPDX-License-Identifier: MIT
// A table of the device as it is read for other tools. The device has to be served, and no table of the form is opened:
// a record may be on its screen.
#pragma once

#include "backends/host/limits_file.h"
#include "companion/value_limits.h"
#include "exporting/table_view.h"
#include "src/text/text.h"

#include <string>
#include <vector>

namespace exporter {

/// A table that was read. Not copied: its source refers to its bytes.
struct Table {
    Table() = default;
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    std::string Bytes;
    exporting::Source Source;
    std::string Driver; ///< empty if it is not known
    std::string Path;   ///< of the file on the host; empty for a line database
    std::string Note;   ///< what is odd about it, to be told; empty for nothing
};

/// Reads the bytes of a file of the host. Returns why it can't, as a sentence; empty on success.
std::string ReadBytes(const std::string& path, std::string& bytes);

/// Reads a table of the device, from its text file or its line database, as the bytes of a text file. `root`: the root
/// folder of the device. Returns why it can't, as a sentence; empty on success.
std::string ReadDeviceTable(const Text& fullName, const std::string& root, Table& table);

/// Sets the driver of a table and its columns. Returns why it can't, without a full stop: "the driver X is not
/// installed"; empty on success.
std::string TakeDriver(const std::string& driver, Table& table);

/// What is told of a table without a driver, which is exported all the same. `why`: as TakeDriver returns it.
std::string NoteOfTexts(const std::string& why);

/// Reads the limits of a table's driver, NAME.limits. Returns what is wrong with them, a line each.
std::vector<std::string> ReadLimits(const Table& table, const backends::LimitsFile& file,
                                    companion::ValueLimits& limits);

} // namespace exporter
