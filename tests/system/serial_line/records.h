// SPDX-License-Identifier: MIT
// What an instrument sends.
#pragma once

#include <string>

namespace line {

inline const std::string Hello = "[BLob]\r\n[CONNECT \"QI-7\"]\r\n[/BLob]\r\n";

/// Returns a record with a result of the instrument of Hello, with another line before its types if one is given.
inline std::string Result(const std::string& type, const std::string& value, const std::string& unit,
                          const std::string& variable = "") {
    return "[BLob]\r\n[ORIGIN \"QI-7\"]\r\n" + variable + "[RESULT_TYPE \"" + type + "\"]\r\n[RESULT_VALUE \"" + value +
           "\"]\r\n[RESULT_UNIT \"" + unit + "\"]\r\n[/BLob]\r\n";
}

} // namespace line
