// SPDX-License-Identifier: MIT
#include "backends/qt/conversions.h"
#include "backends/qt/fonts.h"
#include "src/app/commands.h"
#include "src/storage/keyed_tables.h"
#include "src/view/input_fields.h"
#include "src/view/prompt.h"
#include "tests/support/in_a_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>

#include <utility>

namespace {

std::function<void()> WhenItIsToCommit; ///< what the input method does then, once

} // namespace

/// Replaces Qt's own function in this program, because there is no input method here.
void QInputMethod::commit() {
    if (WhenItIsToCommit)
        std::exchange(WhenItIsToCommit, nullptr)();
}

namespace windowtest {
namespace {

using modFileSystem::Table;
using testing::ElementsAre;
using testing::IsEmpty;

class TextField : public InAWindow {
protected:
    /// Opens the text field over the cell of the driver's second field, whose text is "b".
    void EditCell() {
        OpenRecord();
        Tap(1, 1);
        ASSERT_TRUE(Field().Visible());
        Table.RecordDirty = false;
    }
    /// Records the field's events in order, each with the field's text and visibility at that moment.
    void Listen() {
        const auto wrap = [this](std::function<void()>& event, const char* name) {
            event = [this, name, old = event] {
                Heard.push_back(std::string(name) + " '" + modStringTools::ToBytes(Field().Contents()) + "'" +
                                (Field().Visible() ? "" : " hidden"));
                old();
            };
        };
        wrap(Field().Change, "change");
        wrap(Field().GotFocus, "got");
        wrap(Field().LostFocus, "lost");
    }
    void Commit(const QString& text) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
        Settle();
    }

    std::vector<std::string> Heard;
};

TEST_F(TextField, CoversItsCellAndTheLinesOfTheGrid) {
    EditCell();
    const QRect cell = Grid().CellRect(1, 1).translated(Grid().pos());
    EXPECT_EQ(Line().geometry(), cell.adjusted(0, 0, 1, 1));
    EXPECT_TRUE(Line().isVisible());
    EXPECT_FALSE(Page().isVisible());
}

TEST_F(TextField, StandsOverACellFurtherDownThePage) {
    OpenRecord();
    Tap(2, 1);
    const QRect cell = Grid().CellRect(2, 1).translated(Grid().pos());
    EXPECT_EQ(Line().geometry(), cell.adjusted(0, 0, 1, 1));
    EXPECT_EQ(Line().text(), QStringLiteral("c"));
}

TEST_F(TextField, BeginsWithTheTextOfTheCellAndTheCaretBehindIt) {
    OpenRecord("Place|Moisture|Remark\na|long one|c\n");
    Tap(1, 1);
    EXPECT_EQ(Line().text(), QStringLiteral("long one"));
    EXPECT_EQ(Line().cursorPosition(), 8);
    EXPECT_FALSE(Line().hasSelectedText());
    EXPECT_TRUE(Line().hasFocus());
}

TEST_F(TextField, IsFollowedByTheCellWithEachKey) {
    EditCell();
    Type("x");
    EXPECT_EQ(Cell(1, 1), u"bx");
    EXPECT_TRUE(Table.RecordDirty);
    Type("y");
    EXPECT_EQ(Cell(1, 1), u"bxy");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Cell(1, 1), u"bx");
}

TEST_F(TextField, RaisesOneChangeForAKey) {
    EditCell();
    Listen();
    Type("x");
    EXPECT_THAT(Heard, ElementsAre("change 'bx'"));
}

TEST_F(TextField, ChangesAlsoWhenTheProgramSetsIt) {
    EditCell();
    Listen();
    Field().SetContents(u"new");
    EXPECT_EQ(Cell(1, 1), u"new");
    EXPECT_TRUE(Table.RecordDirty);
    EXPECT_THAT(Heard, ElementsAre("change 'new'"));
    EXPECT_EQ(Line().text(), QStringLiteral("new"));
}

TEST_F(TextField, ChangesAlsoWhenTheProgramSetsItToWhatItHolds) {
    EditCell();
    Listen();
    Main().SetCell(1, 1, u"as a formula has left it");
    Field().SetContents(u"b");
    EXPECT_THAT(Heard, ElementsAre("change 'b'"));
    EXPECT_TRUE(Table.RecordDirty);
    EXPECT_EQ(Cell(1, 1), u"b");
}

TEST_F(TextField, IsHiddenThenEmptiedWhenTheFocusGoes) {
    EditCell();
    Listen();
    Tap(0, 0); // the name of a field: selects it, and edits nothing yet
    ASSERT_GE(Heard.size(), 2U);
    EXPECT_EQ(Heard[0], "lost 'b'");
    EXPECT_EQ(Heard[1], "change '' hidden");
    EXPECT_EQ(Cell(1, 1), u"b");
    EXPECT_FALSE(Table.RecordDirty);
}

TEST_F(TextField, WritesNothingWhenItIsSetWhileHidden) {
    EditCell();
    Field().SetVisible(false);
    Table.RecordDirty = false;
    Field().SetContents(u"unseen");
    EXPECT_EQ(Cell(1, 1), u"b");
    EXPECT_FALSE(Table.RecordDirty);
}

TEST_F(TextField, ChangesNothingWhenTheFocusGoesWhileItIsHidden) {
    EditCell();
    Field().SetVisible(false);
    Table.RecordDirty = false;
    Main().SetFocus();
    EXPECT_EQ(Cell(1, 1), u"b");
    EXPECT_FALSE(Table.RecordDirty);
    EXPECT_FALSE(modPDAUI::Input.InputFocused);
}

TEST_F(TextField, SaysThatItHasTheFocus) {
    EditCell();
    EXPECT_TRUE(modPDAUI::Input.InputFocused);
    EXPECT_EQ(Holder(), &Field());
    Main().SetFocus();
    EXPECT_FALSE(modPDAUI::Input.InputFocused);
    EXPECT_TRUE(Grid().hasFocus());
}

TEST_F(TextField, ClosesWithItsValueOnEnter) {
    EditCell();
    Type("x");
    Press(Qt::Key_Return);
    EXPECT_FALSE(Field().Visible());
    EXPECT_EQ(Cell(1, 1), u"bx");
    EXPECT_EQ(Holder(), &Main());
}

TEST_F(TextField, TakesWhatIsPasted) {
    EditCell();
    QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Cell(1, 1), u"bpasted");
    EXPECT_TRUE(Table.RecordDirty);
}

TEST_F(TextField, HasABlankForANulThatIsPasted) {
    EditCell();
    QGuiApplication::clipboard()->setText(QString(QChar(u'\0')) + QStringLiteral("p"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Cell(1, 1), u"b p");
}

TEST_F(TextField, HasNoLineEndsAlsoWhenSomeArePasted) {
    EditCell();
    QGuiApplication::clipboard()->setText(QStringLiteral("one\ntwo\r\nthree"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Cell(1, 1).find_first_of(u"\r\n\u2028\u2029"), Text::npos) << modStringTools::ToBytes(Cell(1, 1));
}

TEST_F(TextField, GivesWhatIsCopied) {
    EditCell();
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("b"));
    EXPECT_EQ(Cell(1, 1), u"b");
}

TEST_F(TextField, TakesWhatAnInputMethodCommits) {
    EditCell();
    Commit(QStringLiteral("\u6c34\U0001F600"));
    EXPECT_EQ(Cell(1, 1), u"b\u6c34\U0001F600");
    EXPECT_TRUE(Table.RecordDirty);
}

TEST_F(TextField, HasNothingOfATextThatAnInputMethodIsStillWriting) {
    EditCell();
    QInputMethodEvent composing(QStringLiteral("mizu"), {});
    QCoreApplication::sendEvent(QApplication::focusWidget(), &composing);
    EXPECT_EQ(Cell(1, 1), u"b");
    EXPECT_FALSE(Table.RecordDirty);
}

TEST_F(TextField, HoldsALongTextWhole) {
    EditCell();
    const Text text(40000, u'x');
    Field().SetContents(text);
    Type("y");
    EXPECT_EQ(Cell(1, 1).size(), text.size() + 1);
}

TEST_F(TextField, HasTheLettersOfTheGrid) {
    EditCell();
    EXPECT_EQ(Line().font().pixelSize(), backends::qt::FontOf(Main().FontName(), Main().FontSize()).pixelSize());
    EXPECT_EQ(QFontInfo(Line().font()).family(),
              QFontInfo(backends::qt::FontOf(Main().FontName(), Main().FontSize())).family());
}

TEST_F(TextField, TakesNothingBackThatWasTypedIntoAnotherCell) {
    EditCell();
    Type("x");
    Tap(2, 1);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Cell(2, 1), u"c");
    EXPECT_EQ(Cell(1, 1), u"bx");
}

// Several lines.

class TextOfLines : public TextField {
protected:
    void Open(const Text& value) {
        Ask(modPDAUI::PromptKind::Text, value);
        ASSERT_TRUE(Page().isVisible());
        ASSERT_FALSE(Line().isVisible());
    }
};

TEST_F(TextOfLines, StandsWhereTheGridStood) {
    Open(u"a");
    EXPECT_EQ(Page().geometry(), backends::qt::RectOf(Main().Bounds()));
}

TEST_F(TextOfLines, GivesBackTheLineEndsThatItWasGiven) {
    for (const char16_t* text : {u"a\nb\r\nc\rd", u"\r\n", u"a\r\n", u""}) {
        Open(text);
        EXPECT_EQ(Field().Contents(), text);
        modPDAUI::EndInput(true);
    }
}

TEST_F(TextOfLines, HasLineEndsOfTwoCharactersOnceItIsEdited) {
    Open(u"a\nb");
    Type("x");
    EXPECT_EQ(Field().Contents(), u"a\r\nbx");
}

class TextOfLinesOnAPhone : public InAWindow {
protected:
    TextOfLinesOnAPhone() : InAWindow(OfType(7)) {}
};

TEST_F(TextOfLinesOnAPhone, GoesOnOnTheNextLineAtEnter) {
    Ask(modPDAUI::PromptKind::Text, u"a");
    modQuorin::Screens.GridEditMode = false; // so that Enter closes no field
    Press(Qt::Key_Return);
    Type("b");
    EXPECT_EQ(Field().Contents(), u"a\r\nb");
}

TEST_F(TextOfLines, BeginsWithTheCaretBehindTheText) {
    Open(u"ab\r\ncd");
    EXPECT_EQ(Page().textCursor().position(), 5);
    EXPECT_FALSE(Page().textCursor().hasSelection());
    EXPECT_EQ(Field().Caret(), 6);
}

TEST_F(TextOfLines, SelectsByCharactersOfTheTextNotOfThePage) {
    Open(u"ab\r\ncd");
    Field().Select(4, 1);
    EXPECT_EQ(Page().textCursor().selectedText(), QStringLiteral("c"));
    EXPECT_EQ(Field().Caret(), 4);
}

TEST_F(TextField, SelectsPartOfALine) {
    EditCell();
    Field().SetContents(u"abcdef");
    Field().Select(2, 3);
    EXPECT_EQ(Line().selectedText(), QStringLiteral("cde"));
    EXPECT_EQ(Field().Caret(), 2);
    Type("x");
    EXPECT_EQ(Cell(1, 1), u"abxf");
}

TEST_F(TextField, SelectsNoMoreThanThereIs) {
    EditCell();
    Field().SetContents(u"abc");
    Field().Select(-5, 100);
    EXPECT_EQ(Line().selectedText(), QStringLiteral("abc"));
    Field().Select(100, 1);
    EXPECT_EQ(Line().cursorPosition(), 3);
    EXPECT_FALSE(Line().hasSelectedText());
}

// The record under it changes.

class FieldOverARecord : public TextField {
protected:
    FieldOverARecord() {
        OpenRecord("Place|Moisture|Remark\na|b|c\nd|e|f\n");
        Tap(2, 1);
    }
    void Compose(const QString& text) {
        QInputMethodEvent event(text, {});
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
        Settle();
    }
};

TEST_F(FieldOverARecord, GivesTheRecordWhatAnInputMethodStillHolds) {
    Compose(QStringLiteral("\u00B5g"));
    ASSERT_EQ(Cell(2, 1), u"c");
    modQuorin::MenuEvent(u"Next Record");
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na|b|c\xC2\xB5g\nd|e|f\n");
    EXPECT_EQ(Cell(2, 1), u"f");
    Press(Qt::Key_Escape);
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na|b|c\xC2\xB5g\nd|e|f\n") << "and once only";
}

TEST_F(FieldOverARecord, GivesItToBackAsWell) {
    Compose(QStringLiteral("x"));
    Form().close();
    Settle();
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na|b|cx\nd|e|f\n");
}

/// An input method that composes kana may already have chosen the word for it.
TEST_F(FieldOverARecord, AsksAnInputMethodFirstForWhatItHolds) {
    Compose(QStringLiteral("mizu"));
    WhenItIsToCommit = [] {
        QInputMethodEvent event;
        event.setCommitString(QStringLiteral("\u6c34"));
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    };
    modQuorin::MenuEvent(u"Next Record");
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na|b|c\xE6\xB0\xB4\nd|e|f\n");
}

TEST_F(TextField, GivesAnAnswerWhatAnInputMethodStillHolds) {
    for (const modPDAUI::PromptKind kind : {modPDAUI::PromptKind::Line, modPDAUI::PromptKind::Text}) {
        Ask(kind, u"a");
        QInputMethodEvent event(QStringLiteral("b"), {});
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
        Main().SetCols(2);
        const std::int32_t row = modPDAUI::Prompt.PromptRow;
        modPDAUI::Prompt.PromptModal = true;
        modQuorin::MenuEvent(u"Ok");
        EXPECT_EQ(modPDAUI::Prompt.PromptResult, u"ab") << static_cast<int>(kind) << " " << row;
    }
}

TEST_F(FieldOverARecord, LeavesNothingOfAScanToTheNextRecord) {
    Type("12");
    modQuorin::MenuEvent(u"Next Record");
    Type("34 ");
    EXPECT_FALSE(Field().Visible()) << "a blank would open one";
    EXPECT_EQ(Main().Row(), 2);
    Press(Qt::Key_Up);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
    EXPECT_EQ(Main().Row(), 2);
    QTest::qWait(550);
    Press(Qt::Key_Up);
    EXPECT_EQ(Main().Row(), 1) << "the hands have rested";
}

TEST_F(FieldOverARecord, TakesTheKeysOfAQuickHandThatOpensTheNextOne) {
    Type("12");
    modQuorin::MenuEvent(u"Next Record");
    Repaint();
    Tap(0, 1);
    Type("34");
    EXPECT_EQ(Cell(0, 1), u"d34");
}

TEST_F(FieldOverARecord, IsLeftByKeysWithoutARest) {
    Type("1");
    Press(Qt::Key_Return);
    Press(Qt::Key_Up);
    EXPECT_EQ(Main().Row(), 1);
}

TEST_F(FieldOverARecord, IsLeftByKeysAtOnceAlsoAfterACommandClosedAnother) {
    Type("1");
    modQuorin::MenuEvent(u"Next Record");
    Repaint();
    Tap(2, 1);
    Type("2");
    Press(Qt::Key_Return);
    Press(Qt::Key_Up);
    EXPECT_EQ(Main().Row(), 1);
}

// Where the text of an open field stands.

class FieldInRealFonts : public InAWindow {
protected:
    FieldInRealFonts() : InAWindow(OfType(0), Looks{true, 1}) {}

    /// Returns the box around the dark pixels in a part of the form, without a frame of one pixel.
    QRect Ink(const QRect& part) {
        const QImage picture = Form().FormWidget().grab(part.adjusted(1, 1, -1, -1)).toImage();
        QRect ink;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (qGray(picture.pixel(x, y)) < 100)
                    ink |= QRect(x, y, 1, 1);
        return ink;
    }
};

TEST_F(FieldInRealFonts, OpensWithoutMovingTheText) {
    OpenRecord("Place|Moisture|Remark\na|Hxg|c\n");
    Repaint();
    const QRect cell = Grid().CellRect(1, 1).translated(Grid().pos());
    const QRect painted = Ink(cell);
    ASSERT_FALSE(painted.isEmpty());
    Tap(1, 1);
    ASSERT_TRUE(Field().Visible());
    Line().deselect();
    Line().setReadOnly(true); // no caret
    EXPECT_EQ(Ink(cell), painted) << "text moved";
    Line().setReadOnly(false);
}

} // namespace
} // namespace windowtest
