// SPDX-License-Identifier: MIT
#include "src/view/platform/device_traits.h"

#include "backends/simulated/device_profiles.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

struct Number {
    std::int32_t Type;
    DeviceKind Kind;
};

void PrintTo(const Number& number, std::ostream* out) {
    *out << "type " << number.Type;
}

class KindOf : public testing::TestWithParam<Number> {};

TEST_P(KindOf, IsFoundByTheNumberThatADeviceReports) {
    EXPECT_EQ(TraitsOf(GetParam().Type).Kind, GetParam().Kind);
}

INSTANTIATE_TEST_SUITE_P(Types, KindOf,
                         testing::Values(Number{0, DeviceKind::Desktop}, Number{1, DeviceKind::PalmOs},
                                         Number{2, DeviceKind::Other}, Number{3, DeviceKind::PocketPc},
                                         Number{4, DeviceKind::Other}, Number{5, DeviceKind::S60Early},
                                         Number{6, DeviceKind::Uiq}, Number{7, DeviceKind::Smartphone},
                                         Number{8, DeviceKind::Other}, Number{9, DeviceKind::S60},
                                         Number{10, DeviceKind::Other}, Number{-1, DeviceKind::Other},
                                         Number{32767, DeviceKind::Other}));

TEST(DeviceTraits, BelongToADeviceThatCanBeSimulated) {
    for (std::int32_t type = 0; type <= 100; ++type) {
        const DeviceKind kind = TraitsOf(type).Kind;
        EXPECT_EQ(backends::ProfileOfType(type).Kind, kind) << "type " << type;
    }
}

} // namespace
} // namespace platform
