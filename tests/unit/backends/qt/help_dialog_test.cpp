// SPDX-License-Identifier: MIT
#include "backends/qt/help_dialog.h"

#include "tests/support/in_a_window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QScrollBar>

namespace windowtest {
namespace {

using backends::qt::HelpDialog;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class HelpInAWindow : public InAWindow {
protected:
    HelpInAWindow() {
        Form().HelpWanted = [this] { Dialog.Toggle("screen.md"); };
        std::string lines;
        for (int line = 0; line < 200; ++line)
            lines += "A long line of text.\n\n";
        Pages = {{"screen.md", "This screen", "# Start\n\nSee [the limits](limits.md#while-typing).\n"},
                 {"limits.md", "Limits", "# Limits\n\n" + lines + "## While typing\n\nNever *twice*.\n\n" + lines}};
    }

    backends::qt::PageBrowser& Browser() {
        return *static_cast<backends::qt::PageBrowser*>(Dialog.findChild<QTextBrowser*>());
    }
    std::string PageText() { return Browser().toPlainText().toStdString(); }
    QComboBox& Titles() { return *Dialog.findChild<QComboBox*>(); }
    QLineEdit& Words() { return *Dialog.findChild<QLineEdit*>(); }
    QPushButton& Button(const char* text) {
        for (QPushButton* const button : Dialog.findChildren<QPushButton*>())
            if (button->text() == QString::fromUtf8(text))
                return *button;
        ADD_FAILURE() << "no " << text;
        return *Dialog.findChild<QPushButton*>();
    }
    void Open() {
        Press(Qt::Key_F1, Qt::ControlModifier);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Dialog));
        Settle();
    }
    void ClickLink() {
        QTextCursor link = Browser().document()->find(QStringLiteral("limits"));
        Browser().setTextCursor(link);
        Click(*Browser().viewport(), Browser().cursorRect(link).center() - QPoint(4, 0));
    }
    std::string Found() { return Dialog.findChild<QLabel*>(QStringLiteral("found"))->text().toStdString(); }
    /// The heading is at the top of the page.
    bool IsAtTop(const char* words) {
        const QTextCursor place = Browser().document()->find(QString::fromLatin1(words));
        const QRect at = Browser().cursorRect(place);
        return at.top() >= 0 && at.top() < 3 * at.height();
    }
    bool IsSeen(const char* words) {
        const QTextCursor place = Browser().document()->find(QString::fromLatin1(words));
        return !place.isNull() && Browser().viewport()->rect().contains(Browser().cursorRect(place).center());
    }

    std::vector<companion::HelpPage> Pages;
    HelpDialog Dialog{[this] { return Pages; }, Form()};
};

TEST_F(HelpInAWindow, OpensByCtrlF1AndClosesByIt) {
    Open();
    EXPECT_THAT(PageText(), HasSubstr("See the limits."));
    EXPECT_EQ(Titles().currentText().toStdString(), "This screen");
    QTest::keyClick(Dialog.windowHandle(), Qt::Key_F1, Qt::ControlModifier);
    EXPECT_FALSE(Dialog.isVisible());
}

TEST_F(HelpInAWindow, OpensByAQuestionMarkOutsideOfAField) {
    QTest::keyClick(Form().windowHandle(), Qt::Key_Question, Qt::ShiftModifier);
    Settle();
    EXPECT_TRUE(Dialog.isVisible());
}

TEST_F(HelpInAWindow, LeavesAQuestionMarkToAnOpenField) {
    OpenRecord();
    Pass(600);
    Tap(0, 1);
    ASSERT_TRUE(Field().Visible());
    Type("?");
    EXPECT_FALSE(Dialog.isVisible());
    EXPECT_EQ(Field().Contents(), u"a?");
}

TEST_F(HelpInAWindow, LeavesAQuestionMarkToAPrompt) {
    Ask(modPDAUI::PromptKind::Line, u"");
    Type("why?");
    EXPECT_EQ(Field().Contents(), u"why?");
    EXPECT_FALSE(Dialog.isVisible());
}

TEST_F(HelpInAWindow, OpensOverAMessageBoxAndTakesTheKeyboard) {
    AskInABox(platform::BoxButtons::Ok, [this] {
        QTest::keyClick(Device.Platform.boxes.Dialog(), Qt::Key_F1, Qt::ControlModifier);
        Settle();
        EXPECT_TRUE(Dialog.isVisible());
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Dialog));
        QTest::mouseClick(&Button("Close"), Qt::LeftButton);
        EXPECT_FALSE(Dialog.isVisible());
        Device.Hand.PressBoxButton(platform::BoxAnswer::Ok);
    });
}

TEST_F(HelpInAWindow, DoesNotStopTheForm) {
    OpenRecord();
    Pass(600);
    Tap(0, 1);
    Open();
    QTest::keyClicks(&Words(), QStringLiteral("twice"));
    EXPECT_TRUE(Field().Visible());
    EXPECT_EQ(Field().Contents(), u"a");
    EXPECT_FALSE(Dialog.isModal());
    EXPECT_EQ(Dialog.parentWidget(), nullptr);
}

TEST_F(HelpInAWindow, FollowsALinkToItsHeadingAndGoesBack) {
    Open();
    EXPECT_FALSE(Button("&Back").isEnabled());
    ClickLink();
    EXPECT_EQ(Titles().currentText().toStdString(), "Limits");
    EXPECT_TRUE(IsAtTop("While typing"));
    QTest::mouseClick(&Button("&Back"), Qt::LeftButton);
    EXPECT_THAT(PageText(), HasSubstr("See the limits."));
    EXPECT_EQ(Titles().currentText().toStdString(), "This screen");
}

TEST_F(HelpInAWindow, ListsThePages) {
    Open();
    Titles().setFocus();
    QTest::keyClick(&Titles(), Qt::Key_Down);
    EXPECT_THAT(PageText(), HasSubstr("Never twice."));
}

TEST_F(HelpInAWindow, FindsWordsInAllPages) {
    Open();
    QTest::keyClicks(&Words(), QStringLiteral("never twice"));
    QTest::keyClick(&Words(), Qt::Key_Return);
    EXPECT_EQ(Titles().currentText().toStdString(), "Limits");
    EXPECT_EQ(Browser().textCursor().selectedText().toStdString(), "Never twice");
    EXPECT_TRUE(IsSeen("Never twice"));
    EXPECT_EQ(Found(), "in 1 page");
}

TEST_F(HelpInAWindow, FindsTheNextPlaceAndAfterTheLastTheFirst) {
    Open();
    QTest::keyClicks(&Words(), QStringLiteral("limits"));
    EXPECT_EQ(Found(), "in 2 pages");
    QTest::keyClick(&Words(), Qt::Key_Return);
    EXPECT_EQ(Titles().currentIndex(), 0);
    EXPECT_EQ(Browser().textCursor().selectedText().toStdString(), "limits");
    QTest::keyClick(&Words(), Qt::Key_Return);
    EXPECT_EQ(Titles().currentIndex(), 1);
    QTest::mouseClick(&Button("&Next"), Qt::LeftButton);
    EXPECT_EQ(Titles().currentIndex(), 0);
    EXPECT_EQ(Browser().textCursor().selectedText().toStdString(), "limits");
}

TEST_F(HelpInAWindow, MovesOnlyOnceTheWordsStand) {
    Open();
    ClickLink();
    const int before = Browser().verticalScrollBar()->value();
    ASSERT_GT(before, 0);
    QTest::keyClicks(&Words(), QStringLiteral("see the"));
    EXPECT_EQ(Found(), "in 1 page");
    EXPECT_EQ(Titles().currentText().toStdString(), "Limits");
    EXPECT_EQ(Browser().verticalScrollBar()->value(), before);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Browser().textCursor().hasSelection(); }, 20'000));
    EXPECT_EQ(Titles().currentText().toStdString(), "This screen");
    QTest::keyClicks(&Words(), QStringLiteral("bra"));
    QTest::keyClick(&Words(), Qt::Key_Return);
    EXPECT_EQ(Found(), "not found");
    EXPECT_EQ(Titles().currentText().toStdString(), "This screen") << "nothing moves";
}

TEST_F(HelpInAWindow, SaysThatNothingWasFound) {
    Open();
    QTest::keyClicks(&Words(), QStringLiteral("zebra"));
    EXPECT_EQ(Found(), "not found");
    Words().clear();
    EXPECT_EQ(Found(), "");
}

TEST_F(HelpInAWindow, ClosesByEscButTheListOfPagesFirst) {
    Open();
    Titles().showPopup();
    QTest::keyClick(Titles().view(), Qt::Key_Escape);
    EXPECT_FALSE(Titles().view()->isVisible());
    EXPECT_TRUE(Dialog.isVisible());
    QTest::keyClick(Dialog.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(Dialog.isVisible());
}

TEST_F(HelpInAWindow, ShowsWhatIsNewWhenItIsOpenedAgain) {
    Open();
    Pages[0].Markdown = "# Another screen\n";
    Dialog.Open("screen.md");
    EXPECT_THAT(PageText(), HasSubstr("Another screen"));
}

TEST_F(HelpInAWindow, CopiesThePage) {
    Open();
    QTest::mouseClick(&Button("&Copy the page"), Qt::LeftButton);
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("See the limits."));
}

TEST_F(HelpInAWindow, LeadsToTheReportOfAProblem) {
    int wanted = 0;
    Dialog.ReportWanted = [&wanted] { ++wanted; };
    Open();
    QTest::mouseClick(&Button("&Report a problem…"), Qt::LeftButton);
    EXPECT_EQ(wanted, 1);
}

TEST_F(HelpInAWindow, IsNoLargerThanTheScreen) {
    Dialog.resize(5000, 5000);
    Open();
    EXPECT_LE(Dialog.height(), Form().screen()->availableGeometry().height());
    EXPECT_GE(Dialog.y(), 0);
    EXPECT_LE(Dialog.minimumSizeHint().width(), 400);
    EXPECT_LE(Dialog.minimumSizeHint().height(), 240);
}

TEST_F(HelpInAWindow, LooksForNothingOutsideOfItsPages) {
    Pages[0].Markdown = "# Start\n\n![a picture](file:///etc/hostname) and text\n";
    Open();
    EXPECT_THAT(PageText(), HasSubstr("and text"));
    Browser().ShowPage(QStringLiteral("../../etc/hostname"));
    EXPECT_EQ(PageText(), "");
}

} // namespace
} // namespace windowtest
