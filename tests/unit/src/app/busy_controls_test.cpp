// SPDX-License-Identifier: MIT
// What a person can do while the program works or paints, and which events are still raised.
#include "tests/unit/src/app/sight.h"

namespace modQuorin {
namespace {

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
                Each(testing::AnyOf("the menu is disabled", "the menu is not visible", "no menu offers that")));
    EXPECT_TRUE(Look() == before);
}

TEST_P(WhileBusyOnType, AllIsOnAgainAfterIt) {
    modPDAUI::HideStatus();
    Tap(2);
    EXPECT_EQ(Screen(), ScrList);
    Choose(u"Back");
    EXPECT_EQ(Screen(), ScrPreferences);
}

INSTANTIATE_TEST_SUITE_P(Types, WhileBusyOnType, testing::Values(0, 1, 2, 3, 5, 6, 7, 9));

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
    EXPECT_EQ(backends::Choose(Device.Hand, u"Next Record"), "no menu offers that");
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
    /// Expects that nothing was chosen and the list is still shown.
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
