// SPDX-License-Identifier: MIT
// What the line at the window's foot says of a reading, how it looks, and what a screen reader hears.
#include "backends/qt/to_screen_reader.h"
#include "src/app/commands.h"
#include "src/text/text.h"
#include "tests/support/heard_notices.h"
#include "tests/system/window/watched_window.h"

#include <QApplication>
#include <QTableView>
#include <QTimer>

#include <cstdlib>

namespace windowtest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class ReadingLine : public WatchedWindow {
protected:
    ReadingLine() {
        Device.Platform.settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com1");
        OpenRecord("Place|Moisture|Remark\n||\n");
        Pass(600);
        Receive(u"[CONNECT \"QI-1\"]\r\n");
    }
    void Receive(const Text& lines) {
        Device.Platform.serial.Arrive(u"[BLob]\r\n" + lines + u"[/BLob]\r\n");
        Settle();
        Pass(1100);
    }
    void Send(const Text& type, const Text& origin = u"QI-1") {
        Receive(u"[ORIGIN \"" + origin + u"\"]\r\n[RESULT_TYPE \"" + type +
                u"\"]\r\n[RESULT_VALUE \"14.1\"]\r\n[RESULT_UNIT \"%\"]\r\n");
    }
    QLabel& Label() { return *Form().findChild<QLabel*>(QStringLiteral("linkState")); }
    bool IsAlarming() { return Label().styleSheet().contains(QStringLiteral("#b34700")); }
};

TEST_F(ReadingLine, SaysWhereAReadingWent) {
    Send(u"Moisture");
    EXPECT_TRUE(LinkLineBegins("● Moisture 14.1 % → Moisture, ")) << LinkLine();
    EXPECT_FALSE(IsAlarming());
    EXPECT_THAT(Label().styleSheet().toStdString(), HasSubstr("color")) << "green";
}

TEST_F(ReadingLine, IsAnAlarmWhenNoRowAsksForIt) {
    Send(u"Bogus");
    EXPECT_TRUE(LinkLineBegins("○ refused: no row of Meter asks for \"Bogus\", ")) << LinkLine();
    EXPECT_TRUE(IsAlarming());
    EXPECT_TRUE(LinkLineMeets([](const std::string& line) { return line.find(", 2 s ago") != line.npos; }))
        << LinkLine();
}

TEST_F(ReadingLine, IsAnAlarmWhenItIsAnotherInstruments) {
    Send(u"Moisture", u"QI-2");
    EXPECT_TRUE(LinkLineBegins("○ refused: from QI-2, connected is QI-1, ")) << LinkLine();
    EXPECT_TRUE(IsAlarming());
}

TEST_F(ReadingLine, IsAnAlarmWhenItWentIntoTheOpenField) {
    Tap(2, 1);
    ASSERT_TRUE(Field().Visible());
    Send(u"Moisture");
    EXPECT_TRUE(LinkLineBegins("● into the open field: Remark, Moisture 14.1 %, ")) << LinkLine();
    EXPECT_TRUE(IsAlarming());
}

TEST_F(ReadingLine, IsAnAlarmWhenItsValueFails) {
    Device.Folder.Put("Meter.limits", "COLUMN|WARNHIGH|FAILHIGH\nMoisture|10|14\n");
    modQuorin::GoBack();
    modQuorin::MenuEvent(u"Open");
    Pass(600);
    Send(u"Moisture");
    EXPECT_TRUE(LinkLineBegins("✖ fail: Moisture 14.1 % → Moisture; above the limit 14, ")) << LinkLine();
    EXPECT_TRUE(IsAlarming());
    EXPECT_EQ(Cell(1, 1), u"14.1 %");
    Press(Qt::Key_F4);
    const QWidget* const panel = QApplication::activeWindow();
    ASSERT_NE(panel->findChild<QTableView*>(), nullptr);
    const QAbstractItemModel& rows = *panel->findChild<QTableView*>()->model();
    EXPECT_EQ(rows.index(0, 5).data().toString().toStdString(), "✖ fail > 14");
}

TEST_F(ReadingLine, IsSaidOnceByAScreenReader) {
    ASSERT_TRUE(LinkLineBegins("Link open")) << LinkLine();
    const HeardNotices alerts;
    Send(u"Bogus");
    EXPECT_TRUE(LinkLineBegins("○ refused: no row of Meter asks for \"Bogus\", 2 s ago")) << LinkLine();
    companion::Notices notices;
    notices.Raise({u"notsaved", companion::Severity::Loss, u"not saved", companion::Until::Tapped});
    Form().SetNotices(notices);
    Form().SetNotices(notices);
    EXPECT_THAT(HeardNotices::All,
                ElementsAre(StartsWith("○ refused: no row of Meter asks for \"Bogus\", "), "not saved"));
}

// On a machine without sound the line flashes.

TEST_F(ReadingLine, FlashesIfAToneCanNotBePlayed) {
    setenv("ALSA_CONFIG_PATH", "/dev/null", 1); // no audio device is found
    PlayTone();
    EXPECT_TRUE(LinkLineMeets(
        [this](const std::string&) { return Label().styleSheet().contains(QStringLiteral("palette(window-text)")); }));
    int told = 0;
    for (const companion::Notice& notice : Device.Platform.onlooker.notices.Standing())
        told += notice.Words == u"This machine plays no tones: the line of the link flashes instead." ? 1 : 0;
    EXPECT_EQ(told, 1);
}

TEST_F(ReadingLine, FlashesFourTimesAndThenRests) {
    Form().SetLinkLine({"Link open", companion::LineLook::Plain, "Link open"});
    const QString rest = Label().styleSheet();
    Form().FlashLink();
    Form().FlashLink(); // a second tone of the same moment
    int inverted = 1;
    EXPECT_NE(Label().styleSheet(), rest);
    QString look = Label().styleSheet();
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    for (int changes = 0; changes < 7 && std::chrono::steady_clock::now() < patience;) {
        QTest::qWait(5);
        if (Label().styleSheet() == look)
            continue;
        look = Label().styleSheet();
        ++changes;
        inverted += look == rest ? 0 : 1;
    }
    EXPECT_EQ(inverted, 4);
    QTest::qWait(600); // two phases more
    EXPECT_EQ(Label().styleSheet(), rest);
    for (const QTimer* timer : Form().findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly))
        EXPECT_FALSE(timer->isActive()) << "it would wake the machine for ever";
}

} // namespace
} // namespace windowtest
