// SPDX-License-Identifier: MIT
// The simulated instrument of a demonstration.
#pragma once

#include "apps/quorin-instrument/made_to_order.h"
#include "apps/quorin-instrument/terminal_outlet.h"

#include <string>
#include <vector>

namespace quorin {

/// A simulated instrument on a pseudo terminal. It sends only what it is asked for, and only while a listener has the
/// terminal open. No routine waits for the listener.
class DemoInstrument {
public:
    /// Plugs it in.
    DemoInstrument();

    /// Returns the path of its terminal; empty if it is unplugged, and Problem says why if that was not asked for.
    std::string Port() const { return Line_.IsPlugged() ? Line_.Path() : std::string(); }
    const std::string& Problem() const { return Line_.Problem(); }
    /// Ends the terminal, as if a cable was pulled.
    void Unplug() { Line_.Unplug(); }
    /// Makes a terminal again. Its path may be another one.
    void Plug();
    bool IsHeard() const { return Line_.ReaderThere(); }

    /// Returns the names of what it measures; a kind is its place in this list.
    const std::vector<std::string>& Kinds() const { return Results_.Names(); }
    // Each returns false if not all was sent.
    bool Send(std::size_t kind) { return Line_.SendAtOnce(Results_.One(kind)); }
    bool SendAll() { return Line_.SendAtOnce(Results_.All()); }
    bool SendNext() { return Line_.SendAtOnce(Results_.Next()); }
    bool SendOfAStranger() { return Line_.SendAtOnce(Results_.OfAStranger()); }

private:
    instrument::PseudoTerminal Line_{""};
    instrument::MadeToOrder Results_;
};

} // namespace quorin
