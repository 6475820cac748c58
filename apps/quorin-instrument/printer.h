// SPDX-License-Identifier: MIT
// Writes the stream to standard output, to be recorded.
#pragma once

#include "apps/quorin-instrument/outlet.h"

namespace instrument {

class Printer final : public Outlet {
public:
    Outcome Open() override { return Outcome::Done; }
    /// A reader that closes the pipe ends the stream; this is not a failure.
    Outcome Send(std::string_view bytes) override;
    Outcome Finish(Linger) override { return Outcome::Done; }
};

} // namespace instrument
