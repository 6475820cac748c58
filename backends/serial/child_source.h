// SPDX-License-Identifier: MIT
// The bytes that a command writes to its standard output.
#pragma once

#include "backends/files/host_files.h"
#include "backends/serial/descriptor_source.h"

#include <sys/types.h>

namespace backends {

/// The command is run by /bin/sh in a session of its own. Its standard input is an empty pipe, which is closed when the
/// source ends; its standard error is that of this program.
class ChildSource final : public DescriptorSource {
public:
    explicit ChildSource(std::string command) : Command_(std::move(command)) {}
    ~ChildSource() override { ChildSource::Close(); }

    SourceTrouble Open(const Text& lineSettings) override;

    /// Ends the command and everything started in its session: by SIGTERM and, after at most a quarter of a second, by
    /// SIGKILL.
    void Close() override;
    ReadState TakeAvailable(std::string& bytes) override;
    int Descriptor() const override { return Output_.Number(); }
    std::string Ending() const override { return Ending_; }

private:
    void Reap();

    std::string Command_;
    pid_t Process_ = -1; ///< not reaped yet, so the system can't reuse its number
    backends::Descriptor Input_;
    backends::Descriptor Output_;
    std::string Ending_;
};

} // namespace backends
