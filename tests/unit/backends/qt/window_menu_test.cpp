// SPDX-License-Identifier: MIT
#include "backends/qt/window_menu.h"

#include "tests/support/in_a_window.h"

#include <QAccessible>

namespace windowtest {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t Palm = 1;

class MenuOfTheWindow : public InAWindow {
protected:
    explicit MenuOfTheWindow(std::int32_t deviceType = 0) : InAWindow(OfType(deviceType)) {
        for (const char* const name : {"First", "Second"})
            Menu().Add({QString::fromLatin1(name), name[0] == 'S' ? QKeySequence(Qt::CTRL | Qt::Key_O) : QKeySequence(),
                        [this, name] { Ran.emplace_back(name); }});
    }
    backends::qt::WindowMenu& Menu() { return Form().Menu(); }
    bool IsOpen() { return Menu().List().isVisible(); }
    void PressInList(Qt::Key key) {
        QTest::keyClick(&Menu().List(), key);
        Settle();
    }

    std::vector<std::string> Ran;
};

TEST_F(MenuOfTheWindow, OpensByAClickAndRunsWhatIsChosen) {
    Click(Menu(), Menu().rect().center());
    ASSERT_TRUE(IsOpen());
    Click(Menu().List(), Menu().List().actionGeometry(Menu().List().actions().back()).center());
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(Ran, ElementsAre("Second"));
}

TEST_F(MenuOfTheWindow, OpensAboveItsButton) {
    Click(Menu(), Menu().rect().center());
    const QRect button(Menu().mapToGlobal(QPoint(0, 0)), Menu().size());
    constexpr int Frame = 4; // pixels that a window system may put around it
    EXPECT_NEAR(Menu().List().geometry().bottom(), button.top(), Frame);
    EXPECT_NEAR(Menu().List().geometry().right(), button.right(), Frame);
}

TEST_F(MenuOfTheWindow, IsUsedByKeysAlone) {
    for (const auto& [key, held] : {std::pair{Qt::Key_F10, Qt::ShiftModifier}, {Qt::Key_Menu, Qt::NoModifier}}) {
        Ran.clear();
        Press(key, held);
        ASSERT_TRUE(IsOpen());
        PressInList(Qt::Key_Return);
        EXPECT_FALSE(IsOpen());
        EXPECT_THAT(Ran, ElementsAre("First"));
    }
}

TEST_F(MenuOfTheWindow, HasEntriesWithKeysOfTheirOwn) {
    Press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_THAT(Ran, ElementsAre("Second"));
}

TEST_F(MenuOfTheWindow, RunsNothingByAKeyWhileABoxIsOpen) {
    AskInABox(platform::BoxButtons::Ok, [this] {
        QTest::keyClick(Device.Platform.boxes.Dialog(), Qt::Key_O, Qt::ControlModifier);
        Settle();
        Device.Hand.PressBoxButton(platform::BoxAnswer::Ok);
    });
    EXPECT_THAT(Ran, IsEmpty());
}

TEST_F(MenuOfTheWindow, LeavesTheFocusToTheForm) {
    const auto* const before = Holder();
    Click(Menu(), Menu().rect().center());
    PressInList(Qt::Key_Escape);
    EXPECT_EQ(Holder(), before);
    EXPECT_FALSE(Menu().hasFocus());
}

TEST_F(MenuOfTheWindow, HasANameForAScreenReader) {
    QAccessibleInterface* const button = QAccessible::queryAccessibleInterface(&Menu());
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(QAccessible::Name).toStdString(), "Window menu");
}

TEST_F(MenuOfTheWindow, LeavesTheLineOfTheLinkItsPlace) {
    Form().SetLinkLine({std::string(300, 'x'), companion::LineLook::Plain, ""});
    const auto* const line = Form().findChild<QLabel*>(QStringLiteral("linkState"));
    EXPECT_FALSE(line->geometry().intersects(Menu().geometry()));
    EXPECT_LE(line->fontMetrics().horizontalAdvance(line->text()), line->width());
    EXPECT_LE(Menu().geometry().right(), Form().width());
}

class MenuBesideADevice : public MenuOfTheWindow {
protected:
    MenuBesideADevice() : MenuOfTheWindow(Palm) {}
};

TEST_F(MenuBesideADevice, OpensToo) {
    EXPECT_LE(Menu().geometry().right(), Form().width());
    Press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(IsOpen());
}

} // namespace
} // namespace windowtest
