// SPDX-License-Identifier: MIT
// The sources that are built, one row a kind of address.
#pragma once

#include "backends/serial/byte_source.h"
#include "backends/serial/port_address.h"

#include <memory>

namespace backends {

/// One line that says what of an address is not built yet; empty where all of it is.
std::string WhyNotBuilt(const PortAddress& address);

/// The closed source of an address. Returns none for an address that is not built.
std::unique_ptr<ByteSource> MakeSource(const PortAddress& address);

} // namespace backends
