// SPDX-License-Identifier: MIT
// The stream on standard output, to be recorded.
#pragma once

#include "apps/quorin-instrument/outlet.h"

namespace instrument {

class Printer final : public Outlet {
public:
    Outcome Open() override { return Outcome::Done; }
    /// A reader that has seen enough and closed the pipe ends the stream, which is no failure.
    Outcome Send(std::string_view bytes) override;
    Outcome Finish(Linger) override { return Outcome::Done; }
};

} // namespace instrument
