// SPDX-License-Identifier: MIT
#include "src/view/grids.h"

#include "src/drivers/selection.h"
#include "tests/support/program.h"

namespace modPDAUI {
namespace {

using namespace modQuorin;
using testing::ElementsAre;

int Paintings = 0;

void CountPainting(platform::CellCanvas&, const platform::PaintedCell&) {
    ++Paintings;
}

class Refresh : public support::Program {
protected:
    Refresh() {
        GotoScreen(ScrTextFile);
        Settle();
    }
    bool Waiting() { return Device.Platform.tmrMenus.Enabled(); }
    /// Returns how many cells of grdMain an action paints.
    template <class Action>
    int PaintingsOf(Action action) {
        Device.Platform.grdMain.DrawCell = CountPainting;
        Paintings = 0;
        action();
        return Paintings;
    }
};

TEST_F(Refresh, ComesAHundredMillisecondsLater) {
    RepaintGrids(false);
    EXPECT_TRUE(Grids.RepaintPending);
    Device.Tick(99);
    EXPECT_TRUE(Grids.RepaintPending);
    Device.Tick(1);
    EXPECT_FALSE(Grids.RepaintPending);
    EXPECT_FALSE(Waiting());
}

TEST_F(Refresh, IsOneForTwoRequests) {
    const int once = PaintingsOf([this] {
        RepaintGrids(true);
        Settle();
    });
    ASSERT_GT(once, 0);
    EXPECT_EQ(PaintingsOf([&] {
                  RepaintGrids(false);
                  Device.Tick(50);
                  RepaintGrids(false);
                  Device.Tick(1000);
              }),
              once);
    EXPECT_FALSE(Waiting());
}

TEST_F(Refresh, TickWithoutARequestOnlyStopsTheTimer) {
    Device.Platform.tmrMenus.SetEnabled(true);
    EXPECT_EQ(PaintingsOf([&] { Device.Tick(100); }), 0);
    EXPECT_FALSE(Waiting());
}

TEST_F(Refresh, PaintsEveryRowAlsoThoseOffThePage) {
    ShowList(std::vector<Text>(200, u"x"));
    EXPECT_GE(PaintingsOf([] { RepaintGrids(true); }), 200);
}

TEST_F(Refresh, PutsSelectionAndPageBack) {
    ShowList(std::vector<Text>(200, u"x"));
    Device.Main().SetRow(120);
    Device.Main().SetTopRow(110);
    RepaintGrids(true);
    EXPECT_EQ(Device.Main().Row(), 120);
    EXPECT_EQ(Device.Main().TopRow(), 110);
}

TEST_F(Refresh, UnlocksTheGridAndGivesItTheFocus) {
    Grids.GridLocked = true;
    RepaintGrids(false);
    EXPECT_TRUE(Grids.GridLocked);
    RepaintGrids(true);
    EXPECT_FALSE(Grids.GridLocked);
    EXPECT_STREQ(Device.Platform.focus.Holder()->Name, "grdMain");
}

TEST_F(Refresh, StoresNothing) {
    Put("drivers.txt", "NAME|INFFILE\na|1\nb|2\nc|3\n");
    GotoScreen(ScrDrivers);
    Device.Main().SetRow(1);
    Selection.SelectedDriver = u"untouched";
    RepaintGrids(true);
    EXPECT_EQ(Selection.SelectedDriver, u"untouched");
}

TEST_F(Refresh, EndsAPress) {
    Device.Platform.tmrHoldEvent.SetEnabled(true);
    RepaintGrids(false);
    EXPECT_FALSE(Device.Platform.tmrHoldEvent.Enabled());
}

class RefreshOnAPalm : public support::Program {
protected:
    RefreshOnAPalm() : Program(support::OfType(1)) {}
};

TEST_F(RefreshOnAPalm, LeavesAPressAlone) {
    Device.Platform.tmrHoldEvent.SetEnabled(true);
    RepaintGrids(false);
    RepaintGrids(true);
    EXPECT_TRUE(Device.Platform.tmrHoldEvent.Enabled());
}

TEST_F(Refresh, OfAListThatFallsOffThePageMakesRoomForTheScrollBar) {
    ShowList(std::vector<Text>(27, u"x")); // 459 pixels of 464
    RepaintGrids(true);
    EXPECT_EQ(Device.Main().ColWidth(0), 638);
    ShowList(std::vector<Text>(28, u"x"));
    RepaintGrids(true);
    EXPECT_EQ(Device.Main().ColWidth(0), 625);
}

using GridRows = Refresh;

TEST_F(GridRows, GrowFromOneEmptyRow) {
    AddGridRow(u"a");
    EXPECT_THAT(Column(0), ElementsAre(u"a"));
    AddGridRow(u"b");
    AddGridRow(u"");
    AddGridRow(u"c");
    EXPECT_THAT(Column(0), ElementsAre(u"a", u"b", u"c"));
}

TEST_F(GridRows, OfAListOfNoEntriesAreNone) {
    ShowList({});
    EXPECT_EQ(Device.Main().Rows(), 0);
}

/// A list of 100 rows, 17 pixels each, on a page of so many pixels.
class ScrollingIntoView : public support::Program {
protected:
    void ShowPage(float height, std::int32_t row, std::int32_t topRow) {
        GotoScreen(ScrTextFile);
        ShowList(std::vector<Text>(100, u"x"));
        platform::Box box = Device.Main().Bounds();
        box.Height = height;
        Device.Main().SetBounds(box);
        Device.Main().SetRow(row);
        Device.Main().SetTopRow(topRow);
        ScrollRowIntoView();
    }
    std::int32_t TopRow() { return Device.Main().TopRow(); }
};

TEST_F(ScrollingIntoView, RowAboveThePageBecomesItsFirst) {
    ShowPage(170, 4, 50);
    EXPECT_EQ(TopRow(), 4);
}

TEST_F(ScrollingIntoView, RowOnThePageMovesNothing) {
    ShowPage(170, 50, 50);
    EXPECT_EQ(TopRow(), 50);
    ShowPage(170, 59, 50); // ten rows fill the page exactly
    EXPECT_EQ(TopRow(), 50);
}

TEST_F(ScrollingIntoView, RowBelowThePageBecomesItsLast) {
    ShowPage(170, 60, 50);
    EXPECT_EQ(TopRow(), 51);
    ShowPage(169, 59, 0);
    EXPECT_EQ(TopRow(), 51);
}

TEST_F(ScrollingIntoView, RowHigherThanThePageBecomesItsFirst) {
    ShowPage(10, 60, 0);
    EXPECT_EQ(TopRow(), 60);
}

} // namespace
} // namespace modPDAUI
