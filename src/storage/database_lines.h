// SPDX-License-Identifier: MIT
// Lines in a line database. Each line is a record of its number and its text.
#pragma once

#include "src/storage/line_back_end.h"

namespace modFileSystem {

extern const LineBackEnd DatabaseLines;

/// True if a name ends in ".pdb", in any case.
bool AsksForDatabase(const Text& name);

} // namespace modFileSystem
