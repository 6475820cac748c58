// SPDX-License-Identifier: MIT
// The form's focus and Qt's, which follows it.
#include "src/view/input_fields.h"
#include "src/view/prompt.h"
#include "tests/support/in_a_window.h"

#include <QMenu>

namespace windowtest {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RealFocus : public InAWindow {
protected:
    RealFocus() {
        OpenRecord();
        Tap(1, 1);
        EXPECT_EQ(Holder(), &Field());
        Watch(Field());
        Watch(Main());
        Watch(Device.Platform.cboInputField);
    }
    void Watch(backends::FocusTarget& control) {
        const auto wrap = [this, &control](std::function<void()>& event, const char* what) {
            event = [this, &control, what, old = event] {
                Heard.push_back(std::string(control.Name) + what);
                if (old)
                    old();
            };
        };
        wrap(control.GotFocus, " got");
        wrap(control.LostFocus, " lost");
    }

    std::vector<std::string> Heard;
};

TEST_F(RealFocus, IsLostByTheOneBeforeTheOtherGetsIt) {
    Tap(0, 0);
    EXPECT_THAT(Heard, ElementsAre("txtInputField lost", "grdMain got"));
    EXPECT_EQ(QApplication::focusWidget(), &Grid());
}

TEST_F(RealFocus, FollowsTheProgram) {
    Main().SetFocus();
    EXPECT_THAT(Heard, ElementsAre("txtInputField lost", "grdMain got"));
    EXPECT_EQ(QApplication::focusWidget(), &Grid());
}

TEST_F(RealFocus, IsToldToTheProgramWhenQtMovesIt) {
    Grid().setFocus(Qt::TabFocusReason);
    EXPECT_THAT(Heard, ElementsAre("txtInputField lost", "grdMain got"));
    EXPECT_EQ(Holder(), &Main());
}

TEST_F(RealFocus, StaysWhileAnotherWindowIsInFront) {
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    Settle();
    EXPECT_TRUE(Field().Visible());
    EXPECT_EQ(Holder(), &Field());
    other.hide();
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    Settle();
    EXPECT_THAT(Heard, IsEmpty());
    EXPECT_TRUE(Line().hasFocus());
    Type("x");
    EXPECT_EQ(Cell(1, 1), u"bx");
}

TEST_F(RealFocus, StaysWhileAMenuIsOpen) {
    Press(Qt::Key_F1);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(Holder(), &Field());
    EXPECT_TRUE(Field().Visible());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTest::keyClick(Form().windowHandle(), Qt::Key_Escape); // out of the menu bar
    Settle();
    EXPECT_THAT(Heard, IsEmpty());
    EXPECT_TRUE(Line().hasFocus());
}

TEST_F(RealFocus, StaysWhileAMessageBoxIsOpen) {
    AskInABox(platform::BoxButtons::Ok, [this] {
        EXPECT_EQ(Holder(), &Field());
        EXPECT_TRUE(Field().Visible());
        Device.Hand.PressBoxButton(platform::BoxAnswer::Ok);
    });
    Settle();
    EXPECT_THAT(Heard, IsEmpty());
    Form().activateWindow(); // a desktop does this by itself
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    EXPECT_TRUE(Line().hasFocus());
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(RealFocus, StaysWithAControlThatIsDisabled) {
    Field().SetEnabled(false);
    EXPECT_EQ(Holder(), &Field());
    EXPECT_THAT(Heard, IsEmpty());
    Field().SetEnabled(true);
    EXPECT_THAT(Heard, IsEmpty());
    EXPECT_TRUE(Line().hasFocus());
}

TEST_F(RealFocus, IsNotTakenByADisabledGridThatIsClicked) {
    Main().SetEnabled(false);
    Tap(0, 0);
    EXPECT_EQ(Holder(), &Field());
    EXPECT_THAT(Heard, IsEmpty());
    EXPECT_TRUE(Line().hasFocus());
}

TEST_F(RealFocus, IsNotTakenByTheEmptyPartOfTheForm) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Heard.clear();
    Click(Form().Screen(), QPoint(Form().Screen().width() / 2, Form().Screen().height() - 10));
    EXPECT_EQ(Holder(), &Field());
    Type("c");
    EXPECT_EQ(Field().Contents(), u"abc");
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(RealFocus, IsNobodysOnceItsControlIsHidden) {
    Field().SetVisible(false);
    EXPECT_EQ(Holder(), nullptr);
    EXPECT_THAT(Heard, ElementsAre("txtInputField lost"));
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(Device.Platform.native.TargetOf(QApplication::focusWidget()), nullptr);
    const std::int32_t row = Main().Row();
    Press(Qt::Key_Down);
    EXPECT_EQ(Main().Row(), row + 1) << "keys go to the grid then";
}

TEST_F(RealFocus, MovesOnAtTab) {
    Press(Qt::Key_Tab);
    ASSERT_FALSE(Heard.empty());
    EXPECT_EQ(Heard.front(), "txtInputField lost");
    EXPECT_EQ(Cell(1, 1), u"b");
    EXPECT_EQ(modPDAUI::Input.EditRow, 2) << "the field is over the next row";
    Press(Qt::Key_Tab);
    EXPECT_EQ(Holder(), &Main()) << "there is no other field";
    EXPECT_FALSE(Field().Visible());
}

TEST_F(RealFocus, MovesOnAtTabAlsoFromAPage) {
    Ask(modPDAUI::PromptKind::Text, u"a");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Field().Contents().find(u'\t'), Text::npos);
}

} // namespace
} // namespace windowtest
