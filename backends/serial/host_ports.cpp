// SPDX-License-Identifier: MIT
#include "backends/serial/host_ports.h"

#include "backends/serial/byte_sources.h"

namespace backends {

std::optional<PortAddress> HostPorts::AddressOf(std::int32_t number) const {
    const auto pinned = Paths_.Pinned.find(number);
    if (pinned != Paths_.Pinned.end())
        return pinned->second;
    if (!Paths_.Find)
        return std::nullopt;
    return PathAddress(Paths_.Find(number));
}

std::optional<PortTarget> HostPorts::Find(std::int32_t number) {
    const auto address = AddressOf(number);
    if (!address)
        return std::nullopt;
    PortTarget target{.Address = AddressText(*address), .Source = nullptr, .Refusal = {}};
    if (target.Address.empty())
        return target;
    if (!Source_ || *address != Address_) {
        Source_ = Paths_.Make ? Paths_.Make(number) : MakeSource(*address);
        Address_ = *address;
    }
    target.Source = Source_.get();
    if (!Source_)
        target.Refusal = WhyNotBuilt(*address);
    return target;
}

} // namespace backends
