// SPDX-License-Identifier: MIT
#include "backends/serial/port_probe.h"

#include "backends/serial/byte_sources.h"

namespace backends {

void PortProbe::Start(const std::vector<std::string>& paths) {
    Sources_.clear();
    Counts_.clear();
    for (const std::string& path : paths) {
        std::unique_ptr<DescriptorSource> source = MakeSource(PathAddress(path));
        if (source->Open(u"9600,N,8,1").Error != platform::NoError)
            continue;
        Sources_[path] = std::move(source);
        Counts_[path] = 0;
    }
}

const std::map<std::string, std::size_t>& PortProbe::Counts() {
    for (auto& [path, source] : Sources_) {
        std::string bytes;
        source->TakeAvailable(bytes);
        Counts_[path] += bytes.size();
    }
    return Counts_;
}

} // namespace backends
