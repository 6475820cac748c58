// SPDX-License-Identifier: MIT
#include "src/view/status_strip.h"

#include "src/app/preferences.h"
#include "tests/support/program.h"

namespace modPDAUI {
namespace {

using namespace modQuorin;
using platform::Box;
using testing::ElementsAre;

class StatusStrip : public support::Program {
protected:
    StatusStrip() { GotoScreen(ScrTextFile); }
    std::vector<bool> Usable() {
        auto& form = Device.Platform;
        return {form.grdMain.Enabled(), form.grdTitle.Enabled(), form.menuTitles[0].Enabled(),
                form.menuTitles[1].Enabled()};
    }
    Box Place() { return Device.Platform.lblStatus.Bounds(); }
};

TEST_F(StatusStrip, StandsAtTheFootOfTheGridAndTurnsTheControlsOff) {
    ShowBusy(true);
    EXPECT_EQ(Device.Platform.lblStatus.Caption(), u"Busy");
    EXPECT_TRUE(Device.Platform.lblStatus.Visible());
    EXPECT_EQ(Place(), (Box{0, 465, 640, 15}));
    EXPECT_THAT(Usable(), ElementsAre(false, false, false, false));
}

TEST_F(StatusStrip, IsPaintedBeforeTheWorkBegins) {
    ShowStatus(u"Decoding Result");
    EXPECT_THAT(Device.Did.Status, ElementsAre(u"Decoding Result"));
}

TEST_F(StatusStrip, GoesAndTurnsTheControlsOn) {
    ShowBusy(true);
    ShowBusy(false);
    EXPECT_FALSE(Device.Platform.lblStatus.Visible());
    EXPECT_THAT(Usable(), ElementsAre(true, true, true, true));
}

TEST_F(StatusStrip, IsOverAtTheFirstEndHoweverOftenItBegan) {
    ShowBusy(true);
    ShowBusy(true);
    ShowBusy(false);
    EXPECT_THAT(Usable(), ElementsAre(true, true, true, true));
}

TEST_F(StatusStrip, GrowsUpwardForALongText) {
    ShowStatus(Text(107, u'x')); // 640 pixels hold 106 characters
    EXPECT_EQ(Place(), (Box{0, 450, 640, 30}));
}

TEST_F(StatusStrip, KeepsTheFontOfStartUpThroughAZoom) {
    ZoomGridFont();
    ASSERT_EQ(Device.Main().FontSize(), 14);
    ShowBusy(true);
    EXPECT_EQ(Device.Platform.lblStatus.FontSize(), 8);
    EXPECT_EQ(Device.Platform.lblStatus.FontName(), u"Tahoma");
    EXPECT_EQ(Place().Height, 15);
}

TEST_F(StatusStrip, DoesNotMoveTheFocusWhenItGoes) {
    Device.Main().SetFocus();
    ShowBusy(true);
    ShowBusy(false);
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
}

} // namespace
} // namespace modPDAUI
