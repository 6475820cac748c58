// SPDX-License-Identifier: MIT
// A serial line of the machine, set raw to 9600 baud, 8 bits, no parity, 1 stop bit.
#pragma once

#include "apps/quorin-instrument/outlet.h"
#include "backends/descriptor/descriptor.h"

namespace instrument {

/// Sends whether or not there is a reader: a serial line does not report one.
class SerialDevice final : public Outlet {
public:
    explicit SerialDevice(std::string path) : Path_(std::move(path)) {}

    Outcome Open() override;
    Outcome Send(std::string_view bytes) override;
    /// Waits until the last byte has been sent, then for the time of `linger`.
    Outcome Finish(Linger linger) override;

private:
    std::string Path_;
    backends::Descriptor Line_;
};

} // namespace instrument
