// SPDX-License-Identifier: MIT
// What a person does in the window, as it is reported for the journal: each act before its effect, and once.
#include "backends/loop/acts.h"
#include "backends/loop/clock.h"
#include "src/view/input_fields.h"
#include "tests/support/in_a_window.h"

#include <QAccessible>
#include <QCalendarWidget>
#include <QListWidget>
#include <QMessageBox>
#include <QTableView>
#include <QWheelEvent>

namespace windowtest {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Acts : public InAWindow {
protected:
    Acts() {
        OpenRecord();
        backends::Acts.Begins = [this](const backends::Act& act) {
            Heard.push_back(act.Word + (act.Arguments.empty() ? "" : " ") + act.Arguments);
            if (AtAct)
                AtAct();
        };
    }
    ~Acts() override { backends::Acts = {}; }

    std::vector<std::string> Heard;
    std::function<void()> AtAct;
};

TEST_F(Acts, ATapIsAPressAndARelease) {
    std::vector<std::int32_t> rows;
    AtAct = [&] { rows.push_back(Main().Row()); };
    Tap(2, 1);
    EXPECT_THAT(Heard, ElementsAre("press 2 1", "release"));
    EXPECT_THAT(rows, ElementsAre(0, 2)); // before its effect
}

TEST_F(Acts, APressBesideTheCellsThatClosesAField) {
    Tap(0, 1);
    Heard.clear();
    Click(Grid(), QPoint(20, Grid().height() - 4));
    EXPECT_THAT(Heard, ElementsAre("beside"));
    EXPECT_FALSE(Field().Visible());
}

TEST_F(Acts, APressOnTheHeading) {
    auto& title = Device.Platform.grdTitle.Widget();
    Click(title, title.rect().center());
    EXPECT_THAT(Heard, ElementsAre("heading"));
}

TEST_F(Acts, TurningThePageOverAnOpenField) {
    ShowRows(100);
    const auto wheel = [this] {
        const QPoint place = Grid().rect().center();
        QWheelEvent event(place, Grid().mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Grid(), &event);
        Settle();
    };
    wheel();
    EXPECT_THAT(Heard, IsEmpty()); // it changes nothing
    modPDAUI::BeginCellEdit(Main().TopRow(), 1);
    Settle();
    wheel();
    EXPECT_THAT(Heard, ElementsAre(testing::HasSubstr("scroll ")));
}

TEST_F(Acts, AKeyOfTheForm) {
    Press(Qt::Key_Down);
    EXPECT_THAT(Heard, ElementsAre("key 40"));
}

TEST_F(Acts, AnEntryOfTheHoldMenu) {
    auto& list = Device.Platform.lstHoldMenu;
    for (const char16_t* item : {u"one", u"two"})
        list.AddItem(item);
    list.SetTag(u"1");
    list.SetBounds({20, 40, 120, 90});
    list.SetVisible(true);
    Settle();
    auto& shown = *Form().findChild<QListWidget*>(QStringLiteral("lstHoldMenu"));
    Click(*shown.viewport(), shown.visualItemRect(shown.item(1)).center());
    EXPECT_THAT(Heard, ElementsAre("holdmenu 2"));
}

TEST_F(Acts, ADayOfTheCalendar) {
    Ask(modPDAUI::PromptKind::Date, u"28/02/2007");
    Heard.clear();
    auto& days = *Calendar().findChild<QTableView*>();
    const QModelIndex day = days.model()->index(3, 3);
    Click(*days.viewport(), days.visualRect(day).center());
    ASSERT_EQ(Heard.size(), 1U);
    const platform::CalendarDate date = Device.Platform.dteInputField.Date();
    EXPECT_EQ(Heard[0], "pick " + backends::TextOfDate(date));
    EXPECT_EQ(date.Month, 2);
}

TEST_F(Acts, TheCloseButton) {
    Form().close();
    Settle();
    EXPECT_THAT(Heard, ElementsAre("close"));
}

TEST_F(Acts, ARowThatAScreenReaderChooses) {
    QAccessibleInterface* const grid = QAccessible::queryAccessibleInterface(&Grid());
    ASSERT_NE(grid, nullptr);
    ASSERT_NE(grid->tableInterface(), nullptr);
    EXPECT_TRUE(grid->tableInterface()->selectRow(2));
    EXPECT_THAT(Heard, ElementsAre("select 2"));
}

TEST_F(Acts, AnswerToABox) {
    AskInABox(platform::BoxButtons::YesNo, [this] { Device.Platform.boxes.Dialog()->close(); });
    EXPECT_THAT(Heard, ElementsAre("answer no"));
}

TEST_F(Acts, DoNotIncludeALayoutOfTheWindow) {
    Form().resize(Form().width() + 50, Form().height() + 50);
    Repaint();
    EXPECT_THAT(Heard, IsEmpty());
}

} // namespace
} // namespace windowtest
