// SPDX-License-Identifier: MIT
#include "platform/common/host_volumes.h"

#include <gtest/gtest.h>

using namespace platform;
using platform::common::HostVolumes;

namespace {

HostVolumes TwoVolumesAndABrokenOne() {
    return HostVolumes({{u"Device:\\", 8192}, {u"Card:\\", 5242880}, {u"Broken:\\", std::nullopt}});
}

TEST(HostVolumes, WalksTheVolumesInTheirOrder) {
    HostVolumes volumes = TwoVolumesAndABrokenOne();
    EXPECT_EQ(volumes.First(), u"Device:\\");
    EXPECT_EQ(volumes.Next(), u"Card:\\");
    EXPECT_EQ(volumes.Next(), u"Broken:\\");
    EXPECT_EQ(volumes.Next(), u"");
    EXPECT_EQ(volumes.Next(), u"");
    EXPECT_EQ(volumes.First(), u"Device:\\");
}

TEST(HostVolumes, HasNoneWhenItWasGivenNone) {
    HostVolumes volumes({});
    EXPECT_EQ(volumes.First(), u"");
    EXPECT_EQ(volumes.Next(), u"");
}

struct Row {
    std::int64_t Kilobytes;
    std::int32_t Bytes;
};

class SpaceOfAVolume : public testing::TestWithParam<Row> {};

TEST_P(SpaceOfAVolume, WrapsAtThirtyTwoBits) {
    HostVolumes volumes({{u"Card:\\", GetParam().Kilobytes}});
    std::int32_t bytes = 0;
    EXPECT_EQ(volumes.Space(u"Card:\\", bytes), NoError);
    EXPECT_EQ(bytes, GetParam().Bytes);
}

INSTANTIATE_TEST_SUITE_P(Rows, SpaceOfAVolume,
                         testing::Values(Row{0, 0}, Row{11, 11264}, Row{2097151, 2147482624},
                                         Row{2097152, -2147483647 - 1}, Row{3145728, -1073741824}, Row{4194304, 0},
                                         Row{5242880, 1073741824}));

TEST(HostVolumes, FailsWhereAVolumeCannotBeRead) {
    HostVolumes volumes = TwoVolumesAndABrokenOne();
    std::int32_t bytes = 77;
    EXPECT_NE(volumes.Space(u"Broken:\\", bytes), NoError);
    EXPECT_NE(volumes.Space(u"None:\\", bytes), NoError);
    EXPECT_NE(volumes.Space(u"card:\\", bytes), NoError);
}

} // namespace
