// SPDX-License-Identifier: MIT
#include "backends/host/host_pump.h"

namespace backends {

std::vector<int> HostPump::Descriptors(Wake wake) const {
    std::vector<int> all;
    const auto add = [&all](const Waitable& source) {
        if (const int descriptor = source.Descriptor(); descriptor >= 0)
            all.push_back(descriptor);
    };
    for (const Waitable* const source : Sources_)
        add(*source);
    if (wake == Wake::ByCommandsToo && Commands_ != nullptr)
        add(*Commands_);
    return all;
}

} // namespace backends
