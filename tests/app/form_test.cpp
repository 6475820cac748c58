// SPDX-License-Identifier: MIT
#include "app/form.h"

#include "link/ports.h"
#include "link/receive.h"
#include "storage/settings.h"
#include "tests/support/program.h"
#include "view/display_state.h"
#include "view/grids.h"

namespace frmQuorin {
namespace {

using namespace modQuorin;

class FormEvent : public support::Program {};

TEST_F(FormEvent, TitleBarsCloseIsBack) {
    GotoScreen(ScrDrivers);
    for (const std::int32_t mode : {0, 1}) {
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
    Form_QueryUnload(cancel, 2);
    EXPECT_FALSE(cancel);
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(FormEvent, CloseOnTheMainScreenEndsTheProgram) {
    EXPECT_TRUE(support::EndsProgram([] {
        bool cancel = false;
        Form_QueryUnload(cancel, 0);
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
    EXPECT_EQ(platform::headless::Hold(Device.Platform, 0, 0), "");
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

TEST_F(FormEvent, LeavingTheForegroundChangesNothing) {
    GotoScreen(ScrDrivers);
    myCsys_AppBackground();
    myCsys_AppMinimized();
    myCsys_AppMaximized();
    EXPECT_EQ(Screen(), ScrDrivers);
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

TEST_F(OpenLinkTick, AfterASleepOfMoreThanTwoSecondsResetsTheLinkAndPollsNothing) {
    ASSERT_TRUE(modBluetooth::Ports.LinkOpen);
    Device.Platform.loop.Jump(3000);
    tmrBlue_Tick();
    EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkStateReset);
    EXPECT_TRUE(Device.Platform.serial.PortOpen());
}

TEST_F(OpenLinkTick, AfterASleepOfTwoSecondsGoesOn) {
    Device.Platform.loop.Jump(2000);
    tmrBlue_Tick();
    EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkStateOpen);
}

TEST_F(FormEvent, SleepWithoutALinkIsNone) {
    Device.Tick(500);
    Device.Platform.loop.Jump(60000);
    tmrBlue_Tick();
    EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkStateIdle);
}

} // namespace
} // namespace frmQuorin
