// SPDX-License-Identifier: MIT
#include "src/app/form.h"

#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "tests/support/program.h"

namespace frmQuorin {
namespace {

using namespace modQuorin;

class FormEvent : public support::Program {};

TEST_F(FormEvent, TitleBarsCloseIsBack) {
    GotoScreen(ScrDrivers);
    for (const UnloadMode mode : {UnloadMode::TitleBar, UnloadMode::Program}) {
        GotoScreen(ScrDrivers);
        bool cancel = false;
        Form_QueryUnload(cancel, mode);
        EXPECT_TRUE(cancel);
        EXPECT_EQ(Screen(), ScrMain);
    }
}

TEST_F(FormEvent, PlatformsOwnUnloadIsLetThrough) {
    GotoScreen(ScrDrivers);
    bool cancel = false;
    Form_QueryUnload(cancel, UnloadMode::System);
    EXPECT_FALSE(cancel);
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(FormEvent, CloseOnTheMainScreenEndsTheProgram) {
    EXPECT_TRUE(support::EndsProgram([] {
        bool cancel = false;
        Form_QueryUnload(cancel, UnloadMode::TitleBar);
    }));
}

TEST_F(FormEvent, EnterAndEscapeAreSwallowedAsCharacters) {
    for (const std::int32_t swallowed : {13, 27}) {
        std::int32_t character = swallowed;
        Form_KeyPress(character);
        EXPECT_EQ(character, 0);
    }
    std::int32_t letter = 65;
    Form_KeyPress(letter);
    EXPECT_EQ(letter, 65);
}

class FormEventOfTypeSeven : public support::Program {
protected:
    FormEventOfTypeSeven() : Program(support::OfType(7)) {}
};

TEST_F(FormEventOfTypeSeven, KeepsThemAsCharacters) {
    std::int32_t character = 13;
    Form_KeyPress(character);
    EXPECT_EQ(character, 13);
}

TEST_F(FormEvent, ShortTapSelectsOnceOnRelease) {
    grdMain_Press();
    EXPECT_TRUE(Device.Platform.tmrHoldEvent.Enabled());
    EXPECT_EQ(Screen(), ScrMain);
    grdMain_Release();
    EXPECT_FALSE(Device.Platform.tmrHoldEvent.Enabled());
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(FormEvent, LongPressSelectsNothingAndTheNextTapWorks) {
    EXPECT_EQ(backends::Hold(Device.Hand, 0, 0), "");
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_FALSE(Form.HoldEventFired);
    Tap(0);
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(FormEvent, FocusOfTheTitleMovesOnToTheGrid) {
    Device.Title().SetVisible(true);
    Device.Title().SetFocus();
    EXPECT_STREQ(Device.Platform.focus.Holder()->Name, "grdMain");
}

TEST_F(FormEvent, ReleaseOfTheTitleMovesTheFocusToTheGrid) {
    Device.Platform.focus.TakeFrom(Device.Platform.grdMain);
    grdTitle_Release();
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
}

TEST_F(FormEvent, ReleaseOfTheTitleOverAHiddenGridMovesNothing) {
    Device.Main().SetVisible(false);
    grdTitle_Release();
    EXPECT_EQ(Device.Platform.focus.Holder(), nullptr);
}

TEST_F(FormEvent, TitleKeepsTheFocusWhileTheGridCantTakeIt) {
    GotoScreen(ScrTextFile);
    Device.Main().SetEnabled(false);
    Device.Title().SetFocus();
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdTitle);
}

TEST_F(FormEvent, MenuItemsRunTheirEntries) {
    mnuButtonO1_Click(1);
    EXPECT_EQ(Screen(), ScrDrivers);
    mnuButtonO2_Click(1);
    EXPECT_EQ(Screen(), ScrMain);
    mnuButtonO2_Click(3);
    EXPECT_EQ(Screen(), ScrBluetoothDebug);
}

TEST_F(FormEvent, SoftKeyLayerRunsTheCaptions) {
    GotoScreen(ScrDrivers);
    SoftKey1Pressed();
    EXPECT_EQ(Screen(), ScrDownloads);
    GotoScreen(ScrDrivers);
    SoftKey2Pressed();
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(FormEvent, CloseDuringAPromptCancelsIt) {
    MenuEvent(u"File Debug...");
    Device.WillDo([] {
        bool cancel = false;
        Form_QueryUnload(cancel, UnloadMode::TitleBar);
        EXPECT_TRUE(cancel);
    });
    MenuEvent(u"Enter Custom Serial ID...");
    EXPECT_EQ(Screen(), ScrFileDebug);
}

TEST_F(FormEvent, ReceivedCharactersReachTheLink) {
    SaveSetting(u"ComPort", u"Com1");
    MenuEvent(u"Bluetooth Debug...");
    Device.Tick(500);
    Device.Platform.serial.Arrive(u"line\r\nrest");
    Settle();
    EXPECT_EQ(modBluetooth::Receive.ReadyText, u"line\r\n");
    EXPECT_EQ(modBluetooth::Receive.RxText, u"rest");
}

TEST_F(FormEvent, LeavingTheForegroundChangesNothing) {
    GotoScreen(ScrDrivers);
    myCsys_AppBackground();
    myCsys_AppMinimized();
    myCsys_AppMaximized();
    EXPECT_EQ(Screen(), ScrDrivers);
    EXPECT_TRUE(Device.Platform.tmrBlue.Enabled());
}

TEST_F(FormEvent, LeavingTheForegroundLeavesAnOpenDownloadAsItIs) {
    SaveSetting(u"ComPort", u"Com1");
    InstallMeter();
    OpenDownload("Place|Moisture|Remark\na|b|c\n");
    Device.Tick(500);
    Tap(0, 1);
    Type(u"Hall");
    myCsys_AppBackground();
    myCsys_AppMinimized();
    myCsys_AppMaximized();
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_TRUE(Device.Platform.txtInputField.Visible());
    EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"Hall");
    EXPECT_EQ(Cell(0, 1), u"Hall");
    EXPECT_TRUE(modFileSystem::Table.RecordDirty);
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na|b|c\n"); // not saved without the technician
    EXPECT_TRUE(Device.Platform.serial.PortOpen());
    EXPECT_TRUE(modBluetooth::Ports.LinkOpen);
    EXPECT_TRUE(Device.Platform.tmrBlue.Enabled());
}

TEST_F(FormEvent, RowChangeIsIgnoredWhileTheGridIsLocked) {
    InstallMeter();
    Put("drivers.txt", "NAME|INFFILE\na|1\nb|2\n");
    MenuEvent(u"Start...");
    modPDAUI::Grids.GridLocked = true;
    Device.Main().SetRow(1);
    EXPECT_EQ(Selection.SelectedDriver, u"a");
}

/// The link over a simulated port, open.
class OpenLinkTick : public support::Program {
protected:
    OpenLinkTick() {
        SaveSetting(u"ComPort", u"Com1");
        modBluetooth::ArmLink();
        Device.Tick(500);
    }
};

TEST_F(OpenLinkTick, AfterASleepOfTwoSecondsResetsTheLinkOnly) {
    ASSERT_TRUE(modBluetooth::Ports.LinkOpen);
    Device.Platform.loop.Jump(3000);
    tmrBlue_Tick();
    EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Reset);
    EXPECT_TRUE(Device.Platform.serial.PortOpen());
}

TEST_F(OpenLinkTick, AfterASleepOfTwoSecondsGoesOn) {
    Device.Platform.loop.Jump(2000);
    tmrBlue_Tick();
    EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Open);
}

TEST_F(FormEvent, SleepWithoutALinkIsNone) {
    Device.Tick(500);
    Device.Platform.loop.Jump(60000);
    tmrBlue_Tick();
    EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Idle);
}

} // namespace
} // namespace frmQuorin
