// SPDX-License-Identifier: MIT
// The program with a download open, and an instrument at the other end of its line: a real pseudo terminal, the
// program's clock standing still between ticks.
#pragma once

#include "tests/support/plugged_instrument.h"
#include "tests/support/test_device.h"

#include <string>
#include <string_view>

namespace line {

/// Where a test's line is found, whichever terminal stands behind it.
struct Socket {
    Socket() { Link(); }
    void PlugIn();
    /// The name goes first: another test's terminal may get the number of this one at once.
    void PullOut();
    /// What has come and was not read is gone, as it is when a real port is closed. A terminal would keep it.
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
    /// The port is open when this is done.
    explicit Collection(On screen = On::Record);

    /// The instrument sends, and the program has taken it when this is done.
    void Deliver(std::string_view bytes);
    /// The instrument goes away, and the program has noticed.
    void PullOut();
    void PlugIn() { Line.PlugIn(); }
    /// Ticks of the link timer.
    void Tick(int count = 1) { Device.Tick(500 * count); }
    void Choose(const Text& command);

    bool PortIsOpen() const { return Device.Platform.serial.PortOpen(); }
    std::string Title();
    /// The record's values, a line each, or the lines of the trace.
    std::string Values();
    /// Leaves the record, and gives the download's bytes.
    std::string Saved();

    Socket Line;
    support::TestDevice Device;
};

/// A text of the screen as bytes.
std::string Shown(const Text& text);

} // namespace line
