// SPDX-License-Identifier: MIT
// The line of a demonstration's instrument in a window.
#pragma once

#include "apps/demo/demo_instrument.h"
#include "apps/quorin-instrument/terminal_outlet.h"

#include <string>

namespace quorin {

/// A pseudo terminal, so that all of the road from a port to the form is shown.
class DemoTerminal final : public apps::DemoLine {
public:
    /// Plugs it in.
    DemoTerminal();

    /// Returns the path of its terminal; empty if it is unplugged, and Problem says why if that was not asked for.
    std::string Port() const { return Line_.IsPlugged() ? Line_.Path() : std::string(); }
    /// Ends the terminal, as if a cable was pulled.
    void Unplug() { Line_.Unplug(); }
    /// Makes a terminal again. Its path may be another one.
    void Plug();

    bool IsPlugged() const override { return Line_.IsPlugged(); }
    bool IsHeard() const override { return Line_.ReaderThere(); }
    const std::string& Problem() const override { return Line_.Problem(); }
    bool Send(const std::string& text) override { return Line_.SendAtOnce(text); }

private:
    instrument::PseudoTerminal Line_{""};
};

} // namespace quorin
