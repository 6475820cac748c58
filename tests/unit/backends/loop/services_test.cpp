// SPDX-License-Identifier: MIT
// services.h, and the simulated port of serial_ports.h.
#include "backends/loop/services.h"

#include "backends/headless/headless_controls.h"
#include "backends/loop/serial_ports.h"
#include "backends/serial/host_ports.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace backends {
namespace {

using headless::HeadlessTextBox;

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ConnectionByName, OpensUnlessItIsToldToFail) {
    SimulatedConnections connections;
    std::unique_ptr<Connection> connection;
    EXPECT_EQ(connections.Open(u"any", connection), NoError);
    EXPECT_NE(connection, nullptr);
    connection.reset();
    connections.SetOutcome(NotAvailable);
    EXPECT_EQ(connections.Open(u"any", connection), NotAvailable);
    EXPECT_EQ(connection, nullptr);
}

// The key queue.

class KeyQueue : public testing::Test {
protected:
    KeyQueue() {
        Box.SetVisible(true);
        Box.ReplaceText(u"abc");
        Box.SetFocus();
    }
    void Handle() {
        while (Keys.RaiseWhatIsPending()) {
        }
    }
    Focus Keeper;
    HeadlessTextBox Box{Keeper, "box"};
    support::Record Did;
    DeviceKeys Keys{Did, Keeper};
};

TEST_F(KeyQueue, GivesOneCharacterAtATimeInTheirOrder) {
    Keys.SendCharacter('x');
    Keys.SendCharacter('y');
    EXPECT_TRUE(Keys.RaiseWhatIsPending());
    EXPECT_EQ(Box.Contents(), u"abcx");
    EXPECT_TRUE(Keys.RaiseWhatIsPending());
    EXPECT_EQ(Box.Contents(), u"abcxy");
    EXPECT_FALSE(Keys.RaiseWhatIsPending());
}

class NumberOfAKey : public KeyQueue, public testing::WithParamInterface<std::int32_t> {};

TEST_P(NumberOfAKey, IsForThePlatformAlone) {
    Keys.SendCharacter(GetParam());
    Handle();
    EXPECT_THAT(Did.Sent, ElementsAre(GetParam()));
    EXPECT_EQ(Box.Contents(), u"abc");
}

INSTANTIATE_TEST_SUITE_P(Codes, NumberOfAKey,
                         testing::Values(256, 261, 264, 266, 267, 276, 516, 517, 518, 519, 520, 1280, 0, -1, 65601));

// Settings.

class SettingsOnAFullDisk final : public Settings {
public:
    Text Get(const Text&, const Text&, const Text& key, const Text&) const override { return key; }
    ErrorNumber Save(const Text&, const Text&, const Text&, const Text&) override { return Full ? DiskFull : NoError; }
    bool Full = true;
};

TEST(SavedSetting, IsReportedWhenItCouldNotBeStored) {
    SettingsOnAFullDisk inner;
    support::Record did;
    ReportedSettings settings(inner, did);
    EXPECT_EQ(settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com3"), DiskFull);
    EXPECT_THAT(did.Unsaved, ElementsAre(std::pair(Text(u"the setting ComPort"), ErrorText(DiskFull))));
    inner.Full = false;
    EXPECT_EQ(settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com3"), NoError);
    EXPECT_THAT(did.Unsaved, testing::SizeIs(1));
    EXPECT_EQ(settings.Get(u"Quorin", u"Settings", u"ComPort", u""), u"ComPort");
}

// The simulated port.

int Received = 0;

class SimulatedPort : public testing::Test {
protected:
    SimulatedPort() {
        Received = 0;
        Port.Received = [] { ++Received; };
    }
    HostPorts NoPorts{{}};
    DeviceSerial Port{NoPorts};
};

TEST_F(SimulatedPort, GivesABlankForANul) {
    Port.SetPortOpen(true);
    Port.Arrive(Text(u"a\0b", 3));
    EXPECT_EQ(Port.ReadInput(), u"a b");
}

TEST_F(SimulatedPort, RaisesItsEventWhileEnoughCharactersWait) {
    Port.SetPortOpen(true);
    Port.SetReceiveThreshold(3);
    Port.Arrive(u"ab");
    EXPECT_FALSE(Port.RaiseWhatIsPending());
    Port.Arrive(u"c");
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_EQ(Received, 2);
    EXPECT_EQ(Port.InBufferCount(), 3);
    EXPECT_EQ(Port.ReadInput(), u"abc");
    EXPECT_EQ(Port.InBufferCount(), 0);
    EXPECT_FALSE(Port.RaiseWhatIsPending());
}

TEST_F(SimulatedPort, RaisesTheEventLateWhenTheThresholdComesLate) {
    Port.SetPortOpen(true);
    Port.Arrive(u"a");
    EXPECT_FALSE(Port.RaiseWhatIsPending());
    Port.SetReceiveThreshold(1);
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_EQ(Port.LastEvent(), PortEvent::CharactersReceived);
}

TEST_F(SimulatedPort, LosesWhatNobodyReadWhenItCloses) {
    Port.SetPortOpen(true);
    Port.Arrive(u"a");
    Port.SetPortOpen(false);
    EXPECT_EQ(Port.InBufferCount(), 0);
    Port.SetPortOpen(true);
    EXPECT_EQ(Port.ReadInput(), u"");
}

TEST_F(SimulatedPort, KeepsWhatComesWhileHeldAndRaisesOneEventForIt) {
    bool held = true;
    Port.Held = [&held] { return held; };
    Port.SetPortOpen(true);
    Port.SetReceiveThreshold(1);
    for (const char16_t* text : {u"a", u"b", u"c"}) {
        Port.Arrive(text);
        EXPECT_FALSE(Port.RaiseWhatIsPending());
    }
    EXPECT_EQ(Received, 0);
    EXPECT_EQ(Port.WaitingCharacters(), 3U);
    held = false;
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_EQ(Received, 1);
    EXPECT_EQ(Port.ReadInput(), u"abc");
}

TEST_F(SimulatedPort, FailsToOpenAsOftenAsItIsTold) {
    Port.FailOpenings(2);
    EXPECT_EQ(Port.SetPortOpen(true), NotAvailable);
    EXPECT_FALSE(Port.PortOpen());
    EXPECT_EQ(Port.SetPortOpen(true), NotAvailable);
    EXPECT_EQ(Port.SetPortOpen(true), NoError);
    EXPECT_TRUE(Port.PortOpen());
    EXPECT_EQ(Port.SetPortOpen(true), NoError);
}

TEST_F(SimulatedPort, FailsForEverUntilItIsToldToOpen) {
    Port.FailOpenings(-1);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Port.SetPortOpen(true), NotAvailable);
    Port.FailOpenings(0);
    EXPECT_EQ(Port.SetPortOpen(true), NoError);
}

TEST_F(SimulatedPort, ClosesByItselfWhenItIsDropped) {
    Port.SetPortOpen(true);
    EXPECT_TRUE(Port.SimulatedPortOpen());
    Port.Arrive(u"a");
    Port.Drop();
    EXPECT_FALSE(Port.PortOpen());
    EXPECT_FALSE(Port.SimulatedPortOpen());
    EXPECT_EQ(Port.InBufferCount(), 0);
}

} // namespace
} // namespace backends
