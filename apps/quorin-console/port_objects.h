// SPDX-License-Identifier: MIT
// The ports of a machine as objects of the console's output.
#pragma once

#include "apps/quorin-console/writer.h"
#include "companion/ports/port_table.h"

namespace console {

/// Returns a port with all that is known of it; docs/console.md describes the object.
Json PortObject(const companion::PortRow& row);

} // namespace console
