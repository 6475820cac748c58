// SPDX-License-Identifier: MIT
// The device on which a demonstration begins: what its storage contains, on each kind of device, and that a result is
// received.
#include "apps/demo/demo_data.h"

#include "apps/arrivals/sample_driver.h"
#include "apps/quorin/demo_terminal.h"
#include "backends/input/gestures.h"
#include "src/app/commands.h"
#include "src/drivers/downloads.h"
#include "src/drivers/installation.h"
#include "src/drivers/registry.h"
#include "src/drivers/selection.h"
#include "src/storage/settings.h"
#include "src/view/screen_table.h"
#include "tests/support/running_instrument.h"
#include "tests/support/test_device.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace apps {
namespace {

using backends::DeviceOptions;
using support::TestDevice;
using testing::ElementsAre;

DeviceOptions OfType(std::int32_t type) {
    DeviceOptions options;
    options.DeviceType = type;
    return options;
}

/// Returns the files below a device's root folder, with their contents.
std::map<std::string, std::string> Files(const TestDevice& device) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(device.Folder.Path())) {
        const std::string name = entry.path().lexically_relative(device.Folder.Path()).string();
        if (entry.is_regular_file())
            files[name] = device.Folder.Bytes(name);
    }
    return files;
}

/// Returns the package without its comments and its first line.
std::string SampleInfTable() {
    std::string table;
    for (const std::string_view line : instrument::LinesOf(apps::SampleDriver()))
        table += line.front() == '#' ? "" : std::string(line);
    return table.substr(table.find('\n') + 1);
}

TEST(SampleDriver, IsTheSampleToTheByte) {
    EXPECT_EQ(apps::SampleDriver(), instrument::Sample("climate.qvd"));
}

TEST(PreparedDemo, HoldsTheDriverAnEmptyRegisterAndThePort) {
    TestDevice device;
    device.Platform.StartProgram();
    PrepareDemo();
    const std::map<std::string, std::string> expected = {
        {"Quorin/drivers.txt", "NAME|INFFILE\nClimate Meter|climate.txt\n"},
        {"Quorin/climate.txt", SampleInfTable()},
        {"Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\n"},
        {"settings.ini", "[Settings]\nStorageVolume=.\\\nComPort=Com1\n"}};
    EXPECT_EQ(Files(device), expected);
}

TEST(PreparedDemo, IsWhatAnInstallationLeaves) {
    std::map<std::string, std::string> installed;
    {
        TestDevice device;
        device.Folder.Put("Quorin/climate.qvd", instrument::Sample("climate.qvd"));
        device.Platform.StartProgram();
        modQuorin::Selection.SelectedPackage = u".\\Quorin\\climate.qvd";
        modQuorin::InstallDriver();
        EXPECT_THAT(device.Did.Messages(), ElementsAre(u"Driver installed"));
        installed = Files(device);
    }
    installed.erase("Quorin/climate.qvd");
    TestDevice device;
    device.Platform.StartProgram();
    PrepareDemo();
    auto prepared = Files(device);
    prepared["settings.ini"] = installed["settings.ini"];
    EXPECT_EQ(prepared, installed);
}

TEST(PreparedDemo, IsLeftAsItIsByASecondPreparation) {
    TestDevice device;
    device.Platform.StartProgram();
    PrepareDemo();
    device.Folder.Put("Quorin/climate.txt",
                      "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nMine|1||||||\n");
    device.Folder.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nClimate Meter|qrn0001.txt|20070301|\n");
    device.Folder.Put("Quorin/qrn0001.txt", "Mine\n5\n");
    const auto before = Files(device);
    PrepareDemo();
    EXPECT_EQ(Files(device), before);
}

TEST(PreparedDemo, LeavesOtherDriversAlone) {
    TestDevice device;
    device.Folder.Put("Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    device.Platform.StartProgram();
    PrepareDemo();
    EXPECT_EQ(device.Folder.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\nMeter|meter.txt\n");
    EXPECT_FALSE(device.Folder.Has("Quorin/climate.txt"));
}

TEST(PreparedDemo, LeavesAPortThatWasChosenAlone) {
    TestDevice device;
    device.Platform.StartProgram();
    modQuorin::SaveSetting(u"ComPort", u"OFF");
    PrepareDemo();
    EXPECT_EQ(modQuorin::GetSetting(u"ComPort", u""), u"OFF");
}

// As after an earlier demonstration, or after a driver was deleted: its downloads stay in the register.
TEST(PreparedDemo, HasADriverAgainWhereThereIsNoneInTheTable) {
    TestDevice device;
    device.Folder.Put("Quorin/drivers.txt", "NAME|INFFILE\n");
    device.Folder.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nClimate Meter|qrn0001.txt|20070301|\n");
    device.Platform.StartProgram();
    PrepareDemo();
    EXPECT_EQ(device.Folder.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\nClimate Meter|climate.txt\n");
    EXPECT_EQ(device.Folder.Bytes("Quorin/qrnctrl.txt"),
              "DRIVER|FILE|DATE|ALIAS\nClimate Meter|qrn0001.txt|20070301|\n");
}

TEST(EmptiedDemo, IsPreparedLikeANewOne) {
    TestDevice device;
    device.Platform.StartProgram();
    PrepareDemo();
    const auto fresh = Files(device);
    for (const char16_t* const command : {u"Start...", u"Ok", u"New", u"Open"})
        backends::Choose(device.Hand, command);
    for (int times = 0; times < 9 && modQuorin::Screens.CurrentScreen != modQuorin::ScrMain; ++times)
        modQuorin::MenuEvent(u"Back");
    ASSERT_EQ(modQuorin::Screens.CurrentScreen, modQuorin::ScrMain);
    device.Tick(100);
    device.Folder.Put("Quorin/mine.qvd", "Mine|mine.txt\n");
    EXPECT_GT(Files(device).size(), fresh.size() + 1);
    EXPECT_EQ(EmptyDemo(), u"");
    PrepareDemo();
    auto files = Files(device);
    files["settings.ini"] = fresh.at("settings.ini"); // they stay as they are
    EXPECT_EQ(files, fresh);
    for (const char16_t* const command : {u"Start...", u"Ok", u"New", u"Open"})
        EXPECT_EQ(backends::Choose(device.Hand, command), "") << modStringTools::ToBytes(command);
    EXPECT_EQ(device.Main().Cell(0, 0), u"Site");
}

/// The parameter is the number of writes before the one that fails.
class FullDisk : public testing::TestWithParam<std::int32_t> {};

TEST_P(FullDisk, LeavesNoHalfDriverAndTheNextPreparationAWhole) {
    TestDevice device;
    device.Platform.StartProgram();
    modQuorin::LoadDriverList();
    device.Host.faults.FailNext(1, GetParam());
    bool stopped = false; // by a failure, with a message
    try {
        PrepareDemo();
    } catch (const support::ProgramOver& over) {
        stopped = !over.Failure.empty();
    }
    EXPECT_THAT(device.Did.Unsaved, testing::SizeIs(stopped ? 0 : 1));
    if (device.Folder.Bytes("Quorin/drivers.txt") != "NAME|INFFILE\n") {
        EXPECT_EQ(device.Folder.Bytes("Quorin/climate.txt"), SampleInfTable());
    }
    device.Platform.StartProgram();
    PrepareDemo();
    EXPECT_EQ(device.Folder.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\nClimate Meter|climate.txt\n");
    EXPECT_EQ(device.Folder.Bytes("Quorin/climate.txt"), SampleInfTable());
    EXPECT_EQ(modQuorin::GetSetting(u"ComPort", u""), u"Com1");
}

INSTANTIATE_TEST_SUITE_P(Writings, FullDisk, testing::Range(0, 19));

class EachDevice : public testing::TestWithParam<std::int32_t> {};

TEST_P(EachDevice, OffersTheDriverAndADownloadOfIt) {
    TestDevice device(OfType(GetParam()));
    device.Platform.StartProgram();
    PrepareDemo();
    modQuorin::LoadDriverList();
    EXPECT_THAT(modQuorin::Registry.DriverNames, ElementsAre(u"Climate Meter"));
    EXPECT_EQ(modQuorin::GetSetting(u"ComPort", u""), u"Com1");
    for (const char16_t* const command : {u"Start...", u"Ok", u"New", u"Open"})
        EXPECT_EQ(backends::Choose(device.Hand, command), "") << modStringTools::ToBytes(command);
    EXPECT_EQ(device.Main().Cell(0, 0), u"Site");
    EXPECT_EQ(device.Did.Messages(), std::vector<Text>());
}

INSTANTIATE_TEST_SUITE_P(Types, EachDevice, testing::Values(0, 1, 3, 5, 6, 7, 9));

/// An open record that takes readings, as in a demonstration.
class ShownDemo : public EachDevice {
protected:
    bool Shows(TestDevice& device, const Text& unit) {
        return instrument::Eventually([&] {
            device.Tick(100);
            for (std::int32_t row = 0; row < device.Main().Rows(); ++row) {
                if (device.Main().Cell(row, 1).ends_with(unit))
                    return true;
            }
            return false;
        });
    }
};

TEST_P(ShownDemo, FillsARecordWithResultsThatAreAskedFor) {
    quorin::DemoTerminal line;
    DemoInstrument meter(line);
    DeviceOptions options = OfType(GetParam());
    options.RealClock = true;
    options.Ports.Pinned[DemoPort] = backends::PathAddress(line.Port());
    TestDevice device(options);
    device.Platform.StartProgram();
    PrepareDemo();
    for (const char16_t* const command : {u"Start...", u"Ok", u"New", u"Open"})
        backends::Choose(device.Hand, command);
    EXPECT_TRUE(instrument::Eventually([&] {
        device.Tick(100);
        return line.IsHeard();
    }));
    device.Tick(500); // the port is set up
    meter.SendAll();
    EXPECT_TRUE(Shows(device, u" %"));
    EXPECT_TRUE(Shows(device, u" \u00B0C"));
    EXPECT_TRUE(Shows(device, u" %RH"));
}

INSTANTIATE_TEST_SUITE_P(Types, ShownDemo, testing::Values(0, 1, 9));

} // namespace
} // namespace apps
