// SPDX-License-Identifier: MIT
// The scale of the form in its window.
#include "tests/support/in_a_window.h"

#include <QScreen>
#include <QTest>
#include <QToolButton>

namespace windowtest {
namespace {

class ZoomOfADevice : public InAWindow {
protected:
    ZoomOfADevice() : InAWindow(OfType(1)) {}
};

TEST_F(ZoomOfADevice, LeavesTheFormItsPixels) {
    OpenRecord();
    const auto before = Main().Bounds();
    Form().SetScale(2.5);
    Repaint();
    EXPECT_EQ(Device.Platform.form.ClientArea().Width, 160);
    EXPECT_EQ(Main().Bounds().Height, before.Height);
    EXPECT_EQ(Main().Bounds().Top, before.Top);
    EXPECT_EQ(Form().FormWidget().size(), QSize(400, 400));
    EXPECT_EQ(Form().Screen().size(), QSize(400, 400));
    EXPECT_EQ(Form().minimumSize(), Form().maximumSize());
}

TEST_F(ZoomOfADevice, LeavesAKeyThatIsHeldDown) {
    auto* const key = Form().findChild<QToolButton*>(QStringLiteral("key308"));
    ASSERT_NE(key, nullptr);
    QStringList raised;
    Form().KeyReleased = [&](std::int32_t code) { raised.push_back(QString::number(code)); };
    QTest::mousePress(key, Qt::LeftButton);
    Form().SetScale(2);
    ASSERT_EQ(Form().findChild<QToolButton*>(QStringLiteral("key308")), key);
    QTest::mouseRelease(key, Qt::LeftButton);
    EXPECT_EQ(raised, QStringList{QStringLiteral("308")});
}

TEST_F(ZoomOfADevice, EndsWhereTheScreenEnds) {
    const QSize screen = Form().screen()->availableGeometry().size();
    Form().SetScale(100);
    Repaint();
    EXPECT_LE(Form().width(), screen.width());
    EXPECT_LT(Form().height(), screen.height());
    EXPECT_EQ(Form().Scale(), 3);
}

TEST_F(ZoomOfADevice, KeepsItsFootOnTheScreen) {
    const QRect screen = Form().screen()->availableGeometry();
    Form().move(screen.bottomRight() - QPoint(Form().width(), Form().height()));
    Form().SetScale(2);
    Repaint();
    EXPECT_TRUE(screen.contains(Form().frameGeometry()));
}

TEST_F(ZoomOfADevice, HasItsKeysAndBarsBelow) {
    QWidget bar;
    bar.setFixedHeight(100);
    Form().PutBelow(bar);
    Repaint();
    EXPECT_GE(bar.y(), Form().Screen().geometry().bottom());
    EXPECT_EQ(Form().width(), Form().Screen().width());
}

TEST_F(ZoomOfADevice, HasThemBesideItOnALowScreen) {
    Form().SetScale(3);
    QWidget bar;
    bar.setFixedHeight(300);
    Form().PutBelow(bar);
    Repaint();
    EXPECT_EQ(Form().Scale(), 3);
    EXPECT_GE(bar.x(), Form().Screen().geometry().right());
    EXPECT_GE(Form().findChild<QToolButton*>(QStringLiteral("key308"))->mapTo(&Form(), QPoint()).x(),
              Form().Screen().geometry().right());
    EXPECT_TRUE(Form().screen()->availableGeometry().contains(QRect(QPoint(), Form().size())));
    Form().SetScale(1);
    Repaint();
    EXPECT_GE(bar.y(), Form().Screen().geometry().bottom()) << "there is room below again";
}

TEST_F(ZoomOfADevice, LeavesRoomForABarOfAnyWidth) {
    Form().SetScale(3);
    QWidget bar;
    bar.setFixedSize(400, 300);
    Form().PutBelow(bar);
    Repaint();
    EXPECT_LT(Form().Scale(), 3);
    EXPECT_TRUE(Form().screen()->availableGeometry().contains(QRect(QPoint(), Form().size())));
}

class ZoomOfADesktop : public InAWindow {
protected:
    void Zoom(double scale) {
        Form().SetScale(scale);
        QTest::qWait(20);
        Repaint();
    }
    platform::Box FormBox() { return Device.Platform.form.ClientArea(); }
};

TEST_F(ZoomOfADesktop, LeavesTheFormFewerPixels) {
    const QSize window = Form().size();
    Zoom(2);
    EXPECT_EQ(Form().size(), window);
    EXPECT_EQ(FormBox().Width, 320);
    EXPECT_LT(FormBox().Height, 241);
    EXPECT_EQ(Form().FormWidget().width(), 640);
    Zoom(1);
    EXPECT_EQ(FormBox().Width, 640);
    EXPECT_EQ(FormBox().Height, static_cast<float>(Form().Screen().height()));
}

TEST_F(ZoomOfADesktop, EnlargesFieldAndMenus) {
    OpenRecord();
    Tap(0, 1);
    ASSERT_TRUE(Line().isVisible());
    const int text = Line().fontMetrics().height();
    const int menus = Device.Platform.menus.Bar()->fontMetrics().height();
    Zoom(2);
    EXPECT_NEAR(Line().fontMetrics().height(), 2 * text, 2);
    EXPECT_NEAR(Device.Platform.menus.Bar()->fontMetrics().height(), 2 * menus, 2);
    EXPECT_NEAR(Device.Platform.menus.List(1).fontMetrics().height(), 2 * menus, 2);
    const QRect cell = Grid().CellRect(0, 1).translated(Grid().pos());
    EXPECT_NEAR(Line().geometry().left(), cell.left(), 4);
    EXPECT_NEAR(Line().geometry().top(), cell.top(), 4);
    EXPECT_NEAR(Line().width(), cell.width(), 8);
    Zoom(1);
    EXPECT_EQ(Line().fontMetrics().height(), text);
}

TEST_F(ZoomOfADesktop, EnlargesListAndCalendar) {
    Ask(modPDAUI::PromptKind::Date, u"05/03/2007");
    Zoom(1.5);
    EXPECT_EQ(Calendar().geometry(), Grid().geometry());
    EXPECT_NEAR(Grid().width(), 640, 1);
}

TEST_F(ZoomOfADesktop, TapsTheCellUnderThePointer) {
    for (const double scale : {1.25, 2.0, 0.75}) {
        Zoom(scale);
        ShowRows(30);
        Main().Pressed = nullptr; // the application would leave the list
        Main().Released = nullptr;
        const int height = qRound(Main().RowHeight(0) * scale);
        for (const std::int32_t row : {2, 5}) {
            Click(Grid(), QPoint(10, row * height + height / 2));
            EXPECT_EQ(Main().Row(), row) << scale;
        }
    }
}

TEST_F(ZoomOfADesktop, KeepsTheTextUnderTheHand) {
    OpenRecord();
    Tap(0, 1);
    Type("x");
    const Text typed = Field().Contents();
    Zoom(1.5);
    EXPECT_EQ(Field().Contents(), typed);
    EXPECT_TRUE(Line().hasFocus());
    Type("y");
    EXPECT_EQ(Field().Contents(), typed + u"y");
}

TEST_F(ZoomOfADesktop, LeavesRoomOnTheScreen) {
    const QSize screen = Form().screen()->availableGeometry().size(); // 800x800 offscreen
    Zoom(4);
    EXPECT_LE(Form().width(), screen.width());
    EXPECT_LT(Form().height(), screen.height());
    EXPECT_LT(Form().Scale(), 4);
    EXPECT_GE(FormBox().Width, 200);
    EXPECT_GE(FormBox().Height, 160);
}

TEST_F(ZoomOfADesktop, LeavesABarOnTheLowestScreen) {
    const int screen = Form().screen()->availableGeometry().height();
    QWidget bar;
    bar.setFixedHeight(screen - 180); // a screen that is 180 pixels high without it
    Form().PutBelow(bar);
    Repaint();
    EXPECT_LE(Form().height(), screen);
    EXPECT_GE(Form().Screen().height(), 90);
}

// A reading that was refused is shown for five seconds, as long as the words on a key.
TEST_F(ZoomOfADesktop, HidesNoAlarmByItsWords) {
    const auto* const link = Form().findChild<QLabel*>(QStringLiteral("linkState"));
    Form().SetLinkLine({"Link open", companion::LineLook::Alive, "Link open"});
    Form().Say(QStringLiteral("This is the largest size."));
    EXPECT_EQ(link->text(), QStringLiteral("This is the largest size."));
    Form().SetLinkLine({"Moisture was refused", companion::LineLook::Alarm, "Moisture was refused"});
    EXPECT_EQ(link->text(), QStringLiteral("Moisture was refused"));
}

TEST_F(ZoomOfADesktop, LeavesTheStatusAreaItsSize) {
    const auto* const link = Form().findChild<QLabel*>(QStringLiteral("linkState"));
    const int before = link->fontMetrics().height();
    Zoom(2);
    EXPECT_EQ(link->fontMetrics().height(), before);
}

} // namespace
} // namespace windowtest
