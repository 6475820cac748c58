// SPDX-License-Identifier: MIT
// Routines for all tests of the simulated instrument.
#pragma once

#include "apps/quorin-instrument/stream.h"

#include <fstream>
#include <sstream>

namespace instrument {

inline std::vector<std::string> RecordsOf(const RecordSource& source) {
    std::vector<std::string> records;
    for (std::string record; source(record);) {
        records.push_back(record);
    }
    return records;
}

/// Returns the first line of a record that begins with a tag; empty if there is none.
inline std::string LineWith(std::string_view record, std::string_view tag) {
    for (const std::string_view line : LinesOf(record)) {
        if (BeginsWithTag(line, tag)) {
            return std::string(line);
        }
    }
    return {};
}

inline std::string FileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

inline std::string Sample(const std::string& name) {
    return FileBytes(std::string(QUORIN_SAMPLES) + "/" + name);
}

} // namespace instrument
