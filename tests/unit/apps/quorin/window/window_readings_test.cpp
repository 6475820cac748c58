// SPDX-License-Identifier: MIT
// The panel of readings from one run to the next.
#include "apps/quorin/window_watch.h"
#include "tests/support/in_a_window.h"

namespace quorin {
namespace {

class PanelOfReadings : public windowtest::InAWindow {
protected:
    PanelOfReadings() {
        OpenRecord();
        Form().show();
        Form().activateWindow();
        Settle();
        Watch.Attach(Device.Platform);
    }
    /// What the next run finds on disk.
    std::string LeftBehind() const { return WindowSettings(Device.Folder.Path() / "settings.ini").Get("Readings"); }
    static QWidget* Panel() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == QStringLiteral("readings") && window->isVisible())
                return window;
        return nullptr;
    }

    WindowSettings Remembered{Device.Folder.Path() / "settings.ini"};
    WindowWatch Watch;
};

TEST_F(PanelOfReadings, IsClosedUntilAPersonOpensIt) {
    Watch.RestoreReadings(Remembered);
    EXPECT_EQ(Panel(), nullptr);
    Press(Qt::Key_F4);
    EXPECT_NE(Panel(), nullptr);
}

TEST_F(PanelOfReadings, IsOpenAgainIfTheLastRunLeftItSo) {
    Remembered.Save("Readings", "open");
    Watch.RestoreReadings(Remembered);
    EXPECT_NE(Panel(), nullptr);
}

TEST_F(PanelOfReadings, IsRememberedWhenOpenedAndWhenClosed) {
    Watch.RestoreReadings(Remembered);
    Press(Qt::Key_F4);
    EXPECT_EQ(LeftBehind(), "open");
    Panel()->close();
    EXPECT_EQ(LeftBehind(), "closed");
}

TEST_F(PanelOfReadings, LeavesTheKeyboardToTheFormAtTheStart) {
    Remembered.Save("Readings", "open");
    Watch.RestoreReadings(Remembered);
    Settle();
    ASSERT_NE(Panel(), nullptr);
    EXPECT_EQ(QApplication::activeWindow(), &Form());
    Press(Qt::Key_F4);
    EXPECT_EQ(QApplication::activeWindow(), Panel()) << "F4 goes to the panel";
    EXPECT_EQ(LeftBehind(), "open");
}

} // namespace
} // namespace quorin
