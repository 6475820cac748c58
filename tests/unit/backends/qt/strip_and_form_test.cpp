// SPDX-License-Identifier: MIT
// The busy strip, and the form's size on a desktop and on a device.
#include "backends/qt/conversions.h"
#include "companion/words.h"
#include "src/app/commands.h"
#include "src/view/grids.h"
#include "src/view/navigation.h"
#include "src/view/prompt.h"
#include "src/view/status_strip.h"
#include "tests/support/in_a_window.h"

#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPointer>
#include <QProcess>
#include <QToolButton>

#include <chrono>
#include <thread>

namespace windowtest {
namespace {

using testing::ElementsAre;

// The strip.

class BusyStrip : public InAWindow {
protected:
    BusyStrip() { OpenRecord(); }
    QLabel& Strip() { return *Form().findChild<QLabel*>(QStringLiteral("lblStatus")); }
};

TEST_F(BusyStrip, StandsAtTheFootOfTheGrid) {
    modPDAUI::ShowStatus(u"Busy");
    const QRect grid = backends::qt::RectOf(Main().Bounds());
    EXPECT_TRUE(Strip().isVisible());
    EXPECT_EQ(Strip().geometry().bottom(), grid.bottom());
    EXPECT_EQ(Strip().geometry().left(), grid.left());
    EXPECT_EQ(Strip().width(), grid.width());
    EXPECT_EQ(Strip().text(), QStringLiteral("Busy"));
    modPDAUI::HideStatus();
    EXPECT_FALSE(Strip().isVisible());
}

TEST_F(BusyStrip, GrowsUpwardWithALongText) {
    modPDAUI::ShowStatus(u"Busy");
    const int line = Strip().height();
    modPDAUI::ShowStatus(Text(200, u'x'));
    EXPECT_GE(Strip().height(), 2 * line);
    EXPECT_EQ(Strip().geometry().bottom(), backends::qt::RectOf(Main().Bounds()).bottom());
}

/// Counts paint events.
class PaintCounter final : public QObject {
public:
    using QObject::QObject;
    int Count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        Count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

TEST_F(BusyStrip, IsPaintedBeforeTheOperationBegins) {
    PaintCounter counter;
    Strip().installEventFilter(&counter);
    Device.Did.Status.clear();
    modPDAUI::ShowStatus(u"Busy");
    EXPECT_GE(counter.Count, 1) << "without an event being handled";
    EXPECT_THAT(Device.Did.Status, ElementsAre(u"Busy"));
}

TEST_F(BusyStrip, IsWhiteOnDarkBlue) {
    modPDAUI::ShowStatus(u"Busy");
    const QImage seen = Strip().grab().toImage();
    EXPECT_EQ(seen.pixelColor(seen.width() - 2, seen.height() / 2), QColor(0, 0, 0x80));
    bool hasWhite = false;
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width() / 2; ++x)
            hasWhite = hasWhite || seen.pixelColor(x, y).lightness() > 200;
    }
    EXPECT_TRUE(hasWhite);
}

TEST_F(BusyStrip, KeepsClicksAndKeysFromTheForm) {
    modPDAUI::ShowStatus(u"Busy");
    Tap(2, 1);
    Press(Qt::Key_Down);
    EXPECT_EQ(Main().Row(), 0);
    modPDAUI::HideStatus();
    Tap(2, 1);
    EXPECT_EQ(Main().Row(), 2);
}

TEST_F(BusyStrip, DropsWhatWasClickedWhileNoEventCouldBeHandled) {
    modPDAUI::ShowStatus(u"Busy");
    const QPoint place = Middle(2, 1);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        auto* const event = new QMouseEvent(type, place, Grid().mapToGlobal(place), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::postEvent(&Grid(), event);
    }
    modPDAUI::HideStatus();
    Settle();
    EXPECT_EQ(Main().Row(), 0);
    EXPECT_FALSE(Field().Visible());
}

TEST_F(BusyStrip, DropsTheKeysOfThatTimeToo) {
    const auto before = Screen();
    modPDAUI::ShowStatus(u"Busy");
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease, QEvent::KeyPress, QEvent::KeyRelease})
        QCoreApplication::postEvent(&Grid(), new QKeyEvent(type, Qt::Key_Escape, Qt::NoModifier));
    modPDAUI::HideStatus();
    Settle();
    EXPECT_EQ(Screen(), before);
}

TEST_F(BusyStrip, KeepsWhatIsTypedIntoAnOpenField) {
    Tap(2, 1);
    ASSERT_TRUE(Field().Visible());
    Line().setCursorPosition(0);
    modPDAUI::ShowStatus(u"Decoding Result");
    for (const char* letter : {"1", "2"}) {
        const int key = letter[0];
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(&Line(), new QKeyEvent(type, key, Qt::NoModifier, QString::fromLatin1(letter)));
    }
    modPDAUI::HideStatus();
    Settle();
    EXPECT_TRUE(Field().Visible());
    EXPECT_EQ(Field().Contents().substr(0, 2), u"12");
}

// The status area.

class StatusArea : public InAWindow {
protected:
    explicit StatusArea(const backends::DeviceOptions& options = OfType(0)) : InAWindow(options) {
        Form().NoticeTapped = [this](const Text& about) {
            Notices.Act(about);
            Form().SetNotices(Notices);
        };
    }
    void Raise(const companion::Notice& notice) {
        Notices.Raise(notice);
        Form().SetNotices(Notices);
        Settle();
    }
    QLabel& Line() { return *Form().findChild<QLabel*>(QStringLiteral("warning")); }
    QToolButton& More() { return *Form().findChild<QToolButton*>(QStringLiteral("moreNotices")); }
    QWidget& List() { return *Form().findChild<QWidget*>(QStringLiteral("notices")); }
    QListWidget& Rows() { return *List().findChild<QListWidget*>(); }
    QStringList Listed() {
        QStringList texts;
        for (int row = 0; List().isVisible() && row < Rows().count(); ++row)
            texts.append(Rows().item(row)->text());
        return texts;
    }
    void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        QTest::keyClick(&widget, key, held);
        Settle();
    }

    const companion::Notice Place{u"place", companion::Severity::Note, u"Data: here", companion::Until::Withdrawn};
    const companion::Notice Disk{u"notsaved", companion::Severity::Loss, u"Not saved", companion::Until::Tapped};
    const companion::Notice Driver{u"driver", companion::Severity::Warning, u"Another driver's",
                                   companion::Until::RecordLeft};
    const companion::Notice Mailbox{u"mailbox", companion::Severity::Warning, u"Can't be deleted",
                                    companion::Until::Withdrawn};
    companion::Notices Notices;
};

TEST_F(StatusArea, HasTheWarningWhereThePlaceOfTheRecordsStands) {
    Raise(Place);
    EXPECT_EQ(Line().text(), QStringLiteral("Data: here"));
    const QSize form = Form().Screen().size();
    Raise(Disk);
    EXPECT_EQ(Line().text(), QStringLiteral("Not saved"));
    EXPECT_EQ(Form().Screen().size(), form);
    Click(Line(), Line().rect().center());
    EXPECT_EQ(Line().text(), QStringLiteral("Data: here"));
}

TEST_F(StatusArea, SaysHowManyNoticesStandBehindTheOneThatItShows) {
    Raise(Place);
    Raise(Driver);
    EXPECT_FALSE(More().isVisible());
    const QSize form = Form().Screen().size();
    Raise(Disk);
    Raise(Mailbox);
    EXPECT_EQ(Line().text(), QStringLiteral("Not saved"));
    EXPECT_TRUE(More().isVisible());
    EXPECT_EQ(More().text(), QStringLiteral("+2"));
    EXPECT_EQ(More().accessibleName(), QStringLiteral("2 more notices"));
    EXPECT_EQ(Form().Screen().size(), form);
    Click(Line(), Line().rect().center());
    EXPECT_EQ(Line().text(), QStringLiteral("Can't be deleted")) << "the one that was seen is gone, and no other";
    EXPECT_EQ(More().text(), QStringLiteral("+1"));
}

TEST_F(StatusArea, OpensTheListOfAllByAClickOnTheirNumber) {
    for (const auto& notice : {Place, Driver, Disk})
        Raise(notice);
    Click(More(), More().rect().center());
    EXPECT_EQ(Listed(), (QStringList{QStringLiteral("Not saved"), QStringLiteral("Another driver's"),
                                     QStringLiteral("Data: here")}));
    constexpr int Frame = 4; // pixels that a window system may put around it
    EXPECT_NEAR(List().y() + List().height(), Line().mapToGlobal(QPoint(0, 0)).y(), Frame);
}

TEST_F(StatusArea, HasATextThatIsCutWholeInItsTooltip) {
    const companion::Notice named = companion::PinNotUsed(u"/dev/" + Text(150, u'x'));
    ASSERT_NE(named.Words.find(u'…'), Text::npos) << "the name of a button has these dots";
    Raise(named);
    EXPECT_THAT(Line().toolTip().toStdString(), testing::StartsWith(backends::qt::ToQt(named.Words).toStdString()));
}

TEST_F(StatusArea, ListsATextThatIsCutByAClick) {
    const companion::Notice lengthy = companion::JournalStopped(u"it is a link: /home/" + Text(150, u'x'));
    Raise(lengthy);
    ASSERT_THAT(Line().text().toStdString(), testing::EndsWith("…"));
    EXPECT_THAT(Line().text().toStdString(), testing::StartsWith("The journal has stopped: it is a link: /home/"));
    ASSERT_TRUE(More().isVisible());
    EXPECT_EQ(More().text(), QStringLiteral("…"));
    EXPECT_LE(Line().width() + More().width(), Form().width());
    const QString whole = backends::qt::ToQt(lengthy.Words);
    EXPECT_THAT(Line().toolTip().toStdString(), testing::StartsWith(whole.toStdString()));
    EXPECT_THAT(Line().toolTip().toStdString(), testing::HasSubstr("Shift+F4"));
    for (QWidget* const clicked : {static_cast<QWidget*>(&More()), static_cast<QWidget*>(&Line())}) {
        Click(*clicked, clicked->rect().center());
        EXPECT_EQ(Listed(), QStringList{whole});
        Press(Rows(), Qt::Key_Escape);
    }
    Notices.Withdraw(lengthy.About);
    Raise(Driver);
    EXPECT_FALSE(More().isVisible());
}

TEST_F(StatusArea, CutsALongNoticeBeforeWhatThePersonMustDo) {
    const companion::Notice lengthy = companion::RightsNotKept(u"/home/" + Text(150, u'x'));
    Raise(lengthy);
    EXPECT_THAT(Line().text().toStdString(), testing::StartsWith("/home/xxx"));
    EXPECT_THAT(Line().text().toStdString(), testing::EndsWith("… Tap here when you have read it."));
    EXPECT_LE(Line().fontMetrics().horizontalAdvance(Line().text()), Line().width());
}

TEST_F(StatusArea, HasARowForEachFileThatCouldNotBeSaved) {
    const platform::DateTime now{};
    const auto fails = [&](const Text& file, const Text& why) { Raise(companion::NotSaved(now, file, why)); };
    fails(u"a.txt", u"the disk is full");
    fails(u"b.txt", u"permission denied");
    fails(u"a.txt", u"input/output error");
    Form().NoticesAction().trigger();
    ASSERT_EQ(Listed().size(), 2);
    EXPECT_THAT(Listed()[0].toStdString(), testing::HasSubstr("Not saved: a.txt, input/output error."));
    EXPECT_THAT(Listed()[1].toStdString(), testing::HasSubstr("Not saved: b.txt, permission denied."));
    Press(Rows(), Qt::Key_Return);
    EXPECT_EQ(Listed().size(), 1);
}

class StatusAreaOfADevice : public StatusArea {
protected:
    StatusAreaOfADevice() : StatusArea(OfType(1)) {}
    QLabel& Link() { return *Form().findChild<QLabel*>(QStringLiteral("linkState")); }
    void Say(const std::string& words) {
        Form().SetLinkLine({words, companion::LineLook::Plain, words});
        Settle();
    }
};

TEST_F(StatusAreaOfADevice, HasOneHeightWhateverTheLinkSays) {
    Say("Link off");
    const int height = Form().sizeHint().height();
    for (const char* const words : {"Link down: the cable is out", "",
                                    "Link down for 59 s: Com1: there is no device for this port, trying again; last: "
                                    "Moisture 23.4 % → Moisture, 20:30:12"}) {
        Say(words);
        EXPECT_EQ(Form().sizeHint().height(), height) << words;
    }
}

TEST_F(StatusAreaOfADevice, ListsAStateOfTheLinkThatIsCut) {
    const std::string words = "Link down for 59 s: " + std::string(90, 'x');
    Say(words);
    EXPECT_THAT(Link().text().toStdString(), testing::EndsWith("…"));
    EXPECT_EQ(Link().text().count(u'\n'), 1);
    EXPECT_EQ(Link().toolTip().toStdString(), words);
    Form().NoticesAction().trigger();
    EXPECT_THAT(Listed().join(u'\n').toStdString(), testing::HasSubstr(words));
}

TEST_F(StatusArea, ShowsAFolderAsALinkAlsoIfItsNameIsCut) {
    std::vector<Text> tapped;
    Form().NoticeTapped = [&tapped](const Text& about) { tapped.push_back(about); };
    Raise(companion::DataFolder(u"/home/" + Text(150, u'x')));
    EXPECT_THAT(Line().styleSheet().toStdString(), testing::HasSubstr("underline"));
    EXPECT_EQ(Line().cursor().shape(), Qt::PointingHandCursor);
    Click(Line(), Line().rect().center());
    EXPECT_THAT(tapped, ElementsAre(companion::AboutPlace));
    EXPECT_THAT(Listed(), testing::IsEmpty());
    Press(Form(), Qt::Key_F4, Qt::ShiftModifier);
    Press(Rows(), Qt::Key_Return);
    EXPECT_THAT(tapped, ElementsAre(companion::AboutPlace, companion::AboutPlace)) << "by keys too";
    Raise(Driver);
    EXPECT_THAT(Line().styleSheet().toStdString(), testing::Not(testing::HasSubstr("underline")));
    EXPECT_EQ(Line().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(StatusArea, ListsItsNoticesForWhoHasAKeyboardAlone) {
    for (const auto& notice : {Place, Driver, Disk})
        Raise(notice);
    Press(Form(), Qt::Key_F4, Qt::ShiftModifier);
    ASSERT_TRUE(List().isVisible());
    Press(Rows(), Qt::Key_Return);
    EXPECT_EQ(Listed(), (QStringList{QStringLiteral("Another driver's"), QStringLiteral("Data: here")}))
        << "the loss was seen";
    Press(Rows(), Qt::Key_Return);
    EXPECT_EQ(Rows().count(), 2) << "there is nothing to be done about a driver";
    Press(Rows(), Qt::Key_Escape);
    EXPECT_FALSE(List().isVisible());
    EXPECT_EQ(Line().text(), QStringLiteral("Another driver's"));
}

TEST_F(StatusArea, HasAButtonForEachOfferOfItsNotice) {
    const companion::Notice hint{.About = u"hint",
                                 .Weight = companion::Severity::Hint,
                                 .Words = u"No port is chosen",
                                 .Stands = companion::Until::Withdrawn,
                                 .Offers = {{u"ports", u"Choose a port…"}, {u"nohints", u"No hints"}}};
    Text taken;
    Form().OfferTaken = [&taken](const Text& offer) { taken = offer; };
    Raise(hint);
    EXPECT_EQ(Line().text(), QStringLiteral("No port is chosen"));
    const QPointer<QToolButton> button = Form().findChild<QToolButton*>(QStringLiteral("offer_ports"));
    ASSERT_NE(button, nullptr);
    ASSERT_TRUE(button->isVisible());
    EXPECT_EQ(button->text(), QStringLiteral("Choose a port…"));
    Click(*button, button->rect().center());
    EXPECT_EQ(taken, u"ports");
    Raise(Driver);
    EXPECT_TRUE(button.isNull() || !button->isVisible());
}

TEST_F(StatusArea, ListsTheOffersForWhoHasAKeyboardAlone) {
    companion::Notice hint = Driver;
    hint.Offers = {{u"ports", u"Choose a port…"}};
    Text taken;
    Form().OfferTaken = [&taken](const Text& offer) { taken = offer; };
    Raise(hint);
    Press(Form(), Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(Listed(), (QStringList{QStringLiteral("Another driver's"), QStringLiteral("    → Choose a port…")}));
    Press(Rows(), Qt::Key_Down);
    Press(Rows(), Qt::Key_Return);
    EXPECT_EQ(taken, u"ports");
    EXPECT_FALSE(List().isVisible()) << "it would cover what the offer opens";
}

TEST_F(StatusArea, LeavesTheOffersToTheListWhereThereIsNoRoom) {
    companion::Notice hint = Driver;
    hint.Offers = {{u"ports", Text(60, u'W')}};
    Raise(hint);
    EXPECT_FALSE(Form().findChild<QToolButton*>(QStringLiteral("offer_ports"))->isVisible());
    EXPECT_TRUE(More().isVisible());
    EXPECT_EQ(Line().text(), QStringLiteral("Another driver's"));
}

TEST_F(StatusArea, KeepsTheChosenRowOfAListThatChanges) {
    for (const auto& notice : {Place, Driver})
        Raise(notice);
    Press(Form(), Qt::Key_F4, Qt::ShiftModifier);
    Press(Rows(), Qt::Key_Down);
    EXPECT_EQ(Rows().currentItem()->text(), QStringLiteral("Data: here"));
    Raise(Disk);
    EXPECT_EQ(Rows().count(), 3);
    EXPECT_EQ(Rows().currentItem()->text(), QStringLiteral("Data: here"));
}

// An operation that takes long.

class LongOperation : public InAWindow {
protected:
    /// Calls Working as storage and fonts do while they are used.
    void WorkFor(int milliseconds) {
        const auto start = std::chrono::steady_clock::now();
        while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(milliseconds))
            Device.Host.faults.Working();
    }
    QLabel& State() { return *Form().findChild<QLabel*>(QStringLiteral("linkState")); }
};

TEST_F(LongOperation, IsToldAfterATenthOfASecondAndForgottenAtItsEnd) {
    Form().SetLinkLine({"Link open", companion::LineLook::Alive, "Link open"});
    const auto start = std::chrono::steady_clock::now();
    Settle();
    while (State().text() == QStringLiteral("Link open"))
        Device.Host.faults.Working();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100)) << "what is quick is not told";
    EXPECT_EQ(State().text(), QStringLiteral("Working…"));
    EXPECT_EQ(Form().LinkLine(), QStringLiteral("Link open"));
    Settle();
    EXPECT_EQ(State().text(), QStringLiteral("Link open"));
}

TEST_F(LongOperation, HasMenusThatAreGreyAsLongAsItsStripStands) {
    OpenRecord();
    const auto* const bar = Form().findChild<QMenuBar*>();
    ASSERT_NE(bar, nullptr);
    const QAction& menu = *bar->actions().constFirst();
    ASSERT_TRUE(menu.isEnabled());
    modPDAUI::ShowStatus(u"Busy");
    WorkFor(200);
    EXPECT_FALSE(menu.isEnabled());
    modPDAUI::HideStatus();
    Settle();
    EXPECT_TRUE(menu.isEnabled());
}

// The window sleeps until the click, which does not count as work.
TEST_F(LongOperation, IsNotSeenInAQuickOneAfterALongRest) {
    ShowRows(3);
    Form().SetLinkLine({"Link open", companion::LineLook::Alive, "Link open"});
    Settle();
    QString told;
    Main().Pressed = [&] {
        Device.Host.faults.Working();
        told = State().text();
    };
    // A busy machine may need a tenth of a second between the click and the handler.
    for (int time = 0; time < 20 && told != QStringLiteral("Link open"); ++time) {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        Down(Grid(), Middle(1));
        Up(Grid(), Middle(1));
    }
    EXPECT_EQ(told, QStringLiteral("Link open"));
}

TEST_F(LongOperation, LetsTheWindowPaintItself) {
    PaintCounter counter;
    Grid().installEventFilter(&counter);
    Settle();
    counter.Count = 0;
    Grid().update();
    WorkFor(200);
    EXPECT_GT(counter.Count, 0);
}

TEST_F(LongOperation, RaisesNothingOfTheApplication) {
    OpenRecord();
    Repaint();
    Form().close(); // which is a Back
    WorkFor(200);
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
    Settle();
    EXPECT_NE(Screen(), modQuorin::ScrInfRecord) << "but later it is";
}

class FormOfADesktop : public InAWindow {
protected:
    void Resize(int width, int height) {
        Form().resize(Form().size() + QSize(width, height) - Form().Screen().size());
        QTest::qWait(20);
        Repaint();
    }
};

TEST_F(FormOfADesktop, BeginsWith640By480) {
    EXPECT_EQ(Form().Screen().size(), QSize(640, 480));
    EXPECT_EQ(Form().FormWidget().size(), QSize(640, 480));
}

TEST_F(FormOfADesktop, IsLaidOutAnewWhenThePersonResizesIt) {
    OpenRecord();
    Tap(1, 1);
    Press(Qt::Key_Return);
    Resize(900, 600);
    EXPECT_EQ(Form().Screen().size(), QSize(900, 600));
    EXPECT_EQ(Form().FormWidget().size(), QSize(900, 600));
    EXPECT_EQ(Grid().width(), 900);
    EXPECT_EQ(Grid().geometry().bottom(), 599);
    EXPECT_EQ(Main().Row(), 1);
    EXPECT_EQ(Cell(1, 1), u"b");
    Resize(400, 300);
    EXPECT_EQ(Grid().width(), 400);
    EXPECT_EQ(Main().Row(), 1);
}

TEST_F(FormOfADesktop, KeepsItsRowAndItsPageWhenItIsResized) {
    ShowRows(100);
    Main().SetRow(40);
    Main().SetTopRow(35);
    Settle();
    Resize(700, 500);
    EXPECT_EQ(Main().Row(), 40);
    EXPECT_EQ(Main().TopRow(), 35);
    EXPECT_EQ(Cell(40), u"row");
}

TEST_F(FormOfADesktop, ShowsNoEmptyPartOfAPageWhileRowsStandAboveIt) {
    ShowRows(60);
    Main().SetTopRow(59); // as a reading in the last row does
    Settle();
    EXPECT_GT(Main().TopRow(), 0);
    EXPECT_EQ(Main().TopRow(), Main().LastTop());
    EXPECT_GT(Grid().CellRect(59, 0).bottom(), Grid().height() - 2 * Grid().CellRect(59, 0).height());
}

TEST_F(FormOfADesktop, MovesAnOpenFieldWithItsCell) {
    OpenRecord();
    Tap(1, 1);
    Type("x");
    Resize(800, 500);
    ASSERT_TRUE(Field().Visible());
    const QRect cell = Grid().CellRect(1, 1).translated(Grid().pos());
    EXPECT_EQ(Line().x(), cell.x());
    EXPECT_EQ(Line().y(), cell.y());
    EXPECT_EQ(Line().height(), cell.height() + 1);
    EXPECT_GE(Line().geometry().right(), cell.right());
    EXPECT_EQ(Cell(1, 1), u"bx");
    EXPECT_TRUE(Line().hasFocus());
}

TEST_F(FormOfADesktop, KeepsTheRowsAboveTheEditedOneThatHaveRoom) {
    OpenRecord();
    Tap(2, 1);
    Resize(800, 500);
    EXPECT_EQ(Main().TopRow(), 0);
    EXPECT_TRUE(Field().Visible());
    EXPECT_EQ(Line().pos(), Grid().CellRect(2, 1).translated(Grid().pos()).topLeft());
}

TEST_F(FormOfADesktop, BringsTheEditedRowOnThePageThatHasBecomeSmaller) {
    modQuorin::MenuEvent(u"inf editor...");
    Repaint();
    modQuorin::GotoScreen(modQuorin::ScrDriverProperties);
    Main().SetRows(40);
    Repaint();
    Tap(20, 1);
    Type("x");
    ASSERT_EQ(Main().TopRow(), 0);
    Resize(640, 250);
    EXPECT_GT(Main().TopRow(), 0);
    EXPECT_LT(Main().TopRow(), 20);
    EXPECT_TRUE(Main().RowOnScreen(20));
    EXPECT_FALSE(Main().RowOnScreen(21)) << "by as little as it takes";
    EXPECT_EQ(Line().pos(), Grid().CellRect(20, 1).translated(Grid().pos()).topLeft());
    EXPECT_EQ(Cell(20, 1), u"x");
}

TEST_F(FormOfADesktop, KeepsAPromptsFieldWhenItIsResized) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Resize(500, 300);
    EXPECT_FALSE(Grid().isVisible());
    EXPECT_TRUE(Line().isVisible());
    EXPECT_EQ(Line().width(), 500);
    Type("c");
    EXPECT_EQ(Field().Contents(), u"abc");
    auto& title = Device.Platform.grdTitle.Widget();
    Click(title, title.rect().center());
    EXPECT_TRUE(Line().hasFocus());
    Type("d");
    EXPECT_EQ(Field().Contents(), u"abcd");
    AskInABox(platform::BoxButtons::Ok, [this] { Device.Hand.PressBoxButton(platform::BoxAnswer::Ok); });
    Form().activateWindow(); // as a window manager does
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Form()));
    Settle();
    EXPECT_TRUE(Line().hasFocus());
    Type("e");
    EXPECT_EQ(Field().Contents(), u"abcde");
}

TEST_F(FormOfADesktop, ResizesTheCalendarToo) {
    Ask(modPDAUI::PromptKind::Date, u"05/03/2007");
    Resize(300, 220);
    EXPECT_EQ(Calendar().geometry(), Grid().geometry());
    EXPECT_TRUE(Calendar().isVisible());
}

TEST(FormOnASmallScreen, IsLaidOutForItFromTheStart) {
    WindowDevice device(OfType(0), {});
    device.Platform.window.setMaximumSize(400, 300);
    device.Platform.StartProgram();
    QTest::qWait(20);
    device.Platform.loop.HandleDue();
    EXPECT_EQ(device.Platform.form.ClientArea().Width, 400);
    EXPECT_LT(device.Platform.form.ClientArea().Height, 300);
}

TEST_F(FormOfADesktop, BecomesNoSmallerThanCanBeUsed) {
    Form().resize(1, 1);
    QTest::qWait(20);
    Repaint();
    EXPECT_GE(Form().Screen().width(), 200);
    EXPECT_GE(Form().Screen().height(), 100);
    EXPECT_EQ(Form().FormWidget().size(), Form().Screen().size());
}

TEST_F(FormOfADesktop, IsNotClosedByItsFrameButGoesBack) {
    OpenRecord();
    const auto before = Screen();
    Form().close();
    Settle();
    EXPECT_TRUE(Form().isVisible());
    EXPECT_NE(Screen(), before);
}

// The form of a device.

class FormOfADevice : public InAWindow, public testing::WithParamInterface<std::int32_t> {
protected:
    FormOfADevice() : InAWindow(OfType(GetParam())) {}
};

TEST_P(FormOfADevice, HasTheSizeOfItsScreenAndNoOther) {
    const auto screen = backends::ProfileOfType(GetParam()).Screen;
    const QSize size(screen.Width, screen.Height);
    EXPECT_EQ(Form().Screen().size(), size);
    Form().resize(Form().size() + QSize(200, 200));
    QTest::qWait(20);
    Repaint();
    EXPECT_EQ(Form().Screen().size(), size);
    EXPECT_EQ(Form().minimumSize(), Form().maximumSize());
}

TEST_P(FormOfADevice, HasRoomForTheNameOfEachKey) {
    for (const QToolButton* const key :
         Form().findChild<QWidget*>(QStringLiteral("keyStrip"))->findChildren<QToolButton*>())
        EXPECT_GT(key->width(), key->fontMetrics().horizontalAdvance(key->text())) << key->text().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Types, FormOfADevice, testing::Values(1, 3, 5, 6, 7, 9));

// A screen with two pixels where others have one.

std::string OnAScreenOfScale(const char* scale) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(scale));
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--form-on-this-screen")});
    EXPECT_TRUE(program.waitForFinished());
    return program.readAllStandardOutput().trimmed().toStdString();
}

TEST(FormOnASharpScreen, HasTheSameUnitsAndTwiceThePixels) {
    const std::string plain = OnAScreenOfScale("1");
    const std::string sharp = OnAScreenOfScale("2");
    EXPECT_THAT(plain, testing::HasSubstr("form 160x160 grid 160x"));
    EXPECT_THAT(plain, testing::EndsWith("drawn 160x160"));
    EXPECT_THAT(sharp, testing::EndsWith("drawn 320x320"));
    EXPECT_EQ(sharp.substr(0, sharp.find("drawn")), plain.substr(0, plain.find("drawn")));
}

} // namespace
} // namespace windowtest
