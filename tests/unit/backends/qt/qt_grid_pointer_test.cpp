// SPDX-License-Identifier: MIT
#include "backends/input/gestures.h"
#include "src/app/commands.h"
#include "src/app/form.h"
#include "tests/support/in_a_window.h"

#include <QPointingDevice>
#include <QScrollBar>
#include <QWheelEvent>

namespace windowtest {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t ManyRows = 100;

class GridUnderAPointer : public InAWindow {
protected:
    GridUnderAPointer() {
        ShowRows(ManyRows);
        Listen();
    }

    /// Records the grid's events in order, in place of the application's handlers.
    void Listen() {
        Heard.clear();
        Main().GotFocus = [this] { Heard.push_back("focus"); };
        Main().Pressed = [this] { Heard.push_back("press on " + std::to_string(Main().Row())); };
        Main().Released = [this] { Heard.push_back("release on " + std::to_string(Main().Row())); };
        Now = this;
        Main().Moved = [] { Now->Heard.push_back("row " + std::to_string(Now->Main().Row())); };
    }
    void Wheel(int angle) {
        const QPoint place = Grid().rect().center();
        QWheelEvent event(place, Grid().mapToGlobal(place), {}, QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Grid(), &event);
        Settle();
    }
    QScrollBar& Bar() { return *Grid().findChild<QScrollBar*>(); }

    std::vector<std::string> Heard;
    static inline GridUnderAPointer* Now = nullptr;
};

TEST_F(GridUnderAPointer, GetsTheFocusThenTheRowThenThePressThenTheRelease) {
    Main().SetVisible(false);
    Main().SetVisible(true); // nothing has the focus
    Settle();
    Listen();
    Tap(2);
    EXPECT_THAT(Heard, ElementsAre("focus", "row 2", "press on 2", "release on 2"));
}

TEST_F(GridUnderAPointer, ChangesNoRowWhenTheCurrentCellIsTapped) {
    Tap(2);
    Listen();
    Tap(2);
    EXPECT_THAT(Heard, ElementsAre("press on 2", "release on 2"));
}

TEST_F(GridUnderAPointer, TakesADoubleClickAsOneTap) {
    Tap(2);
    Pass(1000);
    Listen();
    QTest::mouseDClick(Form().windowHandle(), Qt::LeftButton, {}, Grid().mapTo(&Form(), Middle(3)));
    EXPECT_THAT(Heard, ElementsAre("row 3", "press on 3", "release on 3"));
    Tap(3);
    EXPECT_EQ(Heard.size(), 5U) << "the next tap is one again";
}

TEST_F(GridUnderAPointer, TakesTwoQuickTapsOnTwoRowsAsTwo) {
    Pass(1000);
    Listen();
    const auto send = [this](QEvent::Type type, QPoint place) {
        QMouseEvent event(type, place, Grid().mapToGlobal(place), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&Grid(), &event);
    };
    const QPoint foot = Grid().CellRect(2, 0).bottomLeft();
    const QPoint head = Grid().CellRect(3, 0).topLeft();
    send(QEvent::MouseButtonPress, foot);
    send(QEvent::MouseButtonRelease, foot);
    send(QEvent::MouseButtonDblClick, head);
    send(QEvent::MouseButtonRelease, head);
    EXPECT_THAT(Heard, ElementsAre("row 2", "press on 2", "release on 2", "row 3", "press on 3", "release on 3"));
}

TEST_F(GridUnderAPointer, TakesASecondPressThatComesLateAsATap) {
    Tap(2);
    Pass(1000);
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(1);
    QTest::qWait(10);
    Listen();
    QMouseEvent event(QEvent::MouseButtonDblClick, Middle(2), Grid().mapToGlobal(Middle(2)), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&Grid(), &event);
    QApplication::setDoubleClickInterval(interval);
    EXPECT_THAT(Heard, ElementsAre("press on 2"));
}

/// The second press of a double click acts on the screen that the first one has opened.
class DoubleClickOnAList : public InAWindow {
protected:
    DoubleClickOnAList() {
        OpenRecord();
        Pass(1000);
    }
    void DoubleClick(QPoint place) {
        Pass(1000);
        QTest::mouseDClick(Form().windowHandle(), Qt::LeftButton, {}, Grid().mapTo(&Form(), place));
        Settle();
        Repaint();
    }
};

TEST_F(DoubleClickOnAList, OpensOneScreenAndNotTheNextOne) {
    modQuorin::GoBack();
    modQuorin::GoBack();
    Repaint();
    ASSERT_EQ(Screen(), modQuorin::ScrDrivers);
    DoubleClick(Middle(0));
    EXPECT_EQ(Screen(), modQuorin::ScrDownloads);
    DoubleClick(Middle(0) + QPoint(100, 0));
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
    EXPECT_FALSE(Field().Visible());
    DoubleClick(Middle(1, 1));
    EXPECT_TRUE(Field().Visible());
}

/// The mouse may move between the two presses, so that the second one hits another row.
TEST_F(DoubleClickOnAList, OpensOneScreenAlsoAcrossTwoRows) {
    Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\nOther|meter.txt\n");
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\nMeter|qrn0002.txt|20070301|\n");
    modQuorin::GoBack();
    modQuorin::GoBack();
    Repaint();
    ASSERT_EQ(Screen(), modQuorin::ScrDrivers);
    const QPoint foot = Grid().CellRect(0, 0).bottomLeft();
    Click(Grid(), foot);
    ASSERT_EQ(Screen(), modQuorin::ScrDownloads);
    const QPoint head = foot + QPoint(0, 1);
    QMouseEvent event(QEvent::MouseButtonDblClick, head, Grid().mapToGlobal(head), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&Grid(), &event);
    Up(Grid(), head);
    EXPECT_EQ(Screen(), modQuorin::ScrDownloads);
    EXPECT_EQ(Main().Row(), 0);
}

TEST_F(DoubleClickOnAList, OfTheConsoleIsTwoTaps) {
    modQuorin::GoBack();
    modQuorin::GoBack();
    Repaint();
    backends::Tap(Device.Hand, 0, 0);
    backends::Tap(Device.Hand, 0, 0);
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
}

TEST_F(GridUnderAPointer, LeavesTheOtherButtonsAlone) {
    Listen();
    QTest::mouseClick(Form().windowHandle(), Qt::RightButton, {}, Grid().mapTo(&Form(), Middle(3)));
    QTest::mouseClick(Form().windowHandle(), Qt::MiddleButton, {}, Grid().mapTo(&Form(), Middle(3)));
    EXPECT_THAT(Heard, IsEmpty());
    EXPECT_EQ(Main().Row(), 0);
}

TEST_F(GridUnderAPointer, ReleasesAlsoWhereThePointerHasLeftIt) {
    Listen();
    Down(Grid(), Middle(2));
    QTest::mouseRelease(&Grid(), Qt::LeftButton, {}, QPoint(-50, -50));
    EXPECT_THAT(Heard, ElementsAre("row 2", "press on 2", "release on 2"));
}

TEST_F(GridUnderAPointer, DoesNothingBelowItsLastRow) {
    ShowRows(2);
    Listen();
    Click(Grid(), Middle(1) + QPoint(0, 2 * Main().RowHeight(1)));
    EXPECT_THAT(Heard, IsEmpty());
    EXPECT_EQ(Main().Row(), 0);
}

TEST_F(GridUnderAPointer, TakesNoClickOnAHiddenRow) {
    const QPoint place = Middle(1);
    Main().SetRowHeight(1, 0);
    Settle();
    Click(Grid(), place);
    EXPECT_EQ(Main().Row(), 2);
}

TEST_F(GridUnderAPointer, IgnoresAllWhileItIsDisabled) {
    Tap(1);
    Main().SetEnabled(false);
    Listen();
    Tap(3);
    Wheel(-120);
    Press(Qt::Key_Down);
    EXPECT_EQ(Main().Row(), 1);
    EXPECT_EQ(Main().TopRow(), 0);
    EXPECT_THAT(Heard, testing::Not(testing::Contains(testing::HasSubstr("press"))));
}

TEST_F(GridUnderAPointer, TurnsThePageByWheelAndLeavesTheSelection) {
    Listen();
    Wheel(-120);
    EXPECT_EQ(Main().TopRow(), 3);
    EXPECT_EQ(Main().Row(), 0);
    Wheel(120);
    EXPECT_EQ(Main().TopRow(), 0);
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(GridUnderAPointer, AddsUpSmallTurnsOfAWheel) {
    for (int turn = 0; turn < 7; ++turn)
        Wheel(-15);
    EXPECT_EQ(Main().TopRow(), 0);
    Wheel(-15);
    EXPECT_EQ(Main().TopRow(), 3);
}

TEST_F(GridUnderAPointer, StopsAtTheLastPage) {
    for (int turn = 0; turn < ManyRows; ++turn)
        Wheel(-120);
    EXPECT_EQ(Main().TopRow(), Main().LastTop());
    EXPECT_TRUE(Main().RowOnScreen(ManyRows - 1));
    for (int turn = 0; turn < ManyRows; ++turn)
        Wheel(120);
    EXPECT_EQ(Main().TopRow(), 0);
}

TEST_F(GridUnderAPointer, TurnsThePageByItsScrollBarAndLeavesTheSelection) {
    ASSERT_TRUE(Bar().isVisible());
    Listen();
    Bar().setValue(7);
    Settle();
    EXPECT_EQ(Main().TopRow(), 7);
    EXPECT_EQ(Main().Row(), 0);
    EXPECT_EQ(Bar().value(), 7);
    EXPECT_THAT(Heard, IsEmpty());
    EXPECT_EQ(Grid().CellRect(7, 0).top(), 0);
}

TEST_F(GridUnderAPointer, ShowsAScrollBarOnlyWhereThereIsMoreThanAPage) {
    EXPECT_TRUE(Bar().isVisible());
    EXPECT_EQ(Bar().geometry().right(), Grid().rect().right());
    EXPECT_EQ(Bar().maximum(), Main().LastTop());
    ShowRows(2);
    EXPECT_FALSE(Bar().isVisible());
}

TEST_F(GridUnderAPointer, StartsItsPageAtTheScrollBarWithAnyRowsHidden) {
    for (std::int32_t row = 1; row <= 5; ++row)
        Main().SetRowHeight(row, 0);
    Settle();
    Bar().setValue(20);
    Settle();
    EXPECT_EQ(Main().TopRow(), 20);
    Bar().setValue(7);
    Settle();
    EXPECT_EQ(Main().TopRow(), 7);
}

TEST_F(GridUnderAPointer, MovesItsScrollBarWithThePage) {
    Main().SetTopRow(11);
    Settle();
    EXPECT_EQ(Bar().value(), 11);
}

TEST_F(GridUnderAPointer, HasTheRowWhereItIsDrawn) {
    Main().SetTopRow(10);
    Settle();
    Tap(12);
    EXPECT_EQ(Main().Row(), 12);
    EXPECT_EQ(Main().TopRow(), 10);
}

TEST_F(GridUnderAPointer, DrawsTheSelectedCellGreyWithAGreenFrame) {
    Tap(2);
    const QImage seen = Grid().grab().toImage();
    const QRect cell = Grid().CellRect(2, 0);
    EXPECT_EQ(seen.pixelColor(cell.topLeft()), QColor(0, 255, 0));
    EXPECT_EQ(seen.pixelColor(cell.right() - 3, cell.center().y()), QColor(0xD0, 0xD0, 0xD0));
    const QRect other = Grid().CellRect(4, 0);
    EXPECT_EQ(seen.pixelColor(other.right() - 3, other.center().y()), QColor(Qt::white));
}

// A press of a second and more.

class PressOnARecord : public InAWindow {};

TEST_F(PressOnARecord, EditsItsCellWhenItIsShort) {
    OpenRecord();
    Down(Grid(), Middle(1, 1));
    EXPECT_FALSE(Field().Visible());
    Pass(900);
    Up(Grid(), Middle(1, 1));
    EXPECT_TRUE(Field().Visible());
}

TEST_F(PressOnARecord, DoesNothingAtItsEndWhenItIsLongerThanASecond) {
    OpenRecord();
    Down(Grid(), Middle(1, 1));
    Pass(1100);
    Up(Grid(), Middle(1, 1));
    EXPECT_FALSE(Field().Visible());
    Tap(2, 1);
    EXPECT_TRUE(Field().Visible());
}

// The title.

TEST_F(GridUnderAPointer, HasTheFocusAfterAClickOnTheTitle) {
    backends::qt::QtGrid& title = Device.Platform.grdTitle;
    Main().SetVisible(false);
    Main().SetVisible(true);
    ASSERT_EQ(Holder(), nullptr);
    Listen();
    Click(title.Widget(), title.Widget().rect().center());
    EXPECT_EQ(Holder(), &Main());
    EXPECT_TRUE(Grid().hasFocus());
    EXPECT_THAT(Heard, Each("focus"));
    EXPECT_EQ(Main().Row(), 0);
}

// A finger.

class GridUnderAFinger : public GridUnderAPointer {
protected:
    GridUnderAFinger() {
        Pass(300); // a finger that comes down right after a new screen was meant for the screen before
        Listen();
    }
    void Touch(QEvent::Type type, QPoint place) {
        const bool up = type == QEvent::MouseButtonRelease;
        const bool moves = type == QEvent::MouseMove;
        QMouseEvent event(type, place, Grid().mapTo(&Form(), place), Grid().mapToGlobal(place),
                          moves ? Qt::NoButton : Qt::LeftButton, up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier,
                          &Finger);
        QCoreApplication::sendEvent(&Grid(), &event);
        Settle();
    }
    void FingerDown(QPoint place) { Touch(QEvent::MouseButtonPress, place); }
    void FingerMoves(QPoint place) { Touch(QEvent::MouseMove, place); }
    void FingerUp(QPoint place) { Touch(QEvent::MouseButtonRelease, place); }

    QPointingDevice Finger{QStringLiteral("screen"),
                           1,
                           QInputDevice::DeviceType::TouchScreen,
                           QPointingDevice::PointerType::Finger,
                           QInputDevice::Capability::Position,
                           1,
                           0};
};

TEST_F(GridUnderAFinger, SelectsAtATap) {
    Listen();
    FingerDown(Middle(2));
    EXPECT_THAT(Heard, IsEmpty()) << "it may be a drag yet";
    FingerUp(Middle(2));
    EXPECT_THAT(Heard, ElementsAre("row 2", "press on 2", "release on 2"));
}

TEST_F(GridUnderAFinger, TapsNothingThatHasJustComeUp) {
    modQuorin::MenuEvent(u"File Debug...");
    Settle();
    Pass(299);
    Listen();
    FingerDown(Middle(1));
    Pass(100);
    FingerUp(Middle(1));
    EXPECT_THAT(Heard, testing::Not(testing::Contains(testing::HasSubstr("press"))));
    EXPECT_THAT(Heard, testing::Not(testing::Contains(testing::HasSubstr("release"))));
    Listen();
    FingerDown(Middle(1));
    FingerUp(Middle(1));
    EXPECT_THAT(Heard, ElementsAre("row 1", "press on 1", "release on 1"));
}

TEST_F(GridUnderAFinger, TapsTwiceOnOneRowWhenItTapsTwice) {
    for (const QEvent::Type down : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
        Listen();
        Touch(down, Middle(2));
        FingerUp(Middle(2));
        EXPECT_THAT(Heard, testing::Contains("release on 2"));
    }
}

TEST_F(GridUnderAFinger, ScrollsAtADragAndSelectsNothing) {
    Listen();
    const QPoint from = Middle(8);
    const int height = Main().RowHeight(0);
    FingerDown(from);
    FingerMoves(from - QPoint(0, 2 * height));
    FingerMoves(from - QPoint(0, 5 * height));
    FingerUp(from - QPoint(0, 5 * height));
    EXPECT_EQ(Main().TopRow(), 5);
    EXPECT_EQ(Main().Row(), 0);
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(GridUnderAFinger, DragsTheRowsUnderItAndNoHiddenOnes) {
    const int height = Main().RowHeight(0);
    for (std::int32_t row = 1; row <= 5; ++row)
        Main().SetRowHeight(row, 0);
    Settle();
    const QPoint from = Middle(8);
    FingerDown(from);
    FingerMoves(from - QPoint(0, 2 * height)); // rows 0 and 6
    EXPECT_EQ(Main().TopRow(), 7);
    FingerMoves(from - QPoint(0, 3 * height));
    EXPECT_EQ(Main().TopRow(), 8);
    FingerMoves(from);
    EXPECT_EQ(Main().TopRow(), 0);
    FingerUp(from);
}

TEST_F(GridUnderAFinger, DragsBackAndNoFurtherThanTheFirstPage) {
    Main().SetTopRow(3);
    Settle();
    const QPoint from = Middle(4);
    FingerDown(from);
    FingerMoves(from + QPoint(0, 10 * Main().RowHeight(0)));
    FingerUp(from);
    EXPECT_EQ(Main().TopRow(), 0);
}

TEST_F(GridUnderAFinger, TapsAlsoWhenItTrembles) {
    Listen();
    FingerDown(Middle(2));
    FingerMoves(Middle(2) + QPoint(1, 2));
    FingerUp(Middle(2) + QPoint(1, 2));
    EXPECT_THAT(Heard, ElementsAre("row 2", "press on 2", "release on 2"));
}

TEST_F(GridUnderAFinger, PressesOnceItRests) {
    Listen();
    FingerDown(Middle(2));
    QTest::qWait(300);
    EXPECT_THAT(Heard, ElementsAre("row 2", "press on 2"));
    FingerMoves(Middle(5));
    EXPECT_EQ(Main().TopRow(), 0);
    FingerUp(Middle(2));
    EXPECT_THAT(Heard, ElementsAre("row 2", "press on 2", "release on 2"));
}

TEST_F(GridUnderAFinger, IsNotPressedOnceItIsOffOrGone) {
    Listen();
    FingerDown(Middle(2));
    Main().SetEnabled(false);
    QTest::qWait(300);
    FingerUp(Middle(2));
    Main().SetEnabled(true);
    FingerDown(Middle(2));
    Main().SetVisible(false);
    QTest::qWait(300);
    Main().SetVisible(true);
    FingerUp(Middle(2));
    EXPECT_EQ(Main().Row(), 0);
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(GridUnderAFinger, OfATouchScreenComesTheSameWay) {
    Listen();
    static QPointingDevice* const screen = QTest::createTouchDevice(); // Qt never deletes it
    const QPoint place = Grid().mapTo(&Form(), Middle(2));
    QTest::touchEvent(Form().windowHandle(), screen).press(0, place);
    EXPECT_THAT(Heard, IsEmpty());
    QTest::touchEvent(Form().windowHandle(), screen).release(0, place);
    Settle();
    EXPECT_THAT(Heard, ElementsAre("row 2", "press on 2", "release on 2"));
}

} // namespace
} // namespace windowtest
