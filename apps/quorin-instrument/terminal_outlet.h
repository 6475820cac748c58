// SPDX-License-Identifier: MIT
// A serial line for an instrument that has none: the reader opens the slave side as it would open a port.
#pragma once

#include "apps/quorin-instrument/outlet.h"
#include "backends/descriptor/descriptor.h"

namespace instrument {

/// Sends only while somebody has the slave open. What was handed over and not yet read when the reader goes is lost, as
/// on a real line; nothing is sent twice.
class PseudoTerminal final : public Outlet {
public:
    /// `link`: where a symbolic link to the slave is made, and removed at the end; empty for none.
    explicit PseudoTerminal(std::string link) : Link(std::move(link)) {}
    ~PseudoTerminal() override;

    /// Names the slave's path on a line of its own on standard output.
    Outcome Open() override;
    Outcome Send(std::string_view bytes) override;
    Outcome Finish(Linger linger) override;

private:
    Outcome MakeLink();
    bool ReaderThere() const;
    Outcome WaitForReader();

    backends::Descriptor Master;
    std::string SlavePath;
    std::string Link;
    bool LinkMade = false;
    bool LineReady = false; ///< the present reader was waited for and the line set
};

} // namespace instrument
