// SPDX-License-Identifier: MIT
// A whole back-end on a system without files and descriptors: storage and settings are in memory, the bytes of the port
// come from a buffer, and a sleep ends when something outside of the program happens. This program is not linked with
// the folders that need a host with files.
#include "backends/loop/back_end.h"
#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"
#include "src/app/commands.h"
#include "src/app/start_up.h"
#include "src/storage/settings.h"
#include "src/view/navigation.h"
#include "src/view/platform/application.h"
#include "src/view/screen_table.h"
#include "tests/reference/memory_disk.h"
#include "tests/support/headless_shell.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace backends {
namespace {

/// A source whose bytes the test puts in.
class BufferSource final : public ByteSource {
public:
    SourceTrouble Open(const Text&) override { return {}; }
    void Close() override {}
    ReadState TakeAvailable(std::string& bytes) override {
        bytes += Bytes;
        const bool any = !Bytes.empty();
        Bytes.clear();
        return any ? ReadState::Data : ReadState::Nothing;
    }
    std::string Bytes;
};

class OneSource final : public PortSources {
public:
    std::optional<PortTarget> Find(std::int32_t) override { return PortTarget{"buffer", &Buffer, {}}; }
    BufferSource Buffer;
};

class OneVolume final : public Volumes {
public:
    Text First() override { return u".\\"; }
    Text Next() override { return {}; }
    ErrorNumber Space(const Text&, std::int32_t& bytes) override {
        bytes = 1 << 20;
        return NoError;
    }
};

/// Each sleep ends with the next event outside of the program.
class StepPump final : public Pump {
public:
    bool HandlePending() override { return false; }
    void Sleep(int, Wake) override {
        const std::function<void()> step = std::move(Steps.front());
        Steps.pop_front();
        step();
    }
    [[noreturn]] void Leave(const ProgramOver& over) override { throw over; }
    std::deque<std::function<void()>> Steps;
};

class SystemWithoutFiles : public testing::Test {
protected:
    SystemWithoutFiles() {
        Settings.Save(u"Quorin", modQuorin::SettingsSection, u"ComPort", u"Com1");
        Disk.Put(u".\\Quorin\\drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Disk.Put(u".\\Quorin\\qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Disk.Put(u".\\Quorin\\meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                          "Site|1||||||\nMoisture|1||Moisture||||\n");
        Disk.Put(u".\\Quorin\\qrn0001.txt", "Site|Moisture\nNorth|\n");
        Device.StartProgram();
    }
    ~SystemWithoutFiles() override { modQuorin::ResetModules(); }

    void Choose(const Text& command) {
        modQuorin::MenuEvent(command);
        Device.loop.HandleDue();
    }
    /// Receives bytes, then nothing for more than a second.
    void WillReceive(const std::string& bytes) {
        Pump.Steps.push_back([this, bytes] { Sources.Buffer.Bytes += bytes; });
        for (int half = 0; half < 3; ++half)
            Pump.Steps.push_back([this] { Device.loop.Jump(500); });
    }
    void Run() {
        while (!Pump.Steps.empty())
            Device.loop.WaitOnce();
        Device.loop.HandleDue();
    }
    /// Returns the file as another program reads it.
    std::string File(const Text& name) const { return Disk.SavedBytes(u".\\Quorin\\" + name); }

    reference::MemoryDisk Disk;
    reference::MemoryFiles Files{Disk};
    reference::MemoryDatabases Databases{Disk};
    OneVolume Volumes;
    reference::MemorySettings Settings;
    OneSource Sources;
    DeviceSerial Port{Sources};
    SimulatedConnections Connections;
    StepPump Pump;
    NoCommands Nobody;
    SilentWatcher Watcher;
    support::HeadlessShell<BackEnd> Device{DeviceParts{
                                               .system = DeviceSystem(0, u"5.2", u"user", {640, 480}),
                                               .clock = DeviceClock(*MomentFromText("2007-03-05T09:30:00")),
                                               .serial = Port,
                                               .connections = Connections,
                                               .volumes = Volumes,
                                               .files = Files,
                                               .databases = Databases,
                                               .settings = Settings,
                                           },
                                           Pump, Nobody, Watcher};
};

TEST_F(SystemWithoutFiles, ShowsTheFirstScreens) {
    EXPECT_EQ(modQuorin::Screens.CurrentScreen, modQuorin::ScrMain);
    EXPECT_EQ(Device.menuItems[0][0].Caption(), u"Start...");
    Choose(u"Start...");
    EXPECT_EQ(Device.grdMain.Cell(0, 0), u"Meter");
}

TEST_F(SystemWithoutFiles, TakesAReadingAndStoresIt) {
    for (const char16_t* command : {u"Start...", u"Ok", u"Open"})
        Choose(command);
    WillReceive("");
    WillReceive("[BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n");
    WillReceive("[BLob]\r\n[ORIGIN \"QI-1\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n"
                "[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
    Run();
    EXPECT_EQ(Device.grdMain.Cell(1, 1), u"23.4 %");
    modQuorin::GoBack();
    EXPECT_EQ(File(u"qrn0001.txt"), "Site|Moisture\nNorth|23.4 %\n");
}

TEST_F(SystemWithoutFiles, KeepsASetting) {
    modQuorin::SaveSetting(u"ComPort", u"Com3");
    EXPECT_EQ(Settings.Get(u"Quorin", modQuorin::SettingsSection, u"ComPort", u"none"), u"Com3");
}

} // namespace
} // namespace backends
