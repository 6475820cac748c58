// SPDX-License-Identifier: MIT
// What a person can do while the program asks, and which events are still raised.
#include "tests/unit/src/app/sight.h"

namespace modQuorin {
namespace {

// Under a message box.

class UnderABox : public Onlooker {
protected:
    explicit UnderABox(const backends::DeviceOptions& options = {}) : Onlooker(options) {}

    void ExpectDeaf() {
        const Sight before = Look();
        EXPECT_THAT(TryEverything(), Each("a message box is open"));
        EXPECT_TRUE(Look() == before);
    }
    /// Expects that controls do nothing while the next box is open, and the one after it.
    void NextBoxesAreDeaf() {
        Device.WhileABoxIsOpen([this] {
            ExpectDeaf();
            Device.WhileABoxIsOpen([this] { ExpectDeaf(); });
        });
    }
    std::vector<Text> Told() { return Device.Did.Messages(); }
};

class UnderABoxOfType : public UnderABox, public testing::WithParamInterface<std::int32_t> {
protected:
    UnderABoxOfType() : UnderABox(support::OfType(GetParam())) {}
};

TEST_P(UnderABoxOfType, NothingIsTakenAndAllIsAfterIt) {
    NextBoxesAreDeaf();
    MenuEvent(u"nonsense");
    EXPECT_THAT(Told(), ElementsAre(u"MenuEvent: ERROR Menu does not exist: nonsense"));
    EXPECT_EQ(Screen(), ScrMain);
    Tap(0);
    EXPECT_EQ(Screen(), ScrDrivers);
}

INSTANTIATE_TEST_SUITE_P(Types, UnderABoxOfType, testing::Values(0, 1, 2, 3, 5, 6, 7, 9));

TEST_F(UnderABox, BothQuestionsBeforeADriverGoesAreAsDeaf) {
    MenuEvent(u"inf editor...");
    NextBoxesAreDeaf();
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::No);
    Choose(u"Delete");
    EXPECT_THAT(Told(), ElementsAre(u"Delete Driver?", u"Are you sure?"));
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nMeter|meter.txt\n");
}

TEST_F(UnderABox, QuestionBeforeARecordGoesIsAsDeaf) {
    OpenRecords();
    Tap(2, 1);
    NextBoxesAreDeaf();
    Device.WillAnswer(BoxAnswer::No);
    Choose(u"Delete Record");
    EXPECT_THAT(Told(), ElementsAre(u"Delete Record?"));
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na||c\nd||f\n");
}

TEST_F(UnderABox, WordOfAnInstallationIsAsDeaf) {
    Put("new.qvd", "Other|other.txt\nH\n");
    MenuEvent(u"Add Driver...");
    NextBoxesAreDeaf();
    Choose(u"Install...");
    EXPECT_THAT(Told(), ElementsAre(u"Driver installed"));
    EXPECT_EQ(Screen(), ScrAddDriver);
    Choose(u"Back");
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(UnderABox, QuestionAboutAResultIsAsDeaf) {
    OpenRecords();
    Device.Main().SetCell(1, 1, u"old");
    Arrive(Reading);
    NextBoxesAreDeaf();
    Device.WillAnswer(BoxAnswer::No);
    Device.Tick(1000);
    EXPECT_THAT(Told(), ElementsAre(u"Replace: \r\nold\r\nWith:\r\n23.4 %?"));
    EXPECT_EQ(Cell(1, 1), u"old");
}

TEST_F(UnderABox, WordOfTheLinkIsAsDeaf) {
    SaveSetting(u"ComPort", u"SERVER");
    NextBoxesAreDeaf();
    MenuEvent(u"Bluetooth Debug...");
    Device.Tick(500);
    EXPECT_THAT(Told(), ElementsAre(u"RFCOMM Server not running"));
}

TEST_F(UnderABox, TimersAndThePortGoOn) {
    MenuEvent(u"Bluetooth Debug...");
    Device.Tick(500);
    Device.WhileABoxIsOpen([this] { ExpectEventsGoOn(); });
    MenuEvent(u"nonsense");
    EXPECT_EQ(Told().size(), 1U);
}

TEST_F(UnderABox, ResultReachesTheRecord) {
    OpenRecords();
    Device.WhileABoxIsOpen([this] {
        Arrive(Reading);
        Device.Tick(1000);
        EXPECT_EQ(Cell(1, 1), u"23.4 %");
    });
    Device.WillAnswer(BoxAnswer::No);
    Choose(u"Delete Record");
    EXPECT_EQ(Cell(1, 1), u"23.4 %");
}

TEST_F(UnderABox, RepaintThatIsDueIsMadeAndUnlocksTheGrid) {
    MenuEvent(u"Test List");
    Device.WhileABoxIsOpen([this] {
        Repaint();
        EXPECT_FALSE(modPDAUI::Grids.GridLocked);
    });
    MenuEvent(u"nonsense");
    EXPECT_EQ(Screen(), ScrList);
}

// In a prompt that waits.

class InAPrompt : public Onlooker {
protected:
    InAPrompt() {
        MenuEvent(u"File Debug...");
        Device.Main().SetRow(2);
    }
    /// Asks for a port, performs the step while the prompt waits, and cancels the prompt.
    void WhileItWaits(const std::function<void()>& step) {
        Device.WillDo([this, step] {
            Type(u"my port");
            step();
            EXPECT_EQ(Screen(), ScrInput);
            EXPECT_EQ(Field().Contents(), u"my port");
            EXPECT_EQ(Device.Platform.focus.Holder(), &Field());
        });
        Device.WillDo([this] { Choose(u"Back"); });
        const std::vector<Text> main = CellsOf(Device.Main());
        const std::vector<Text> title = CellsOf(Device.Title());
        MenuEvent(u"Enter Custom Serial ID...");
        EXPECT_EQ(Screen(), ScrFileDebug);
        EXPECT_EQ(CellsOf(Device.Main()), main);
        EXPECT_EQ(CellsOf(Device.Title()), title);
        EXPECT_EQ(Device.Main().Row(), 2);
        EXPECT_EQ(GetSetting(u"ComPort", u""), u"Com1");
    }
    backends::headless::HeadlessTextBox& Field() { return Device.Platform.txtInputField; }
};

TEST_F(InAPrompt, GridIsNotThereToBeTapped) {
    WhileItWaits([this] { EXPECT_THAT(TryGrid(), Each("the grid is not visible")); });
}

TEST_F(InAPrompt, MenusOfferBackAndOkAlone) {
    WhileItWaits([this] {
        for (const std::int32_t menu : {1, 2}) {
            EXPECT_EQ(Device.Platform.menuTitles[static_cast<std::size_t>(menu) - 1].Caption(),
                      menu == 1 ? u"Back" : u"Ok");
            for (std::int32_t item = 2; item <= platform::MenuItemCount; ++item)
                EXPECT_EQ(backends::ClickItem(Device.Hand, menu, item), "the item is not visible");
        }
        for (const char16_t* caption : {u"Exit", u"Start...", u"Install...", u"Delete", u"Enter Custom Serial ID..."})
            EXPECT_EQ(backends::Choose(Device.Hand, caption), "no menu offers that");
    });
}

TEST_F(InAPrompt, ClickOnACaptionOnlyOpensItsList) {
    WhileItWaits([this] {
        EXPECT_EQ(backends::ClickTitle(Device.Hand, 1), "");
        EXPECT_EQ(backends::ClickTitle(Device.Hand, 2), "");
    });
}

class KeyInAPrompt : public InAPrompt, public testing::WithParamInterface<std::int32_t> {};

TEST_P(KeyInAPrompt, DoesNothingToWhatLiesBelow) {
    WhileItWaits([this] { Press(GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(Codes, KeyInAPrompt, testing::Values(13, 33, 34, 37, 38, 39, 40, 308, 309, 310));

TEST_F(InAPrompt, TimersAndThePortGoOn) {
    modBluetooth::ArmLink();
    Device.Tick(500);
    WhileItWaits([this] { ExpectEventsGoOn(); });
}

TEST_F(InAPrompt, MessageBoxOverItTakesTheInputOfTheField) {
    WhileItWaits([this] {
        Device.WhileABoxIsOpen([this] { EXPECT_THAT(TryEverything(), Each("a message box is open")); });
        MenuEvent(u"nonsense");
    });
    EXPECT_EQ(Device.Did.Boxes.size(), 1U);
}

} // namespace
} // namespace modQuorin
