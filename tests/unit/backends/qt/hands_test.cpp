// SPDX-License-Identifier: MIT
// Input that meets a change: a key that is released elsewhere, a page that is scrolled under an open field, a question
// that opens while the user taps or types.
#include "src/view/input_fields.h"
#include "src/view/navigation.h"
#include "src/view/prompt.h"
#include "tests/support/in_a_window.h"

#include <QAbstractButton>
#include <QMenuBar>
#include <QWheelEvent>

namespace windowtest {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;

class Hands : public InAWindow {
protected:
    Hands() {
        OpenRecord();
        Repaint();
    }
    QWidget& KeyWidget() { return *Form().focusWidget(); }
    void LetGo(Qt::Key key) {
        QTest::keyRelease(&KeyWidget(), key);
        Settle();
    }
};

TEST_F(Hands, GoBackOnceByOneEscape) {
    Press(Qt::Key_Escape);
    EXPECT_EQ(Screen(), modQuorin::ScrDownloads);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Screen(), modQuorin::ScrDrivers) << "and not further, when the key climbs to what lies around the form";
    Press(Qt::Key_Escape);
    EXPECT_EQ(Screen(), modQuorin::ScrMain);
}

TEST_F(Hands, ChangeNothingByReleasingAKeyPressedElsewhere) {
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Right, Qt::Key_Down, Qt::Key_PageDown})
        LetGo(key);
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
    EXPECT_EQ(Main().Row(), 0);
}

TEST_F(Hands, CloseAMenuByEscapeAndNothingElse) {
    Press(Qt::Key_F1);
    QWidget* const list = QApplication::activePopupWidget();
    ASSERT_NE(list, nullptr);
    QTest::keyPress(list, Qt::Key_Escape);
    Settle();
    LetGo(Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
}

TEST_F(Hands, WalkTheMenuBarWithoutTheForm) {
    auto& bar = *Form().findChild<QMenuBar*>();
    bar.setFocus(Qt::MenuBarFocusReason);
    Settle();
    ASSERT_EQ(Form().focusWidget(), &bar);
    QTest::keyClick(&bar, Qt::Key_Right);
    QTest::keyClick(&bar, Qt::Key_Escape);
    Settle();
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
    EXPECT_EQ(Main().Row(), 0);
}

TEST_F(Hands, AnswerNoByEscapeAndStayOnTheScreen) {
    AskInABox(BoxButtons::YesNo, [this] { QTest::keyPress(Device.Platform.boxes.Dialog(), Qt::Key_Escape); });
    LetGo(Qt::Key_Escape);
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
}

// A field, and what can happen to it.

class HandsOnAField : public Hands {
protected:
    void Wheel(int turns) {
        const QPoint place = Middle(0, 1);
        QWheelEvent event(place, Grid().mapToGlobal(place), {}, {0, -120 * turns}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Grid(), &event);
        Settle();
    }
};

TEST_F(HandsOnAField, CloseItWithItsTextWhenTheyMoveThePage) {
    ShowRows(60);
    Main().SetRow(2);
    modPDAUI::BeginCellEdit(2, 0);
    Settle();
    ASSERT_TRUE(Field().Visible());
    Type("x");
    const Text text = Field().Contents();
    Wheel(1);
    EXPECT_GT(Main().TopRow(), 0);
    EXPECT_FALSE(Field().Visible());
    EXPECT_EQ(Cell(2, 0), text);
}

TEST_F(HandsOnAField, KeepItWhenThePageCantMove) {
    Tap(2, 1);
    ASSERT_TRUE(Field().Visible());
    Wheel(1);
    EXPECT_TRUE(Field().Visible());
}

TEST_F(HandsOnAField, KeepThePromptsTextAtTab) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Press(Qt::Key_Tab);
    EXPECT_TRUE(Field().Visible());
    EXPECT_EQ(Field().Contents(), u"ab");
    Type("c");
    EXPECT_EQ(Field().Contents(), u"abc");
}

TEST_F(HandsOnAField, TypeBlanksThatDoNotBreak) {
    Ask(modPDAUI::PromptKind::Text, u"a\u00A0b");
    Type("c");
    EXPECT_EQ(Field().Contents(), u"a\u00A0bc");
}

// A question.

TEST_F(Hands, ArePassedOverByAQuestionWhileTheyType) {
    Tap(2, 1);
    Type("x");
    const BoxAnswer answer = AskInABox(BoxButtons::YesNo, [this] {
        QMessageBox& box = *Device.Platform.boxes.Dialog();
        QTest::keyClick(&box, Qt::Key_Y);
        QTest::keyClick(&box, Qt::Key_Return);
        Settle();
        EXPECT_TRUE(box.isVisible()) << "the keys were meant for the field";
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(answer, BoxAnswer::Yes);
}

TEST_F(Hands, PressNothingWhenAQuestionOpensUnderTheFinger) {
    Down(Grid(), Middle(1, 1));
    ASSERT_TRUE(Device.Platform.tmrHoldEvent.Enabled());
    AskInABox(BoxButtons::YesNo, [this] {
        Pass(2000);
        Device.Hand.PressBoxButton(BoxAnswer::No);
    });
    EXPECT_FALSE(Device.Platform.tmrHoldEvent.Enabled());
    Tap(2, 1);
    EXPECT_TRUE(Field().Visible()) << "the next tap is a tap like any other";
}

TEST_F(Hands, ReadALongQuestionOnOneScreen) {
    QString shown;
    QString whole;
    Device.WillDo([&] {
        shown = Device.Platform.boxes.Dialog()->text();
        whole = Device.Platform.boxes.Dialog()->detailedText();
        Device.Hand.PressBoxButton(BoxAnswer::No);
    });
    const Text message = u"Replace:\n" + Text(5000, u'a') + u"\nWith:\n" + Text(5000, u'b') + u"?";
    Device.Platform.boxes.Show(message, BoxButtons::YesNo, platform::BoxIcon::None, u"");
    EXPECT_LT(shown.size(), 700);
    EXPECT_TRUE(shown.startsWith(QStringLiteral("Replace:\naaa")));
    EXPECT_TRUE(shown.endsWith(QStringLiteral("bbb?")));
    EXPECT_EQ(whole.toStdU16String(), message);
}

} // namespace
} // namespace windowtest
