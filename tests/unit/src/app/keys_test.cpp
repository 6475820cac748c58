// SPDX-License-Identifier: MIT
#include "src/app/keys.h"

#include "src/app/lists.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/input_fields.h"
#include "src/view/prompt.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t Swallowed = 0;

class Keys : public support::Program {
protected:
    explicit Keys(const backends::DeviceOptions& options = {}) : Program(options) {}

    /// Returns what is left of the key code.
    std::int32_t Down(std::int32_t key) {
        frmQuorin::Form_KeyDown(key, 0);
        return key;
    }
    std::int32_t Up(std::int32_t key) {
        frmQuorin::Form_KeyUp(key, 0);
        return key;
    }
    /// A download of three records with three fields each.
    void OpenRecords() {
        InstallMeter();
        OpenDownload("Place|Moisture|Remark\na|b|c\nd|e|f\ng|h|i\n");
        Repaint();
    }
    void Edit(std::int32_t row, const Text& text) {
        Tap(row, 1);
        Type(text);
    }
    bool Held() { return Device.Platform.tmrHoldEvent.Enabled(); }
    bool Editing() { return Device.Platform.txtInputField.Visible(); }
    Text Position() { return TitleCell(1); }
};

TEST_F(Keys, SpaceOfAKeyboardSelectsOnAGridUnlessAFieldIsOpen) {
    OpenRecords();
    EXPECT_EQ(KeyForGrid(32), 310);
    EXPECT_EQ(KeyForGrid(13), 13);
    Tap(0, 1);
    ASSERT_TRUE(Editing());
    EXPECT_EQ(KeyForGrid(32), 32);
}

class KeysOfType : public Keys, public testing::WithParamInterface<std::int32_t> {
protected:
    KeysOfType() : Keys(support::OfType(GetParam())) {}
};

INSTANTIATE_TEST_SUITE_P(Types, KeysOfType, testing::Values(0, 1, 2, 3, 5, 6, 7, 9));

TEST_P(KeysOfType, EnterAnswersAPromptOnADesktopAlone) {
    Screens.CurrentScreen = ScrInput;
    EXPECT_EQ(EnterAnswersPrompt(), GetParam() == 0);
}

TEST_P(KeysOfType, EnterStartsAPressButOnAPalm) {
    Down(13);
    EXPECT_EQ(Held(), GetParam() != 1);
    Up(13);
    EXPECT_FALSE(Held());
}

TEST_P(KeysOfType, EnterUpEndsAPressButOnAPalm) {
    Device.Platform.tmrHoldEvent.SetEnabled(true);
    EXPECT_EQ(Up(13), 13);
    EXPECT_EQ(Held(), GetParam() == 1);
}

TEST_P(KeysOfType, EscapeGoesBack) {
    GotoScreen(ScrDrivers);
    EXPECT_EQ(Up(27), Swallowed);
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_P(KeysOfType, EscapeLeavesAPromptButOnTypeSevenWhereItDeletes) {
    GotoScreen(ScrFileDebug);
    Text value;
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Line, value, u"", false, false);
    const std::int32_t left = Up(27);
    if (GetParam() == 7) {
        EXPECT_EQ(Screen(), ScrInput);
        EXPECT_EQ(left, 27);
        EXPECT_THAT(Device.Did.Sent, ElementsAre(8));
    } else {
        EXPECT_EQ(Screen(), ScrFileDebug);
        EXPECT_EQ(left, Swallowed);
        EXPECT_THAT(Device.Did.Sent, IsEmpty());
    }
}

TEST_P(KeysOfType, PageKeysMoveTheRowButOnAPalmTheyFollowThePage) {
    GotoScreen(ScrFileDebug);
    Device.Main().SetRow(1);
    Device.Main().SetTopRow(3);
    if (GetParam() == 1) {
        EXPECT_EQ(Up(34), 34);
        EXPECT_EQ(Device.Main().Row(), 3);
        return;
    }
    EXPECT_EQ(Up(34), Swallowed);
    EXPECT_EQ(Device.Main().Row(), 2);
    EXPECT_EQ(Up(33), Swallowed);
    EXPECT_EQ(Up(33), Swallowed);
    EXPECT_EQ(Up(33), Swallowed);
    EXPECT_EQ(Device.Main().Row(), 0);
}

class PalmKeys : public Keys {
protected:
    PalmKeys() : Keys(support::OfType(1)) {}
};

TEST_F(PalmKeys, PageKeysHideTheFields) {
    Device.Platform.txtInputField.SetVisible(true);
    Device.Platform.cboInputField.SetVisible(true);
    Up(33);
    EXPECT_FALSE(Editing());
    EXPECT_FALSE(Device.Platform.cboInputField.Visible());
}

/// Only on a Palm OS device can anything but the end of a prompt hide its field.
TEST_F(PalmKeys, PageKeysHideTheFieldOfAPromptToo) {
    Text value = u"a";
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Line, value, u"", false, false);
    ASSERT_TRUE(Editing());
    Up(34);
    EXPECT_FALSE(Editing());
    EXPECT_EQ(Screen(), ScrInput);
}

TEST_F(Keys, EnterClosesTheOpenFieldWithItsValue) {
    OpenRecords();
    Edit(0, u"Hall");
    EXPECT_EQ(Down(13), Swallowed);
    EXPECT_FALSE(Held());
    EXPECT_FALSE(Editing());
    EXPECT_EQ(Cell(0, 1), u"Hall");
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
}

TEST_F(Keys, EnterDuringAPressLeavesTheField) {
    OpenRecords();
    Edit(0, u"Hall");
    Device.Platform.tmrHoldEvent.SetEnabled(true);
    EXPECT_EQ(Down(13), 13);
    EXPECT_TRUE(Editing());
}

TEST_F(Keys, EnterTakesTheDateOnShow) {
    InstallMeter("Day|1|||||date|\n");
    OpenDownload("Day\n05/03/2007\n");
    Tap(0, 1);
    Device.Platform.dteInputField.SetDate({2009, 1, 2});
    EXPECT_EQ(Down(13), Swallowed);
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(Cell(0, 1), u"02/01/2009");
}

class KeyForThePlatform : public Keys, public testing::WithParamInterface<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(Codes, KeyForThePlatform, testing::Values(276, 520, 264, 516, 517, 518, 519, 266, 267, 1280));

TEST_P(KeyForThePlatform, IsGivenBackSentOnAndTakenAgain) {
    GotoScreen(ScrDrivers);
    EXPECT_EQ(Down(GetParam()), GetParam());
    const std::string code = std::to_string(GetParam());
    EXPECT_THAT(Device.Did.KeyOrder, ElementsAre("release " + code, "send " + code, "grab " + code));
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_P(KeyForThePlatform, IsSentOnlyOnceTheRecordIsSavedOrTheLinkIsDown) {
    SaveSetting(u"ComPort", u"Com1");
    OpenRecords();
    Device.Tick(500);
    ASSERT_TRUE(modBluetooth::Ports.LinkOpen);
    Edit(0, u"Hall");
    ScreenId screenThen = 0;
    bool portThen = true;
    std::string fileThen;
    Device.Did.WhenACharacterIsSent = [&] {
        screenThen = Screen();
        portThen = Device.Platform.serial.PortOpen();
        fileThen = File("qrn0001.txt");
    };
    Down(GetParam());
    const bool linkKey = GetParam() == 276 || GetParam() == 520;
    EXPECT_EQ(screenThen, ScrDownloads);
    EXPECT_EQ(portThen, !linkKey);
    EXPECT_EQ(fileThen, "Place|Moisture|Remark\nHall|b|c\nd|e|f\ng|h|i\n");
}

/// The events that the platform raises for the key are handled before the form grabs the key again.
TEST_P(KeyForThePlatform, LetsWhatIsPendingComeBeforeItIsTakenAgain) {
    GotoScreen(ScrPreferences);
    Device.Did.WhenACharacterIsSent = [this] {
        modPDAUI::RepaintGrids(false);
        Device.Platform.loop.Jump(1000);
    };
    Down(GetParam());
    EXPECT_FALSE(modPDAUI::Grids.RepaintPending);
}

TEST_P(KeyForThePlatform, SavesAnOpenRecordUnlessItIsAKeyOfTheLink) {
    OpenRecords();
    Edit(0, u"Hall");
    Down(GetParam());
    const bool linkKey = GetParam() == 276 || GetParam() == 520;
    EXPECT_EQ(Screen(), linkKey ? ScrInfRecord : ScrDownloads);
    EXPECT_EQ(File("qrn0001.txt").find("Hall") != std::string::npos, !linkKey);
}

TEST_P(KeyForThePlatform, TakesAnOpenLinkDownIfItIsAKeyOfTheLink) {
    SaveSetting(u"ComPort", u"Com1");
    GotoScreen(ScrBluetoothDebug);
    Device.Tick(500);
    ASSERT_TRUE(Device.Platform.serial.PortOpen());
    const bool linkKey = GetParam() == 276 || GetParam() == 520;
    Down(GetParam());
    EXPECT_EQ(Device.Platform.serial.PortOpen(), !linkKey);
    EXPECT_EQ(Screen(), linkKey ? ScrMain : ScrBluetoothDebug);
}

TEST_F(Keys, OthersAndArrowsDoNothingOnTheWayDown) {
    OpenRecords();
    for (const std::int32_t key : {37, 38, 39, 40, 65, 8, 27, 33, 34, 310}) {
        EXPECT_EQ(Down(key), key);
        EXPECT_EQ(Position(), u"1/3");
    }
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_THAT(Device.Did.Sent, IsEmpty());
}

TEST_F(Keys, OthersDoNothingOnTheWayUp) {
    OpenRecords();
    for (const std::int32_t key : {8, 65, 276})
        EXPECT_EQ(Up(key), key);
    EXPECT_EQ(Screen(), ScrInfRecord);
}

TEST_F(Keys, KeyThatClosedSomethingOnlyEnablesTheGrid) {
    GotoScreen(ScrDrivers);
    Device.Main().SetEnabled(false);
    EXPECT_EQ(Up(27), 27);
    EXPECT_TRUE(Device.Main().Enabled());
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
    EXPECT_EQ(Screen(), ScrDrivers);
    Up(27);
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(Keys, RightAndLeftWalkTheRecords) {
    OpenRecords();
    for (const std::int32_t right : {39, 309})
        Up(right);
    EXPECT_EQ(Position(), u"3/3");
    for (const std::int32_t left : {37, 308}) {
        Device.Main().SetCol(0);
        Up(left);
        EXPECT_EQ(Device.Main().Col(), 1);
    }
    EXPECT_EQ(Position(), u"1/3");
}

TEST_F(Keys, RightAndLeftMoveTheCaretOfAnOpenField) {
    OpenRecords();
    Edit(0, u"Hall");
    Up(39);
    EXPECT_EQ(Position(), u"1/3");
    EXPECT_TRUE(Editing());
}

TEST_F(Keys, RightAndLeftDoNothingOffARecord) {
    OpenRecords();
    GotoScreen(ScrPreferences);
    for (const std::int32_t key : {37, 39, 308, 309})
        EXPECT_EQ(Up(key), key);
    EXPECT_EQ(Screen(), ScrPreferences);
}

/// A table is open there, but its cells are not a record.
TEST_F(Keys, RightAndLeftDoNothingOnTheColumns) {
    InstallMeter();
    MenuEvent(u"inf editor...");
    MenuEvent(u"Show/Hide Columns...");
    ASSERT_EQ(Screen(), ScrColumns);
    const std::string before = File("meter.txt");
    const Text title = TitleCell(1);
    Device.Main().SetRow(1);
    Device.Main().SetCol(0);
    modFileSystem::Table.RecordDirty = true;
    for (const std::int32_t key : {37, 39, 308, 309}) {
        EXPECT_EQ(Up(key), key);
        EXPECT_EQ(Device.Main().Row(), 1);
        EXPECT_EQ(Device.Main().Col(), 0);
        EXPECT_EQ(TitleCell(1), title);
        EXPECT_THAT(Column(0), ElementsAre(u"Place", u"Moisture", u"Remark"));
    }
    EXPECT_EQ(File("meter.txt"), before);
}

TEST_F(Keys, DownAndUpStoreTheOpenFieldAndMoveOn) {
    OpenRecords();
    Edit(1, u"one");
    Up(40);
    EXPECT_EQ(Cell(1, 1), u"one");
    EXPECT_FALSE(Editing());
    EXPECT_EQ(Device.Main().Row(), 2);
    Edit(2, u"two");
    Up(38);
    EXPECT_EQ(Cell(2, 1), u"two");
    EXPECT_EQ(Device.Main().Row(), 1);
}

TEST_F(Keys, DownOnTheLastRowStoresTheFieldAndStays) {
    OpenRecords();
    Edit(2, u"last");
    Up(40);
    EXPECT_EQ(Cell(2, 1), u"last");
    EXPECT_FALSE(Editing());
    EXPECT_EQ(Device.Main().Row(), 2);
}

TEST_F(Keys, UpOnTheFirstRowStoresTheFieldAndStays) {
    OpenRecords();
    Edit(0, u"first");
    Up(38);
    EXPECT_EQ(Cell(0, 1), u"first");
    EXPECT_EQ(Device.Main().Row(), 0);
}

TEST_F(Keys, DownAndUpMoveNoRowWhereNoFieldHasTheFocus) {
    OpenRecords();
    Up(40);
    EXPECT_EQ(Device.Main().Row(), 0);
    GotoScreen(ScrPreferences);
    Up(40);
    EXPECT_EQ(Device.Main().Row(), 0);
}

TEST_F(Keys, DownAndUpDoNothingInAPrompt) {
    GotoScreen(ScrFileDebug);
    Text value = u"kept";
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Line, value, u"", false, false);
    Up(40);
    EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"kept");
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.txtInputField);
}

TEST_F(Keys, SelectOnAListGoesBackAfterTheChoiceWasStored) {
    MenuEvent(u"Preferences...");
    MenuEvent(u"Bluetooth Serial Setup...");
    Device.Main().SetRow(2);
    Up(310);
    EXPECT_EQ(Screen(), ScrPreferences);
    EXPECT_EQ(GetSetting(u"ComPort", u""), u"Com2");
}

TEST_F(Keys, SelectStartsFromTheMainScreen) {
    Up(310);
    EXPECT_EQ(Screen(), ScrDrivers);
}

/// A hold menu over the items of the first soft menu, with the focus, as a screen would show it.
class HoldMenu : public Keys {
protected:
    HoldMenu() {
        auto& list = List();
        for (const char16_t* item : {u"Start...", u"Exit", u"Other"})
            list.AddItem(item);
        list.SetTag(u"1");
        list.SetListIndex(0);
        list.SetVisible(true);
        list.SetFocus();
    }
    backends::headless::HeadlessListBox& List() { return Device.Platform.lstHoldMenu; }
};

TEST_F(HoldMenu, ChoiceRunsTheItemOfTheSoftMenu) {
    frmQuorin::lstHoldMenu_Click();
    EXPECT_EQ(Screen(), ScrDrivers);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
    EXPECT_FALSE(List().Visible());
    EXPECT_EQ(List().ItemCount(), 0);
    EXPECT_EQ(List().Tag(), u"");
}

TEST_F(HoldMenu, ChoiceOfNoMenuIsTold) {
    List().SetTag(u"");
    frmQuorin::lstHoldMenu_Click();
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"HandleHoldMenuClick: ERROR Menu 'START...' does not exist."));
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(HoldMenu, IsEmptiedWhenTheFocusGoes) {
    Device.Main().SetFocus();
    EXPECT_FALSE(List().Visible());
    EXPECT_EQ(List().ItemCount(), 0);
    EXPECT_EQ(List().Tag(), u"");
}

TEST_F(HoldMenu, PageKeysMoveItsHighlightRound) {
    Up(34);
    EXPECT_EQ(List().ListIndex(), 1);
    Up(33);
    Up(33);
    EXPECT_EQ(List().ListIndex(), 2);
    Up(34);
    EXPECT_EQ(List().ListIndex(), 0);
}

TEST_F(HoldMenu, PageUpFromNoRowGoesToTheLast) {
    List().SetListIndex(-1);
    Up(33);
    EXPECT_EQ(List().ListIndex(), List().ItemCount() - 1);
    List().SetListIndex(-1);
    Up(34);
    EXPECT_EQ(List().ListIndex(), 0);
}

std::vector<std::int32_t> Arrows;   ///< the arrow keys that were passed to a screen
std::vector<std::string> LongPress; ///< the long presses, likewise

class ScreenThatReacts : public Keys {
protected:
    ScreenThatReacts() {
        Arrows.clear();
        LongPress.clear();
        OpenRecords();
        auto& behaviour = ScreenRow(ScrInfRecord).Behaviour;
        behaviour.ArrowKey = [](std::int32_t key) { Arrows.push_back(key); };
        behaviour.Held = [](std::int32_t row, std::int32_t col) {
            LongPress.push_back(std::to_string(row) + " " + std::to_string(col));
        };
    }
};

TEST_F(ScreenThatReacts, IsToldOfArrowsGoingDownAndRowKeysGoingUp) {
    for (const std::int32_t key : {37, 38, 39, 40})
        Down(key);
    EXPECT_THAT(Arrows, ElementsAre(37, 38, 39, 40));
    Up(38);
    Up(40);
    EXPECT_THAT(Arrows, ElementsAre(37, 38, 39, 40, 38, 40));
}

TEST_F(ScreenThatReacts, IsToldOfNoArrowWhileAFieldIsOpen) {
    Edit(1, u"x");
    for (const std::int32_t key : {37, 38, 39, 40})
        Down(key);
    Up(40);
    EXPECT_THAT(Arrows, IsEmpty());
}

/// The page keys of a Palm OS device hide the field, and the prompt stays open.
TEST_F(PalmKeys, DownAndUpTellAPromptNothingAlsoWithoutItsField) {
    Arrows.clear();
    ScreenRow(ScrInput).Behaviour.ArrowKey = [](std::int32_t key) { Arrows.push_back(key); };
    Text value;
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Line, value, u"", false, false);
    Up(33);
    ASSERT_FALSE(Editing());
    Up(40);
    Up(38);
    EXPECT_THAT(Arrows, IsEmpty());
}

TEST_F(ScreenThatReacts, IsToldOfALongPressWithItsCell) {
    EXPECT_EQ(backends::Hold(Device.Hand, 2, 1), "");
    EXPECT_THAT(LongPress, ElementsAre("2 1"));
}

TEST_F(HoldMenu, TakesTheSelectKeyAway) {
    Up(310);
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(Keys, HoldTimerFiresOnce) {
    frmQuorin::grdMain_Press();
    Device.Tick(999);
    EXPECT_FALSE(frmQuorin::Form.HoldEventFired);
    Device.Tick(1);
    EXPECT_TRUE(frmQuorin::Form.HoldEventFired);
    EXPECT_FALSE(Held());
}

} // namespace
} // namespace modQuorin
