// SPDX-License-Identifier: MIT
#include "src/storage/settings.h"
#include "src/view/platform/application.h"

#include "tests/support/test_device.h"

#include <gtest/gtest.h>

namespace modQuorin {
namespace {

TEST(FilePaths, NameTheTwoStandingTablesInTheDataFolder) {
    support::TestDevice device;
    SetFilePaths();
    EXPECT_EQ(ApplicationName, u"Quorin");
    EXPECT_EQ(Paths.DriversFile, u".\\Quorin\\drivers.txt");
    EXPECT_EQ(Paths.ControlFile, u".\\Quorin\\qrnctrl.txt");
    EXPECT_FALSE(device.Folder.Has("Quorin/drivers.txt"));
}

TEST(Settings, KeepTextAsItStands) {
    support::TestDevice device;
    SetFilePaths();
    EXPECT_EQ(GetSetting(u"ComPort", u"OFF"), u"OFF");
    SaveSetting(u"ComPort", u"Com3; no, \"four\"");
    EXPECT_EQ(GetSetting(u"ComPort", u"OFF"), u"Com3; no, \"four\"");
    EXPECT_NE(device.Folder.Bytes("settings.ini").find("ComPort=Com3; no, \"four\"\n"), std::string::npos);
}

TEST(Settings, ThatCantBeWrittenAreNoFailure) {
    support::TestDevice device;
    SetFilePaths();
    device.Host.faults.FailNext(-1);
    SaveSetting(u"ComPort", u"Com3");
    EXPECT_EQ(GetSetting(u"ComPort", u"OFF"), u"OFF");
}

} // namespace
} // namespace modQuorin
