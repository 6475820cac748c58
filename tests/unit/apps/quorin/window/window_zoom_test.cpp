// SPDX-License-Identifier: MIT
#include "apps/quorin/window_zoom.h"

#include "apps/quorin/window_entries.h"
#include "companion/zoom.h"
#include "tests/support/in_a_window.h"

#include <QLabel>

namespace quorin {
namespace {

using testing::IsEmpty;

class ZoomOfTheWindow : public windowtest::InAWindow {
protected:
    explicit ZoomOfTheWindow(std::int32_t deviceType = 0) : InAWindow(windowtest::OfType(deviceType)) {
        AddZoomEntries(Form().Menu(), Zoom);
        Of.Device.DeviceType = deviceType;
    }
    std::string File() const { return Device.Folder.Path() / "settings.ini"; }
    /// Returns the scale that a later run starts with.
    double Later() { return FirstScale(Of, WindowSettings(File())); }
    bool Tells() {
        const auto& all = Device.Platform.onlooker.notices.Standing();
        return std::any_of(all.begin(), all.end(),
                           [](const auto& each) { return each.About == companion::AboutScale; });
    }

    WindowSettings Remembered{File()};
    WindowZoom Zoom{Device.Platform, Remembered, 1};
    Options Of;
};

TEST_F(ZoomOfTheWindow, IsChangedByKeys) {
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Form().Scale(), 1.25);
    Press(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(Form().Scale(), 1.5);
    Press(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(Form().Scale(), 1.75);
    Press(Qt::Key_Minus, Qt::ControlModifier);
    Press(Qt::Key_Minus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(Form().Scale(), 1.25);
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Form().Scale(), 1);
}

TEST_F(ZoomOfTheWindow, SaysWhereItEnds) {
    const auto line = [this] {
        return Form().findChild<QLabel*>(QStringLiteral("linkState"))->accessibleName().toStdString();
    };
    Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(Form().Scale(), 0.75);
    EXPECT_NE(line(), "This is the smallest size.");
    Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(line(), "This is the smallest size.");
    for (int step = 0; step < 12; ++step)
        Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(line(),
              Form().Scale() == 3 ? "This is the largest size." : "This is as large as the screen has room for.");
    Form().SetLinkLine({.Text = "Link off", .News = {}});
    EXPECT_NE(line(), "Link off") << "the words stand for a moment";
    EXPECT_TRUE(QTest::qWaitFor([&line] { return line() == "Link off"; }, 20'000)) << line();
}

TEST_F(ZoomOfTheWindow, SaysThatTheScreenHasNoMoreRoom) {
    QWidget bar; // the screen is 800x800
    bar.setFixedHeight(250);
    Form().PutBelow(bar);
    for (int step = 0; step < 12; ++step)
        Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_LT(Form().Scale(), 3);
    EXPECT_EQ(Form().findChild<QLabel*>(QStringLiteral("linkState"))->accessibleName().toStdString(),
              "This is as large as the screen has room for.");
}

TEST_F(ZoomOfTheWindow, LeavesTheWindowAsWideAsItWas) {
    const int before = Form().width();
    for (int step = 0; step < 12; ++step)
        Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Form().width(), before) << Form().Scale();
}

TEST_F(ZoomOfTheWindow, IsChangedWhileAFieldIsOpen) {
    OpenRecord();
    Tap(0, 1);
    const Text before = Field().Contents();
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Form().Scale(), 1.25);
    EXPECT_EQ(Field().Contents(), before);
    EXPECT_TRUE(Line().hasFocus());
}

TEST_F(ZoomOfTheWindow, HasEntriesInTheMenu) {
    std::vector<std::string> names;
    for (const QAction* const entry : Form().Menu().List().actions())
        names.push_back(entry->text().remove(QLatin1Char('&')).toStdString());
    EXPECT_THAT(names, testing::IsSupersetOf({"Larger", "Smaller", "Usual size"}));
}

TEST_F(ZoomOfTheWindow, IsRemembered) {
    EXPECT_EQ(Later(), 1);
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Later(), 1.25);
}

TEST_F(ZoomOfTheWindow, TheCommandLineComesFirst) {
    Remembered.Save("Scale", "1.5");
    EXPECT_EQ(Later(), 1.5);
    Of.Scale = 2;
    EXPECT_EQ(Later(), 2);
}

TEST_F(ZoomOfTheWindow, AWrongOneThatIsStoredIsNotUsed) {
    for (const char* const wrong : {"", "large", "0", "1000", "-1"}) {
        Remembered.Save("Scale", wrong);
        EXPECT_EQ(Later(), 1) << wrong;
    }
}

TEST_F(ZoomOfTheWindow, SaysWhenTheScreenHasNoRoom) {
    Form().SetScale(4);
    Zoom.TellLimit(4);
    EXPECT_TRUE(Tells());
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_FALSE(Tells());
}

/// A person with a large font needs a large form.
TEST_F(ZoomOfTheWindow, FollowsTheFontOfTheDesktop) {
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPixelSize(22);
    QApplication::setFont(large);
    EXPECT_EQ(Later(), 1.5);
    QApplication::setFont(before);
    EXPECT_EQ(Later(), 1);
}

class ZoomOfASmallDevice : public ZoomOfTheWindow {
protected:
    ZoomOfASmallDevice() : ZoomOfTheWindow(1) { Of.UsualScale = 2; }
};

TEST_F(ZoomOfASmallDevice, IsNotRemembered) {
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(Form().Scale(), 1.25);
    EXPECT_EQ(Remembered.Get("Scale"), "");
    Remembered.Save("Scale", "3");
    EXPECT_EQ(Later(), 2);
}

TEST(StepsOfTheScale, LeadUpAndDown) {
    EXPECT_EQ(companion::LargerScale(2), 2.5);
    EXPECT_EQ(companion::LargerScale(1.3), 1.5);
    EXPECT_EQ(companion::LargerScale(3), 3);
    EXPECT_EQ(companion::SmallerScale(4), 3);
    EXPECT_EQ(companion::SmallerScale(1.3), 1.25);
    EXPECT_EQ(companion::SmallerScale(0.75), 0.75);
    EXPECT_EQ(companion::StepUpTo(1.27), 1.25);
    EXPECT_EQ(companion::ScaleText(1.25), "1.25");
}

} // namespace
} // namespace quorin
