// SPDX-License-Identifier: MIT
#include "backends/linux/port_troubles.h"

#include "tests/support/plugged_instrument.h"
#include "tests/support/printed_rows.h"
#include "tests/support/temporary_root.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <grp.h>
#include <sys/stat.h>

using namespace platform;
using namespace backends;
using namespace companion;
using testing::HasSubstr;
using testing::Not;

namespace {

using support::PrintTo;

const std::string Adapter = "/dev/ttyUSB0";

TEST(MissingPermission, IsMendedByJoiningTheGroupThatMayOpenIt) {
    const PortTrouble trouble = NoPermission(Adapter, {"root", "dialout", true, "ann", Membership::None});
    EXPECT_EQ(trouble.Reason, "You are not in the group dialout, which may open it.");
    EXPECT_EQ(trouble.Remedy, "Join it with: sudo usermod -aG dialout ann and log out and in again.");
}

TEST(MissingPermission, NamesTheGroupThatOwnsThePortAndNoOther) {
    const PortTrouble trouble = NoPermission(Adapter, {"root", "uucp", true, "ann", Membership::None});
    EXPECT_THAT(trouble.Reason + trouble.Remedy, HasSubstr("-aG uucp ann"));
    EXPECT_THAT(trouble.Reason + trouble.Remedy, Not(HasSubstr("dialout")));
}

TEST(MissingPermission, OfANewMemberWantsANewLogin) {
    const PortTrouble trouble = NoPermission(Adapter, {"root", "dialout", true, "ann", Membership::FromNextLogin});
    EXPECT_THAT(trouble.Reason, HasSubstr("before you came into the group dialout"));
    EXPECT_EQ(trouble.Remedy, "Log out and in again.");
}

TEST(MissingPermission, IsNotMendedByAGroupThatMayNotOpenIt) {
    const PortTrouble trouble = NoPermission(Adapter, {"root", "dialout", false, "ann", Membership::None});
    EXPECT_EQ(trouble.Reason, "Only its owner root may open it.");
    EXPECT_THAT(trouble.Remedy, Not(HasSubstr("usermod")));
}

TEST(MissingPermission, NobodyIsToldToJoinTheGroupRoot) {
    const PortTrouble trouble = NoPermission(Adapter, {"root", "root", true, "ann", Membership::None});
    EXPECT_THAT(trouble.Remedy, Not(HasSubstr("usermod")));
    EXPECT_THAT(trouble.Remedy, HasSubstr("chgrp dialout /dev/ttyUSB0"));
}

TEST(MissingPermission, OfAMemberIsAnAccessRule) {
    const PortTrouble trouble = NoPermission(Adapter, {"root", "dialout", true, "ann", Membership::Now});
    EXPECT_THAT(trouble.Reason, HasSubstr("access rule"));
}

struct ServiceRow {
    const char* Program;
    const char* Remedy;
};

class Services : public testing::TestWithParam<ServiceRow> {};

TEST_P(Services, AreNamedWithTheCommandThatStopsThem) {
    const PortTrouble trouble = HeldBy(Adapter, {GetParam().Program, "812", ""});
    EXPECT_EQ(trouble.Reason, "The service " + std::string(GetParam().Program) + " (process 812) has taken it.");
    EXPECT_THAT(trouble.Remedy, HasSubstr(GetParam().Remedy));
}

INSTANTIATE_TEST_SUITE_P(Table, Services,
                         testing::Values(ServiceRow{"ModemManager", "systemctl disable --now ModemManager"},
                                         ServiceRow{"brltty", "apt remove brltty"},
                                         ServiceRow{"gpsd", "systemctl disable --now gpsd.socket gpsd.service"},
                                         ServiceRow{"agetty", "systemctl disable --now serial-getty@ttyUSB0.service"},
                                         ServiceRow{"login", "serial-getty@ttyUSB0.service"}));

TEST(HeldPort, AnyOtherProgramIsNamedAndToBeEnded) {
    const PortTrouble trouble = HeldBy(Adapter, {"minicom", "77", ""});
    EXPECT_EQ(trouble.Reason, "minicom (process 77) uses it.");
    EXPECT_EQ(trouble.Remedy, "End that program.");
}

TEST(HeldPort, ALockWithoutAProcessNamesTheLockFile) {
    const PortTrouble trouble = HeldBy(Adapter, {"", "", "/run/lock/LCK..ttyUSB0"});
    EXPECT_EQ(trouble.Reason, "Another program uses it, as the lock file /run/lock/LCK..ttyUSB0 says.");
    EXPECT_THAT(trouble.Remedy, HasSubstr("remove the lock file"));
}

TEST(FailedOpening, OfAnUnknownKindSaysWhatTheSystemSays) {
    EXPECT_EQ(OpeningFailed(Adapter, EIO).Reason, "Opening it fails: Input/output error.");
}

TEST(StatusLine, IsEmptyWithoutAnError) {
    EXPECT_EQ(OpeningTrouble(Adapter, NoError), "");
    EXPECT_EQ(OpeningTrouble("", NoError), "");
}

TEST(StatusLine, ANumberWithoutADeviceHasNone) {
    EXPECT_EQ(OpeningTrouble("", FileNotFound), "there is no device for this port");
    EXPECT_EQ(OpeningTrouble("", NotAvailable), "there is no device for this port");
}

TEST(StatusLine, AMissingDeviceIsNotThere) {
    EXPECT_EQ(OpeningTrouble("/nowhere/ttyUSB0", FileNotFound), "/nowhere/ttyUSB0 is not there");
}

TEST(StatusLine, ADeviceThatHasJustGoneIsNotBusy) {
    EXPECT_EQ(OpeningTrouble("/nowhere/ttyUSB0", NotAvailable), "/nowhere/ttyUSB0 is not there");
}

TEST(StatusLine, ADeviceThatIsHeldIsBusy) {
    const PseudoTerminal terminal;
    EXPECT_EQ(OpeningTrouble(terminal.Path(), NotAvailable), terminal.Path() + " is busy");
}

TEST(StatusLine, AFileIsNoPort) {
    const TemporaryRoot folder;
    folder.Put("notes.txt", "");
    EXPECT_EQ(OpeningTrouble(folder.Path("notes.txt"), NotAvailable),
              folder.Path("notes.txt") + " is not a serial port");
}

TEST(StatusLine, MissingPermissionNamesTheGroupThatHasIt) {
    const TemporaryRoot folder;
    folder.Put("ttyUSB0", "");
    const std::string path = folder.Path("ttyUSB0");
    struct stat found {};
    ASSERT_EQ(stat(path.c_str(), &found), 0);
    const std::string group = getgrgid(found.st_gid)->gr_name;
    ASSERT_EQ(chmod(path.c_str(), 0660), 0);
    EXPECT_EQ(OpeningTrouble(path, PermissionDenied), "no permission for " + path + " (group " + group + ")");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    EXPECT_EQ(OpeningTrouble(path, PermissionDenied), "no permission for " + path);
}

TEST(StatusLine, AnyOtherErrorIsToldInWords) {
    EXPECT_EQ(OpeningTrouble(Adapter, DeviceFailed), "/dev/ttyUSB0: the device failed");
}

TEST(Rights, OfAFileOfOnesOwnAreKnown) {
    const TemporaryRoot folder;
    folder.Put("ttyUSB0", "");
    ASSERT_EQ(chmod(folder.Path("ttyUSB0").c_str(), 0660), 0);
    const PortRights rights = RightsOf(folder.Path("ttyUSB0"));
    EXPECT_EQ(rights.Owner, rights.User);
    EXPECT_NE(rights.User, "");
    EXPECT_TRUE(rights.GroupMayOpen);
    EXPECT_EQ(rights.OfGroup, Membership::Now);
}

} // namespace
