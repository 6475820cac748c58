// SPDX-License-Identifier: MIT
#include "backends/linux/port_list.h"

#include "tests/support/plugged_instrument.h"
#include "tests/support/printed_rows.h"
#include "tests/unit/backends/linux/devices_under_test.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

using namespace backends;
using namespace companion;
namespace common = backends;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using support::PrintTo;

class PortList : public DevicesUnderTest {
protected:
    PortList() {
        Where.DeviceFolder = Dev.Path();
        Where.SystemFolder = Sys.Path();
        Where.ProcessFolder = Proc.Path();
        Where.LockFolder = Locks.Path();
        Where.Describe = [](const std::string&) { return DeviceName{}; };
        Where.Try = [this](const std::string& path, PortTrial trial) {
            Tried.push_back((trial == PortTrial::Open ? "open " : "look at ") + path);
            return Outcome;
        };
    }

    /// Adds a node with a device of its own, as each node of a real machine has.
    void Port(const std::string& name) {
        Ends.push_back(std::make_unique<PseudoTerminal>());
        Dev.Link(Ends.back()->Path(), name);
    }
    void BoardPort(const std::string& name, const std::string& type) {
        Port(name);
        Sys.Put("class/tty/" + name + "/type", type + "\n");
    }
    std::string TerminalBehind(const std::string& name) { return std::filesystem::canonical(Dev.Path(name)).string(); }

    PortRow Row(const std::string& name) {
        for (const PortRow& row : SerialPorts(Where))
            if (row.Path == Dev.Path(name))
                return row;
        ADD_FAILURE() << "no row for " << name;
        return {};
    }
    std::vector<std::string> Listed() {
        std::vector<std::string> names;
        for (const PortRow& row : SerialPorts(Where))
            names.push_back(row.Path.substr(row.Path.find_last_of('/') + 1));
        return names;
    }
    /// Returns the numbers of a port, such as "1 3!" for Com1 by the rule and Com3 by a pin.
    std::string Numbers(const std::string& name) {
        std::string text;
        for (const PortName& number : Row(name).Numbers)
            text += (text.empty() ? "" : " ") + std::to_string(number.Number) + (number.Pinned ? "!" : "");
        return text;
    }

    /// True if the first port has been opened and closed again, which its other end shows as a hang-up.
    bool WasOpened() {
        pollfd end{Ends[0]->Number(), POLLIN, 0};
        poll(&end, 1, 0);
        return (end.revents & POLLHUP) != 0;
    }

    TemporaryRoot Sys;
    TemporaryRoot Proc;
    TemporaryRoot Locks;
    std::vector<std::unique_ptr<PseudoTerminal>> Ends;
    PortSurvey Where;
    std::vector<std::string> Tried;
    int Outcome = 0;
};

TEST_F(PortList, ShowsAllKindsInTheOrderOfTheRule) {
    BoardPort("ttyS0", "4");
    Port("ttyACM0");
    Port("ttyUSB10");
    Port("ttyUSB2");
    Port("rfcomm1");
    EXPECT_THAT(Listed(), ElementsAre("rfcomm1", "ttyUSB2", "ttyUSB10", "ttyACM0", "ttyS0"));
}

TEST_F(PortList, LeavesOutPortsThatTheBoardHasNot) {
    BoardPort("ttyS0", "0");
    BoardPort("ttyS1", "4");
    Port("ttyS2");
    EXPECT_THAT(Listed(), ElementsAre("ttyS1"));
}

TEST_F(PortList, ShowsAPortOfADriverWithoutTypes) {
    Port("ttyS3");
    std::filesystem::create_directories(Sys.Path("class/tty/ttyS3/device/driver"));
    EXPECT_THAT(Listed(), ElementsAre("ttyS3"));
}

TEST_F(PortList, SaysWhichNumbersMeanADevice) {
    Port("rfcomm0");
    Port("ttyUSB0");
    Port("ttyUSB1");
    EXPECT_EQ(Numbers("rfcomm0"), "1");
    EXPECT_EQ(Numbers("ttyUSB0"), "");
    EXPECT_EQ(Numbers("ttyUSB1"), "2");
}

TEST_F(PortList, APinTakesANumberFromTheRule) {
    Port("ttyUSB0");
    Port("ttyUSB1");
    Where.Pinned = {{1, PathAddress(Dev.Path("ttyUSB1"))}};
    EXPECT_EQ(Numbers("ttyUSB0"), "");
    EXPECT_EQ(Numbers("ttyUSB1"), "1! 2");
}

TEST_F(PortList, APinByIdIsADevicesOwnRow) {
    Port("ttyUSB0");
    ById("usb-Meter-if00", "../../ttyUSB0");
    Where.Pinned = {{7, PathAddress(Dev.Path("serial/by-id/usb-Meter-if00"))}};
    EXPECT_THAT(Listed(), ElementsAre("ttyUSB0"));
    EXPECT_EQ(Numbers("ttyUSB0"), "1 7!");
}

TEST_F(PortList, NamesById) {
    Port("ttyUSB0");
    Port("ttyUSB1");
    ById("usb-Meter-if00", "../../ttyUSB1");
    EXPECT_THAT(Row("ttyUSB1").Links, ElementsAre(Dev.Path("serial/by-id/usb-Meter-if00")));
    EXPECT_TRUE(Row("ttyUSB0").Links.empty());
}

TEST_F(PortList, AnAdapterOfAnotherNameIsFoundById) {
    Port("ttyXR0");
    ById("usb-Odd-if00", "../../ttyXR0");
    EXPECT_THAT(Listed(), ElementsAre("usb-Odd-if00"));
    EXPECT_EQ(Row("serial/by-id/usb-Odd-if00").State, PortState::Ready);
}

TEST_F(PortList, ALinkByIdThatLeadsNowhereIsGone) {
    ById("usb-Meter-if00", "../../ttyUSB0");
    const PortRow row = Row("serial/by-id/usb-Meter-if00");
    EXPECT_EQ(row.State, PortState::Gone);
    EXPECT_THAT(row.Trouble.Reason, HasSubstr("not there"));
    EXPECT_TRUE(Tried.empty());
}

TEST_F(PortList, APinThatLeadsNowhereIsGone) {
    Where.Pinned = {{2, PathAddress(Dev.Path("ttyUSB9"))}, {3, PathAddress(Dev.Path("ttyUSB9"))}};
    EXPECT_THAT(Listed(), ElementsAre("ttyUSB9"));
    EXPECT_EQ(Row("ttyUSB9").State, PortState::Gone);
    EXPECT_EQ(Numbers("ttyUSB9"), "2! 3!");
}

TEST_F(PortList, APinToAFileIsNoPort) {
    Dev.Put("notes.txt", "");
    Where.Pinned = {{1, PathAddress(Dev.Path("notes.txt"))}};
    EXPECT_EQ(Row("notes.txt").State, PortState::Failing);
    EXPECT_EQ(Row("notes.txt").Trouble.Reason, "It is not a serial port.");
    EXPECT_TRUE(Tried.empty());
}

TEST_F(PortList, APinToSomethingElsewhereIsListedAndNotTried) {
    PortAddress meter;
    meter.Kind = AddressKind::Tcp;
    meter.Target = "meter";
    meter.TcpPort = 5025;
    Where.Pinned = {{4, meter}};
    const auto rows = SerialPorts(Where);
    EXPECT_EQ(PortTable(rows), "tcp:meter:5025: Com4 (pinned); elsewhere, was not opened\n");
    EXPECT_TRUE(Tried.empty());
}

TEST_F(PortList, OpensEveryPortButThoseOfTheBoard) {
    BoardPort("ttyS0", "4");
    Port("rfcomm0");
    Port("ttyUSB0");
    SerialPorts(Where);
    EXPECT_THAT(Tried, ElementsAre("open " + Dev.Path("rfcomm0"), "open " + Dev.Path("ttyUSB0"),
                                   "look at " + Dev.Path("ttyS0")));
}

TEST_F(PortList, APortOfTheBoardIsNotOpenedUnderAnyOtherName) {
    // A link is no device for this test: only the name at the end of all links counts.
    if (mknod(Dev.Path("ttyS4").c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0)
        GTEST_SKIP() << "only root can make a device";
    Dev.Link("ttyS4", "scale");
    Where.Pinned = {{1, PathAddress(Dev.Path("scale"))}};
    EXPECT_EQ(Row("scale").State, PortState::Untried);
    EXPECT_THAT(Tried, ElementsAre("look at " + Dev.Path("scale")));
}

TEST_F(PortList, APortThatOpensIsReady) {
    Port("ttyUSB0");
    EXPECT_EQ(Row("ttyUSB0").State, PortState::Ready);
    EXPECT_EQ(Row("ttyUSB0").Trouble.Reason, "");
    EXPECT_EQ(Row("ttyUSB0").Trouble.Remedy, "");
}

TEST_F(PortList, APortOfTheBoardIsNeverCalledReady) {
    BoardPort("ttyS0", "4");
    EXPECT_EQ(Row("ttyS0").State, PortState::Untried);
}

struct FailureRow {
    int Code;
    PortState State;
};

class PortFailures : public PortList, public testing::WithParamInterface<FailureRow> {};

TEST_P(PortFailures, HaveAStateWithAReasonAndARemedy) {
    Port("ttyUSB0");
    Outcome = GetParam().Code;
    const PortRow row = Row("ttyUSB0");
    EXPECT_EQ(row.State, GetParam().State) << Outcome;
    EXPECT_NE(row.Trouble.Reason, "") << Outcome;
    EXPECT_NE(row.Trouble.Remedy, "") << Outcome;
}

INSTANTIATE_TEST_SUITE_P(Table, PortFailures,
                         testing::Values(FailureRow{EACCES, PortState::Refused}, FailureRow{EPERM, PortState::Refused},
                                         FailureRow{EBUSY, PortState::InUse}, FailureRow{ENOENT, PortState::Gone},
                                         FailureRow{ENODEV, PortState::Gone}, FailureRow{ENXIO, PortState::Gone},
                                         FailureRow{EIO, PortState::Failing}, FailureRow{ENOTTY, PortState::Failing}));

TEST_F(PortList, MissingPermissionNamesTheGroupOfThePort) {
    Port("ttyUSB0");
    Outcome = EACCES;
    Where.Rights = [](const std::string&) { return PortRights{"root", "dialout", true, "ann", Membership::None}; };
    EXPECT_THAT(Row("ttyUSB0").Trouble.Remedy, HasSubstr("sudo usermod -aG dialout ann"));
}

TEST_F(PortList, APortThatAServiceHasIsInUseAndLeftAlone) {
    Port("ttyUSB0");
    Port("ttyUSB1");
    Proc.Put("812/comm", "ModemManager\n");
    std::filesystem::create_directories(Proc.Path("812/fd"));
    Proc.Link(TerminalBehind("ttyUSB0"), "812/fd/9");
    EXPECT_EQ(Row("ttyUSB0").State, PortState::InUse);
    EXPECT_THAT(Row("ttyUSB0").Trouble.Reason, HasSubstr("ModemManager (process 812)"));
    EXPECT_EQ(Row("ttyUSB1").State, PortState::Ready);
    EXPECT_THAT(Tried, testing::Each("open " + Dev.Path("ttyUSB1")));
}

TEST_F(PortList, APortWithALockFileIsInUse) {
    Port("ttyUSB0");
    Proc.Put("99/comm", "gpsd\n");
    Locks.Put("LCK..ttyUSB0", "        99\n");
    EXPECT_EQ(Row("ttyUSB0").State, PortState::InUse);
    EXPECT_THAT(Row("ttyUSB0").Trouble.Reason, HasSubstr("gpsd (process 99)"));
}

TEST_F(PortList, ALockFileCountsForALinkToTheDevice) {
    Port("ttyXR0");
    ById("usb-Odd-if00", "../../ttyXR0");
    Proc.Put("99/comm", "minicom\n");
    Locks.Put("LCK.." + TerminalBehind("ttyXR0").substr(TerminalBehind("ttyXR0").find_last_of('/') + 1), "99\n");
    EXPECT_EQ(Row("serial/by-id/usb-Odd-if00").State, PortState::InUse);
}

TEST_F(PortList, SaysWhatADeviceIsCalled) {
    Port("ttyUSB0");
    Where.Describe = [this](const std::string& path) {
        EXPECT_EQ(path, Dev.Path("ttyUSB0"));
        return DeviceName{"Example Works", "Serial Adapter", "A1"};
    };
    EXPECT_EQ(Row("ttyUSB0").Name.Model, "Serial Adapter");
}

TEST_F(PortList, TheRealTrialOpensATerminalAndLetsItGo) {
    Port("ttyUSB0");
    Where.Try = TryPort;
    EXPECT_EQ(Row("ttyUSB0").State, PortState::Ready);
    EXPECT_TRUE(WasOpened());
}

TEST_F(PortList, TheRealTrialTellsWhatIsNoTerminal) {
    EXPECT_EQ(TryPort("/dev/null", PortTrial::Open), ENOTTY);
    EXPECT_EQ(TryPort(Dev.Path("ttyUSB0"), PortTrial::Open), ENOENT);
    EXPECT_EQ(TryPort(Dev.Path("ttyS0"), PortTrial::LookOnly), ENOENT);
    EXPECT_EQ(TryPort("/dev/null", PortTrial::LookOnly), 0);
}

TEST_F(PortList, LookingOnlyDoesNotOpen) {
    Port("ttyUSB0");
    EXPECT_EQ(TryPort(Dev.Path("ttyUSB0"), PortTrial::LookOnly), 0);
    EXPECT_FALSE(WasOpened());
}

TEST_F(PortList, TheRealTrialOpensNoPortOfTheBoardWhateverIsAsked) {
    Port("ttyS0");
    EXPECT_EQ(TryPort(Dev.Path("ttyS0"), PortTrial::Open), 0);
    EXPECT_FALSE(WasOpened());
}

TEST_F(PortList, AMachineWithoutPortsHasNoRows) {
    EXPECT_TRUE(SerialPorts(Where).empty());
}

DeviceName Named(const std::map<std::string, std::string>& properties) {
    return NameFromProperties([&properties](const char* key) {
        const auto found = properties.find(key);
        return found == properties.end() ? std::string() : found->second;
    });
}

TEST(UdevNames, TheTableOfHardwareHasTheBetterNames) {
    const DeviceName name = Named({{"ID_VENDOR", "EW"},
                                   {"ID_VENDOR_FROM_DATABASE", "Example Works, Ltd"},
                                   {"ID_MODEL", "SA_1"},
                                   {"ID_MODEL_FROM_DATABASE", "Serial Adapter"},
                                   {"ID_SERIAL", "EW_SA_1_A50285"},
                                   {"ID_SERIAL_SHORT", "A50285"}});
    EXPECT_EQ(name.Vendor, "Example Works, Ltd");
    EXPECT_EQ(name.Model, "Serial Adapter");
    EXPECT_EQ(name.SerialNumber, "A50285");
}

TEST(UdevNames, TheDevicesOwnNamesServeWithBlanks) {
    const DeviceName name = Named({{"ID_VENDOR", "Example_Works"}, {"ID_MODEL", "Serial_Adapter_1"}});
    EXPECT_EQ(name.Vendor, "Example Works");
    EXPECT_EQ(name.Model, "Serial Adapter 1");
    EXPECT_EQ(name.SerialNumber, "");
}

TEST(UdevNames, WhatUdevDoesNotKnowHasNoName) {
    const PseudoTerminal terminal;
    EXPECT_EQ(UdevName(terminal.Path()).Model, "");
    EXPECT_EQ(UdevName("/nowhere").Vendor, "");
}

} // namespace
