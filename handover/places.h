// SPDX-License-Identifier: MIT
// Paths and names, as a hand-over and an export use them.
#pragma once

#include <string>

namespace handover {

/// True if a folder is another one or beneath it; both without links.
bool IsBeneath(const std::string& folder, const std::string& other);

/// "qrn0001.txt" is the first name, "qrn0001-2.txt" the second one.
std::string NumberedName(const std::string& name, int number);

inline constexpr int MostNames = 10000; // of one file

} // namespace handover
