// SPDX-License-Identifier: MIT
// The real window is ended by a signal, loses its display, or is killed, with each kind of box, field and prompt open.
#include "tests/support/running_instrument.h"
#include "tests/system/window/running_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <ostream>

namespace live {
namespace {

using instrument::RunningInstrument;
using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr QRgb TitleBlue = 0x0000FF;
constexpr QRgb PlaceColour = 0xFFE0C0;
constexpr QRgb MoistureColour = 0xE0FFC0;
constexpr QRgb DayColour = 0xC0E0FF;

/// A window on a separate display, which may end.
class EndOfTheWindow : public testing::Test {
protected:
    EndOfTheWindow() {
        Home.Put("root/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Home.Put("root/Quorin/meter.txt",
                 "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||Level|12640511|||\n"
                 "Moisture|1||Moisture|12648416|||\nDay|1|||16769216||DATE|\n");
        Home.Put("root/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Home.Put("root/Quorin/qrn0001.txt", "Place|Moisture|Day\n||\n");
        Home.Put("root/settings.ini", "[Settings]\nComPort=Com1\n");
    }

    void Start() {
        Window.emplace(&Screen, Home, Words{"--root", Home.Path("root"), "--port", "1=" + Home.Path("line")});
    }
    Effect AnotherScreen() {
        return [this, before = Screen.Picture()] {
            const QImage now = Screen.Picture();
            const QRect headline = BoxOf(now, TitleBlue);
            return !headline.isEmpty() && now.copy(headline) != before.copy(headline);
        };
    }
    bool Shows(QRgb colour) { return !BoxOf(Screen.Picture(), colour).isEmpty(); }
    void ShowDownloads() {
        Window->Choose("F1", "s", AnotherScreen());
        Window->Run("F1", AnotherScreen());
    }
    void OpenRecord() {
        ShowDownloads();
        Window->Choose("F1", "o", [this] { return Shows(MoistureColour); });
    }
    bool FieldIsOpen() {
        constexpr QRgb White = 0xFFFFFF;
        return !BoxOf(Screen.Picture().copy(Cell(PlaceColour)), White).isEmpty();
    }
    QRect Cell(QRgb colour) {
        const QRect row = Window->Find(colour);
        const QRect line = Window->Find(TitleBlue);
        return {line.center().x() + 4, row.top() + 2, line.width() / 2 - 32, row.height() - 4};
    }
    /// Types a value into the field over a cell and leaves the field open.
    void TypePlace() {
        EXPECT_TRUE(Screen.Click([this] { return Cell(PlaceColour).center(); }, [this] { return FieldIsOpen(); }));
        EXPECT_TRUE(Screen.Type("North", [this] { return Cell(PlaceColour); }));
    }
    void Send(int readings) {
        std::string records = "[BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n";
        for (int i = 1; i <= readings; ++i)
            records += "[BLob]\r\n[ORIGIN \"QI-1\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"" +
                       std::to_string(i) + "\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
        Home.Put("records", records);
        Instrument.emplace(Words{"--link", Home.Path("line"), "--fast", Home.Path("records")});
    }
    void Loses(bool display) {
        if (display)
            Screen.Vanish();
        else
            Window->Process().Signal(SIGTERM);
        EXPECT_EQ(Window->Process().ExitStatus(), display ? 1 : 0);
    }
    /// Opens a record with the first of two readings, while the program asks whether the second is to replace it.
    void OpenRecordUnderAQuestion() {
        Send(2);
        Start();
        OpenRecord();
        EXPECT_TRUE(Window->Asks());
    }
    void ExpectSaved(const std::string& row) {
        EXPECT_EQ(File(), "Place|Moisture|Day\n" + row + "\n");
        EXPECT_THAT(Said(), HasSubstr("; row 1 of qrn0001.txt was saved"));
    }
    std::string File() const { return Home.Bytes("root/Quorin/qrn0001.txt"); }
    std::string Said() { return Window->Process().Errors(); }

    Desktop Screen;
    Folder Home;
    std::optional<RunningWindow> Window;
    std::optional<RunningInstrument> Instrument;
};

/// The window ends by a signal, or because its display is gone.
class EndOfTheWindowEitherWay : public EndOfTheWindow, public testing::WithParamInterface<bool> {};

TEST_P(EndOfTheWindowEitherWay, SavesWhatIsInAnOpenField) {
    Start();
    OpenRecord();
    TypePlace();
    Loses(GetParam());
    ExpectSaved("North||");
}

TEST_P(EndOfTheWindowEitherWay, IsInTheJournalWithWhatWasTyped) {
    Start();
    OpenRecord();
    TypePlace();
    Loses(GetParam());
    std::string journal;
    for (const auto& file : std::filesystem::directory_iterator(Home.Path("state/quorin/journal")))
        journal += Home.Bytes("state/quorin/journal/" + file.path().filename().string());
    EXPECT_THAT(journal, HasSubstr(R"("program":"quorin")"));
    EXPECT_THAT(journal, HasSubstr(R"("event":"act","act":"press","args":"0 1","about":"Place"})"));
    EXPECT_THAT(journal, HasSubstr(R"("event":"act","act":"set","text":"North"})"));
    EXPECT_THAT(journal,
                HasSubstr(R"("event":"row","what":"saved","file":"qrn0001.txt","row":1,"old":"||","new":"North||"})"));
    EXPECT_THAT(journal, HasSubstr(R"("event":"end")"));
}

TEST_P(EndOfTheWindowEitherWay, SavesTheRecordUnderAQuestion) {
    OpenRecordUnderAQuestion();
    Loses(GetParam());
    ExpectSaved("|1 %|");
}

TEST_P(EndOfTheWindowEitherWay, SavesTheRecordUnderAnOldQuestionAndANewOne) {
    OpenRecordUnderAQuestion();
    Instrument.reset();
    ::unlink(Home.Path("line").c_str());
    Send(3);
    EXPECT_TRUE(Eventually([&] { return Screen.Windows().size() > 2; })) << "a second box";
    Loses(GetParam());
    ExpectSaved("|1 %|");
}

TEST_P(EndOfTheWindowEitherWay, DeletesNothingThatItWasAskedAbout) {
    Start();
    OpenRecord();
    TypePlace();
    EXPECT_TRUE(Window->MenuOpens("F2"));
    EXPECT_TRUE(Screen.Press("d", [this] { return Window->IsAsking(); }));
    Loses(GetParam());
    EXPECT_EQ(File(), "Place|Moisture|Day\nNorth||\n");
}

TEST_P(EndOfTheWindowEitherWay, SavesTheRecordUnderACalendar) {
    Start();
    OpenRecord();
    TypePlace();
    EXPECT_TRUE(Screen.Press("Return", [this] { return !FieldIsOpen(); }));
    EXPECT_TRUE(Screen.Click([this] { return Cell(DayColour).center(); }, [this] { return !Shows(DayColour); }));
    Loses(GetParam());
    ExpectSaved("North||");
}

TEST_P(EndOfTheWindowEitherWay, AnswersNoPrompt) {
    Start();
    ShowDownloads();
    Window->Choose("F1", "r", AnotherScreen());
    EXPECT_TRUE(Screen.Type("other", [this] {
        const QRect line = Window->Find(TitleBlue);
        return QRect(line.left() + 4, line.bottom() + 4, line.width() / 2, 16);
    }));
    Loses(GetParam());
    EXPECT_EQ(Home.Bytes("root/Quorin/qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    EXPECT_THAT(Said(), HasSubstr("; there was nothing to save"));
}

TEST_P(EndOfTheWindowEitherWay, LeavesAMessage) {
    Home.Put("root/settings.ini", "[Settings]\nComPort=SERVER\n");
    Start();
    ShowDownloads();
    EXPECT_TRUE(Window->MenuOpens("F1"));
    EXPECT_TRUE(Screen.Press("o", [this] { return Window->IsAsking(); }));
    Loses(GetParam());
    EXPECT_EQ(File(), "Place|Moisture|Day\n||\n");
    EXPECT_THAT(Said(), HasSubstr("; there was nothing to save"));
}

INSTANTIATE_TEST_SUITE_P(By, EndOfTheWindowEitherWay, testing::Bool(), [](const testing::TestParamInfo<bool>& each) {
    return std::string(each.param ? "ALostDisplay" : "ASignal");
});

TEST_F(EndOfTheWindow, SleepsBesideTwoQuestionsWhileTheInstrumentSends) {
    Instrument.emplace(Words{"--link", Home.Path("line"), "--count", "0", "--types", "Moisture", "--interval", "200"});
    Start();
    OpenRecord();
    EXPECT_TRUE(Eventually([&] { return Screen.Windows().size() > 2; })) << "two boxes";
    const double before = Window->Process().ProcessorSeconds();
    ::usleep(5'000'000);
    EXPECT_LT(Window->Process().ProcessorSeconds() - before, 0.5);
    EXPECT_EQ(Screen.Windows().size(), 3U) << "and no third one";
}

/// A window that was killed with a typed text in its record, and the next one.
class KilledWindow : public EndOfTheWindow {
protected:
    KilledWindow() {
        Start();
        OpenRecord();
        TypePlace();
        // A slow machine may type so slowly that a draft of the first letter is written before the second one.
        EXPECT_TRUE(
            Eventually([this] { return DraftsKept() == 1 && Draft().find("text North") != std::string::npos; }));
        Window->Process().Signal(SIGKILL);
        EXPECT_EQ(Window->Process().ExitStatus(), -1);
        EXPECT_EQ(File(), "Place|Moisture|Day\n||\n");
    }
    std::ptrdiff_t DraftsKept() const {
        const std::filesystem::path folder = Home.Path("state/quorin/drafts");
        return std::filesystem::exists(folder)
                   ? std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator())
                   : 0;
    }
    std::string Draft() const {
        const std::string folder = "state/quorin/drafts/";
        const auto file = std::filesystem::directory_iterator(Home.Path(folder))->path().filename();
        return Home.Bytes(folder + file.string());
    }
    /// Starts the next window, and waits for its bar.
    void StartAgain() {
        Start();
        Window->Find(BarColour);
        const char* const pictures = std::getenv("QUORIN_PICTURES");
        if (pictures != nullptr)
            Screen.Picture().save(QString::fromUtf8(pictures) + QStringLiteral("/recovery.png"));
    }
    Effect BarIsGone() {
        return [this] { return !Shows(BarColour); };
    }

    static constexpr QRgb BarColour = 0xFFD54F;
};

TEST_F(KilledWindow, PutsItsRecordBack) {
    StartAgain();
    EXPECT_TRUE(Screen.Press("alt+p", BarIsGone()));
    EXPECT_EQ(File(), "Place|Moisture|Day\nNorth||\n");
    EXPECT_EQ(DraftsKept(), 0);
    OpenRecord();
}

TEST_F(KilledWindow, ForgetsItsRecordAfterAQuestion) {
    StartAgain();
    EXPECT_TRUE(Screen.Press("alt+f", [this] { return Window->IsAsking(); }));
    Window->Answer("n");
    EXPECT_EQ(DraftsKept(), 1);
    EXPECT_TRUE(Screen.Press("alt+f", [this] { return Window->IsAsking(); }));
    EXPECT_TRUE(Screen.Press("y", BarIsGone()));
    EXPECT_EQ(DraftsKept(), 0);
    EXPECT_EQ(File(), "Place|Moisture|Day\n||\n");
}

TEST_F(KilledWindow, ShowsWhatCanNotBePutBack) {
    Home.Put("root/Quorin/qrn0001.txt", "Place|Moisture|Day\nSouth||\n");
    StartAgain();
    EXPECT_TRUE(Screen.Press("alt+s", [this] { return Window->IsAsking(); }));
    const char* const pictures = std::getenv("QUORIN_PICTURES");
    if (pictures != nullptr)
        Screen.Picture().save(QString::fromUtf8(pictures) + QStringLiteral("/recovery-fields.png"));
    Window->Answer("Escape");
    EXPECT_EQ(File(), "Place|Moisture|Day\nSouth||\n");
    EXPECT_EQ(DraftsKept(), 1);
}

TEST_F(KilledWindow, KeepsItsRecordWhenItEndsUnderTheBar) {
    StartAgain();
    Window->Process().Signal(SIGTERM);
    EXPECT_EQ(Window->Process().ExitStatus(), 0);
    EXPECT_EQ(DraftsKept(), 1);
}

} // namespace
} // namespace live
