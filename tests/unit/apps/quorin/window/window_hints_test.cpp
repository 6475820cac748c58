// SPDX-License-Identifier: MIT
#include "apps/quorin/window_hints.h"

#include "companion/words.h"
#include "src/app/commands.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"

namespace quorin {
namespace {

class HintsOfTheWindow : public windowtest::InAWindow {
protected:
    Text Shown() {
        Settle();
        for (const companion::Notice& notice : Device.Platform.onlooker.notices.Standing())
            if (notice.About == companion::AboutHint)
                return notice.Words;
        return u"none";
    }
    void PutDriver() {
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Put("meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nMoisture|1||Moisture||||\n");
    }
    static void Do(const Text& command) { modQuorin::MenuEvent(command); }

    std::string Trouble;
    WindowSettings Remembered{Device.Folder.Path() / "settings.ini"};
    WindowHints Hints{Device.Platform, Remembered, [this] { return Trouble; }};
};

TEST_F(HintsOfTheWindow, FollowAPersonToTheFirstReading) {
    EXPECT_EQ(Shown(), u"No driver is installed yet.");
    PutDriver();
    Do(u"Start...");
    EXPECT_EQ(Shown(), u"No port is chosen: nothing can be received.");
    Do(u"Ok");
    EXPECT_EQ(Shown(), u"No download yet: File, New makes one.");
    Do(u"New");
    EXPECT_EQ(Shown(), u"No port is chosen: nothing can be received.");
    modQuorin::SaveSetting(u"ComPort", u"Com1");
    EXPECT_EQ(Shown(), u"none");
    Do(u"Open");
    Trouble = "Com1 is /dev/ttyUSB0: unplugged";
    EXPECT_EQ(Shown(), u"Com1 is /dev/ttyUSB0: unplugged");
    Trouble.clear();
    EXPECT_EQ(Shown(), u"none");
}

TEST_F(HintsOfTheWindow, WhatWasDoneIsRememberedForTheNextRun) {
    PutDriver();
    Do(u"Start...");
    Shown();
    const WindowSettings later(Device.Folder.Path() / "settings.ini");
    EXPECT_EQ(later.Get("HintsDone"), "driver");
}

TEST_F(HintsOfTheWindow, AreSwitchedOffForTheNextRunsToo) {
    EXPECT_NE(Shown(), u"none");
    Hints.SetOn(false);
    EXPECT_EQ(Shown(), u"none");
    WindowSettings later(Device.Folder.Path() / "settings.ini");
    const WindowHints again(Device.Platform, later, [] { return std::string(); });
    EXPECT_FALSE(again.AreOn());
}

TEST_F(HintsOfTheWindow, LookingForADriverTouchesNoFileAndNoTable) {
    Shown();
    EXPECT_FALSE(std::filesystem::exists(Device.Folder.Path() / "Quorin/drivers.txt"));
    PutDriver();
    OpenRecord();
    Shown();
    EXPECT_EQ(Cell(0, 1), u"a") << "the record's table is the open one";
    Do(u"Next Record");
    EXPECT_EQ(Cell(0, 1), u"a");
}

TEST(SettingsOfTheWindow, ThatCantBeWrittenAreReportedOnce) {
    const support::TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path() / "window.ini");
    WindowSettings settings(folder.Path() / "settings.ini");
    std::vector<std::string> failures;
    settings.Failed = [&failures](const std::string& file, const std::string& why) {
        failures.push_back(file.substr(file.rfind('/') + 1) + ": " + why);
    };
    settings.Save("Hints", "off");
    settings.Save("Hints", "on");
    EXPECT_THAT(failures, testing::ElementsAre(testing::StartsWith("window.ini: ")));
}

} // namespace
} // namespace quorin
