// SPDX-License-Identifier: MIT
// The line of a demonstration's instrument on a page: a pipe within the program.
#pragma once

#include "apps/demo/demo_instrument.h"
#include "backends/descriptor/descriptor.h"
#include "backends/serial/host_ports.h"

#include <string>

namespace apps {

class PipeLine final : public DemoLine {
public:
    PipeLine();

    /// Returns what a device is given as its ports: the instrument is at DemoPort, and nothing at any other.
    backends::PortPaths Paths();

    /// Without a pipe it stays unplugged, and Problem says why.
    void Plug() { IsPlugged_ = Problem_.empty(); }
    /// As if a cable was pulled: what has arrived is still read.
    void Unplug() { IsPlugged_ = false; }

    bool IsPlugged() const override { return IsPlugged_; }
    bool IsHeard() const override { return IsPlugged_ && IsOpen_; }
    const std::string& Problem() const override { return Problem_; }
    bool Send(const std::string& text) override;

    // As for a ByteSource.
    backends::SourceTrouble Open();
    void Close() { IsOpen_ = false; }
    backends::ReadState TakeAvailable(std::string& bytes);
    int Descriptor() const { return IsOpen_ ? Out_.Number() : -1; }

private:
    backends::Descriptor In_, Out_; ///< the pipe: In_ is written, Out_ is read
    std::string Problem_;
    bool IsPlugged_ = false;
    bool IsOpen_ = false;
};

} // namespace apps
