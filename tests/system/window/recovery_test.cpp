// SPDX-License-Identifier: MIT
// The bar above the form that recovers records which were not saved.
#include "apps/quorin/window_recovery.h"
#include "backends/host/draft_folder.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <csignal>
#include <unistd.h>

namespace windowtest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string Header = "Place|Moisture|Remark\n";

/// A window whose form has not been started, a download of two records, and drafts of them.
class RecoveryBar : public testing::Test {
protected:
    RecoveryBar() {
        Device.Folder.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Device.Folder.Put("Quorin/qrn0001.txt", Header + "a|b|c\n1|2|3\n");
    }
    ~RecoveryBar() override { std::filesystem::remove_all(State); }

    void Keep(std::int32_t row, const Text& line, const std::vector<Text>& texts) {
        companion::Draft draft;
        draft.Root = backends::RootIdOf(Device.Folder.Path().string());
        draft.Time = u"2007-03-05 09:1" + modStringTools::NumberText(row) + u":00";
        draft.File = u"qrn0001.txt";
        Device.Platform.Serve();
        modQuorin::SetFilePaths();
        draft.FullName = modQuorin::Paths.ControlFile;
        draft.FullName.replace(draft.FullName.rfind(u'\\') + 1, Text::npos, draft.File);
        draft.Header = u"Place|Moisture|Remark";
        draft.Register = u"Meter|qrn0001.txt|20070301|";
        draft.Row = row;
        draft.Line = line;
        draft.Texts = texts;
        backends::DraftFolder(State).Write("run-" + std::to_string(row) + ".draft", BytesOf(draft));
    }
    /// Offers the drafts and does one step each time that the window waits. Returns whether the program goes on.
    bool Recover(std::vector<std::function<void()>> steps) {
        Steps_ = {steps.begin(), steps.end()};
        Next();
        backends::Drafts drafts(State, Device.Folder.Path().string());
        backends::EndSignals signals;
        const bool goesOn = quorin::RecoverRecords(drafts, Device.Platform, signals);
        EXPECT_TRUE(Steps_.empty());
        return goesOn;
    }
    QWidget& Bar() { return *Device.Platform.window.findChild<QWidget*>(QStringLiteral("recovery")); }
    std::string Words() { return Bar().findChild<QLabel*>()->text().toStdString(); }
    QPushButton& Button(const char* name) {
        for (QPushButton* const button : Bar().findChildren<QPushButton*>())
            if (button->text() == QString::fromLatin1(name))
                return *button;
        throw std::runtime_error(name);
    }
    std::function<void()> Click(const char* name) {
        return [this, name] { Button(name).click(); };
    }
    std::string File() { return Device.Folder.Bytes("Quorin/qrn0001.txt"); }
    std::ptrdiff_t Kept() const {
        return std::distance(std::filesystem::directory_iterator(State), std::filesystem::directory_iterator());
    }

    WindowDevice Device{OfType(0), Looks{}};
    const std::string State = Device.Folder.Path().string() + "-state";

private:
    /// The next step is due before this one, which may open a box and wait in it.
    void Next() {
        if (Steps_.empty())
            return;
        QTimer::singleShot(50, &Device.Platform.window, [this] {
            auto* const bar = Device.Platform.window.findChild<QWidget*>(QStringLiteral("recovery"));
            if (bar == nullptr || !bar->isEnabled()) {
                Next(); // it is not ready yet
                return;
            }
            const std::function<void()> step = Steps_.front();
            Steps_.pop_front();
            Next();
            step();
        });
    }

    std::deque<std::function<void()>> Steps_;
};

TEST_F(RecoveryBar, IsNotShownWithoutADraft) {
    EXPECT_TRUE(Recover({}));
    EXPECT_FALSE(Device.Platform.window.isVisible());
}

TEST_F(RecoveryBar, OffersEachDraftTheNewestFirst) {
    Keep(2, u"1|2|3", {u"1", u"2", u"new"});
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    std::vector<std::string> words;
    const auto note = [&] { words.push_back(Words()); };
    EXPECT_TRUE(Recover({note, Click("&Put it back"), note, Click("&Put it back")}));
    EXPECT_THAT(words, ElementsAre("1 of 2: A record of 09:12 was not saved: qrn0001.txt, record 2.",
                                   "2 of 2: A record of 09:11 was not saved: qrn0001.txt, record 1."));
    EXPECT_EQ(File(), Header + "a|b|typed\n1|2|new\n");
    EXPECT_EQ(Kept(), 0);
}

TEST_F(RecoveryBar, SaysWhyARecordCanNotBePutBack) {
    Keep(1, u"another line", {u"a", u"b", u"typed"});
    EXPECT_FALSE(Recover({[this] {
                              EXPECT_THAT(Words(), HasSubstr("It can't be put back: the record has changed."));
                              EXPECT_FALSE(Button("&Put it back").isEnabled());
                          },
                          [this] { Device.Platform.window.close(); }}))
        << "the program ends with its window";
    EXPECT_EQ(Kept(), 1);
}

TEST_F(RecoveryBar, SaysWhyTheDiskRefusesARecord) {
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    EXPECT_FALSE(Recover({[this] { Device.Host.faults.FailNext(-1); }, Click("&Put it back"),
                          [this] { EXPECT_THAT(Words(), HasSubstr("It can't be put back: ")); },
                          [this] { Device.Platform.window.close(); }}));
    EXPECT_EQ(Kept(), 1);
    EXPECT_EQ(File(), Header + "a|b|c\n1|2|3\n");
}

TEST_F(RecoveryBar, ShowsTheFieldsToBeCopied) {
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    const auto copy = [] {
        auto* const box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        for (QPushButton* const button : box->findChildren<QPushButton*>())
            if (button->text() == QStringLiteral("&Copy"))
                button->click();
        box->reject();
    };
    EXPECT_TRUE(Recover({Click("&Show"), copy, Click("&Put it back")}));
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "Place\ta\ta\nMoisture\tb\tb\nRemark\ttyped\tc\n");
}

TEST_F(RecoveryBar, LeavesADraftForLater) {
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    EXPECT_TRUE(Recover({Click("&Later")}));
    EXPECT_EQ(Kept(), 1);
}

TEST_F(RecoveryBar, LeavesTheFormAtItsSize) {
    QSize usual;
    {
        WindowDevice other{OfType(0), Looks{}};
        other.Platform.StartProgram();
        usual = other.Platform.window.size();
    }
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    EXPECT_TRUE(Recover({Click("&Later")}));
    Device.Platform.StartProgram();
    EXPECT_EQ(Device.Platform.window.size(), usual);
}

TEST_F(RecoveryBar, EndsWithTheSession) {
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    EXPECT_FALSE(Recover({[] { QCoreApplication::sendEvent(qApp, std::make_unique<QEvent>(QEvent::Quit).get()); }}));
    EXPECT_EQ(Kept(), 1);
}

TEST_F(RecoveryBar, EndsByASignalAlsoUnderItsBoxes) {
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    // To this thread: those that Qt has started in the tests before do not hold the signal back.
    EXPECT_FALSE(Recover({Click("&Forget"), [] { ::raise(SIGTERM); }}));
    EXPECT_EQ(Kept(), 1);
}

TEST_F(RecoveryBar, IgnoresTheSecondHalfOfADoubleClick) {
    Keep(2, u"1|2|3", {u"1", u"2", u"new"});
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    EXPECT_FALSE(Recover({[this] {
                              QPushButton& button = Button("&Put it back");
                              QTest::mouseClick(&button, Qt::LeftButton);
                              QTimer::singleShot(10, &button,
                                                 [&button] { QTest::mouseClick(&button, Qt::LeftButton); });
                          },
                          [this] { Device.Platform.window.close(); }}));
    EXPECT_EQ(File(), Header + "a|b|c\n1|2|new\n");
    EXPECT_EQ(Kept(), 1);
}

TEST_F(RecoveryBar, DoesNotLookBusyWhileItWaits) {
    Keep(1, u"a|b|c", {u"a", u"b", u"typed"});
    std::this_thread::sleep_for(std::chrono::milliseconds(150)); // the look into the file is work by now
    EXPECT_TRUE(Recover({[this] {
                             const auto* const line =
                                 Device.Platform.window.findChild<QLabel*>(QStringLiteral("linkState"));
                             EXPECT_EQ(line->text().toStdString(), "");
                         },
                         Click("&Put it back")}));
}

} // namespace
} // namespace windowtest
