// SPDX-License-Identifier: MIT
#include "src/link/mailbox.h"
#include "src/link/ports.h"

#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "tests/support/printed_rows.h"
#include "tests/unit/src/link/noted_port.h"

namespace modBluetooth {
namespace {

using modQuorin::SaveSetting;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

struct ListRow {
    std::int32_t DeviceType;
    std::size_t Count;
    const char16_t* Second;
    const char16_t* Last;
};

class PortNames : public testing::TestWithParam<ListRow> {};

TEST_P(PortNames, AreThoseOfTheDevice) {
    support::TestDevice device(support::OfType(GetParam().DeviceType));
    ListPorts();
    ASSERT_EQ(Ports.PortList.size(), GetParam().Count);
    EXPECT_EQ(Ports.PortList.front(), u"OFF");
    EXPECT_EQ(Ports.PortList[1], GetParam().Second);
    EXPECT_EQ(Ports.PortList.back(), GetParam().Last);
}

INSTANTIATE_TEST_SUITE_P(Devices, PortNames,
                         testing::Values(ListRow{0, 129, u"Com1", u"SERVER"},
                                         ListRow{1, 2, u"1919312750", u"1919312750"},
                                         ListRow{2, 2, u"SERVER", u"SERVER"}, ListRow{3, 18, u"Com1", u"SERVER"},
                                         ListRow{4, 2, u"SERVER", u"SERVER"}, ListRow{5, 2, u"SERVER", u"SERVER"},
                                         ListRow{6, 2, u"SERVER", u"SERVER"}, ListRow{7, 18, u"Com1", u"SERVER"},
                                         ListRow{8, 2, u"SERVER", u"SERVER"}, ListRow{9, 2, u"SERVER", u"SERVER"},
                                         ListRow{10, 2, u"SERVER", u"SERVER"}));

struct KindRow {
    std::int32_t DeviceType;
    const char16_t* Port;
    LinkKind Kind;
};

void PrintTo(const KindRow& row, std::ostream* out) {
    *out << "type " << row.DeviceType << ", " << modStringTools::ToBytes(row.Port);
}

class KindOfAPort : public testing::TestWithParam<KindRow> {};

TEST_P(KindOfAPort, GoesByItsNameAndTheDevice) {
    support::TestDevice device(support::OfType(GetParam().DeviceType));
    EXPECT_EQ(KindOf(GetParam().Port), GetParam().Kind);
}

INSTANTIATE_TEST_SUITE_P(Rows, KindOfAPort,
                         testing::Values(KindRow{0, u"OFF", LinkKind::None}, KindRow{0, u"off", LinkKind::Serial},
                                         KindRow{0, u"SERVER", LinkKind::Server},
                                         KindRow{0, u"server", LinkKind::Serial}, KindRow{0, u"Com1", LinkKind::Serial},
                                         KindRow{0, u"/dev/x", LinkKind::Serial}, KindRow{0, u"", LinkKind::Serial},
                                         KindRow{9, u"OFF", LinkKind::None}, KindRow{9, u"SERVER", LinkKind::Server},
                                         KindRow{9, u"COM1", LinkKind::Serial},
                                         KindRow{9, u"BT1", LinkKind::Connection},
                                         KindRow{9, u"1", LinkKind::Connection}));

class Link : public OnANotedPort {
protected:
    explicit Link(std::int32_t deviceType = 0) : OnANotedPort(deviceType) {}
};

TEST_F(Link, IsOffByDefault) {
    Ports.LinkOpen = true;
    EXPECT_FALSE(OpenLink());
    EXPECT_TRUE(Ports.LinkOpen); // as it was: nothing else happens
    EXPECT_THAT(Port.Asked, IsEmpty());
}

class PortText : public Link, public testing::WithParamInterface<const char16_t*> {};

TEST_P(PortText, OpensPortTwelve) {
    SaveSetting(u"ComPort", GetParam());
    EXPECT_TRUE(OpenLink());
    EXPECT_TRUE(Ports.LinkOpen);
    EXPECT_THAT(Port.Asked, ElementsAre(u"id 12", u"line 9600,N,8,1", u"threshold 1", u"open"));
}

INSTANTIATE_TEST_SUITE_P(Spellings, PortText, testing::Values(u"Com12", u"com12", u"COM12", u"12"));

TEST_F(Link, ThatCantBeOpenedIsClosedWithoutAWord) {
    SaveSetting(u"ComPort", u"Com1");
    Port.Fails = true;
    EXPECT_FALSE(OpenLink());
    EXPECT_FALSE(Ports.LinkOpen);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

TEST_F(Link, WhosePortIsOpenIsNotOpenedAgain) {
    SaveSetting(u"ComPort", u"Com1");
    OpenLink();
    Port.Asked.clear();
    Ports.LinkOpen = false;
    SaveSetting(u"ComPort", u"Com2"); // takes effect once the port is closed
    EXPECT_TRUE(OpenLink());
    EXPECT_THAT(Port.Asked, IsEmpty());
}

class NoNumber : public Link, public testing::WithParamInterface<const char16_t*> {};

TEST_P(NoNumber, StopsTheProgram) {
    SaveSetting(u"ComPort", GetParam());
    support::FailureOf([] { OpenLink(); });
}

INSTANTIATE_TEST_SUITE_P(Texts, NoNumber,
                         testing::Values(u"printer", u"Com", u"Comx", u"99999999999", u"", u"server", u"off"));

TEST_F(Link, ServerThatDoesNotRunIsToldOncePerName) {
    SaveSetting(u"ComPort", u"SERVER");
    EXPECT_FALSE(OpenLink());
    EXPECT_FALSE(OpenLink());
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"RFCOMM Server not running"));
    EXPECT_EQ(Mailbox.MailboxPath, u"c:\\");
}

TEST_F(Link, ServerThatRunsIsTakenForGood) {
    SaveSetting(u"ComPort", u"SERVER");
    Device.Folder.Put("c/rfcomm.run", "");
    EXPECT_TRUE(OpenLink());
    EXPECT_TRUE(Ports.ServerMode);
    std::filesystem::remove(Device.Folder.Path() / "c/rfcomm.run");
    EXPECT_TRUE(OpenLink()); // its end is not noticed
    EXPECT_THAT(Port.Asked, IsEmpty());
}

class PalmLink : public Link {
protected:
    PalmLink() : Link(1) {}
};

TEST_F(PalmLink, TakesTheMailboxAsWell) {
    SaveSetting(u"ComPort", u"SERVER");
    Device.Folder.Put("c/rfcomm.run", "");
    EXPECT_TRUE(OpenLink());
}

TEST_F(PalmLink, OpensThePortOfItsProfile) {
    SaveSetting(u"ComPort", u"1919312750");
    EXPECT_TRUE(OpenLink());
    EXPECT_EQ(Port.Asked.front(), u"id 1919312750");
}

class NamedLink : public Link {
protected:
    NamedLink() : Link(9) { SaveSetting(u"ComPort", u"BT1"); }
    backends::SimulatedConnections& Service() { return Device.Host.connections; }
};

TEST_F(NamedLink, OpensAnyNameThatIsNoComPort) {
    Ports.ServerMode = true; // as after a server was chosen before
    EXPECT_TRUE(OpenLink());
    EXPECT_EQ(Ports.LinkPortName, u"BT1");
    EXPECT_TRUE(Ports.NamedLinkOpen);
    EXPECT_NE(Ports.NamedConnection, nullptr);
    EXPECT_FALSE(Ports.ServerMode);
    EXPECT_THAT(Port.Asked, IsEmpty());
}

/// On this device neither the server's name nor the word for no port has a special meaning.
class NameThatIsNoWord : public NamedLink, public testing::WithParamInterface<const char16_t*> {};

TEST_P(NameThatIsNoWord, IsOpenedAsAnyOther) {
    SaveSetting(u"ComPort", GetParam());
    EXPECT_TRUE(OpenLink());
    EXPECT_EQ(Ports.LinkPortName, GetParam());
    EXPECT_FALSE(Ports.ServerMode);
    EXPECT_NE(Ports.NamedConnection, nullptr);
    EXPECT_EQ(PortFailure(), u"");
}

INSTANTIATE_TEST_SUITE_P(Texts, NameThatIsNoWord, testing::Values(u"server", u"off", u""));

TEST_F(NamedLink, TakesASerialPortForAComPort) {
    SaveSetting(u"ComPort", u"Com3");
    EXPECT_TRUE(OpenLink());
    EXPECT_EQ(Port.Asked.front(), u"id 3");
}

TEST_F(NamedLink, TellsEachFailingNameOnceUntilAnotherOneFails) {
    Service().SetOutcome(platform::ErrorNumber{42});
    OpenLink();
    OpenLink();
    SaveSetting(u"ComPort", u"BT2");
    OpenLink();
    SaveSetting(u"ComPort", u"BT1");
    OpenLink();
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"Failed: 42", u"Failed: 42", u"Failed: 42"));
    Service().SetOutcome(platform::NoError);
    EXPECT_TRUE(OpenLink());
}

TEST_F(NamedLink, ReportsAFailureOnceWhileItsMessageIsOpen) {
    Service().SetOutcome(platform::ErrorNumber{42});
    ArmLink();
    Device.WhileABoxIsOpen([this] { Device.Tick(2000); });
    Device.Tick(500);
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"Failed: 42"));
}

TEST_F(NamedLink, LooksForTheServerOnItsOwnVolume) {
    SaveSetting(u"ComPort", u"SERVER");
    OpenLink();
    EXPECT_EQ(Mailbox.MailboxPath, u"d:\\");
}

class WindowsMobileLink : public Link, public testing::WithParamInterface<std::int32_t> {
protected:
    WindowsMobileLink() : Link(GetParam()) { SaveSetting(u"ComPort", u"SERVER"); }
};

INSTANTIATE_TEST_SUITE_P(Types, WindowsMobileLink, testing::Values(3, 7));

TEST_P(WindowsMobileLink, LooksForTheServerWhereTheSettingSays) {
    OpenLink();
    EXPECT_EQ(Mailbox.MailboxPath, u"\\Application Data\\Volatile\\RFCOMM\\");
    SaveSetting(u"RFCOMM_Path", u"\\mail\\");
    OpenLink();
    EXPECT_EQ(Mailbox.MailboxPath, u"\\mail\\");
}

} // namespace
} // namespace modBluetooth
