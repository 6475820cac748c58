// SPDX-License-Identifier: MIT
// What the real window does when something is missing, full, read-only or sends garbage.
#include "tests/support/running_instrument.h"
#include "tests/system/window/running_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace live {
namespace {

using instrument::RunningInstrument;
using testing::HasSubstr;
using testing::MatchesRegex;
using Words = std::vector<std::string>;

constexpr const char* NoDisplay =
    "quorin: there is no display to open a window on; quorin-console runs on a terminal\n";
constexpr QRgb TitleBlue = 0x0000FF;
constexpr QRgb FrameGreen = 0x00FF00;
constexpr QRgb WarningRed = 0xB00020;
constexpr QRgb White = 0xFFFFFF;

TEST(WithoutADisplay, EndsWithTwoAndNamesTheOtherProgram) {
    const Folder home;
    RunningWindow window(nullptr, home);
    EXPECT_EQ(window.Process().ExitStatus(), 2);
    EXPECT_EQ(window.Process().Errors(), NoDisplay);
    EXPECT_EQ(window.Process().Output(), "");
    EXPECT_FALSE(std::filesystem::exists(home.Path("data"))) << "it leaves no folder";
}

TEST(WithoutADisplay, EndsWithTwoAlsoWhenTheOneThatIsNamedDoesNotAnswer) {
    const Folder home;
    Child::Setting setting;
    setting.Environment = {{"DISPLAY", ":4711"}};
    RunningWindow window(nullptr, home, {}, setting);
    EXPECT_EQ(window.Process().ExitStatus(), 2);
    EXPECT_EQ(window.Process().Errors(), NoDisplay);
}

class WithoutAWindow : public testing::TestWithParam<const char*> {};

TEST_P(WithoutAWindow, SaysWhatItWasAskedAndEndsWithNothing) {
    const Folder home;
    RunningWindow window(nullptr, home, {GetParam()});
    EXPECT_EQ(window.Process().ExitStatus(), 0);
    EXPECT_NE(window.Process().Output(), "");
    EXPECT_EQ(window.Process().Errors(), "");
    EXPECT_FALSE(std::filesystem::exists(home.Path("data")));
}

INSTANTIATE_TEST_SUITE_P(Options, WithoutAWindow, testing::Values("--help", "--version", "--ports"));

TEST(PortList, TellsWhatAPinnedPortIs) {
    const Folder home;
    RunningWindow window(nullptr, home, {"--ports", "--port", "3=/nowhere/adapter"});
    EXPECT_EQ(window.Process().ExitStatus(), 0);
    EXPECT_THAT(window.Process().Output(), HasSubstr("Com3"));
    EXPECT_THAT(window.Process().Output(), HasSubstr("/nowhere/adapter"));
}

// --- with a window ---------------------------------------------------------------------------------------------------

constexpr QRgb PlaceColour = 0xFFE0C0; // each row has its own colour, by which it is found on the screen
constexpr QRgb MoistureColour = 0xE0FFC0;
constexpr const char* Table = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                              "Place|1||Level|12640511|||\nMoisture|1||Moisture|12648416|||\n";

/// The window with a driver and a download of it.
class WindowFaults : public testing::Test {
protected:
    static void SetUpTestSuite() { Screen = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { Screen.reset(); }
    void TearDown() override {
        const char* const folder = std::getenv("QUORIN_PICTURES");
        if (HasFailure() && folder != nullptr)
            Screen->Picture().save(QString::fromUtf8(folder) + "/failed.png");
    }
    WindowFaults() {
        Home.Put("root/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Home.Put("root/Quorin/meter.txt", Table);
        Home.Put("root/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Home.Put("root/Quorin/qrn0001.txt", "Place|Moisture\n|\n");
        Home.Put("root/settings.ini", "[Settings]\nComPort=Com1\n");
    }

    void Start(const Child::Setting& setting = {}) {
        Window.emplace(Screen.get(), Home, Words{"--root", Home.Path("root"), "--port", "1=" + Home.Path("line")},
                       setting);
    }
    /// Returns the effect that another screen has appeared, which shows in the headline.
    static Effect AnotherScreen() {
        return [before = Screen->Picture()] {
            const QImage now = Screen->Picture();
            const QRect headline = BoxOf(now, TitleBlue);
            return !headline.isEmpty() && now.copy(headline) != before.copy(headline);
        };
    }
    static bool Shows(QRgb colour) { return !BoxOf(Screen->Picture(), colour).isEmpty(); }
    static bool OneWindow() { return Screen->Windows().size() == 1; }
    /// Presses a key that ends the program.
    void EndBy(const std::string& key) {
        EXPECT_TRUE(Screen->Press(key, [this] { return Window->Process().HasEnded(); }));
    }
    void ShowDownloads() {
        Window->Choose("F1", "s", AnotherScreen());
        Window->Run("F1", AnotherScreen());
    }
    /// Opens a download that can't be created because a folder has its name.
    void OpenADownloadThatCantBeMade() {
        ShowDownloads();
        std::filesystem::remove(Home.Path("root/Quorin/qrn0001.txt"));
        std::filesystem::create_directory(Home.Path("root/Quorin/qrn0001.txt"));
        Window->Choose("F1", "o", [&] { return Window->IsAsking(); });
    }
    void OpenRecord() {
        ShowDownloads();
        Window->Choose("F1", "o", [] { return Shows(MoistureColour); });
    }
    /// Returns the place of the value beside the name that has a row's colour.
    QRect Cell(QRgb colour) {
        const QRect row = Window->Find(colour);
        const QRect line = Window->Find(TitleBlue);
        return {line.center().x() + 4, row.top() + 2, line.width() / 2 - 32, row.height() - 4};
    }
    bool Fills(QRgb colour) {
        return Eventually([&] {
            const QRect cell = Cell(colour); // a result brings its row to the top
            return Ink(Screen->Picture(), cell) > 0;
        });
    }

    static std::unique_ptr<Desktop> Screen;
    Folder Home;
    std::optional<RunningWindow> Window;
};

std::unique_ptr<Desktop> WindowFaults::Screen;

QPoint BesideTheMenu() {
    return {512, 560};
}

TEST_F(WindowFaults, AReadOnlyRootIsShownAllTheSame) {
    constexpr unsigned Nobody = 65534;
    for (const char* name : {"root/Quorin", "root", ""})
        std::filesystem::permissions(Home.Path(name), std::filesystem::perms(0555));
    Child::Setting setting;
    if (::geteuid() == 0)
        setting.BeforeStart = [] {
            if (::setgid(Nobody) != 0 || ::setuid(Nobody) != 0)
                ::_exit(126);
        };
    setting.Environment = {{"XDG_RUNTIME_DIR", ""}};
    Start(setting);
    if (Window->Process().HasEnded() && Window->Process().ExitStatus() >= 126)
        GTEST_SKIP() << "no other user can run the program here";
    Window->Choose("F1", "s", AnotherScreen());
    EXPECT_GT(Ink(Screen->Picture(), Window->Find(FrameGreen).adjusted(2, 2, -2, -2)), 0) << "the driver's name";
    for (const char* name : {"", "root", "root/Quorin"})
        std::filesystem::permissions(Home.Path(name), std::filesystem::perms(0755));
}

/// The window with a save that fails, with different standard streams.
class FailedSaves : public WindowFaults {
protected:
    void SaveInVain(const std::function<void()>& standardStreams);
    std::string Content;
};

void FailedSaves::SaveInVain(const std::function<void()>& standardStreams) {
    Content = "Place|Moisture\n";
    for (int i = 0; Content.size() < 20000; ++i)
        Content += "place " + std::to_string(i) + "|\n";
    Home.Put("root/Quorin/qrn0001.txt", Content);
    Child::Setting setting;
    setting.BeforeStart = [standardStreams] { // none of its files may grow beyond this
        constexpr rlimit Limit{16000, 16000};
        ::setrlimit(RLIMIT_FSIZE, &Limit);
        ::signal(SIGXFSZ, SIG_DFL);
        ::signal(SIGPIPE, SIG_DFL);
        standardStreams();
    };
    Start(setting);
    OpenRecord();
    EXPECT_TRUE(Screen->Click([&] { return Cell(MoistureColour).center(); },
                              [&] { return !BoxOf(Screen->Picture().copy(Cell(MoistureColour)), White).isEmpty(); }));
    EXPECT_TRUE(Screen->Type("12", [&] { return Cell(MoistureColour); }));
    Window->Choose("F1", "c", [&] { return Window->IsAsking(); });
    EndBy("Return");
    EXPECT_EQ(Window->Process().ExitStatus(), 1);
    EXPECT_EQ(Home.Bytes("root/Quorin/qrn0001.txt"), Content);
}

TEST_F(FailedSaves, AreToldAndLeaveTheFileAsItWas) {
    SaveInVain([] {});
    EXPECT_THAT(
        Window->Process().Errors(),
        MatchesRegex(
            "quorin: Can't write .*qrn0001\\.txt: the disk is full\nquorin: row 1 of qrn0001.txt was NOT saved\n"));
}

TEST_F(FailedSaves, AreToldInTheWindowWhereTheStandardStreamsAreClosed) {
    SaveInVain([] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::close(stream);
    });
    EXPECT_EQ(Home.Bytes("root/.quorin.lock").find("not saved"), std::string::npos);
}

TEST_F(FailedSaves, AreToldInTheWindowWhereNobodyReadsStandardError) {
    SaveInVain([] {
        int ends[2];
        if (::pipe(ends) == 0)
            ::dup2(ends[1], STDERR_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
    });
}

TEST_F(WindowFaults, AFailedSaveIsShownInRedWithTheNameOfTheTable) {
    Start();
    OpenRecord();
    EXPECT_TRUE(Screen->Click([&] { return Cell(MoistureColour).center(); },
                              [&] { return !BoxOf(Screen->Picture().copy(Cell(MoistureColour)), White).isEmpty(); }));
    EXPECT_TRUE(Screen->Type("12", [&] { return Cell(MoistureColour); }));
    EXPECT_FALSE(Shows(WarningRed));
    std::filesystem::rename(Home.Path("root"), Home.Path("away"));
    Window->Choose("F1", "c", [&] { return Shows(WarningRed); });
    EXPECT_GT(Ink(Screen->Picture(), Window->Find(WarningRed)), 0);
    EXPECT_THAT(Window->Process().Errors(), MatchesRegex("quorin: not saved: qrn0001\\.txt, .*\n"));
    EXPECT_FALSE(Window->Process().HasEnded());
    EXPECT_FALSE(std::filesystem::exists(Home.Path("root")));
}

TEST_F(WindowFaults, ADownloadThatCantBeMadeIsToldInABoxAndInRed) {
    Start();
    OpenADownloadThatCantBeMade();
    EXPECT_TRUE(Eventually([&] { return Shows(WarningRed); }));
    EXPECT_EQ(Window->Process().Errors(), "quorin: not saved: qrn0001.txt, the name is not allowed\n");
    Window->Answer("Return");
    EXPECT_FALSE(Window->Process().HasEnded());
}

TEST_F(WindowFaults, ASignalEndsTheProgramAlsoWhereTheBoxOfLossesStands) {
    Start();
    OpenADownloadThatCantBeMade();
    Window->Process().Signal(SIGTERM);
    EXPECT_EQ(Window->Process().ExitStatus(), 0);
}

TEST_F(WindowFaults, ARunTimeFailureIsShownAndEndsWithOne) {
    Start();
    ShowDownloads();
    Home.Put("root/Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\na|1|||green|||\n");
    Window->Choose("F1", "o", [&] { return Window->IsAsking(); });
    EXPECT_FALSE(Window->Process().HasEnded());
    EndBy("Return");
    EXPECT_EQ(Window->Process().ExitStatus(), 1);
    EXPECT_EQ(Window->Process().Errors(), "quorin: DISPLAY \"green\" is not a number (row 1 of meter.txt)\n");
}

TEST_F(WindowFaults, ASignalEndsTheProgramInGoodOrder) {
    Start();
    OpenRecord();
    Window->Process().Signal(SIGTERM);
    EXPECT_EQ(Window->Process().ExitStatus(), 0);
    EXPECT_EQ(Window->Process().Errors(), "quorin: ended by SIGTERM; there was nothing to save\n");
    RunningWindow next(Screen.get(), Home, {"--root", Home.Path("root")}); // the root is free again
    EXPECT_FALSE(next.Process().HasEnded());
}

TEST_F(WindowFaults, NobodyElseCanReadWhatItKeeps) {
    Window.emplace(Screen.get(), Home);
    Window->Choose("F2", "p", AnotherScreen());
    EXPECT_TRUE(Screen->Click([&] { return Window->Find(FrameGreen).center(); }, // Zoom
                              [&] {
                                  const std::string settings = Home.Bytes("config/quorin/settings.ini");
                                  return settings.find("FONTSIZE=") != std::string::npos;
                              }));
    for (const char* name : {"data", "data/quorin", "config", "config/quorin"}) {
        struct stat found {};
        ASSERT_EQ(::stat(Home.Path(name).c_str(), &found), 0) << name;
        EXPECT_EQ(found.st_mode & 0777, 0700U) << name;
    }
}

TEST_F(WindowFaults, EscTakesAMenuAwayAndNothingElse) {
    Start();
    OpenRecord();
    EXPECT_TRUE(Window->MenuOpens("F1"));
    EXPECT_TRUE(Screen->Press("Escape", OneWindow));
    EXPECT_TRUE(Window->MenuOpens("F2")); // the effects of the key are complete by now
    EXPECT_TRUE(Screen->Click(BesideTheMenu, OneWindow));
    EXPECT_FALSE(BoxOf(Screen->Picture(), MoistureColour).isEmpty()) << "it has gone back";
}

// --- the line --------------------------------------------------------------------------------------------------------

std::string Result(const std::string& type) {
    return "[BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n[BLob]\r\n[ORIGIN \"QI-1\"]\r\n[RESULT_TYPE \"" + type +
           "\"]\r\n[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
}

TEST_F(WindowFaults, AnInstrumentThatGoesAndComesBackIsTakenUpByItself) {
    const Words arguments = {"--link", Home.Path("line"), "--fast", Home.Path("records")};
    Home.Put("records", Result("Moisture"));
    auto first = std::make_unique<RunningInstrument>(arguments);
    Start();
    OpenRecord();
    EXPECT_TRUE(Fills(MoistureColour));
    const QRect headline = Window->Find(TitleBlue);
    const QImage before = Screen->Picture();
    first.reset();
    ::unlink(Home.Path("line").c_str()); // as the name of an adapter disappears with it
    EXPECT_TRUE(Window->Changes(headline, before)) << "it tells that the link is down";

    const double busy = Window->Process().ProcessorSeconds();
    ::usleep(2'000'000);
    EXPECT_LT(Window->Process().ProcessorSeconds() - busy, 0.2);

    Home.Put("records", Result("Level"));
    RunningInstrument second(arguments);
    EXPECT_TRUE(Fills(PlaceColour));
    EXPECT_EQ(Screen->Windows().size(), 1U) << "no dialog";
}

TEST_F(WindowFaults, TheRecordScreenSleepsWhileNothingArrives) {
    const RunningInstrument quiet({"--link", Home.Path("line"), "--fast", Home.Path("records")});
    Start();
    OpenRecord();
    const auto sleepsASecond = [this] {
        constexpr int Seconds = 3;
        const long before = Window->Process().Sleeps();
        ::sleep(Seconds);
        return static_cast<double>(Window->Process().Sleeps() - before) / Seconds;
    };
    double least = sleepsASecond(); // the journal and the draft are still written at first
    for (int tries = 0; tries < 10 && least > 5; ++tries)
        least = std::min(least, sleepsASecond());
    EXPECT_LE(least, 5);
}

TEST_F(WindowFaults, NeitherDBusNorSoundNorAJournalIsNeeded) {
    Home.Put("state/quorin/journal", "a file where the folder should be");
    Home.Put("records", Result("Moisture"));
    const RunningInstrument meter({"--link", Home.Path("line"), "--fast", Home.Path("records")});
    Start({{{"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + Home.Path("none")},
            {"XDG_STATE_HOME", Home.Path("state")},
            {"ALSA_CONFIG_PATH", "/dev/null"}},
           nullptr});
    OpenRecord();
    EXPECT_TRUE(Fills(MoistureColour));
    Window->Process().Signal(SIGTERM);
    EXPECT_EQ(Window->Process().ExitStatus(), 0);
    EXPECT_THAT(Home.Bytes("root/Quorin/qrn0001.txt"), HasSubstr("|1 %"));
    const std::string told = Window->Process().Errors();
    const std::string once = "The journal has stopped";
    EXPECT_THAT(told, HasSubstr(once));
    EXPECT_EQ(told.find(once), told.rfind(once)) << told;
}

/// Writes garbage to a pseudo terminal as fast as it is read.
class Garbage {
public:
    explicit Garbage(const std::string& link) : Link_(link), Master_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        ::grantpt(Master_);
        ::unlockpt(Master_);
        termios line{};
        ::tcgetattr(Master_, &line);
        ::cfmakeraw(&line);
        ::tcsetattr(Master_, TCSANOW, &line);
        std::filesystem::create_symlink(::ptsname(Master_), link);
        Writer_.emplace(Words{"cat", "/dev/urandom"}, Child::Setting{{}, [this] { ::dup2(Master_, STDOUT_FILENO); }});
    }
    ~Garbage() {
        std::filesystem::remove(Link_); // it would lead to another test's terminal in a moment
        ::close(Master_);
    }
    long TakenKilobytes() const {
        std::ifstream in("/proc/" + std::to_string(Writer_->Id()) + "/io");
        std::string word;
        long bytes = 0;
        while (in >> word)
            if (word == "wchar:")
                in >> bytes;
        return bytes / 1024;
    }

private:
    std::string Link_;
    int Master_;
    std::optional<Child> Writer_;
};

TEST_F(WindowFaults, RubbishAtFullSpeedLeavesTheWindowResponsive) {
    using Clock = std::chrono::steady_clock;
    const auto waitForAMenu = [this] {
        const auto start = Clock::now();
        Clock::duration wait{};
        EXPECT_TRUE(Screen->Press("F1", [&] {
            const bool isOpen = Window->IsMenuOrBoxOpen();
            if (isOpen && wait == Clock::duration{})
                wait = Clock::now() - start;
            return isOpen;
        }));
        EXPECT_TRUE(Screen->Click(BesideTheMenu, OneWindow));
        return std::chrono::duration_cast<std::chrono::milliseconds>(wait).count();
    };
    const auto median = [](std::vector<std::int64_t> waits) {
        std::sort(waits.begin(), waits.end());
        return waits[waits.size() / 2];
    };
    Garbage line(Home.Path("line"));
    Start();
    std::vector<std::int64_t> quiet(3); // before a record opens the line
    std::generate(quiet.begin(), quiet.end(), waitForAMenu);
    OpenRecord();
    std::vector<std::int64_t> waits;
    long early = 0;
    for (const auto end = Clock::now() + std::chrono::seconds(10); Clock::now() < end && !HasFailure();) {
        waits.push_back(waitForAMenu());
        if (early == 0)
            early = Window->Process().MemoryKilobytes();
    }
    const long late = Window->Process().MemoryKilobytes();
    EXPECT_LT(median(waits), 10 * median(quiet));
    std::printf("menus %zu, median %d ms, %d ms without rubbish; %ld kB came, memory from %ld to %ld kB\n",
                waits.size(), static_cast<int>(median(waits)), static_cast<int>(median(quiet)), line.TakenKilobytes(),
                early, late);
    EXPECT_LT(late - early, 64 * 1024 + 8 * line.TakenKilobytes())
        << "what has no end tag waits for one, as a text of two bytes a character";
    EXPECT_FALSE(Window->Process().HasEnded());
}

#ifndef __SANITIZE_ADDRESS__ // the sanitizer itself needs more memory than the limit here allows
/// A line without an end is kept until it has one.
TEST_F(WindowFaults, MemoryThatRunsOutIsAMessageAndEndsWithOne) {
    Garbage line(Home.Path("line"));
    Start();
    OpenRecord();
    const rlim_t most = static_cast<rlim_t>(Window->Process().AddressKilobytes() + 32 * 1024) * 1024;
    const rlimit limit{most, most};
    ASSERT_EQ(::prlimit(Window->Process().Id(), RLIMIT_AS, &limit, nullptr), 0);
    EXPECT_TRUE(Eventually([&] { return Window->Process().HasEnded(); }));
    EXPECT_EQ(Window->Process().ExitStatus(), 1);
    EXPECT_EQ(Window->Process().Errors(), "quorin: out of memory; every file is as the last completed save left it\n");
    EXPECT_EQ(Home.Bytes("root/Quorin/qrn0001.txt"), "Place|Moisture\n|\n");
}
#endif

} // namespace
} // namespace live
