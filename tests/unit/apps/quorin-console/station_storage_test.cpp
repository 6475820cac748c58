// SPDX-License-Identifier: MIT
// A station whose disk is nearly full, and one whose line database another program keeps locked.
#include "apps/quorin-console/station.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "tests/support/other_tool.h"
#include "tests/support/program.h"

#include <sstream>

namespace console {
namespace {

using testing::HasSubstr;
using testing::Not;

class DiskOfAStation : public support::Program {
protected:
    DiskOfAStation() {
        InstallMeter();
        Device.Host.settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com1");
        Collector.Space.Find = [this](const std::string& folder) {
            EXPECT_EQ(folder, "/data");
            return Free;
        };
        Collector.Begin();
        Device.Tick(1000);
    }

    std::ostringstream Told;
    Writer Out{Told};
    backends::Ending Ending{Device.Platform};
    std::optional<std::uintmax_t> Free = Station::LeastSpace;
    Station Collector{{.Root = "/data", .Driver = u"Meter"}, Device.Platform, Ending, Out};
};

TEST_F(DiskOfAStation, StopsItBeforeItIsFull) {
    EXPECT_FALSE(Ending.Begun());
    Free = Station::LeastSpace - 1;
    Device.Tick(11000);
    EXPECT_TRUE(Ending.Begun());
    EXPECT_EQ(Collector.Status(), start::ExitStatus::CantStore);
    EXPECT_THAT(Told.str(), HasSubstr("\"stopped\",\"text\":\"the disk of /data is full: less than 5 MB are free\""));
}

TEST_F(DiskOfAStation, OfUnknownSizeDoesNotStopIt) {
    Free.reset();
    Device.Tick(30000);
    EXPECT_FALSE(Ending.Begun());
    EXPECT_THAT(Told.str(), Not(HasSubstr("stopped")));
}

class LockedStation : public support::Program {
protected:
    LockedStation() : Program(support::OfType(1)) {
        Make(u"drivers.txt", {u"NAME|INFFILE", u"Meter|meter.txt"});
        Make(u"qrnctrl.txt", {u"DRIVER|FILE|DATE|ALIAS", u"Meter|qrn0001.txt|20070301|"});
        Make(u"meter.txt",
             {u"FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA", u"Moisture|1||Moisture||||"});
        Make(u"qrn0001.txt", {u"Moisture", u""});
        Device.Host.settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com1");
        Device.Host.hostDatabases.Patience.Longest = std::chrono::milliseconds(60);
        Collector.Begin();
        Device.Tick(1000);
        Tool.Open(Device.Folder.Path() / "Databases/qrn0001.sqlite");
    }
    static void Make(const Text& name, const std::vector<Text>& lines) {
        EXPECT_EQ(modFileSystem::PutLines(modFileSystem::GetDataPath(u"") + name, modQuorin::DataType,
                                          modQuorin::DataCreator, lines),
                  platform::NoError);
    }
    void Receive(const Text& value) {
        Device.Platform.serial.Arrive(u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"" + value +
                                      u"\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
        Device.Tick(1500);
    }
    std::vector<std::string> Lines() { return Tool.Do("SELECT LineData FROM TEXT ORDER BY LineNumber"); }

    support::OtherTool Tool;
    std::ostringstream Told;
    Writer Out{Told};
    backends::Ending Ending{Device.Platform};
    Station Collector{{.Root = "/", .Driver = u"Meter"}, Device.Platform, Ending, Out};
};

TEST_F(LockedStation, SavesLaterWhatItCouldNotSave) {
    Tool.Lock();
    Receive(u"1");
    Tool.LetGo();
    EXPECT_THAT(Lines(), testing::ElementsAre("Moisture", ""));
    Device.Tick(11000);
    EXPECT_THAT(Lines(), testing::ElementsAre("Moisture", "1 %"));
    EXPECT_FALSE(Ending.Begun());
}

TEST_F(LockedStation, GoesOnWithTheNextBurstOnceTheLockIsGone) {
    Tool.Lock();
    Receive(u"1");
    Tool.LetGo();
    Receive(u"2"); // sooner than the next attempt to save
    EXPECT_THAT(Lines(), testing::ElementsAre("Moisture", "1 %", "2 %"));
    EXPECT_FALSE(Ending.Begun()) << Told.str();
}

} // namespace
} // namespace console
