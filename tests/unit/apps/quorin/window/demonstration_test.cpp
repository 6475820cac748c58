// SPDX-License-Identifier: MIT
// The buttons of the simulated instrument below the form.
#include "apps/quorin/demonstration.h"

#include "apps/demo/demo_data.h"
#include "src/app/commands.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"
#include "tests/support/running_instrument.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QToolButton>

#include <filesystem>
#include <set>

namespace quorin {
namespace {

using instrument::Eventually;

backends::DeviceOptions WithPort(const std::string& path) {
    backends::DeviceOptions options = windowtest::OfType(0);
    options.Ports.Pinned[apps::DemoPort] = backends::PathAddress(path);
    return options;
}

/// Exists before the device, whose port it is.
struct Plugged {
    DemoTerminal Cable;
};

class DemoWindow : protected Plugged, public windowtest::InAWindow {
protected:
    DemoWindow() : InAWindow(WithPort(Cable.Port())) {
        Data.RaiseWhatIsPending();
        apps::PrepareDemo();
    }
    void SetUp() override {
        Lesson.emplace(Device.Platform, Cable, Data, OwnFolder());
        Step();
    }
    virtual std::string OwnFolder() { return std::filesystem::canonical(Device.Folder.Path()).string(); }
    void OpenDownload() {
        for (const char16_t* const command : {u"Start...", u"Ok", u"New", u"Open"}) {
            modQuorin::MenuEvent(command);
            Settle();
        }
        EXPECT_TRUE(Eventually([&] {
            Pass(600);
            return Button("sendAll").isEnabled();
        }));
        Pass(600);
    }
    void Step() {
        Settle();
        Lesson->Step();
        Settle();
    }
    QToolButton& Button(const char* name) { return *Form().findChild<QToolButton*>(QString::fromLatin1(name)); }
    std::string Words() { return Form().findChild<QLabel*>(QStringLiteral("instrumentState"))->text().toStdString(); }
    bool Shows(const Text& value, int milliseconds = 100) {
        for (std::int32_t row = 0; row < Main().Rows(); ++row)
            if (Cell(row, 1).ends_with(value))
                return true;
        Pass(milliseconds);
        return false;
    }
    bool WillShow(const Text& value) {
        return Eventually([&] { return Shows(value); });
    }
    QMessageBox* Question() { return Form().findChild<QMessageBox*>(QStringLiteral("afreshBox")); }
    void AnswerAfresh(QMessageBox::StandardButton answer) {
        Button("startAfresh").click();
        ASSERT_NE(Question(), nullptr);
        EXPECT_EQ(Question()->defaultButton(), Question()->button(QMessageBox::No));
        Question()->button(answer)->click();
        Step();
    }

    DataFolder Data{Device.Platform, std::filesystem::canonical(Device.Folder.Path()).string()};
    std::optional<Demonstration> Lesson;
};

TEST_F(DemoWindow, SendsOnlyWhatIsPressed) {
    EXPECT_EQ(Words(), "Simulated instrument: no record listens");
    EXPECT_FALSE(Button("sendKind").isEnabled());
    OpenDownload();
    EXPECT_EQ(Words(), "Simulated instrument: it sends what you press");
    Pass(60000);
    EXPECT_FALSE(Shows(u" %"));
    Button("sendKind").click();
    EXPECT_EQ(Words(), "Simulated instrument: Moisture sent");
    EXPECT_TRUE(WillShow(u" %"));
    EXPECT_FALSE(Shows(u" %RH"));
    EXPECT_FALSE(Shows(u" \u00B0C"));
}

TEST_F(DemoWindow, WrapsItsButtonsInANarrowWindow) {
    const auto& strip = *Form().findChild<QWidget*>(QStringLiteral("instrumentStrip"));
    const auto rows = [&strip] {
        std::set<int> tops;
        for (const auto* const button : strip.findChildren<QAbstractButton*>()) {
            if (!button->isVisible())
                continue;
            EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
            EXPECT_LE(button->geometry().right(), strip.width());
            EXPECT_LE(button->geometry().bottom(), strip.height());
            tops.insert(button->geometry().top());
        }
        return tops.size();
    };
    const std::size_t before = rows();
    Form().resize(320, Form().height());
    EXPECT_TRUE(QTest::qWaitFor([&strip] { return strip.width() == 320; }));
    QTest::qWait(50);
    EXPECT_GT(rows(), before);
    const auto& words = *Form().findChild<QLabel*>(QStringLiteral("instrumentState"));
    EXPECT_GE(words.width(), words.fontMetrics().horizontalAdvance(words.text()));
    Form().resize(640, Form().height());
    EXPECT_TRUE(QTest::qWaitFor([&strip] { return strip.width() == 640; }));
    QTest::qWait(50);
    EXPECT_EQ(rows(), before);
}

TEST_F(DemoWindow, SendsOneOfEachKindByAKeyToo) {
    OpenDownload();
    Press(Qt::Key_4, Qt::AltModifier);
    for (const char16_t* const unit : {u" %", u" \u00B0C", u" %RH"})
        EXPECT_TRUE(WillShow(unit));
    EXPECT_EQ(Words(), "Simulated instrument: one of each sent");
}

TEST_F(DemoWindow, FormRefusesAStrangersReading) {
    OpenDownload();
    Button("sendStranger").click();
    EXPECT_EQ(Words(), "Simulated instrument: a stranger's reading sent");
    for (int times = 0; times < 20; ++times)
        EXPECT_FALSE(Shows(u" %", 600));
}

TEST_F(DemoWindow, PulledCableTakesTheLinkDownUntilItIsBack) {
    OpenDownload();
    EXPECT_EQ(Button("cable").text().toStdString(), "Unplug");
    Button("cable").click();
    EXPECT_EQ(Button("cable").text().toStdString(), "Plug in");
    EXPECT_EQ(Words(), "Simulated instrument: unplugged");
    EXPECT_TRUE(Eventually([&] {
        Pass(600);
        return !Device.Platform.serial.PortOpen();
    }));
    const DemoTerminal other; // may have the path of the old terminal
    Pass(5000);
    EXPECT_FALSE(Device.Platform.serial.PortOpen());
    Button("cable").click();
    EXPECT_TRUE(Eventually([&] {
        Pass(600);
        return Button("sendAll").isEnabled();
    }));
}

TEST_F(DemoWindow, TickSendsAResultEach10Seconds) {
    OpenDownload();
    auto& tick = *Form().findChild<QCheckBox*>(QStringLiteral("sendAlways"));
    EXPECT_FALSE(tick.isChecked());
    tick.click();
    Pass(9000);
    EXPECT_EQ(Words(), "Simulated instrument: it sends what you press");
    Pass(1600);
    EXPECT_EQ(Words(), "Simulated instrument: a result sent");
    EXPECT_TRUE(WillShow(u" %"));
}

TEST_F(DemoWindow, NothingIsSentByItselfWhileABoxIsOpen) {
    OpenDownload();
    Form().findChild<QCheckBox*>(QStringLiteral("sendAlways"))->click();
    AskInABox(platform::BoxButtons::YesNo, [this] {
        Pass(60000);
        EXPECT_EQ(Words(), "Simulated instrument: it sends what you press");
        Device.Hand.PressBoxButton(platform::BoxAnswer::No);
    });
    Pass(10600);
    EXPECT_EQ(Words(), "Simulated instrument: a result sent");
}

TEST_F(DemoWindow, StartAfreshDeletesNothingBeforeAYes) {
    Put("mine.txt", "x\n");
    AnswerAfresh(QMessageBox::No);
    EXPECT_EQ(File("mine.txt"), "x\n");
    AnswerAfresh(QMessageBox::Yes);
    EXPECT_FALSE(Device.Folder.Has("Quorin/mine.txt"));
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nClimate Meter|climate.txt\n");
    EXPECT_EQ(Screen(), modQuorin::ScrMain);
}

TEST_F(DemoWindow, StartAfreshWaitsUntilARecordIsLeft) {
    EXPECT_TRUE(Button("startAfresh").isEnabled());
    OpenDownload();
    EXPECT_FALSE(Button("startAfresh").isEnabled());
}

TEST_F(DemoWindow, StartAfreshLeavesWhatIsBehindALink) {
    const support::TemporaryFolder mine;
    mine.Put("Quorin/mine.txt", "x\n");
    std::filesystem::remove_all(Device.Folder.Path() / "Quorin");
    std::filesystem::create_directory_symlink(mine.Path() / "Quorin", Device.Folder.Path() / "Quorin");
    AnswerAfresh(QMessageBox::Yes);
    EXPECT_EQ(mine.Bytes("Quorin/mine.txt"), "x\n");
    ASSERT_NE(Question(), nullptr);
    EXPECT_THAT(Question()->text().toStdString(), testing::HasSubstr("Nothing was deleted"));
    Question()->button(QMessageBox::Ok)->click();
}

/// With `Lesson` made for a folder that a person has named.
class NamedFolder : public DemoWindow {
protected:
    std::string OwnFolder() override { return {}; }
};

TEST_F(NamedFolder, HasNoStartAfresh) {
    EXPECT_TRUE(Button("startAfresh").isHidden());
}

} // namespace
} // namespace quorin
