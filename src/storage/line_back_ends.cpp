// SPDX-License-Identifier: MIT
// The list of all kinds of storage. No other file names them all.
#include "src/storage/database_lines.h"
#include "src/storage/line_back_end.h"
#include "src/storage/text_lines.h"

namespace modFileSystem {

namespace {

constexpr const LineBackEnd* Kinds[] = {&DatabaseLines, &TextLines};

} // namespace

const std::span<const LineBackEnd* const> LineBackEnds = Kinds;

} // namespace modFileSystem
