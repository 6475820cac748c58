// SPDX-License-Identifier: MIT
// The bytes of a TCP connection to a listener elsewhere, such as a serial device server.
#pragma once

#include "backends/files/host_files.h"
#include "backends/serial/descriptor_source.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <netinet/in.h>
#include <sys/socket.h>
#include <vector>

namespace backends {

class TcpSource final : public DescriptorSource {
public:
    TcpSource(std::string host, std::uint16_t port) : Host_(std::move(host)), Port_(port) {}

    /// Looks up the host, connects to the first of its addresses that answers, and is open once connected. Connecting
    /// to a numeric address of this machine is immediate.
    SourceTrouble Open(const Text& lineSettings) override;
    void Close() override;
    ReadState TakeAvailable(std::string& bytes) override;
    int Descriptor() const override { return Connected_ ? Socket_.Number() : -1; }
    std::string Ending() const override { return Ending_; }

private:
    using Moment = std::chrono::steady_clock::time_point;

    struct HostAddress {
        sockaddr_storage Bytes{};
        socklen_t Length = 0;
    };

    /// The result of a look-up, which runs in its own thread because the system's look-up blocks, for seconds on a bad
    /// network. The thread may outlive the source.
    struct LookUp {
        std::atomic<bool> Done{false};
        std::vector<HostAddress> Found;
        std::string Why; ///< reason if nothing was found
    };

    static void Find(LookUp& lookUp, const std::string& host, std::uint16_t port, int flags);
    void BeginLookUp();
    bool TakeUpLookUp();
    SourceTrouble TryAddresses();
    bool BeginConnecting(const HostAddress& address);
    enum class Progress { Connected, UnderWay, Failed };
    Progress LookAtConnecting();
    SourceTrouble Fail();

    std::string Host_;
    std::uint16_t Port_;
    std::shared_ptr<LookUp> LookUp_; ///< look-up in progress; null if none
    std::vector<HostAddress> Left_;  ///< addresses not tried yet, the next one last
    backends::Descriptor Socket_;
    bool Connected_ = false;
    Moment Asked_{}; ///< time of the last call of Open
    Moment Begun_{}; ///< start of the current connection attempt
    std::string Ending_;
};

} // namespace backends
