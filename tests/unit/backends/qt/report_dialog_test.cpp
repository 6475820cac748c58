// SPDX-License-Identifier: MIT
#include "backends/qt/report_dialog.h"

#include "tests/support/in_a_window.h"

#include <QLayout>

namespace windowtest {
namespace {

using backends::qt::ReportDialog;
using backends::qt::ReportSource;
using testing::ElementsAre;
using testing::HasSubstr;

class ReportInAWindow : public InAWindow {
protected:
    ReportSource Source() {
        return {.Days = [this] { return Days; },
                .Text = [](const std::string& day, bool isWhole) { return (isWhole ? "whole " : "masked ") + day; },
                .Save =
                    [this](const std::string& path, const std::string& text, bool replaces) {
                        Saved.push_back(path + "|" + text + (replaces ? "|over" : ""));
                        return replaces ? ReportSource::Outcome{} : Outcome;
                    },
                .Path = [] { return std::string("/home/a/report.txt"); }};
    }
    QPushButton& Button(const char* text) {
        for (QPushButton* const button : Dialog.findChildren<QPushButton*>())
            if (button->text() == QString::fromUtf8(text))
                return *button;
        ADD_FAILURE() << "no " << text;
        return *Dialog.findChild<QPushButton*>();
    }
    void Press(const char* text) { QTest::mouseClick(&Button(text), Qt::LeftButton); }
    std::string Preview() { return Dialog.findChild<QPlainTextEdit*>()->toPlainText().toStdString(); }
    std::string State() { return Dialog.findChild<QLabel*>(QStringLiteral("reportState"))->text().toStdString(); }
    QCheckBox& Whole() { return *Dialog.findChild<QCheckBox*>(); }

    std::vector<std::string> Days{"2026-11-22", "2026-11-21"};
    std::vector<std::string> Saved;
    ReportSource::Outcome Outcome;
    ReportDialog Dialog{Source(), Form()};
};

TEST_F(ReportInAWindow, ShowsTheFileBeforeItIsSaved) {
    Dialog.Open();
    EXPECT_EQ(Preview(), "masked 2026-11-22");
    EXPECT_THAT(Saved, testing::IsEmpty());
    Press("&Save");
    EXPECT_THAT(Saved, ElementsAre("/home/a/report.txt|masked 2026-11-22"));
    EXPECT_EQ(State(), "Saved: /home/a/report.txt");
}

TEST_F(ReportInAWindow, IsUnmaskedOnlyIfABoxIsTicked) {
    Dialog.Open();
    QTest::keyClick(&Whole(), Qt::Key_Space);
    EXPECT_EQ(Preview(), "whole 2026-11-22");
    Dialog.close();
    Dialog.Open();
    EXPECT_EQ(Preview(), "masked 2026-11-22");
    EXPECT_FALSE(Whole().isChecked());
}

TEST_F(ReportInAWindow, IsOfTheDayThatAPersonChooses) {
    Dialog.Open();
    auto* const days = Dialog.findChild<QComboBox*>();
    QTest::keyClick(days, Qt::Key_Down);
    EXPECT_EQ(Preview(), "masked 2026-11-21");
}

TEST_F(ReportInAWindow, AsksBeforeAFileIsReplaced) {
    Outcome.Result = ReportSource::Step::Exists;
    Dialog.Open();
    EXPECT_FALSE(Button("&Replace it").isVisible());
    Press("&Save");
    EXPECT_EQ(State(), "There is a file of this name already.");
    ASSERT_TRUE(Button("&Replace it").isVisible());
    Press("&Replace it");
    EXPECT_EQ(Saved.back(), "/home/a/report.txt|masked 2026-11-22|over");
    EXPECT_FALSE(Button("&Replace it").isVisible());
}

TEST_F(ReportInAWindow, TakesTheQuestionBackAtEscape) {
    Outcome.Result = ReportSource::Step::Exists;
    Dialog.Open();
    Press("&Save");
    QTest::keyClick(Dialog.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(Button("&Replace it").isVisible());
    EXPECT_EQ(State(), "");
    ASSERT_TRUE(Dialog.isVisible());
    QTest::keyClick(Dialog.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(Dialog.isVisible());
}

TEST_F(ReportInAWindow, IsSavedAsAPersonHasChangedIt) {
    Dialog.Open();
    auto* const text = Dialog.findChild<QPlainTextEdit*>();
    for (int character = 0; character < 7; ++character)
        QTest::keyClick(text, Qt::Key_Delete);
    Press("&Save");
    EXPECT_THAT(Saved, ElementsAre("/home/a/report.txt|2026-11-22"));
    EXPECT_FALSE(Whole().isEnabled()) << "the text would be made anew";
    Dialog.close();
    Dialog.Open();
    EXPECT_EQ(Preview(), "2026-11-22") << "the work of a person is kept";
    Press("&Undo my changes");
    EXPECT_EQ(Preview(), "masked 2026-11-22");
    EXPECT_TRUE(Whole().isEnabled());
    EXPECT_FALSE(Button("&Undo my changes").isVisible());
}

TEST_F(ReportInAWindow, ReplacesNoFileOfAnotherName) {
    Outcome.Result = ReportSource::Step::Exists;
    Dialog.Open();
    Press("&Save");
    QTest::keyClicks(Dialog.findChild<QLineEdit*>(), QStringLiteral("2"));
    EXPECT_FALSE(Button("&Replace it").isVisible());
    EXPECT_EQ(State(), "");
}

TEST_F(ReportInAWindow, SaysWhyItIsNotSaved) {
    Outcome = {ReportSource::Step::Failed, "the disk is full"};
    Dialog.Open();
    Press("&Save");
    EXPECT_THAT(State(), HasSubstr("Not saved: the disk is full"));
    Dialog.findChild<QLineEdit*>()->clear();
    Press("&Save");
    EXPECT_THAT(State(), HasSubstr("Say where"));
    EXPECT_EQ(Saved.size(), 1u);
}

TEST_F(ReportInAWindow, SaysWhatGoesIn) {
    std::string words;
    for (const QLabel* const label : Dialog.findChildren<QLabel*>())
        words += label->text().toStdString();
    for (const char* const part : {"versions", "settings", "masked", "values", "names", "Nothing is sent"})
        EXPECT_THAT(words, HasSubstr(part));
}

TEST_F(ReportInAWindow, DoesNotStopTheFormAndClosesByEsc) {
    Dialog.Open();
    EXPECT_FALSE(Dialog.isModal());
    EXPECT_EQ(Dialog.parentWidget(), nullptr);
    QTest::keyClick(&Dialog, Qt::Key_Escape);
    EXPECT_FALSE(Dialog.isVisible());
}

TEST_F(ReportInAWindow, FitsOnASmallScreen) {
    Dialog.resize(5000, 5000);
    Dialog.Open();
    EXPECT_LE(Dialog.height(), Form().screen()->availableGeometry().height());
    EXPECT_LE(Dialog.minimumSizeHint().width(), 440);
    EXPECT_LE(Dialog.minimumSizeHint().height(), 400);
    Dialog.FitInto(QSize(392, 192)); // 800x480 pixels, two for one
    EXPECT_LE(Dialog.layout()->totalMinimumHeightForWidth(392), 192);
    Dialog.FitInto(QSize(720, 560));
    EXPECT_GT(Dialog.layout()->totalMinimumHeightForWidth(392), 192) << "the words at its head are back";
}

} // namespace
} // namespace windowtest
