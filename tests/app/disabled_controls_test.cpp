// SPDX-License-Identifier: MIT
// What a person can do while the program asks, waits, works or paints, and what goes on by itself meanwhile.
#include "app/form.h"
#include "link/receive.h"
#include "platform/headless/keyboard.h"
#include "storage/settings.h"
#include "tests/support/program.h"
#include "view/display_state.h"
#include "view/grids.h"
#include "view/status_strip.h"

#include <map>

namespace modQuorin {
namespace {

using modBluetooth::Receive;
using platform::BoxAnswer;
using platform::headless::Refusal;
using testing::Each;
using testing::ElementsAre;

const Text Reading =
    u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
const std::int32_t AllKeys[] = {8, 13, 27, 33, 34, 37, 38, 39, 40, 65, 308, 309, 310};

/// All that a wrong step would change.
struct Sight {
    std::vector<ScreenId> Screens;    ///< the one on show, the one before
    std::vector<std::int32_t> Places; ///< row, column and top row of grdMain
    std::vector<Text> Title, Main;    ///< cells
    std::vector<Text> Hands;          ///< what the technician has in hand
    std::map<std::string, std::string> Files;
    bool operator==(const Sight&) const = default;
};

class Onlooker : public support::Program {
protected:
    explicit Onlooker(const platform::headless::DeviceOptions& options = {}) : Program(options) {
        InstallMeter();
        SaveSetting(u"ComPort", u"Com1");
    }

    static std::vector<Text> CellsOf(platform::OwnerDrawGrid& grid) {
        std::vector<Text> cells;
        for (std::int32_t row = 0; row < grid.Rows(); ++row) {
            for (std::int32_t col = 0; col < grid.Cols(); ++col)
                cells.push_back(grid.Cell(row, col));
        }
        return cells;
    }
    Sight Look() {
        auto& grid = Device.Main();
        Sight sight;
        sight.Screens = {Screens.CurrentScreen, Screens.PreviousScreen};
        sight.Places = {grid.Row(), grid.Col(), grid.TopRow()};
        sight.Title = CellsOf(Device.Title());
        sight.Main = CellsOf(grid);
        sight.Hands = {Selection.SelectedDriver, Selection.SelectedDownload, Selection.SelectedPackage};
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Device.Folder.Path())) {
            const std::string name = entry.path().lexically_relative(Device.Folder.Path()).string();
            sight.Files[name] = entry.is_regular_file() ? Device.Folder.Bytes(name) : "";
        }
        return sight;
    }

    std::vector<Refusal> TryGrid() {
        std::vector<Refusal> refusals;
        for (std::int32_t row = 0; row < Device.Main().Rows(); ++row) {
            for (std::int32_t col = 0; col < Device.Main().Cols(); ++col) {
                refusals.push_back(platform::headless::Tap(Device.Platform, row, col));
                refusals.push_back(platform::headless::Hold(Device.Platform, row, col));
            }
        }
        return refusals;
    }
    std::vector<Refusal> TryMenus() {
        std::vector<Refusal> refusals;
        for (const std::int32_t menu : {1, 2}) {
            refusals.push_back(platform::headless::ClickTitle(Device.Platform, menu));
            for (std::int32_t item = 1; item <= platform::MenuItemCount; ++item)
                refusals.push_back(platform::headless::ClickItem(Device.Platform, menu, item));
        }
        for (const char16_t* caption : {u"Back", u"Ok", u"Exit", u"Close", u"Delete", u"Next Record", u"Install..."})
            refusals.push_back(platform::headless::Choose(Device.Platform, caption));
        return refusals;
    }
    std::vector<Refusal> TryEverything() {
        std::vector<Refusal> refusals = TryGrid();
        for (const Refusal& refusal : TryMenus())
            refusals.push_back(refusal);
        for (const std::int32_t key : AllKeys)
            refusals.push_back(platform::headless::PressKey(Device.Platform, key));
        for (const std::int32_t key : {264, 266, 267, 276, 516, 517, 518, 519, 520, 1280})
            refusals.push_back(platform::headless::PressKey(Device.Platform, key));
        refusals.push_back(platform::headless::TypeText(Device.Platform, u"typed"));
        refusals.push_back(platform::headless::SetInput(Device.Platform, u"set"));
        refusals.push_back(platform::headless::PickDate(Device.Platform, {2007, 3, 5}));
        refusals.push_back(platform::headless::CloseForm(Device.Platform));
        return refusals;
    }

    static std::int32_t Down(std::int32_t key) {
        frmQuorin::Form_KeyDown(key, 0);
        return key;
    }
    static std::int32_t Up(std::int32_t key) {
        frmQuorin::Form_KeyUp(key, 0);
        return key;
    }

    void Press(std::int32_t key) { EXPECT_EQ(platform::headless::PressKey(Device.Platform, key), ""); }

    void Arrive(const Text& text) {
        Device.Platform.serial.Arrive(text);
        Settle();
    }
    /// Timers and the serial port do what they do; the link is open.
    void ExpectEventsGoOn() {
        const std::int64_t before = frmQuorin::Form.lastTimerEvent;
        Device.Tick(2000);
        EXPECT_EQ(frmQuorin::Form.lastTimerEvent, before + 2);
        Arrive(u"a line\r\nrest");
        EXPECT_EQ(Receive.ReadyText, u"a line\r\n");
        EXPECT_EQ(Receive.RxText, u"rest");
    }
    void OpenRecords() {
        OpenDownload("Place|Moisture|Remark\na||c\nd||f\n");
        Device.Tick(500);
    }
};

// Under a message box.

class UnderABox : public Onlooker {
protected:
    explicit UnderABox(const platform::headless::DeviceOptions& options = {}) : Onlooker(options) {}

    void ExpectDeaf() {
        const Sight before = Look();
        EXPECT_THAT(TryEverything(), Each("a message box is open"));
        EXPECT_TRUE(Look() == before);
    }
    /// The next box is deaf; the one after it too.
    void NextBoxesAreDeaf() {
        Device.WhileABoxStands([this] {
            ExpectDeaf();
            Device.WhileABoxStands([this] { ExpectDeaf(); });
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

INSTANTIATE_TEST_SUITE_P(Types, UnderABoxOfType, testing::Values(0, 1, 3, 5, 6, 7, 9));

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
    Device.WhileABoxStands([this] { ExpectEventsGoOn(); });
    MenuEvent(u"nonsense");
    EXPECT_EQ(Told().size(), 1U);
}

TEST_F(UnderABox, ResultReachesTheRecord) {
    OpenRecords();
    Device.WhileABoxStands([this] {
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
    Device.WhileABoxStands([this] {
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
    /// Asks for a port, does this while the prompt waits, and cancels it.
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
    platform::headless::HeadlessTextBox& Field() { return Device.Platform.txtInputField; }
};

TEST_F(InAPrompt, GridIsNotThereToBeTapped) {
    WhileItWaits([this] { EXPECT_THAT(TryGrid(), Each("the grid is not on show")); });
}

TEST_F(InAPrompt, MenusOfferBackAndOkAlone) {
    WhileItWaits([this] {
        for (const std::int32_t menu : {1, 2}) {
            EXPECT_EQ(Device.Platform.menuTitles[static_cast<std::size_t>(menu) - 1].Caption(),
                      menu == 1 ? u"Back" : u"Ok");
            for (std::int32_t item = 2; item <= platform::MenuItemCount; ++item)
                EXPECT_EQ(platform::headless::ClickItem(Device.Platform, menu, item), "the item is not on show");
        }
        for (const char16_t* caption : {u"Exit", u"Start...", u"Install...", u"Delete", u"Enter Custom Serial ID..."})
            EXPECT_EQ(platform::headless::Choose(Device.Platform, caption), "no menu offers that");
    });
}

TEST_F(InAPrompt, ClickOnACaptionOnlyOpensItsList) {
    WhileItWaits([this] {
        EXPECT_EQ(platform::headless::ClickTitle(Device.Platform, 1), "");
        EXPECT_EQ(platform::headless::ClickTitle(Device.Platform, 2), "");
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
        Device.WhileABoxStands([this] { EXPECT_THAT(TryEverything(), Each("a message box is open")); });
        MenuEvent(u"nonsense");
    });
    EXPECT_EQ(Device.Did.Boxes.size(), 1U);
}

// While the strip is shown.

class WhileBusy : public Onlooker {
protected:
    WhileBusy() {
        OpenRecords();
        modPDAUI::ShowStatus(u"Working");
    }
    bool MenusOff() { return !Device.Platform.menuTitles[0].Enabled() && !Device.Platform.menuTitles[1].Enabled(); }
};

class WhileBusyOnType : public Onlooker, public testing::WithParamInterface<std::int32_t> {
protected:
    WhileBusyOnType() : Onlooker(support::OfType(GetParam())) {
        MenuEvent(u"Preferences...");
        Repaint();
        modPDAUI::ShowStatus(u"Working");
    }
};

TEST_P(WhileBusyOnType, GridAndMenusAreOff) {
    const Sight before = Look();
    EXPECT_THAT(TryGrid(), Each("the grid is disabled"));
    EXPECT_THAT(TryMenus(),
                Each(testing::AnyOf("the menu is disabled", "the menu is not on show", "no menu offers that")));
    EXPECT_TRUE(Look() == before);
}

TEST_P(WhileBusyOnType, AllIsOnAgainAfterIt) {
    modPDAUI::HideStatus();
    Tap(2);
    EXPECT_EQ(Screen(), ScrList);
    Choose(u"Back");
    EXPECT_EQ(Screen(), ScrPreferences);
}

INSTANTIATE_TEST_SUITE_P(Types, WhileBusyOnType, testing::Values(0, 1, 3, 5, 6, 7, 9));

TEST_F(WhileBusy, RecordIsOutOfReach) {
    TryGrid();
    TryMenus();
    EXPECT_FALSE(Device.Platform.txtInputField.Visible());
    EXPECT_EQ(TitleCell(1), u"1/2");
}

class KeyWhileBusy : public WhileBusy, public testing::WithParamInterface<std::int32_t> {};

TEST_P(KeyWhileBusy, DoesNothingOnTheWayDown) {
    const Sight before = Look();
    EXPECT_EQ(Down(GetParam()), GetParam());
    Device.Tick(1500);
    EXPECT_TRUE(Look() == before);
    EXPECT_FALSE(Device.Main().Enabled());
    EXPECT_TRUE(MenusOff());
}

TEST_P(KeyWhileBusy, OnlyEnablesTheGridOnTheWayUp) {
    const Sight before = Look();
    EXPECT_EQ(Up(GetParam()), GetParam());
    EXPECT_TRUE(Look() == before);
    EXPECT_TRUE(Device.Main().Enabled());
    EXPECT_FALSE(Device.Title().Enabled());
    EXPECT_TRUE(MenusOff());
}

TEST_P(KeyWhileBusy, PressedAndLetGoMovesNothing) {
    const Sight before = Look();
    Press(GetParam());
    EXPECT_TRUE(Look() == before);
}

INSTANTIATE_TEST_SUITE_P(Codes, KeyWhileBusy, testing::ValuesIn(AllKeys));

TEST_F(WhileBusy, TimersAndThePortGoOn) {
    ExpectEventsGoOn();
    EXPECT_FALSE(Device.Main().Enabled());
}

TEST_F(WhileBusy, RepaintThatIsDueLeavesTheControlsOff) {
    modPDAUI::RepaintGrids(false);
    Repaint();
    EXPECT_FALSE(Device.Main().Enabled());
    EXPECT_TRUE(Device.Main().Visible());
    EXPECT_TRUE(MenusOff());
}

TEST_F(WhileBusy, ResultReachesTheRecordAndEndsTheStrip) {
    Arrive(Reading);
    Device.Tick(1000);
    EXPECT_EQ(Cell(1, 1), u"23.4 %");
    EXPECT_TRUE(Device.Main().Enabled());
    EXPECT_FALSE(MenusOff());
}

TEST_F(WhileBusy, ControlThatIsOffByItselfLeavesTheOthers) {
    modPDAUI::HideStatus();
    Device.Platform.menuTitles[0].SetEnabled(false);
    EXPECT_EQ(platform::headless::Choose(Device.Platform, u"Next Record"), "no menu offers that");
    Choose(u"New Record");
    EXPECT_EQ(TitleCell(1), u"3/3");
    Tap(0, 1);
    EXPECT_TRUE(Device.Platform.txtInputField.Visible());
}

// A grid that is locked until it is painted.

class LockedGrid : public Onlooker {
protected:
    LockedGrid() {
        MenuEvent(u"Preferences...");
        MenuEvent(u"Test List");
    }
    /// Nothing was chosen, and the list is still on show.
    void ExpectNothingChosen() {
        EXPECT_TRUE(modPDAUI::Grids.GridLocked);
        EXPECT_EQ(Screen(), ScrList);
        EXPECT_EQ(GetSetting(u"DummyTest", u"(none)"), u"(none)");
    }
};

TEST_F(LockedGrid, TapChoosesNothing) {
    for (std::int32_t row = 0; row < Device.Main().Rows(); ++row)
        Tap(row);
    ExpectNothingChosen();
}

class KeyOnALockedGrid : public LockedGrid, public testing::WithParamInterface<std::int32_t> {};

TEST_P(KeyOnALockedGrid, ChoosesNothing) {
    Device.Main().SetRow(4);
    Press(GetParam());
    ExpectNothingChosen();
}

INSTANTIATE_TEST_SUITE_P(Codes, KeyOnALockedGrid, testing::Values(8, 13, 33, 34, 37, 38, 39, 40, 65, 308, 309, 310));

TEST_F(LockedGrid, MenusAreNot) {
    Choose(u"Back");
    EXPECT_EQ(Screen(), ScrPreferences);
}

TEST_F(LockedGrid, EscapeGoesBack) {
    Press(27);
    EXPECT_EQ(Screen(), ScrPreferences);
}

TEST_F(LockedGrid, IsUnlockedByTheTimerAndThenChooses) {
    Device.Tick(99);
    ExpectNothingChosen();
    Device.Tick(1);
    Tap(4);
    EXPECT_EQ(GetSetting(u"DummyTest", u"(none)"), u"This is list item number 5 and is long");
    EXPECT_EQ(Screen(), ScrPreferences);
}

TEST_F(LockedGrid, TimersAndThePortGoOn) {
    modBluetooth::ArmLink();
    Device.Tick(500);
    MenuEvent(u"Test List");
    ASSERT_TRUE(modPDAUI::Grids.GridLocked);
    ExpectEventsGoOn();
}

TEST_F(LockedGrid, OfARecordOpensNoField) {
    OpenRecords();
    modPDAUI::Grids.GridLocked = true;
    Tap(0, 1);
    EXPECT_FALSE(Device.Platform.txtInputField.Visible());
}

TEST_F(LockedGrid, OfTheMainScreenStartsNothing) {
    GotoScreen(ScrMain);
    Tap(0);
    EXPECT_EQ(Screen(), ScrMain);
    Press(310);
    EXPECT_EQ(Screen(), ScrMain);
}

} // namespace
} // namespace modQuorin
