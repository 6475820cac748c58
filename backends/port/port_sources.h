// SPDX-License-Identifier: MIT
// What a serial port asks for the source behind a port number.
#pragma once

#include "backends/port/byte_source.h"

#include <cstdint>
#include <optional>
#include <string>

namespace backends {

/// What a port number leads to.
struct PortTarget {
    std::string Address;          ///< as users write it; empty if there is no device
    ByteSource* Source = nullptr; ///< the same object for the same address; null if the address is not implemented
    std::string Refusal;          ///< why there is no source for the address
};

class PortSources {
public:
    PortSources() = default;
    PortSources(const PortSources&) = delete;
    PortSources& operator=(const PortSources&) = delete;
    virtual ~PortSources() = default;

    /// Called at each opening of a port. Returns nothing if the port of that number is simulated. The source must stay
    /// valid until the next call that returns another one.
    virtual std::optional<PortTarget> Find(std::int32_t number) = 0;
};

} // namespace backends
