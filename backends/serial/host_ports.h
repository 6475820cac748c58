// SPDX-License-Identifier: MIT
// The ports of this machine: which address a port number stands for, and the source of that address.
#pragma once

#include "backends/port/port_sources.h"
#include "backends/serial/descriptor_source.h"
#include "backends/serial/port_address.h"

#include <functional>
#include <map>
#include <memory>

namespace backends {

/// The address behind each port number.
struct PortPaths {
    std::map<std::int32_t, PortAddress> Pinned;
    /// Called at each opening of a number that is not pinned; an empty path means that there is no device. If it is not
    /// set, such a port is simulated.
    std::function<std::string(std::int32_t)> Find;
    /// Returns the source of a number, in place of the one that its address has on this machine.
    std::function<std::unique_ptr<DescriptorSource>(std::int32_t number)> Make = {};
};

/// One source exists at a time: that of the last number with an address.
class HostPorts final : public PortSources, public Waitable {
public:
    explicit HostPorts(PortPaths paths) : Paths_(std::move(paths)) {}

    std::optional<PortTarget> Find(std::int32_t number) override;
    /// From the next opening on, this number stands for this address.
    void Pin(std::int32_t number, const PortAddress& address) { Paths_.Pinned[number] = address; }
    /// From the next opening on, this number stands for what the search finds.
    void Unpin(std::int32_t number) { Paths_.Pinned.erase(number); }
    const std::map<std::int32_t, PortAddress>& Pinned() const { return Paths_.Pinned; }
    /// Returns what a number stands for now: its pin, else what the search finds, whose path is empty if there is no
    /// device; nothing for a port that is simulated.
    std::optional<PortAddress> AddressOf(std::int32_t number) const;

    int Descriptor() const override { return Source_ ? Source_->Descriptor() : -1; }

private:
    PortPaths Paths_;
    PortAddress Address_; ///< of the source
    std::unique_ptr<DescriptorSource> Source_;
};

} // namespace backends
