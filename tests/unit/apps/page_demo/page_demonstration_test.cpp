// SPDX-License-Identifier: MIT
// The strip of the simulated instrument on a page.
#include "apps/page_demo/page_demonstration.h"

#include "tests/unit/backends/web/page_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace apps {
namespace {

using backends::web::PageDevice;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using Json = journal::Line;

backends::DeviceOptions At(PipeLine& line) {
    backends::DeviceOptions options;
    options.Ports = line.Paths();
    return options;
}

class DemoPage : public testing::Test {
protected:
    void SetUp() override {
        Lesson.Says = [this](const std::string& said) { Strip = Json::parse(said); };
        Lesson.Emptied = [this](const Text& why) { Emptied.push_back(modStringTools::ToBytes(why)); };
        Device.Events->Raised = [this](const backends::web::PageEvent& event) {
            if (!Lesson.Take(event))
                Device.Hand.Do(event);
        };
        Device.Start();
        Step();
    }
    void Step() {
        Lesson.Step();
        Device.Platform.loop.PassTime(200);
    }
    void OpenDownload() {
        for (const char* const command : {"Start...", "Ok", "New", "Open"})
            Device.Choose(command);
        Device.Platform.loop.PassTime(2000);
    }
    void Press(const std::string& act, int item = 0) {
        Device.Send({Json({{"kind", "instrument"}, {"data", act}, {"item", item}}).dump()});
        Step();
        Device.Platform.loop.PassTime(3000);
    }
    Json Button(const std::string& act) const {
        for (const Json& button : Strip["buttons"])
            if (button["act"] == act)
                return button;
        return {};
    }
    std::string Words() const { return Strip["words"]; }

    PipeLine Line;
    PageDevice Device{At(Line)};
    PageDemonstration Lesson{Device.Platform, Line};
    Json Strip;
    std::vector<std::string> Emptied;
};

TEST_F(DemoPage, BeginsWithItsDriverAndItsPort) {
    EXPECT_EQ(Device.Folder.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\nClimate Meter|climate.txt\n");
    EXPECT_EQ(Words(), "Simulated instrument: no record listens");
    std::vector<std::string> captions;
    for (const Json& button : Strip["buttons"])
        captions.push_back(button["words"]);
    EXPECT_THAT(captions, testing::ElementsAre("Moisture", "Temperature", "Humidity", "All", "A stranger's reading",
                                               "Unplug", "every 10 s", "Start afresh"));
    EXPECT_FALSE(Button("kind")["enabled"]);
}

TEST_F(DemoPage, FillsTheRecordByItsButtons) {
    OpenDownload();
    EXPECT_EQ(Words(), "Simulated instrument: it sends what you press");
    EXPECT_TRUE(Button("kind")["enabled"]);
    Press("kind", 1);
    EXPECT_EQ(Words(), "Simulated instrument: Temperature sent");
    EXPECT_THAT(Device.Texts(), Contains(EndsWith(" \u00B0C")));
    Press("kind", 99); // none of its buttons
    EXPECT_EQ(Words(), "Simulated instrument: Temperature sent");
}

TEST_F(DemoPage, FormRefusesAStrangersReading) {
    OpenDownload();
    Press("stranger");
    EXPECT_EQ(Words(), "Simulated instrument: a stranger's reading sent");
    EXPECT_THAT(Device.Texts(), testing::Not(Contains(EndsWith(" %"))));
}

TEST_F(DemoPage, PulledCableTakesTheLinkDownUntilItIsBack) {
    OpenDownload();
    Press("cable");
    EXPECT_EQ(Words(), "Simulated instrument: unplugged");
    EXPECT_EQ(Button("cable")["words"], "Plug in");
    EXPECT_FALSE(Device.Platform.serial.PortOpen());
    Press("cable");
    EXPECT_TRUE(Device.Platform.serial.PortOpen());
    EXPECT_EQ(Words(), "Simulated instrument: it sends what you press");
}

TEST_F(DemoPage, TickSendsAResultEach10Seconds) {
    OpenDownload();
    Press("every");
    EXPECT_TRUE(Button("every")["ticked"]);
    Device.Platform.loop.PassTime(12'000);
    EXPECT_EQ(Words(), "Simulated instrument: a result sent");
    EXPECT_THAT(Device.Texts(), Contains(EndsWith(" %")));
}

TEST_F(DemoPage, StartAfreshIsNotOfferedOverARecord) {
    EXPECT_TRUE(Button("afresh")["enabled"]);
    EXPECT_THAT(std::string(Button("afresh")["asks"]), HasSubstr("will be deleted."));
    Device.Folder.Put("Quorin/mine.txt", "x\n");
    OpenDownload();
    EXPECT_FALSE(Button("afresh")["enabled"]);
    Press("afresh");
    for (const char* const command : {"Close", "Back"})
        Device.Choose(command);
    Step();
    EXPECT_TRUE(Device.Folder.Has("Quorin/mine.txt")) << "nor later: it was not offered";
    EXPECT_TRUE(Emptied.empty());
}

TEST_F(DemoPage, StartAfreshDeletesAllAndPreparesAnew) {
    Device.Folder.Put("Quorin/mine.txt", "x\n");
    Device.Choose("Start...");
    Press("afresh");
    EXPECT_FALSE(Device.Folder.Has("Quorin/mine.txt"));
    EXPECT_EQ(Device.Folder.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\nClimate Meter|climate.txt\n");
    EXPECT_THAT(Emptied, testing::ElementsAre(""));
    OpenDownload(); // from the first screen
}

} // namespace
} // namespace apps
