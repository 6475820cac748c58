// SPDX-License-Identifier: MIT
// Numbers by chance that come again with their seed, the same on every machine.
#pragma once

#include "src/view/platform/device.h"

#include <random>

namespace backends {

using namespace platform;

class NumberSource final : public Random {
public:
    void Seed(std::int32_t number) override { Engine.seed(static_cast<std::uint32_t>(number)); }
    double Next() override;

private:
    std::mt19937 Engine; ///< the standard lays its numbers down; those of its distributions it leaves to each library
};

} // namespace backends
