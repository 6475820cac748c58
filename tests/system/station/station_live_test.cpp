// SPDX-License-Identifier: MIT
// A station on a line, with the machine's clock: what it does when it is pulled out and plugged in, what the service
// manager hears, and the client of the document.
#include "apps/start/service_manager.h"
#include "tests/support/plugged_instrument.h"
#include "tests/support/running_console.h"
#include "tests/unit/apps/quorin-console/console_run.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

namespace console {
namespace {

namespace fs = std::filesystem;
using live::RunningConsole;
using testing::HasSubstr;

std::string Result(int number) {
    return "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"" + std::to_string(number) +
           "\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
}

bool Eventually(const std::function<bool()>& holds) {
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > patience)
            return false;
        ::usleep(20'000);
    }
    return true;
}

/// A station is ended by a signal: the end of its input does not end it.
class RunningStation : public RunningConsole {
public:
    using RunningConsole::RunningConsole;
    ~RunningStation() { End(); }
    int End() {
        if (!HasEnded_)
            ::kill(Id(), SIGTERM);
        HasEnded_ = true;
        return RunningConsole::End();
    }
    void Kill() {
        ::kill(Id(), SIGKILL);
        HasEnded_ = true;
        RunningConsole::End();
    }
    /// What an instrument sends before the port is open is another program's.
    bool WaitsForReadings() {
        return Eventually([this] { return Tell("state").find(R"("LinkOpen":true)") != std::string::npos; });
    }

private:
    bool HasEnded_ = false;
};

/// The service manager's end of $NOTIFY_SOCKET.
class Manager {
public:
    explicit Manager(const std::string& path) : Socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::snprintf(address.sun_path, sizeof address.sun_path, "%s", path.c_str());
        EXPECT_EQ(::bind(Socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::setenv("NOTIFY_SOCKET", path.c_str(), 1);
    }
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;
    ~Manager() {
        ::close(Socket_);
        ::unsetenv("NOTIFY_SOCKET");
        ::unsetenv("WATCHDOG_USEC");
    }
    /// Returns all that was heard so far, each message in a line.
    const std::string& Heard() {
        char message[4096];
        for (ssize_t count; (count = ::recv(Socket_, message, sizeof message, 0)) >= 0;)
            Heard_ += std::string(message, static_cast<std::size_t>(count)) + "\n";
        return Heard_;
    }

private:
    int Socket_;
    std::string Heard_;
};

class LiveStation : public Console {
protected:
    LiveStation() {
        ::setenv("XDG_STATE_HOME", State.Path().c_str(), 1);
        Root.Put("settings.ini", "");
        Plug();
    }
    void Plug() {
        fs::remove(Link());
        fs::create_symlink(Line.Path(), Link());
    }
    /// Writes the client of the document and a console on this root folder for it. Returns the client's path.
    std::string Client() {
        std::ifstream page(CONSOLE_PAGE);
        const std::string text((std::istreambuf_iterator<char>(page)), std::istreambuf_iterator<char>());
        const std::size_t start = text.find("```python\n") + 10;
        State.Put("client.py", text.substr(start, text.find("```", start) - start));
        State.Put("console",
                  "#!/bin/sh\nexec " + std::string(QUORIN_CONSOLE) + " --root '" + Root.Path().string() + "' \"$@\"\n");
        fs::permissions(State.Path() / "console", fs::perms::owner_all);
        return (State.Path() / "client.py").string();
    }
    /// The program has made the terminal a line that translates nothing.
    bool LineIsOpen() const {
        termios settings{};
        return ::tcgetattr(Line.Number(), &settings) == 0 && (settings.c_lflag & ICANON) == 0;
    }
    std::string Link() const { return (State.Path() / "line").string(); }
    std::string Download() { return Root.Bytes("Quorin/qrn0001.txt"); }
    bool Holds(const std::string& rows) {
        return Eventually([&] { return Download() == "Moisture|Day\n" + rows; });
    }
    Words Options(const Words& more = {}) {
        return Joined({{"--root", Root.Path().string(), "--station", "Meter", "--port", "1=" + Link()}, more});
    }

    support::TemporaryFolder State;
    PseudoTerminal Line;
};

TEST_F(LiveStation, GoesOnWhenTheInstrumentIsPluggedInAgain) {
    RunningStation station(Options());
    EXPECT_THAT(station.Greeting(), HasSubstr(R"("state":"collecting")"));
    ASSERT_TRUE(station.WaitsForReadings());
    Line.Send(Result(1) + Result(2));
    ASSERT_TRUE(Holds("1 %|\n2 %|\n")) << Download();
    Line.PullOut();
    ASSERT_TRUE(Eventually([&] { return station.Tell("state").find(R"("LinkOpen":false)") != std::string::npos; }));
    Line.PlugIn();
    Plug();
    ASSERT_TRUE(station.WaitsForReadings());
    Line.Send(Result(3));
    EXPECT_TRUE(Holds("1 %|\n2 %|\n3 %|\n")) << Download();
    EXPECT_EQ(station.End(), 0);
    EXPECT_FALSE(fs::is_empty(State.Path() / "quorin/journal")) << "a station keeps a journal";
}

TEST_F(LiveStation, GoesOnWithoutCommandsUntilASignal) {
    const std::string words = Program() + " --station Meter --port 1=" + Link() +
                              " </dev/null >output 2>errors & station=$!; sleep 3; kill $station; wait $station";
    const Outcome run = Shell(words, "");
    EXPECT_EQ(run.Status, 0);
    EXPECT_THAT(run.Errors, HasSubstr("ended by SIGTERM"));
}

TEST_F(LiveStation, TellsTheServiceManagerHowItFares) {
    Manager manager((State.Path() / "notify").string());
    ::setenv("WATCHDOG_USEC", "600000", 1);
    RunningStation station(Options());
    EXPECT_TRUE(Eventually([&] { return manager.Heard().find("READY=1") != std::string::npos; }));
    EXPECT_THAT(manager.Heard(), HasSubstr("STATUS=Collects Meter into qrn0001.txt."));
    const auto signs = [&] {
        std::size_t count = 0;
        for (std::size_t at = 0; (at = manager.Heard().find("WATCHDOG=1", at)) != std::string::npos; ++at)
            ++count;
        return count;
    };
    EXPECT_TRUE(Eventually([&] { return signs() >= 4; }));
    EXPECT_EQ(station.End(), 0);
}

TEST_F(LiveStation, PutsBackWhatAPowerCutLeft) {
    {
        RunningStation station(Options());
        station.Tell("tick 300");
        station.Tell("tap 0 1");
        station.Tell("tick 300");
        station.Tell("set typed");
        station.Tell("tick 2500"); // a draft is written a second after the last key
        station.Kill();
    }
    EXPECT_EQ(Download(), "Moisture|Day\n|\n");
    RunningStation station(Options());
    EXPECT_THAT(station.Greeting(), HasSubstr(R"("put":true)"));
    EXPECT_EQ(Download(), "Moisture|Day\ntyped|\n");
    EXPECT_EQ(station.End(), 0);
}

TEST_F(LiveStation, TheClientOfTheDocumentPrintsItsReadings) {
    const std::string client = Client();
    std::thread sender([this] {
        Eventually([this] { return LineIsOpen(); });
        Line.Send(Result(1) + Result(2));
    });
    const Outcome run = Shell("python3 " + client + " " + (State.Path() / "console").string() + " Meter 1=" + Link() +
                                  " 2 >output 2>errors",
                              "");
    sender.join();
    EXPECT_EQ(run.Status, 0) << run.Errors;
    EXPECT_THAT(run.Output, HasSubstr("taken 1 % -> Moisture\n"));
    EXPECT_THAT(run.Output, HasSubstr("saved qrn0001.txt 2\n"));
}

TEST_F(LiveStation, TheClientWithoutACountGoesOn) {
    const Outcome run = Shell("timeout -s KILL 4 python3 " + Client() + " " + (State.Path() / "console").string() +
                                  " Meter 1=" + Link() + " >output 2>errors",
                              "");
    EXPECT_NE(run.Status, 0) << "it has ended by itself";
    EXPECT_THAT(run.Output, HasSubstr("station Collects Meter into qrn0001.txt."));
}

/// The service manager does not start it again after this status.
TEST_F(LiveStation, EndsWithTwoAfterWrongUsage) {
    const Words right = Options();
    for (const Words& more : {Words{"--nonsense"},
                              {"--port", "2=nowhere"},
                              {"--recover", "list"},
                              {"--import", "a.zip"},
                              {"--hand-over", "/dev/null/stick"},
                              {"/dev/null/script"}})
        EXPECT_EQ(Bare(Joined({right, more})).Status, 2) << more.front();
    EXPECT_EQ(Bare({"--station", "Meter", "--root", Root.Path().string()}).Status, 2) << "no port";
    EXPECT_EQ(Bare({"--station", "None", "--root", Root.Path().string(), "--port", "1=" + Link()}).Status, 2);
    EXPECT_EQ(Bare({"--station", "Meter", "--root", "/dev/null/root", "--port", "1=" + Link()}).Status, 2);
}

TEST_F(LiveStation, EndsWithTwoIfItsFilesAreDamaged) {
    const std::string inf = Root.Bytes("Quorin/meter.txt");
    Root.Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                 "Moisture|1||Moisture|green|||\n");
    const Outcome run = Bare(Options());
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Errors, HasSubstr("DISPLAY \"green\" is not a number"));
    Root.Put("Quorin/meter.txt", inf);
    fs::remove(Root.Path() / "Quorin/qrnctrl.txt");
    fs::create_symlink("/etc/hostname", Root.Path() / "Quorin/qrnctrl.txt");
    EXPECT_EQ(Bare(Options()).Status, 2);
}

TEST(ServiceOfAStation, HasTheOptionsOfTheProgram) {
    std::ifstream unit(STATION_UNIT);
    const std::string text((std::istreambuf_iterator<char>(unit)), std::istreambuf_iterator<char>());
    EXPECT_THAT(text, HasSubstr("/bin/quorin-console --station ${DRIVER} --port ${PORT} $OPTIONS\n"));
    EXPECT_THAT(text, HasSubstr("\nRestartPreventExitStatus=2 3 5 6\n"));
    EXPECT_THAT(text, HasSubstr("\nAssertPathExists=%E/quorin/station-%i.conf\n"));
    EXPECT_EQ(text.find('@', text.find("[Unit]")), std::string::npos) << "a variable was not replaced";
}

TEST(ServiceManager, HearsSignsOfLifeAtHalfOfItsPatience) {
    support::TemporaryFolder folder;
    Manager manager((folder.Path() / "notify").string());
    ::setenv("WATCHDOG_USEC", "1000000", 1);
    start::ServiceManager told;
    const auto now = std::chrono::steady_clock::now();
    for (const int milliseconds : {0, 100, 499, 500, 600, 999, 1000})
        told.SignOfLife(now + std::chrono::milliseconds(milliseconds));
    EXPECT_EQ(manager.Heard(), "WATCHDOG=1\nWATCHDOG=1\nWATCHDOG=1\n");
    EXPECT_EQ(std::getenv("NOTIFY_SOCKET"), nullptr) << "a child would be taken for the service";
}

TEST(ServiceManager, OfAnotherProcessWaitsForNoSign) {
    support::TemporaryFolder folder;
    Manager manager((folder.Path() / "notify").string());
    ::setenv("WATCHDOG_USEC", "1000000", 1);
    ::setenv("WATCHDOG_PID", "1", 1);
    start::ServiceManager told;
    told.SignOfLife();
    EXPECT_EQ(manager.Heard(), "");
}

} // namespace
} // namespace console
