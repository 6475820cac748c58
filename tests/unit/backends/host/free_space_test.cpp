// SPDX-License-Identifier: MIT
#include "backends/host/free_space.h"

#include "companion/words.h"
#include "tests/support/test_device.h"

#include <gtest/gtest.h>

namespace backends {
namespace {

class SpaceOfADisk : public testing::Test {
protected:
    SpaceOfADisk() {
        Space.Find = [this](const std::string&) { return Free; };
    }
    Text Shown() {
        Space.LookSoon();
        Device.Platform.loop.HandleDue();
        for (const companion::Notice& notice : Device.Platform.onlooker.notices.Standing())
            if (notice.About == companion::AboutSpace)
                return notice.Words;
        return u"none";
    }

    support::TestDevice Device;
    std::optional<std::uintmax_t> Free;
    FreeSpace Space{Device.Platform, [] { return std::string("/data"); }};
};

TEST_F(SpaceOfADisk, ThatIsNearlyFullIsReported) {
    Free = 49'999'999;
    const Text told = u"Less than 50 MB are free on the disk of /data. Make room before readings can't be saved.";
    EXPECT_EQ(Shown(), told);
    Free = 21'000'000;
    EXPECT_EQ(Shown(), told) << "it is not said anew for each megabyte";
    Free = 0;
    EXPECT_EQ(Shown(), u"Less than 1 MB is free on the disk of /data. Make room before readings can't be saved.");
    Free = 50'000'000;
    EXPECT_EQ(Shown(), u"none") << "room was made";
}

TEST_F(SpaceOfADisk, ThatDoesNotTellIsNotReported) {
    EXPECT_EQ(Shown(), u"none");
}

TEST(FreeBytes, AreThoseOfTheDiskOfAFolder) {
    EXPECT_GT(FreeBytes("/").value_or(1), 0U);
    EXPECT_EQ(FreeBytes("/nowhere/at/all"), std::nullopt);
}

} // namespace
} // namespace backends
