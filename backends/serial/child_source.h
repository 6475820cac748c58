// SPDX-License-Identifier: MIT
// The bytes that a command writes on its standard output.
#pragma once

#include "backends/files/host_files.h"
#include "backends/serial/byte_source.h"

#include <sys/types.h>

namespace backends {

/// The command is run by /bin/sh in a session of its own. Nothing comes on its standard input, whose end is the end of
/// the source; what it says on standard error goes where this program's goes.
class ChildSource final : public ByteSource {
public:
    explicit ChildSource(std::string command) : Command_(std::move(command)) {}
    ~ChildSource() override { ChildSource::Close(); }

    SourceTrouble Open(const Text& lineSettings) override;

    /// Ends the command and all that it has started in its session: by SIGTERM and, a quarter of a second later at the
    /// most, by SIGKILL.
    void Close() override;
    ReadState TakeAvailable(std::string& bytes) override;
    int Descriptor() const override { return Output_.Number(); }
    std::string Ending() const override { return Why_; }

private:
    void Reap();

    std::string Command_;
    pid_t Process_ = -1; ///< not reaped yet, so that its number is nobody else's
    backends::Descriptor Input_;
    backends::Descriptor Output_;
    std::string Why_;
};

} // namespace backends
