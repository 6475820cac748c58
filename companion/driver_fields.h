// SPDX-License-Identifier: MIT
// What a driver of the device says of its fields.
#pragma once

#include "companion/values/columns.h"
#include "src/text/text.h"

#include <vector>

namespace companion {

/// Returns the rows of an inf table, by its full name; none if it can't be read. The open table stays open.
std::vector<values::FieldRow> FieldsOfDriver(const Text& infFile);

} // namespace companion
