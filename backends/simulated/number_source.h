// SPDX-License-Identifier: MIT
// A seeded random generator with the same numbers on every machine.
#pragma once

#include "src/view/platform/device.h"

#include <random>

namespace backends {

using namespace platform;

class NumberSource final : public Random {
public:
    void Seed(std::int32_t number) override { Engine_.seed(static_cast<std::uint32_t>(number)); }
    double Next() override;

private:
    std::mt19937
        Engine_; ///< the standard fixes its numbers; those of the standard distributions differ between libraries
};

} // namespace backends
