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

    /// Plugs the line in, and writes the path of the slave to standard output, on a line of its own.
    Outcome Open() override;
    Outcome Send(std::string_view bytes) override;
    Outcome Finish(Linger linger) override;

    /// Makes a line that a reader can open; after Unplug its path may be another one.
    Outcome Plug();
    bool Unplug() override;
    bool IsHeard() const override { return ReaderThere(); }
    bool IsPlugged() const { return Master_.Valid(); }
    /// Returns the path of the slave. Once the line is unplugged it may be the path of another program's terminal.
    const std::string& Path() const { return SlavePath_; }
    bool ReaderThere() const;
    /// Sends without waiting for a reader, or for one that does not read. Returns false if not all was sent.
    bool SendAtOnce(std::string_view bytes);

private:
    Outcome MakeLink();
    void RemoveLink();
    Outcome WaitForReader();

    backends::Descriptor Master_;
    std::string SlavePath_;
    std::string Link_;
    bool LinkMade_ = false;
    bool LineReady_ = false; ///< the current reader was detected and the line set up
};

} // namespace instrument
