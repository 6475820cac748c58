// SPDX-License-Identifier: MIT
#include "backends/host/host_pump.h"

#include "backends/host/host_back_end.h"
#include "backends/loop/no_commands.h"
#include "src/app/start_up.h"
#include "tests/support/headless_shell.h"
#include "tests/support/plugged_instrument.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace backends {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Records what it has to wait for, and does not sleep.
class NotingPump final : public HostPump {
public:
    bool HandlePending() override { return false; }
    void SleepOn(const std::vector<int>& descriptors, int) override { WaitedFor = descriptors; }
    [[noreturn]] void Leave(const ProgramOver& over) override { throw over; }
    std::vector<int> WaitedFor;
};

struct Something final : Waitable, EventSource {
    explicit Something(int number) : Number(number) {}
    int Descriptor() const override { return Number; }
    bool RaiseWhatIsPending() override { return ++Asked < 0; }
    int Number;
    int Asked = 0;
};

TEST(SleepOnAHost, WaitsForWhatHasADescriptorAtThatMoment) {
    NotingPump pump;
    Something first(7);
    Something second(-1);
    pump.WakenBy(first);
    pump.WakenBy(second);
    pump.Sleep(0, Wake::ByEvents);
    EXPECT_THAT(pump.WaitedFor, ElementsAre(7));
    first.Number = -1;
    second.Number = 8;
    pump.Sleep(0, Wake::ByEvents);
    EXPECT_THAT(pump.WaitedFor, ElementsAre(8));
}

TEST(SleepOnAHost, WaitsForCommandsOnlyIfItIsTold) {
    NotingPump pump;
    const Something source(7);
    const Something commands(9);
    pump.WakenBy(source);
    pump.WakenByCommands(commands);
    pump.Sleep(0, Wake::ByEvents);
    EXPECT_THAT(pump.WaitedFor, ElementsAre(7));
    pump.Sleep(0, Wake::ByCommandsToo);
    EXPECT_THAT(pump.WaitedFor, ElementsAre(7, 9));
}

class DeviceOnAHost : public testing::Test {
protected:
    DeviceOnAHost() { Device.StartProgram(); }
    ~DeviceOnAHost() override { modQuorin::ResetModules(); }

    DeviceOptions Options() const {
        DeviceOptions options;
        options.Root = Folder.Path().string();
        options.Ports.Pinned[1] = PathAddress(Instrument.Path());
        return options;
    }
    std::vector<int> WaitedFor() {
        Pump.Sleep(0, Wake::ByEvents);
        return Pump.WaitedFor;
    }
    const support::TemporaryFolder Folder;
    PseudoTerminal Instrument;
    NotingPump Pump;
    NoCommands Commands;
    support::Record Did;
    HostDevice Host{Options()};
    support::HeadlessShell<HostBackEnd> Device{Host, Pump, Commands, Did};
};

TEST_F(DeviceOnAHost, IsWokenByItsPortWhileThatIsOpen) {
    EXPECT_THAT(WaitedFor(), IsEmpty());
    Device.serial.SetPortId(1);
    Device.serial.SetLineSettings(u"9600,N,8,1");
    ASSERT_EQ(Device.serial.SetPortOpen(true), NoError);
    EXPECT_THAT(WaitedFor(), ElementsAre(testing::Ge(0)));
    Device.serial.SetPortOpen(false);
    EXPECT_THAT(WaitedFor(), IsEmpty());
}

TEST_F(DeviceOnAHost, IsWokenByASourceThatItListensTo) {
    Something source(7);
    Device.Listen(source);
    EXPECT_THAT(WaitedFor(), ElementsAre(7));
    Device.loop.RaiseRound();
    EXPECT_EQ(source.Asked, 1);
}

} // namespace
} // namespace backends
