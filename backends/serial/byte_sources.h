// SPDX-License-Identifier: MIT
// The implemented sources, one row for each kind of address.
#pragma once

#include "backends/serial/descriptor_source.h"
#include "backends/serial/port_address.h"

#include <memory>

namespace backends {

/// Returns one line on what part of an address is not implemented yet; empty if all of it is.
std::string WhyNotBuilt(const PortAddress& address);

/// Returns the source of an address, closed; null if the address is not implemented.
std::unique_ptr<DescriptorSource> MakeSource(const PortAddress& address);

} // namespace backends
