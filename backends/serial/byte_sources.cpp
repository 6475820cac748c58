// SPDX-License-Identifier: MIT
#include "backends/serial/byte_sources.h"

#include "backends/serial/child_source.h"
#include "backends/serial/host_serial_port.h"
#include "backends/serial/tcp_source.h"

#include <algorithm>
#include <array>

namespace backends {

namespace {

/// A serial device or pseudo terminal of this machine, found by its path at each opening.
class TerminalSource final : public DescriptorSource {
public:
    explicit TerminalSource(std::string path) : Path_(std::move(path)) {}

    SourceTrouble Open(const Text& lineSettings) override { return {Device_.Open(Path_, lineSettings), {}}; }
    void Close() override { Device_.Close(); }
    ReadState TakeAvailable(std::string& bytes) override { return Device_.ReadAvailable(bytes); }
    int Descriptor() const override { return Device_.Descriptor(); }

private:
    std::string Path_;
    SerialDevice Device_;
};

struct SourceRow {
    AddressKind Kind;
    std::unique_ptr<DescriptorSource> (*Make)(const PortAddress& address);
};

constexpr std::array<SourceRow, 3> Rows = {{
    {AddressKind::Path,
     [](const PortAddress& address) -> std::unique_ptr<DescriptorSource> {
         return std::make_unique<TerminalSource>(address.Target);
     }},
    {AddressKind::Tcp,
     [](const PortAddress& address) -> std::unique_ptr<DescriptorSource> {
         return std::make_unique<TcpSource>(address.Target, address.TcpPort);
     }},
    {AddressKind::Exec,
     [](const PortAddress& address) -> std::unique_ptr<DescriptorSource> {
         return std::make_unique<ChildSource>(address.Target);
     }},
}};

const SourceRow* RowOf(AddressKind kind) {
    const auto* const row =
        std::find_if(Rows.begin(), Rows.end(), [kind](const SourceRow& each) { return each.Kind == kind; });
    return row == Rows.end() ? nullptr : row;
}

} // namespace

std::string WhyNotBuilt(const PortAddress& address) {
    if (address.Kind == AddressKind::Bluetooth)
        return "bt: is not built yet; bind the device by rfcomm and give /dev/rfcomm0";
    if (!address.Profile.empty())
        return "a profile (" + address.Profile + "@) is not built yet; give the address alone";
    return {};
}

std::unique_ptr<DescriptorSource> MakeSource(const PortAddress& address) {
    const SourceRow* const row = RowOf(address.Kind);
    return row == nullptr || !address.Profile.empty() ? nullptr : row->Make(address);
}

} // namespace backends
