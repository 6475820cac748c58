// SPDX-License-Identifier: MIT
// Lines in a text file. Each change of a line rewrites the whole file through the scratch file.
#pragma once

#include "src/storage/line_back_end.h"

namespace modFileSystem {

extern const LineBackEnd TextLines;

} // namespace modFileSystem
