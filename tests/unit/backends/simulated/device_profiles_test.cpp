// SPDX-License-Identifier: MIT
#include "backends/simulated/device_profiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace backends {
namespace {

using Codes = std::vector<std::int32_t>;

struct Reported {
    std::int32_t Type;
    const char* Name;
    ScreenSize Screen;
    Text Volume;
    Codes Keys;
};

void PrintTo(const Reported& reported, std::ostream* out) {
    *out << "type " << reported.Type;
}

class ProfileOf : public testing::TestWithParam<Reported> {};

TEST_P(ProfileOf, SaysWhatADeviceOfTheTypeReports) {
    const DeviceProfile& profile = ProfileOfType(GetParam().Type);
    EXPECT_STREQ(profile.Name, GetParam().Name);
    EXPECT_EQ(profile.Screen, GetParam().Screen);
    EXPECT_STREQ(profile.OsVersion, "5.2");
    EXPECT_EQ(profile.Volume.Root, GetParam().Volume);
    EXPECT_EQ(profile.Volume.Kilobytes, 65536);
    Codes codes;
    for (const DeviceKey& key : profile.Keys)
        codes.push_back(key.Code);
    EXPECT_THAT(codes, testing::UnorderedElementsAreArray(GetParam().Keys));
}

const Codes Touch = {37, 38, 39, 40, 310, 13};
const Codes Phone = {37, 38, 39, 40, 310, 13, 27};
const Codes PhoneWithSoftKey = {37, 38, 39, 40, 310, 13, 27, 2};
const Codes Desktop = {37, 38, 39, 40, 310, 13, 27, 33, 34};
const Codes Palm = {308, 309, 310, 33, 34, 516, 517, 518, 519, 520, 276, 261, 264, 266, 267, 1280};

// clang-format off: a row a type
INSTANTIATE_TEST_SUITE_P(
    Types, ProfileOf,
    testing::Values(
        Reported{0, "desktop", {640, 480}, u".\\", Desktop}, Reported{1, "palm", {160, 160}, u"Device:\\", Palm},
        Reported{2, "other", {240, 320}, u"C:\\", Phone}, Reported{3, "pocketpc", {240, 320}, u"\\", Touch},
        Reported{4, "other", {240, 320}, u"C:\\", Phone}, Reported{5, "s60-early", {240, 320}, u"C:\\", Phone},
        Reported{6, "uiq", {240, 320}, u"C:\\", Touch}, Reported{7, "smartphone", {240, 320}, u"\\", PhoneWithSoftKey},
        Reported{8, "other", {240, 320}, u"C:\\", Phone}, Reported{9, "s60", {240, 320}, u"C:\\", Phone},
        Reported{10, "other", {240, 320}, u"C:\\", Phone}, Reported{32767, "other", {240, 320}, u"C:\\", Phone}));
// clang-format on

TEST(DeviceProfiles, HaveNamesOfTheirOwn) {
    std::set<std::string> names;
    for (const DeviceProfile& profile : DeviceProfiles())
        EXPECT_TRUE(names.insert(profile.Name).second) << profile.Name;
    EXPECT_EQ(names.count(""), 0U);
}

TEST(DeviceProfiles, AreEachFoundByName) {
    for (const DeviceProfile& profile : DeviceProfiles())
        EXPECT_EQ(ProfileNamed(profile.Name), &profile) << profile.Name;
}

TEST(DeviceProfiles, OfAnUnknownNameAreNone) {
    for (const char* name : {"", "Palm", "palm ", "pal", "0", "palm-hires2"})
        EXPECT_EQ(ProfileNamed(name), nullptr) << name;
}

TEST(DeviceProfiles, OfFineScreensAreFoundByNameAlone) {
    const DeviceProfile* fine = ProfileNamed("palm-hires");
    ASSERT_NE(fine, nullptr);
    EXPECT_EQ(fine->Kind, DeviceKind::PalmOs);
    EXPECT_EQ(fine->Screen, (ScreenSize{320, 320}));
    EXPECT_EQ(ProfileOfType(1).Screen, (ScreenSize{160, 160}));
}

TEST(DeviceProfiles, NameEachKeyOnce) {
    for (const DeviceProfile& profile : DeviceProfiles()) {
        std::set<std::int32_t> codes;
        std::set<std::string> names;
        for (const DeviceKey& key : profile.Keys) {
            EXPECT_TRUE(codes.insert(key.Code).second) << profile.Name << " " << key.Code;
            EXPECT_TRUE(names.insert(key.Name).second) << profile.Name << " " << key.Name;
        }
    }
}

} // namespace
} // namespace backends
