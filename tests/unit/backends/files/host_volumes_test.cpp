// SPDX-License-Identifier: MIT
#include "backends/files/host_volumes.h"

#include "tests/support/printed_rows.h"
#include "tests/support/temporary_root.h"

#include <gtest/gtest.h>

using namespace platform;
using backends::HostVolume;
using backends::HostVolumes;
using backends::PathMap;

namespace {

using support::PrintTo;

/// Volumes with folders of their own in the root of the test.
class HostVolumesTest : public testing::Test {
protected:
    HostVolumes Made(std::vector<HostVolume> list) const {
        HostVolumes volumes(std::move(list), PathMap(Root.Path()));
        volumes.MakeFolders(u"");
        return volumes;
    }

    const TemporaryRoot Root;
};

const std::vector<HostVolume> TwoVolumesAndABrokenOne = {
    {u"Device:\\", 8192}, {u"Card:\\", 5242880}, {u"Broken:\\", std::nullopt}};

TEST_F(HostVolumesTest, WalksTheVolumesInTheirOrder) {
    HostVolumes volumes = Made(TwoVolumesAndABrokenOne);
    EXPECT_EQ(volumes.First(), u"Device:\\");
    EXPECT_EQ(volumes.Next(), u"Card:\\");
    EXPECT_EQ(volumes.Next(), u"Broken:\\");
    EXPECT_EQ(volumes.Next(), u"");
    EXPECT_EQ(volumes.Next(), u"");
    EXPECT_EQ(volumes.First(), u"Device:\\");
}

TEST_F(HostVolumesTest, HasNoneWhenItWasGivenNone) {
    HostVolumes volumes = Made({});
    EXPECT_EQ(volumes.First(), u"");
    EXPECT_EQ(volumes.Next(), u"");
}

struct Row {
    std::int64_t Kilobytes;
    std::int32_t Bytes;
};

class SpaceOfAVolume : public HostVolumesTest, public testing::WithParamInterface<Row> {};

TEST_P(SpaceOfAVolume, WrapsAtThirtyTwoBits) {
    HostVolumes volumes = Made({{u"Card:\\", GetParam().Kilobytes}});
    std::int32_t bytes = 0;
    EXPECT_EQ(volumes.Space(u"Card:\\", bytes), NoError);
    EXPECT_EQ(bytes, GetParam().Bytes);
}

INSTANTIATE_TEST_SUITE_P(Rows, SpaceOfAVolume,
                         testing::Values(Row{0, 0}, Row{11, 11264}, Row{2097151, 2147482624},
                                         Row{2097152, -2147483647 - 1}, Row{3145728, -1073741824}, Row{4194304, 0},
                                         Row{5242880, 1073741824}));

TEST_F(HostVolumesTest, FailsWhereAVolumeCannotBeRead) {
    HostVolumes volumes = Made(TwoVolumesAndABrokenOne);
    std::int32_t bytes = 77;
    EXPECT_NE(volumes.Space(u"Broken:\\", bytes), NoError);
    EXPECT_NE(volumes.Space(u"None:\\", bytes), NoError);
    EXPECT_NE(volumes.Space(u"card:\\", bytes), NoError);
}

/// A card that is taken out has no space until it is in again, whatever space it was given.
TEST_F(HostVolumesTest, HaveNoSpaceWhileTheirFolderIsNotThere) {
    HostVolumes volumes = Made({{u"Card:\\", 2048}});
    std::int32_t bytes = 0;
    EXPECT_EQ(volumes.Space(u"Card:\\", bytes), NoError);
    std::filesystem::rename(Root.Path("Card"), Root.Path("away"));
    EXPECT_EQ(volumes.Space(u"Card:\\", bytes), FileNotFound);
    std::filesystem::rename(Root.Path("away"), Root.Path("Card"));
    EXPECT_EQ(volumes.Space(u"Card:\\", bytes), NoError);
    EXPECT_EQ(bytes, 2048 * 1024);
}

/// If the folder with the data is missing, its card is out: no empty folder must be created in its place.
TEST_F(HostVolumesTest, HaveTheirFoldersMadeExceptTheOneWithTheData) {
    const HostVolumes volumes({{u"Memory:\\", 2048}, {u"Card:\\", 2048}}, PathMap(Root.Path()));
    volumes.MakeFolders(u"Card:\\");
    EXPECT_TRUE(Root.Has("Memory"));
    EXPECT_FALSE(Root.Has("Card"));
    volumes.MakeFolders(u"");
    EXPECT_TRUE(Root.Has("Card"));
}

} // namespace
