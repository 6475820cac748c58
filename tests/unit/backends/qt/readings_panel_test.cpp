// SPDX-License-Identifier: MIT
#include "backends/qt/readings_panel.h"

#include "src/app/commands.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QClipboard>
#include <QScrollBar>

#include <set>

namespace windowtest {
namespace {

using backends::qt::ReadingsPanel;
using testing::HasSubstr;
using testing::StartsWith;

/// A record is open, and the instrument QI-1 is connected.
class PanelOfReadings : public InAWindow, public backends::EventSource {
protected:
    PanelOfReadings() {
        Device.Platform.readings.Add(Table);
        Device.Platform.loop.Listen(*this);
        Form().ReadingsWanted = [this] { Panel.Toggle(); };
        modQuorin::SaveSetting(u"ComPort", u"Com1");
        OpenRecord("Place|Moisture|Remark\n||\n");
        Pass(600);
        Receive(u"[CONNECT \"QI-1\"]\r\n");
    }
    bool RaiseWhatIsPending() override {
        Panel.TakeUp();
        return false;
    }

    void Receive(const Text& lines) {
        Device.Platform.serial.Arrive(u"[BLob]\r\n" + lines + u"[/BLob]\r\n");
        Settle();
        Pass(1100);
    }
    void Send(const Text& type, const Text& origin = u"QI-1", const Text& value = u"14.1") {
        Receive(u"[ORIGIN \"" + origin + u"\"]\r\n[RESULT_TYPE \"" + type + u"\"]\r\n[RESULT_VALUE \"" + value +
                u"\"]\r\n[RESULT_UNIT \"%\"]\r\n");
    }
    /// Reports readings without sending them.
    void Judge(int count) {
        for (int n = 0; n < count; ++n) {
            platform::Verdict verdict;
            verdict.Reading.Types = {u"T" + modStringTools::NumberText(n)};
            Table.ReadingJudged(verdict);
        }
        Settle();
    }

    void Open() {
        Press(Qt::Key_F4);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Panel));
        Settle();
    }
    void PressInPanel(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        QTest::keyClick(Panel.windowHandle(), key, held);
        Settle();
    }
    void TypeInPanel(const char* letters) {
        for (; *letters != 0; ++letters)
            QTest::keyClick(Panel.windowHandle(), *letters);
        Settle();
    }
    void BackToForm() {
        Form().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
        Settle();
    }
    template <class Widget>
    Widget& Part(const char* text = "") {
        for (Widget* const each : Panel.findChildren<Widget*>())
            if (each->accessibleName() == QLatin1String(text) || each->property("text") == QLatin1String(text))
                return *each;
        ADD_FAILURE() << "no " << text;
        return *Panel.findChild<Widget*>();
    }
    QTableView& View() { return Part<QTableView>("Readings"); }
    QLineEdit& Words() { return Part<QLineEdit>("Filter by text"); }
    QPushButton& Again() { return Part<QPushButton>("&Take again"); }
    void Select(int row) {
        View().selectionModel()->setCurrentIndex(View().model()->index(row, 0),
                                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    QString Shown(int row, companion::ReadingColumn column) {
        return View().model()->index(row, static_cast<int>(column)).data().toString();
    }
    std::string Why() { return Again().toolTip().toStdString(); }

    companion::ReadingTable Table;
    ReadingsPanel Panel{Table, Form(), [this] { return Device.Platform.boxes.AnyIsOpen(); }};
};

TEST_F(PanelOfReadings, OpensByF4AndClosesByF4OrEscape) {
    EXPECT_FALSE(Panel.isVisible());
    const QSize size = Form().size();
    const auto screen = Screen();
    for (const Qt::Key key : {Qt::Key_F4, Qt::Key_Escape}) {
        Open();
        EXPECT_TRUE(Panel.isVisible());
        EXPECT_EQ(Form().size(), size);
        PressInPanel(key);
        EXPECT_FALSE(Panel.isVisible());
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Form()));
    }
    EXPECT_EQ(Screen(), screen) << "Esc is no Back there";
}

TEST_F(PanelOfReadings, KeepsOpenWhenItsListOfVerdictsIsClosed) {
    const auto screen = Screen();
    Open();
    auto& verdicts = Part<QComboBox>("Filter by verdict");
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_F4}) {
        verdicts.setFocus();
        verdicts.showPopup();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(verdicts.view()->window()));
        QTest::keyClick(verdicts.view()->window()->windowHandle(), key);
        Settle();
        EXPECT_FALSE(verdicts.view()->isVisible());
        EXPECT_TRUE(Panel.isVisible());
        EXPECT_TRUE(Panel.isActiveWindow());
    }
    EXPECT_EQ(Screen(), screen);
}

TEST_F(PanelOfReadings, OpensByAClickOnTheLineOfTheLink) {
    QLabel& line = *Form().findChild<QLabel*>(QStringLiteral("linkState"));
    Click(line, line.rect().center());
    EXPECT_TRUE(Panel.isVisible());
}

TEST_F(PanelOfReadings, GetsTheKeyboardByF4WhenItIsOpenAlready) {
    Open();
    BackToForm();
    Open();
    EXPECT_TRUE(Panel.isVisible());
    EXPECT_TRUE(View().hasFocus());
}

TEST_F(PanelOfReadings, LeavesAnOpenFieldAsItIs) {
    Tap(2, 1);
    Type("ab");
    Open();
    TypeInPanel("xyz");
    Words().setFocus();
    TypeInPanel("filter");
    EXPECT_TRUE(Field().Visible());
    EXPECT_EQ(Holder(), &Field());
    EXPECT_EQ(Field().Contents(), u"ab");
    EXPECT_EQ(Words().text(), QStringLiteral("filter"));
    PressInPanel(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    Type("c");
    EXPECT_EQ(Field().Contents(), u"abc");
}

TEST_F(PanelOfReadings, KeepsTheKeyboardWhileReadingsArrive) {
    Open();
    Words().setFocus();
    Send(u"Moisture");
    EXPECT_EQ(Cell(1, 1), u"14.1 %");
    EXPECT_TRUE(Words().hasFocus());
    EXPECT_EQ(View().model()->rowCount(), 1);
}

TEST_F(PanelOfReadings, ShowsTheRecordOfTheSelectedOne) {
    Send(u"Moisture");
    Send(u"Moisture", u"QI-2");
    Open();
    EXPECT_EQ(Shown(0, companion::ReadingColumn::Row), QStringLiteral("2 Moisture"));
    EXPECT_EQ(Shown(1, companion::ReadingColumn::Verdict), QStringLiteral("○ origin"));
    auto& record = Part<QPlainTextEdit>("Record of the selected reading");
    EXPECT_THAT(record.toPlainText().toStdString(), StartsWith("[BLob]\n[ORIGIN \"QI-2\"]\n")) << "the last one";
    PressInPanel(Qt::Key_Up);
    EXPECT_THAT(record.toPlainText().toStdString(), HasSubstr("[ORIGIN \"QI-1\"]\n"));
}

TEST_F(PanelOfReadings, FollowsTheEndUnlessAPersonHasScrolledUp) {
    Open();
    Judge(100);
    QScrollBar& bar = *View().verticalScrollBar();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    bar.setValue(3);
    Judge(1);
    EXPECT_EQ(bar.value(), 3);
}

TEST_F(PanelOfReadings, HasNoScrollBarBelowAndShowsWhatBecameOfEach) {
    const companion::ValueLimits limits(u"COLUMN|WARNLOW|FAILHIGH\nMoisture|15|20\n", {u"Moisture"});
    Table.Use(limits);
    Send(u"Moisture");
    Send(u"Moisture", u"QI-2");
    Open();
    EXPECT_EQ(View().horizontalScrollBar()->maximum(), 0) << "on a screen that is not wider than a small one";
    Panel.resize(960, 420); // as on other screens
    Settle();
    for (const auto column :
         {companion::ReadingColumn::Time, companion::ReadingColumn::Origin, companion::ReadingColumn::Type,
          companion::ReadingColumn::Value, companion::ReadingColumn::Verdict, companion::ReadingColumn::Limit,
          companion::ReadingColumn::Row, companion::ReadingColumn::Explanation})
        for (int row = 0; row < 2; ++row) {
            const QModelIndex index = View().model()->index(row, static_cast<int>(column));
            EXPECT_LE(View().itemDelegate()->sizeHint({}, index).width(), View().columnWidth(index.column()))
                << index.data().toString().toStdString();
        }
    Judge(60);
    EXPECT_GT(View().verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(View().horizontalScrollBar()->maximum(), 0);
}

TEST_F(PanelOfReadings, KeepsTheSelectedOneWhenItIsFiltered) {
    Open();
    Judge(30);
    Select(12);
    Words().setFocus();
    PressInPanel(Qt::Key_T, Qt::ShiftModifier);
    TypeInPanel("12");
    EXPECT_EQ(View().model()->rowCount(), 1);
    EXPECT_TRUE(View().selectionModel()->isRowSelected(0));
    Words().clear();
    EXPECT_EQ(View().model()->rowCount(), 30);
    EXPECT_EQ(View().selectionModel()->selectedRows().size(), 1);
    EXPECT_TRUE(View().selectionModel()->isRowSelected(12));
    Part<QComboBox>("Filter by verdict").setCurrentIndex(1);
    EXPECT_EQ(View().model()->rowCount(), 0);
}

TEST_F(PanelOfReadings, CopiesTheSelectedRowsAsATable) {
    Open();
    Judge(3);
    View().selectAll();
    const auto lines = [] { return QApplication::clipboard()->text().count(u'\n'); };
    PressInPanel(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(lines(), 3);
    Select(1);
    PressInPanel(Qt::Key_C, Qt::AltModifier);
    QTest::qWait(200); // the time in which the button is shown pressed
    EXPECT_EQ(lines(), 1);
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("\tT1\t"));
}

TEST_F(PanelOfReadings, TakesARefusedReadingAgain) {
    Send(u"Moisture", u"QI-2");
    EXPECT_EQ(Cell(1, 1), u"");
    Receive(u"[CONNECT \"QI-2\"]\r\n");
    Open();
    PressInPanel(Qt::Key_T, Qt::AltModifier);
    QTest::qWait(200); // the time in which the button is shown pressed
    EXPECT_THAT(Why(), StartsWith("It was handed over."));
    Pass(1100);
    EXPECT_EQ(Cell(1, 1), u"14.1 %");
    EXPECT_EQ(Shown(1, companion::ReadingColumn::Verdict), QStringLiteral("● taken"));
}

TEST_F(PanelOfReadings, TakesNothingTwiceByADoubleClick) {
    Send(u"Moisture", u"QI-2");
    Open();
    QTest::mouseClick(&Again(), Qt::LeftButton);
    QTest::mouseClick(&Again(), Qt::LeftButton);
    Pass(1100);
    EXPECT_EQ(View().model()->rowCount(), 2);
}

TEST_F(PanelOfReadings, SaysWhyAReadingIsNotTakenAgain) {
    Open();
    EXPECT_EQ(Why(), "Can't be taken again: no reading is selected.");
    Send(u"Bogus");
    Send(u"Bogus");
    View().selectAll();
    EXPECT_EQ(Why(), "Can't be taken again: more than one reading is selected.");
    Select(0);
    EXPECT_TRUE(Again().isEnabled());
    EXPECT_EQ(Why(), "");
    modQuorin::GoBack();
    Settle();
    EXPECT_FALSE(Again().isEnabled());
    EXPECT_EQ(Why(), "Can't be taken again: neither a record nor the trace is on the screen.");
}

TEST_F(PanelOfReadings, TakesAReadingAgainAfterAHalfLine) {
    Send(u"Moisture", u"QI-2");
    Receive(u"[CONNECT \"QI-2\"]\r\n");
    Device.Platform.serial.Arrive(u"half a ");
    Settle();
    Open();
    QTest::mouseClick(&Again(), Qt::LeftButton);
    Pass(1100);
    EXPECT_EQ(Cell(1, 1), u"");
    EXPECT_EQ(Why(), "It is taken again as soon as the line that is arriving has ended.");
    Device.Platform.serial.Arrive(u"line\r\n");
    Settle();
    Pass(1100);
    EXPECT_EQ(Cell(1, 1), u"14.1 %");
    EXPECT_THAT(Why(), StartsWith("It was handed over."));
    Select(1);
    EXPECT_EQ(Why(), "");
}

TEST_F(PanelOfReadings, CanBeReadWhileAMessageBoxIsOpen) {
    Send(u"Bogus");
    Send(u"Bogus");
    const auto answer = AskInABox(platform::BoxButtons::YesNo, [this] {
        QMessageBox& box = *Device.Platform.boxes.Dialog();
        box.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        QTest::keyClick(box.windowHandle(), Qt::Key_F4);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Panel));
        QTest::mouseClick(View().viewport(), Qt::LeftButton, {},
                          View().visualRect(View().model()->index(0, 0)).center());
        EXPECT_TRUE(View().selectionModel()->isRowSelected(0));
        EXPECT_EQ(Why(), "Can't be taken again: a message box is open.");
        QTest::keyClick(Panel.windowHandle(), Qt::Key_Escape);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        Device.Hand.PressBoxButton(platform::BoxAnswer::Yes);
    });
    EXPECT_EQ(answer, platform::BoxAnswer::Yes);
}

TEST_F(PanelOfReadings, AnswersNoBoxByWhatIsTypedIntoIt) {
    Open();
    Words().setFocus();
    TypeInPanel("moist");
    AskInABox(platform::BoxButtons::YesNo, [this] {
        QMessageBox& box = *Device.Platform.boxes.Dialog();
        box.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        QTest::keyClick(box.windowHandle(), Qt::Key_Return);
        EXPECT_TRUE(box.isVisible());
        Device.Hand.PressBoxButton(platform::BoxAnswer::No);
    });
}

TEST_F(PanelOfReadings, NamesEachControlAndReachesItByTab) {
    Send(u"Bogus");
    Open();
    std::set<QWidget*> reached;
    for (int tabs = 0; tabs < 12; ++tabs) {
        reached.insert(Panel.focusWidget());
        PressInPanel(Qt::Key_Tab);
    }
    for (QWidget* const each : Panel.findChildren<QWidget*>()) {
        if (each->isVisible() && each->isEnabled() && (each->focusPolicy() & Qt::TabFocus) != 0 &&
            each->focusProxy() == nullptr && qobject_cast<QAbstractScrollArea*>(each->parent()) == nullptr) {
            EXPECT_EQ(reached.count(each), 1U) << each->metaObject()->className();
            QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(each);
            EXPECT_NE(spoken->text(QAccessible::Name), QString()) << each->metaObject()->className();
        }
    }
    EXPECT_GE(reached.size(), 6U);
}

} // namespace
} // namespace windowtest
