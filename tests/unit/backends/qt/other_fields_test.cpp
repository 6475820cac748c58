// SPDX-License-Identifier: MIT
#include "backends/qt/conversions.h"
#include "src/storage/keyed_tables.h"
#include "src/view/input_fields.h"
#include "src/view/prompt.h"
#include "tests/support/in_a_window.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QListWidget>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>

namespace windowtest {
namespace {

using platform::CalendarDate;
using testing::ElementsAre;

// A list to choose from, or to type in.

class ListToChooseFrom : public InAWindow {
protected:
    void Open(const Text& value, const Text& list) {
        Ask(modPDAUI::PromptKind::List, value, list);
        ASSERT_TRUE(Combo().isVisible());
    }
    backends::qt::QtComboBox& Field() { return Device.Platform.cboInputField; }
};

TEST_F(ListToChooseFrom, OffersItsItems) {
    Open(u"", u"a,b,c");
    EXPECT_THAT(Field().Items(), ElementsAre(u"a", u"b", u"c"));
    EXPECT_EQ(Combo().count(), 3);
}

TEST_F(ListToChooseFrom, EndsAtAnEmptyItem) {
    Open(u"", u"a,,c");
    EXPECT_THAT(Field().Items(), ElementsAre(u"a"));
}

TEST_F(ListToChooseFrom, BeginsWithItsValueAndNotWithAnItem) {
    Open(u"", u"a,b");
    EXPECT_EQ(Combo().currentText(), QString());
    modPDAUI::EndInput(true);
    Open(u"other", u"a,b");
    EXPECT_EQ(Combo().currentText(), QStringLiteral("other"));
    EXPECT_EQ(Combo().lineEdit()->cursorPosition(), 5);
    EXPECT_FALSE(Combo().lineEdit()->hasSelectedText());
    EXPECT_EQ(Holder(), &Field());
}

TEST_F(ListToChooseFrom, StandsWhereTheGridStoodAndIsAsHighAsItsTextNeeds) {
    Open(u"a", u"a,b");
    const QRect grid = backends::qt::RectOf(Main().Bounds());
    EXPECT_EQ(Combo().pos(), grid.topLeft());
    EXPECT_EQ(Combo().width(), grid.width());
    EXPECT_GE(Combo().height(), Combo().lineEdit()->fontMetrics().height());
    EXPECT_LT(Combo().height(), 60);
}

TEST_F(ListToChooseFrom, TakesWhatIsTypedAsItIs) {
    Open(u"", u"apple,pear");
    Type("ap");
    EXPECT_EQ(Field().Contents(), u"ap") << "nothing is completed";
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Field().Contents(), u"a");
}

TEST_F(ListToChooseFrom, HasNoNewItemAfterSomethingElseWasTyped) {
    Open(u"", u"apple,pear");
    Type("fig");
    Press(Qt::Key_Return);
    EXPECT_EQ(Combo().count(), 2);
}

TEST_F(ListToChooseFrom, MovesThroughItsItemsByUpAndDown) {
    Open(u"", u"one,two,three");
    Press(Qt::Key_Up);
    EXPECT_EQ(Field().Contents(), u"");
    for (const char16_t* item : {u"one", u"two", u"three", u"three"}) {
        Press(Qt::Key_Down);
        EXPECT_EQ(Field().Contents(), item);
    }
    Press(Qt::Key_Up);
    EXPECT_EQ(Field().Contents(), u"two");
}

TEST_F(ListToChooseFrom, MovesOnFromWhatWasTyped) {
    Open(u"", u"one,two,three");
    Type("two");
    Press(Qt::Key_Down);
    EXPECT_EQ(Field().Contents(), u"three");
}

TEST_F(ListToChooseFrom, TakesTheItemThatIsClickedInItsList) {
    Open(u"x", u"one,two,three");
    Combo().showPopup();
    Settle();
    QAbstractItemView& list = *Combo().view();
    ASSERT_TRUE(list.isVisible());
    const QPoint place = list.visualRect(list.model()->index(1, 0)).center();
    // Qt takes an earlier release for that of the click that opened the list.
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    QTest::mouseMove(list.viewport(), place);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    Settle();
    EXPECT_EQ(Field().Contents(), u"two");
    EXPECT_TRUE(Field().Visible());
    EXPECT_EQ(Holder(), &Field());
    modPDAUI::EndInput(false);
    EXPECT_FALSE(Field().Visible());
}

TEST_F(ListToChooseFrom, KeepsTheFocusWhileItsListIsOpen) {
    Open(u"x", u"one,two");
    Combo().showPopup();
    Settle();
    EXPECT_EQ(Holder(), &Field());
    EXPECT_TRUE(Field().Visible());
    Combo().hidePopup();
    Settle();
    EXPECT_EQ(Holder(), &Field());
    EXPECT_EQ(Field().Contents(), u"x");
}

TEST_F(ListToChooseFrom, HasNoLineEndsAlsoWhenSomeArePasted) {
    Open(u"", u"one,two");
    QGuiApplication::clipboard()->setText(QStringLiteral("a\nb"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Field().Contents(), u"a b");
}

TEST_F(ListToChooseFrom, WritesItsTextAndIsHiddenWhenTheFocusGoes) {
    OpenRecord();
    Tap(1, 1);
    modFileSystem::Table.RecordDirty = false;
    auto& field = Field();
    field.SetContents(u"chosen");
    field.SetVisible(true);
    field.SetFocus();
    EXPECT_TRUE(modPDAUI::Input.InputFocused);
    modFileSystem::Table.RecordDirty = false;
    Main().SetFocus();
    EXPECT_EQ(Cell(1, 1), u"chosen");
    EXPECT_EQ(field.Contents(), u"");
    EXPECT_FALSE(field.Visible());
    EXPECT_FALSE(modPDAUI::Input.InputFocused);
    EXPECT_FALSE(modFileSystem::Table.RecordDirty);
}

// A date.

class DateToPick : public InAWindow {
protected:
    void Open(const Text& value) {
        OpenRecord();
        Text answer = value;
        modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Date, answer, u"", false, false);
        Settle();
        ASSERT_TRUE(Calendar().isVisible());
    }
    backends::qt::QtDatePicker& Field() { return Device.Platform.dteInputField; }
    QTableView& Days() { return *Calendar().findChild<QTableView*>(); }
    /// Returns the place of a day of the visible month in the calendar.
    QPoint PlaceOf(int day) {
        const QAbstractItemModel& days = *Days().model();
        for (int row = 1; row < days.rowCount(); ++row) {
            for (int col = 0; col < days.columnCount(); ++col) {
                const bool isOfTheMonthBefore = row < 3 && day > 20;
                if (!isOfTheMonthBefore && days.index(row, col).data().toInt() == day)
                    return Days().visualRect(days.index(row, col)).center();
            }
        }
        return {};
    }
};

TEST_F(DateToPick, OpensOnTodayWithoutAValue) {
    Open(u"");
    EXPECT_EQ(Field().Date(), (CalendarDate{2007, 3, 5}));
    EXPECT_EQ(Calendar().selectedDate(), QDate(2007, 3, 5));
}

TEST_F(DateToPick, StandsWhereTheGridStood) {
    Open(u"");
    EXPECT_EQ(Calendar().geometry(), backends::qt::RectOf(Main().Bounds()));
    EXPECT_EQ(Holder(), &Field());
}

TEST_F(DateToPick, AnswersTheDayThatIsClicked) {
    Open(u"28/02/2007");
    Click(*Days().viewport(), PlaceOf(14));
    EXPECT_FALSE(Field().Visible());
    EXPECT_NE(Screen(), modQuorin::ScrInput);
    EXPECT_EQ(Field().Date(), (CalendarDate{2007, 2, 14}));
    EXPECT_EQ(Cell(0, 1), u"14/02/2007");
}

TEST_F(DateToPick, MovesByTheArrowsAndAnswersAtEnter) {
    Open(u"28/02/2007");
    Press(Qt::Key_Right);
    EXPECT_EQ(Field().Date(), (CalendarDate{2007, 3, 1}));
    Press(Qt::Key_Down);
    EXPECT_EQ(Field().Date(), (CalendarDate{2007, 3, 8}));
    Press(Qt::Key_Up);
    Press(Qt::Key_Left);
    EXPECT_EQ(Field().Date(), (CalendarDate{2007, 2, 28}));
    EXPECT_TRUE(Field().Visible());
    Press(Qt::Key_Return);
    EXPECT_FALSE(Field().Visible());
    EXPECT_EQ(Cell(0, 1), u"28/02/2007");
}

TEST_F(DateToPick, IsLeftWithoutAnAnswerByEscape) {
    Open(u"28/02/2007");
    Press(Qt::Key_Right);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Field().Visible());
    EXPECT_NE(Cell(0, 1), u"01/03/2007");
}

TEST_F(DateToPick, KeepsItsDateWhileOtherMonthsAreLookedAt) {
    Open(u"28/02/2007");
    Calendar().showNextMonth();
    Settle();
    EXPECT_EQ(Field().Date(), (CalendarDate{2007, 2, 28}));
    EXPECT_TRUE(Field().Visible());
}

TEST_F(DateToPick, LetsAYearBeTypedIntoItsHead) {
    Open(u"28/02/2007");
    auto& year = *Calendar().findChild<QSpinBox*>();
    QTest::mouseClick(Calendar().findChild<QToolButton*>(QStringLiteral("qt_calendar_yearbutton")), Qt::LeftButton);
    Settle();
    ASSERT_TRUE(year.isVisible());
    year.selectAll();
    Type("1999");
    Press(Qt::Key_Return);
    EXPECT_EQ(Calendar().yearShown(), 1999);
    EXPECT_TRUE(Field().Visible()) << "the Enter of the year is no answer";
}

TEST_F(DateToPick, HasTheFirstYearAndTheLast) {
    for (const CalendarDate date : {CalendarDate{1, 1, 1}, CalendarDate{9999, 12, 31}}) {
        Open(u"");
        Field().SetDate(date);
        EXPECT_EQ(Field().Date(), date);
        EXPECT_EQ(Calendar().selectedDate(), QDate(date.Year, date.Month, date.Day));
        Press(date.Year == 1 ? Qt::Key_Left : Qt::Key_Right); // there is no date beyond
        EXPECT_EQ(Field().Date(), date);
        modPDAUI::EndInput(true);
    }
}

class DateOnASmallScreen : public InAWindow {
protected:
    DateOnASmallScreen() : InAWindow(OfType(1), {.RealFonts = true}) {}
};

TEST_F(DateOnASmallScreen, HasAllDaysOfTheWeekAndAllWeeks) {
    Ask(modPDAUI::PromptKind::Date, u"28/02/2007");
    const QTableView& days = *Calendar().findChild<QTableView*>();
    const QAbstractItemModel& model = *days.model();
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int col = 0; col < model.columnCount(); ++col) {
            const bool isShown = !days.isRowHidden(row) && !days.isColumnHidden(col);
            const QRect day = days.visualRect(model.index(row, col));
            EXPECT_TRUE(!isShown || days.viewport()->rect().contains(day)) << row << ' ' << col;
            EXPECT_TRUE(!isShown || day.width() > days.fontMetrics().horizontalAdvance(QStringLiteral("28")));
        }
    }
}

// The list of the hold menu, which no screen fills so far.

class HoldMenu : public InAWindow {
protected:
    HoldMenu() {
        OpenRecord();
        auto& list = Device.Platform.lstHoldMenu;
        for (const char16_t* item : {u"one", u"two", u"three"})
            list.AddItem(item);
        list.SetTag(u"1");
        list.SetBounds({20, 40, 120, 90});
        list.SetVisible(true);
        list.SetFocus();
        Settle();
    }
    backends::qt::QtListBox& List() { return Device.Platform.lstHoldMenu; }
    QListWidget& Shown() { return *Form().findChild<QListWidget*>(QStringLiteral("lstHoldMenu")); }
};

TEST_F(HoldMenu, IsSeenWhereItWasPut) {
    EXPECT_EQ(Shown().geometry(), QRect(20, 40, 120, 90));
    EXPECT_EQ(Holder(), &List());
    EXPECT_EQ(List().ItemText(1), u"two");
    EXPECT_EQ(List().ItemText(7), u"");
}

TEST_F(HoldMenu, TellsOfAClickWithItsRowChosen) {
    std::int32_t chosen = -1;
    List().Click = [&] { chosen = List().ListIndex(); };
    Click(*Shown().viewport(), Shown().visualItemRect(Shown().item(2)).center());
    EXPECT_EQ(chosen, 2);
}

TEST_F(HoldMenu, GoesWhenItsFocusDoes) {
    Main().SetFocus();
    EXPECT_FALSE(List().Visible());
    EXPECT_EQ(List().ItemCount(), 0);
    EXPECT_EQ(List().Tag(), u"");
}

TEST_F(HoldMenu, MovesItsMarkByThePageKeysAndWraps) {
    List().SetListIndex(0);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(List().ListIndex(), 2);
    Press(Qt::Key_PageDown);
    EXPECT_EQ(List().ListIndex(), 0);
}

} // namespace
} // namespace windowtest
