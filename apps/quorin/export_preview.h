// SPDX-License-Identifier: MIT
// The first records of an export, read from its JSON lines.
#pragma once

#include "backends/qt/export_dialog.h"

#include <string>

namespace quorin {

/// Returns the first ten records. A last line without an end is left out. Without a record there are no columns.
backends::qt::ExportPreview PreviewOf(const std::string& jsonLines);

} // namespace quorin
