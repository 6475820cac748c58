// SPDX-License-Identifier: MIT
#include "backends/serial/host_ports.h"

#include "backends/serial/byte_sources.h"

namespace backends {

std::optional<PortTarget> HostPorts::Find(std::int32_t number) {
    const auto pinned = Paths_.Pinned.find(number);
    const bool isPinned = pinned != Paths_.Pinned.end();
    if (!isPinned && !Paths_.Find)
        return std::nullopt;
    const PortAddress address = isPinned ? pinned->second : PathAddress(Paths_.Find(number));
    PortTarget target{.Address = AddressText(address), .Source = nullptr, .Refusal = {}};
    if (target.Address.empty())
        return target;
    if (!Source_ || address != Address_) {
        Source_ = MakeSource(address);
        Address_ = address;
    }
    target.Source = Source_.get();
    if (!Source_)
        target.Refusal = WhyNotBuilt(address);
    return target;
}

} // namespace backends
