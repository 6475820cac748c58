// SPDX-License-Identifier: MIT
// What the window offers to a screen reader.
#include "backends/qt/accessible_grid.h"
#include "backends/qt/to_screen_reader.h"

#include "src/view/prompt.h"
#include "src/view/status_strip.h"
#include "tests/support/heard_notices.h"
#include "tests/support/in_a_window.h"

#include <QAccessible>
#include <QListWidget>
#include <QTableView>

namespace windowtest {
namespace {

using backends::qt::ToScreenReader;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

struct Told {
    QAccessible::Event Kind;
    int Child;
    bool operator==(const Told&) const = default;
};

void PrintTo(const Told& told, std::ostream* out) {
    *out << "event 0x" << std::hex << told.Kind << std::dec << " of child " << told.Child;
}

/// Records what is reported of one object while this listener exists.
class Listener {
public:
    explicit Listener(QObject& object) {
        Of = &object;
        All.clear();
        ToScreenReader::IsActive = [] { return true; };
        ToScreenReader::Send = [](QAccessibleEvent* event) {
            if (event->object() == Of)
                All.push_back({event->type(), event->child()});
        };
    }
    ~Listener() {
        ToScreenReader::IsActive = QAccessible::isActive;
        ToScreenReader::Send = QAccessible::updateAccessibility;
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    static inline std::vector<Told> All;

private:
    static inline QObject* Of = nullptr;
};

class ScreenReader : public InAWindow {
protected:
    explicit ScreenReader(std::int32_t deviceType = 0) : InAWindow(OfType(deviceType)) {}

    static QAccessibleInterface& Of(QObject& object) { return *QAccessible::queryAccessibleInterface(&object); }
    static std::string NameOf(QObject& object) { return Of(object).text(QAccessible::Name).toStdString(); }
    QAccessibleInterface& Table() { return Of(Grid()); }
    QAccessibleInterface& CellOf(int row, int col) { return *Table().tableInterface()->cellAt(row, col); }
};

// A grid.

TEST_F(ScreenReader, FindsAGridAsATable) {
    OpenRecord();
    EXPECT_EQ(Table().role(), QAccessible::Table);
    ASSERT_NE(Table().tableInterface(), nullptr);
    EXPECT_EQ(Table().tableInterface()->rowCount(), 3);
    EXPECT_EQ(Table().tableInterface()->columnCount(), 2);
    EXPECT_EQ(Table().childCount(), 6);
    EXPECT_TRUE(Table().state().focusable);
    EXPECT_FALSE(Table().state().disabled);
}

TEST_F(ScreenReader, CallsAGridAsThePageIsCalled) {
    OpenRecord();
    Device.Platform.grdTitle.SetCell(0, 0, u"Fields");
    EXPECT_THAT(NameOf(Grid()), testing::StartsWith("Fields"));
    EXPECT_EQ(NameOf(Device.Platform.grdTitle.Widget()), "Title");
    for (std::int32_t col = 0; col < Device.Platform.grdTitle.Cols(); ++col)
        Device.Platform.grdTitle.SetCell(0, col, u"");
    EXPECT_EQ(NameOf(Grid()), "Records");
}

TEST_F(ScreenReader, ReadsTheTextOfACell) {
    OpenRecord();
    QAccessibleInterface& cell = CellOf(1, 1);
    EXPECT_EQ(cell.role(), QAccessible::Cell);
    EXPECT_EQ(cell.text(QAccessible::Value), QStringLiteral("b"));
    EXPECT_EQ(cell.text(QAccessible::Description), QString());
    Main().SetCell(1, 1, u"other");
    EXPECT_EQ(cell.text(QAccessible::Value), QStringLiteral("other"));
}

TEST_F(ScreenReader, ReadsAValueWithTheNameOfItsRow) {
    OpenRecord();
    EXPECT_EQ(CellOf(1, 0).text(QAccessible::Name), QStringLiteral("Moisture"));
    EXPECT_EQ(CellOf(1, 1).text(QAccessible::Name), QStringLiteral("Moisture: b"));
    Main().SetCell(1, 1, u"");
    EXPECT_EQ(CellOf(1, 1).text(QAccessible::Name), QStringLiteral("Moisture: empty"));
    EXPECT_EQ(Table().tableInterface()->rowDescription(2), QStringLiteral("Remark"));
    Main().SetCell(1, 0, u"");
    Main().SetCell(1, 1, u"b");
    EXPECT_EQ(CellOf(1, 1).text(QAccessible::Name), QStringLiteral("b"));
}

TEST_F(ScreenReader, FindsACellFromItsTableAndBack) {
    OpenRecord();
    for (int index = 0; index < Table().childCount(); ++index) {
        QAccessibleInterface* const cell = Table().child(index);
        ASSERT_NE(cell, nullptr);
        EXPECT_EQ(Table().indexOfChild(cell), index);
        EXPECT_EQ(cell->parent(), &Table());
        EXPECT_EQ(cell->tableCellInterface()->rowIndex(), index / 2);
        EXPECT_EQ(cell->tableCellInterface()->columnIndex(), index % 2);
        EXPECT_EQ(cell->childCount(), 0);
    }
    EXPECT_EQ(Table().child(6), nullptr);
    EXPECT_EQ(Table().child(-1), nullptr);
    EXPECT_EQ(Table().tableInterface()->cellAt(3, 0), nullptr);
    EXPECT_EQ(Table().indexOfChild(&Of(Line())), -1);
    EXPECT_EQ(Of(Device.Platform.grdTitle.Widget()).indexOfChild(Table().child(0)), -1);
}

TEST_F(ScreenReader, FindsACellWhereItIsSeen) {
    OpenRecord();
    const QPoint corner = Grid().mapToGlobal(QPoint());
    EXPECT_EQ(CellOf(1, 1).rect(), Grid().CellRect(1, 1).translated(corner));
    const QPoint place = Grid().mapToGlobal(Middle(1, 1));
    EXPECT_EQ(Table().childAt(place.x(), place.y()), &CellOf(1, 1));
    EXPECT_EQ(Table().childAt(corner.x() - 5, corner.y()), nullptr);
    const QPoint below = Grid().mapToGlobal(Grid().rect().bottomLeft());
    EXPECT_EQ(Table().childAt(below.x() + 1, below.y()), nullptr);
}

TEST_F(ScreenReader, KnowsTheCurrentCell) {
    OpenRecord();
    Press(Qt::Key_Down);
    EXPECT_TRUE(CellOf(1, 1).state().selected);
    EXPECT_TRUE(CellOf(1, 1).state().focused);
    EXPECT_TRUE(CellOf(1, 1).state().focusable);
    EXPECT_FALSE(CellOf(0, 1).state().selected);
    EXPECT_TRUE(CellOf(0, 1).state().selectable);
    EXPECT_EQ(Table().focusChild(), &CellOf(1, 1));
    EXPECT_THAT(Table().tableInterface()->selectedCells(), ElementsAre(&CellOf(1, 1)));
}

TEST_F(ScreenReader, KnowsThatTheFocusIsElsewhere) {
    OpenRecord();
    Tap(1, 1);
    ASSERT_TRUE(Line().hasFocus());
    EXPECT_TRUE(CellOf(1, 1).state().selected);
    EXPECT_FALSE(CellOf(1, 1).state().focused);
    EXPECT_EQ(Table().focusChild(), nullptr);
}

TEST_F(ScreenReader, KnowsWhatIsHiddenAndWhatIsNotOnThePage) {
    ShowRows(100);
    EXPECT_FALSE(CellOf(0, 0).state().offscreen);
    EXPECT_TRUE(CellOf(90, 0).state().offscreen);
    EXPECT_FALSE(CellOf(90, 0).state().invisible);
    EXPECT_TRUE(CellOf(90, 0).rect().isEmpty());
    Main().SetRowHeight(2, 0);
    EXPECT_TRUE(CellOf(2, 0).state().invisible);
    EXPECT_FALSE(CellOf(2, 0).state().focusable);
    EXPECT_FALSE(CellOf(3, 0).state().invisible);
    Main().SetTopRow(50);
    Settle();
    EXPECT_TRUE(CellOf(0, 0).state().offscreen);
}

TEST_F(ScreenReader, KnowsThatAGridIsDisabledWhileTheStripShows) {
    OpenRecord();
    modPDAUI::ShowStatus(u"Busy");
    EXPECT_TRUE(Table().state().disabled);
    EXPECT_TRUE(CellOf(1, 1).state().disabled);
    EXPECT_EQ(NameOf(*Form().findChild<QLabel*>(QStringLiteral("lblStatus"))), "Busy");
    modPDAUI::HideStatus();
    EXPECT_FALSE(Table().state().disabled);
}

TEST_F(ScreenReader, HasACellNoMoreOnceItsRowIsGone) {
    OpenRecord();
    QAccessibleInterface& cell = CellOf(2, 1);
    ASSERT_TRUE(cell.isValid());
    Main().SetRows(1);
    EXPECT_FALSE(cell.isValid());
    EXPECT_TRUE(cell.state().invalid);
    EXPECT_EQ(cell.text(QAccessible::Name), QString());
    EXPECT_EQ(cell.rect(), QRect());
}

TEST_F(ScreenReader, ReadsATitleAsAHeading) {
    OpenRecord();
    QAccessibleInterface& title = Of(Device.Platform.grdTitle.Widget());
    ASSERT_GT(title.childCount(), 0);
    EXPECT_EQ(title.child(0)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(title.child(0)->text(QAccessible::Name).toStdU16String(), Device.Platform.grdTitle.Cell(0, 0));
    EXPECT_FALSE(title.child(0)->state().selectable);
    EXPECT_THAT(title.child(0)->actionInterface()->actionNames(), IsEmpty());
}

TEST_F(ScreenReader, TapsACell) {
    OpenRecord();
    const QString press = QAccessibleActionInterface::pressAction();
    ASSERT_THAT(CellOf(2, 1).actionInterface()->actionNames(), ElementsAre(press));
    CellOf(2, 1).actionInterface()->doAction(press);
    Settle();
    EXPECT_EQ(Main().Row(), 2);
    EXPECT_TRUE(Field().Visible());
}

TEST_F(ScreenReader, TapsACellThatIsNotOnThePage) {
    ShowRows(100);
    std::int32_t pressed = -1;
    Main().Pressed = nullptr;
    Main().Released = [&] { pressed = Main().Row(); };
    CellOf(80, 0).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(pressed, 80);
    EXPECT_TRUE(Main().RowOnScreen(80));
}

TEST_F(ScreenReader, TapsNothingThatTakesNoInput) {
    OpenRecord();
    const auto tap = [this] {
        CellOf(2, 1).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_FALSE(Table().tableInterface()->selectRow(2));
    };
    Main().SetEnabled(false);
    tap();
    Main().SetEnabled(true);
    AskInABox(platform::BoxButtons::Ok, [&] {
        tap();
        Device.Hand.PressBoxButton(platform::BoxAnswer::Ok);
    });
    EXPECT_EQ(Main().Row(), 0);
    EXPECT_TRUE(Table().tableInterface()->selectRow(2));
    EXPECT_EQ(Main().Row(), 2);
}

// Reports.

TEST_F(ScreenReader, IsToldOfTheCellThatTheFocusMovesTo) {
    OpenRecord();
    const Listener listener(Grid());
    Settle();
    Listener::All.clear();
    Press(Qt::Key_Down);
    EXPECT_THAT(Listener::All, ElementsAre(Told{QAccessible::Focus, 3}));
}

TEST_F(ScreenReader, IsToldOfATextThatChanges) {
    OpenRecord();
    const Listener listener(Grid());
    Settle();
    Listener::All.clear();
    Main().SetCell(2, 1, u"new");
    Main().SetCell(2, 1, u"newer");
    Settle();
    EXPECT_THAT(Listener::All, ElementsAre(Told{QAccessible::ValueChanged, 5}, Told{QAccessible::NameChanged, 5}));
}

TEST_F(ScreenReader, IsToldOfAnotherPageAsAWhole) {
    OpenRecord();
    const Listener listener(Grid());
    Settle();
    Listener::All.clear();
    ShowRows(100);
    EXPECT_THAT(Listener::All, Contains(Told{QAccessible::TableModelChanged, -1}));
    const auto values = std::count_if(Listener::All.begin(), Listener::All.end(),
                                      [](const Told& told) { return told.Kind == QAccessible::ValueChanged; });
    EXPECT_LT(values, 40);
}

TEST_F(ScreenReader, IsToldOfTheCellWhenTheGridGetsTheFocusBack) {
    OpenRecord();
    Tap(1, 1);
    const Listener listener(Grid());
    Settle();
    Listener::All.clear();
    Main().SetFocus();
    Settle();
    EXPECT_THAT(Listener::All, Contains(Told{QAccessible::Focus, 3}));
}

TEST_F(ScreenReader, IsToldNothingOfTheGridWhileTheFocusIsElsewhere) {
    OpenRecord();
    Tap(1, 1);
    const Listener listener(Grid());
    Settle();
    Listener::All.clear();
    Main().SetCol(0);
    Settle();
    EXPECT_THAT(Listener::All, testing::Not(Contains(Told{QAccessible::Focus, 2})));
}

// The names of all other controls.

TEST_F(ScreenReader, CallsTheFieldOverACellAsItsRow) {
    OpenRecord();
    Tap(1, 1);
    EXPECT_EQ(NameOf(Line()), "Moisture");
    EXPECT_EQ(Of(Line()).text(QAccessible::Value), QStringLiteral("b"));
    Tap(2, 1);
    EXPECT_EQ(NameOf(Line()), "Remark");
}

TEST_F(ScreenReader, CallsTheFieldOfAQuestionAsTheQuestion) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    EXPECT_EQ(NameOf(Line()), "Title");
    modPDAUI::EndInput(true);
    Ask(modPDAUI::PromptKind::Text, u"ab");
    EXPECT_EQ(NameOf(Page()), "Title");
    modPDAUI::EndInput(true);
    Ask(modPDAUI::PromptKind::List, u"a", u"a,b");
    EXPECT_EQ(NameOf(*Combo().lineEdit()), "Title");
    EXPECT_EQ(Of(Combo()).focusChild(), &Of(*Combo().lineEdit()));
    EXPECT_EQ(Of(Combo()).text(QAccessible::Value), QStringLiteral("a"));
    modPDAUI::EndInput(true);
    Ask(modPDAUI::PromptKind::Date, u"");
    EXPECT_EQ(NameOf(Calendar()), "Title");
    EXPECT_EQ(NameOf(*Calendar().findChild<QTableView*>()), "Title");
    modPDAUI::EndInput(true);
}

TEST_F(ScreenReader, CallsTheButtonsOfACalendarByTheirUse) {
    const auto button = [this](const char* name) -> QWidget& {
        return *Calendar().findChild<QWidget*>(QString::fromLatin1(name));
    };
    Ask(modPDAUI::PromptKind::Date, u"");
    Calendar().setSelectedDate(QDate(2026, 11, 22));
    EXPECT_EQ(NameOf(button("qt_calendar_prevmonth")), "Previous month");
    EXPECT_EQ(NameOf(button("qt_calendar_nextmonth")), "Next month");
    EXPECT_EQ(NameOf(button("qt_calendar_yearedit")), "Year");
    Calendar().setCurrentPage(2027, 1);
    EXPECT_EQ(NameOf(button("qt_calendar_monthbutton")),
              "Month: " + Calendar().locale().standaloneMonthName(1).toStdString());
    EXPECT_EQ(NameOf(button("qt_calendar_yearbutton")), "Year: 2027");
    modPDAUI::EndInput(true);
}

TEST_F(ScreenReader, FindsTheWindowAsAWindowWithItsTitle) {
    Form().setWindowTitle(QStringLiteral("qrn0001 — Quorin"));
    EXPECT_EQ(Of(Form()).role(), QAccessible::Window);
    EXPECT_EQ(NameOf(Form()), "qrn0001 — Quorin");
    EXPECT_NE(Of(Form().Screen()).role(), QAccessible::Window);
}

TEST_F(ScreenReader, FindsTheMenus) {
    auto& menus = Device.Platform.menus;
    QAccessibleInterface& bar = Of(*menus.Bar());
    EXPECT_EQ(bar.role(), QAccessible::MenuBar);
    ASSERT_GT(bar.childCount(), 0);
    EXPECT_EQ(bar.child(0)->text(QAccessible::Name).toStdU16String(), menus.Titles[0].Caption());
}

TEST_F(ScreenReader, FindsTheButtonsOfABox) {
    AskInABox(platform::BoxButtons::YesNo, [this] {
        QMessageBox& box = *Device.Platform.boxes.Dialog();
        EXPECT_FALSE(NameOf(box).empty());
        EXPECT_EQ(NameOf(*box.button(QMessageBox::Yes)), "Yes");
        EXPECT_EQ(NameOf(*box.button(QMessageBox::No)), "No");
        bool isRead = false;
        for (QLabel* const label : box.findChildren<QLabel*>())
            isRead = isRead || NameOf(*label) == "Really?";
        EXPECT_TRUE(isRead);
        Device.Hand.PressBoxButton(platform::BoxAnswer::No);
    });
}

TEST_F(ScreenReader, CallsTheStateOfTheLinkAsItIsSeen) {
    Form().SetLinkLine({"Com1: open", companion::LineLook::Alive, "Com1: open"});
    EXPECT_EQ(NameOf(*Form().findChild<QLabel*>(QStringLiteral("linkState"))), "Com1: open");
    companion::Notices notices;
    notices.Raise({u"notsaved", companion::Severity::Loss, u"not saved", companion::Until::Tapped});
    Form().SetNotices(notices);
    EXPECT_EQ(NameOf(*Form().findChild<QLabel*>(QStringLiteral("warning"))), "not saved");
}

const companion::Notice NotSaved{u"notsaved", companion::Severity::Loss, u"not saved", companion::Until::Tapped};
const companion::Notice Slow{u"journal", companion::Severity::Warning, u"the disk is slow"};
const companion::Notice PortFound{.About = u"adapter",
                                  .Weight = companion::Severity::Hint,
                                  .Words = u"A port was plugged in.",
                                  .Offers = {{u"useport", u"Use it"}, {u"notnow", u"Not now"}}};

TEST_F(ScreenReader, HearsANewNoticeAlsoBehindAWorseOne) {
    const HeardNotices hearing;
    companion::Notices notices;
    notices.Raise(NotSaved);
    Form().SetNotices(notices);
    notices.Raise(Slow);
    Form().SetNotices(notices);
    EXPECT_THAT(HeardNotices::All, ElementsAre("not saved", "the disk is slow"));
    notices.Withdraw(u"journal");
    Form().SetNotices(notices);
    EXPECT_EQ(HeardNotices::All.size(), 2U);
}

TEST_F(ScreenReader, HearsTogetherWhatIsRaisedTogether) {
    const HeardNotices hearing;
    companion::Notices notices;
    notices.Raise(Slow);
    notices.Raise(NotSaved);
    Form().SetNotices(notices);
    EXPECT_THAT(HeardNotices::All, ElementsAre("not saved the disk is slow"));
}

TEST_F(ScreenReader, HearsWhatANoticeOffers) {
    const HeardNotices hearing;
    companion::Notices notices;
    notices.Raise(PortFound);
    Form().SetNotices(notices);
    EXPECT_THAT(HeardNotices::All, ElementsAre("A port was plugged in. Shift+F4 offers: Use it, Not now."));
    auto* const button = Form().findChild<QAbstractButton*>(QStringLiteral("offer_useport"));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(NameOf(*button), "Use it");
    EXPECT_EQ(Of(*button).text(QAccessible::Description), QStringLiteral("A port was plugged in."));
    Form().NoticesAction().trigger();
    auto* const rows = Form().findChild<QWidget*>(QStringLiteral("notices"))->findChild<QListWidget*>();
    EXPECT_EQ(Of(*rows).child(1)->text(QAccessible::Name), QStringLiteral("Use it: A port was plugged in."));
}

class ScreenReaderOnADevice : public ScreenReader {
protected:
    ScreenReaderOnADevice() : ScreenReader(5) {}
};

TEST_F(ScreenReaderOnADevice, FindsTheSoftKeysAndTheKeysOfTheDevice) {
    auto& menus = Device.Platform.menus;
    for (const std::int32_t menu : {1, 2}) {
        const Text caption = menus.Titles[static_cast<std::size_t>(menu - 1)].Caption();
        EXPECT_EQ(Of(*menus.Key(menu)).text(QAccessible::Name).toStdU16String(), caption);
    }
    const auto& keys = backends::ProfileOfType(5).Keys;
    ASSERT_FALSE(keys.empty());
    for (const auto& key : keys) {
        auto* const button = Form().findChild<QAbstractButton*>(QStringLiteral("key%1").arg(key.Code));
        ASSERT_NE(button, nullptr);
        EXPECT_FALSE(NameOf(*button).empty());
    }
}

TEST_F(ScreenReaderOnADevice, HearsANoticeThatIsInTheListAlone) {
    const HeardNotices hearing;
    companion::Notices notices;
    notices.Raise(PortFound);
    Form().SetNotices(notices);
    ASSERT_TRUE(Form().findChild<QLabel*>(QStringLiteral("warning"))->isHidden());
    EXPECT_THAT(HeardNotices::All, ElementsAre(testing::StartsWith("A port was plugged in.")));
}

TEST_F(ScreenReader, FindsNothingWithoutANameThatCanHaveTheFocus) {
    OpenRecord();
    Tap(1, 1);
    for (QWidget* const widget : Form().findChildren<QWidget*>()) {
        const bool isReached = widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus);
        EXPECT_FALSE(isReached && NameOf(*widget).empty()) << widget->objectName().toStdString();
    }
}

} // namespace
} // namespace windowtest
