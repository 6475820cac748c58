// SPDX-License-Identifier: MIT
// Looks at which serial devices characters come in, without taking them as readings.
#pragma once

#include "backends/serial/descriptor_source.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace backends {

class PortProbe {
public:
    /// Opens these devices at 9600,N,8,1, as the application does. One that can't be opened has no count. What arrives
    /// there until Stop is counted and lost.
    void Start(const std::vector<std::string>& paths);
    /// Returns the bytes that each opened device has received since Start.
    const std::map<std::string, std::size_t>& Counts();
    void Stop() { Sources_.clear(); }

private:
    std::map<std::string, std::unique_ptr<DescriptorSource>> Sources_;
    std::map<std::string, std::size_t> Counts_;
};

} // namespace backends
