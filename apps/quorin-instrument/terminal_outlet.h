// SPDX-License-Identifier: MIT
// A serial line for a machine that has none: the reader opens the slave side as it would open a port.
#pragma once

#include "apps/quorin-instrument/outlet.h"
#include "backends/descriptor/descriptor.h"

namespace instrument {

/// Sends only while a reader has the slave open. What was sent and not yet read when the reader goes is lost, as on a
/// real line; nothing is sent twice.
class PseudoTerminal final : public Outlet {
public:
    /// `link`: the path of a symbolic link to the slave, removed at the end; empty for none.
    explicit PseudoTerminal(std::string link) : Link_(std::move(link)) {}
    ~PseudoTerminal() override;

    /// Writes the path of the slave to standard output, on a line of its own.
    Outcome Open() override;
    Outcome Send(std::string_view bytes) override;
    Outcome Finish(Linger linger) override;

private:
    Outcome MakeLink();
    bool ReaderThere() const;
    Outcome WaitForReader();

    backends::Descriptor Master_;
    std::string SlavePath_;
    std::string Link_;
    bool LinkMade_ = false;
    bool LineReady_ = false; ///< the current reader was detected and the line set up
};

} // namespace instrument
