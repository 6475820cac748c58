// SPDX-License-Identifier: MIT
// The program with a download open, and an instrument at the other end of its line, a real pseudo terminal. The
// program's clock stops between ticks.
#pragma once

#include "tests/support/plugged_instrument.h"
#include "tests/support/test_device.h"

#include <string>
#include <string_view>

namespace line {

/// The path of a test's line, a link to its present terminal.
struct Socket {
    Socket() { Link(); }
    void PlugIn();
    /// Removes the path before the terminal, whose number another test's terminal may get at once.
    void PullOut();
    /// Discards what has arrived and was not read, as a real port does when it is closed. A terminal would keep it.
    void ForgetWhatWaits() const;
    std::string Path() const { return (Place.Path() / "line").string(); }

    support::TemporaryFolder Place;
    PseudoTerminal Instrument;

private:
    void Link();
};

class Collection {
public:
    enum class On { Record, Trace };
    /// Opens the port, and returns when it is open.
    explicit Collection(On screen = On::Record);

    /// Sends from the instrument, and returns when the program has read it.
    void Deliver(std::string_view bytes);
    /// Disconnects the instrument, and returns when the program has noticed.
    void PullOut();
    void PlugIn() { Line.PlugIn(); }
    /// Lets `count` ticks of the link timer pass.
    void Tick(int count = 1) { Device.Tick(500 * count); }
    void Choose(const Text& command);

    bool PortIsOpen() const { return Device.Platform.serial.PortOpen(); }
    std::string Title();
    /// Returns the record's values, a line each, or the lines of the trace.
    std::string Values();
    /// Leaves the record, and returns the download's bytes.
    std::string Saved();

    Socket Line;
    support::TestDevice Device;
};

/// Returns a text of the screen as bytes.
std::string Shown(const Text& text);

} // namespace line
