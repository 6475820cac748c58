// SPDX-License-Identifier: MIT
// A reading from the line to the file with the machine's clock. A second process is at the other end of a pseudo
// terminal or of a mailbox.
#include "tests/support/listener.h"
#include "tests/support/plugged_instrument.h"
#include "tests/support/running_console.h"
#include "tests/support/running_instrument.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>

namespace live {
namespace {

namespace fs = std::filesystem;
using instrument::RunningInstrument;
using instrument::TemporaryFolder;

class AResultFromLineToFile : public testing::Test {
protected:
    void SetUp() override {
        Put("Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                "Moisture|1||Moisture||||\nTemperature|1||Temperature||||\nMeter|0||dv: ORIGIN||||\n");
    }
    void Put(const std::string& name, const std::string& bytes) {
        fs::create_directories(fs::path(Root.Path(name)).parent_path());
        std::ofstream(Root.Path(name), std::ios::binary) << bytes;
    }
    std::string File(const std::string& name) {
        std::ifstream in(Root.Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void ListenOn(const std::string& port) { Put("settings.ini", "[Settings]\nComPort=" + port + "\n"); }

    static void OpenTheDownload(RunningConsole& console) {
        for (const char* command : {"choose Start...", "choose Ok", "choose Open"})
            EXPECT_EQ(console.Tell(command).find("error"), std::string::npos) << command;
    }
    /// Lets time pass until the screen shows a text. Returns false if it does not appear. A machine that stalls for two
    /// seconds looks like a device that slept: the port is opened again, the instrument begins again, and a question
    /// may open.
    static bool Shows(RunningConsole& console, const std::string& text) {
        for (int i = 0; i < 300; ++i) {
            if (console.Tell("screen").find(text) != std::string::npos)
                return true;
            console.Tell("answer no");
            console.Tell("tick 100");
        }
        return false;
    }

    /// Expects both results of the recording on the screen, and in the file after the record was left.
    void ExpectASavedRow(RunningConsole& console) {
        EXPECT_TRUE(Shows(console, "23.4 %"));
        EXPECT_TRUE(Shows(console, "19 \xC2\xB0"
                                   "C"));
        console.Tell("choose Close");
        EXPECT_EQ(File("Quorin/qrn0001.txt"), "Moisture|Temperature|Meter\n23.4 %|19 \xC2\xB0"
                                              "C|QI-7\n");
        EXPECT_EQ(console.End(), 0);
    }

    TemporaryFolder Root;
};

/// Two results. The line stays open after them.
const char* const Recording =
    "[BLob]\r\n[CONNECT \"QI-7\"]\r\n[/BLob]\r\n"
    "[BLob]\r\n[ORIGIN \"QI-7\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n"
    "[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
    "[BLob]\r\n[ORIGIN \"QI-7\"]\r\n[RESULT_TYPE \"Temperature\"]\r\n[RESULT_VALUE \"19\"]\r\n"
    "[RESULT_UNIT \"\xC2\xB0"
    "C\"]\r\n[/BLob]\r\n";

const char* const NotSaved = R"({"event":"notsaved","file":"qrn0001.txt","error":)";

/// As when a card is removed or a folder is moved.
TEST_F(AResultFromLineToFile, EndsWithAWordWhereTheRootHasBeenMovedAway) {
    RunningConsole console({"--root", Root.Path("")});
    OpenTheDownload(console);
    for (const char* command : {"tap 0 1", "set 12", "key 13"})
        console.Tell(command);
    const std::string away = fs::path(Root.Path("x")).parent_path().string() + ".away";
    const std::string here = fs::path(Root.Path("x")).parent_path().string();
    fs::rename(here, away);
    EXPECT_NE(console.Tell("choose Next Record").find(NotSaved), std::string::npos);
    EXPECT_FALSE(fs::exists(here));
    fs::rename(away, here);
    EXPECT_EQ(File("Quorin/qrn0001.txt").find("12"), std::string::npos);
    for (const char* command : {"tap 0 1", "set 34", "key 13"})
        console.Tell(command);
    EXPECT_EQ(console.Tell("choose Next Record").find("notsaved"), std::string::npos);
    EXPECT_NE(File("Quorin/qrn0001.txt").find("34|"), std::string::npos);
}

/// As an editor or a tool that synchronises folders replaces a file.
TEST_F(AResultFromLineToFile, LeavesTheRowsThatAnotherProgramHasWrittenMeanwhile) {
    const std::string header = "Moisture|Temperature|Meter\n";
    Put("Quorin/qrn0001.txt", header + "1||\n");
    RunningConsole console({"--root", Root.Path("")});
    OpenTheDownload(console);
    for (const char* command : {"tap 0 1", "set 12", "key 13"})
        console.Tell(command);
    Put("Quorin/new", header + "1||\n2||\n");
    fs::rename(Root.Path("Quorin/new"), Root.Path("Quorin/qrn0001.txt"));
    EXPECT_EQ(console.Tell("choose Next Record").find("notsaved"), std::string::npos);
    EXPECT_EQ(File("Quorin/qrn0001.txt"), header + "12||\n2||\n");
    EXPECT_NE(console.Tell("screen").find("2/2"), std::string::npos);

    for (const char* command : {"tap 0 1", "set 99", "key 13"})
        console.Tell(command);
    Put("Quorin/new", header + "other||\n");
    fs::rename(Root.Path("Quorin/new"), Root.Path("Quorin/qrn0001.txt"));
    EXPECT_NE(console.Tell("choose Next Record").find(NotSaved), std::string::npos);
    EXPECT_EQ(File("Quorin/qrn0001.txt"), header + "other||\n");
}

TEST_F(AResultFromLineToFile, LeadsFromAPseudoTerminalToASavedRow) {
    ListenOn("Com1");
    Put("recording", Recording);
    RunningInstrument meter({Root.Path("recording")});
    RunningConsole console({"--clock", "real", "--root", Root.Name(), "--port", "1=" + meter.FirstLine()});
    OpenTheDownload(console);
    ExpectASavedRow(console);
}

TEST_F(AResultFromLineToFile, LeadsFromACommandToASavedRow) {
    ListenOn("Com1");
    Put("recording", Recording);
    RunningConsole console({"--clock", "real", "--root", Root.Name(), "--port",
                            "1=exec:cat '" + Root.Path("recording") + "'; exec sleep 60"});
    OpenTheDownload(console);
    ExpectASavedRow(console);
}

TEST_F(AResultFromLineToFile, LeadsOverABrokenConnectionToASavedRow) {
    ListenOn("Com1");
    Listener meter;
    RunningConsole console(
        {"--clock", "real", "--root", Root.Name(), "--port", "1=tcp:localhost:" + std::to_string(meter.Port())});
    OpenTheDownload(console);
    EXPECT_TRUE(Shows(console, "Bluetooth :-)"));
    meter.Accept();
    meter.Drop();
    EXPECT_TRUE(Shows(console, "Bluetooth :-("));
    EXPECT_TRUE(Shows(console, "Bluetooth :-)"));
    meter.Accept();
    meter.Send(Recording);
    ExpectASavedRow(console);
}

TEST_F(AResultFromLineToFile, IsThatOfOneProgramAtATime) {
    RunningConsole first({"--root", Root.Name()});
    const std::string tried = Root.Path("tried");
    const std::string command =
        std::string(QUORIN_CONSOLE) + " --root " + Root.Name() + " </dev/null >/dev/null 2>" + tried;
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 2);
    EXPECT_EQ(File("tried"), "quorin-console: " + Root.Name() + " is in use by quorin-console " +
                                 std::to_string(first.Id()) + "; one program at a time works on a root folder\n");
    EXPECT_EQ(first.End(), 0);
    RunningConsole second({"--root", Root.Name()});
    EXPECT_EQ(second.End(), 0);
}

TEST_F(AResultFromLineToFile, SurvivesALineThatGoesAwayAndComesBack) {
    ListenOn("Com1");
    const std::string line = Root.Path("line");
    const auto send = [&line](const char* type) {
        return std::make_unique<RunningInstrument>(
            std::vector<std::string>{"--link", line, "--count", "1", "--fast", "--types", type});
    };
    auto meter = send("Moisture");
    meter->FirstLine();
    RunningConsole console({"--clock", "real", "--root", Root.Name(), "--port", "1=" + line});
    OpenTheDownload(console);
    EXPECT_TRUE(Shows(console, "QI-0001"));
    meter.reset();
    const PseudoTerminal other; // has the number of the terminal that has just gone
    EXPECT_TRUE(Shows(console, "Bluetooth :-("));
    meter = send("Temperature");
    meter->FirstLine();
    EXPECT_TRUE(Shows(console, "Bluetooth :-)"));
    EXPECT_TRUE(Shows(console, "\xC2\xB0"
                               "C"));
    console.Tell("choose Close");
    EXPECT_EQ(File("Quorin/qrn0001.txt").find("||"), std::string::npos) << File("Quorin/qrn0001.txt");
    EXPECT_EQ(console.End(), 0);
}

TEST_F(AResultFromLineToFile, LeadsThroughTheMailboxOfAnotherProcess) {
    ListenOn("SERVER");
    Put("recording", Recording);
    fs::create_directories(Root.Path("c"));
    RunningInstrument server({"--mailbox", Root.Path("c"), "--fast", Root.Path("recording")});
    RunningConsole console({"--clock", "real", "--root", Root.Name()});
    ASSERT_TRUE(instrument::Eventually([this] { return instrument::Exists(Root.Path("c/rfcomm.run")); }));
    OpenTheDownload(console);
    ExpectASavedRow(console);
}

TEST_F(AResultFromLineToFile, SavedRowsSurviveAPowerCut) {
    ListenOn("Com1");
    {
        RunningConsole console({"--root", Root.Name()});
        OpenTheDownload(console);
        for (const char* command : {"tap 0 1", "set 1", "choose New Record", "tap 0 1", "set 2", "choose New Record"})
            console.Tell(command);
        console.Tell("quit");
    }
    EXPECT_EQ(File("Quorin/qrn0001.txt"), "Moisture|Temperature|Meter\n1||\n2||\n||\n");
}

#ifndef __SANITIZE_ADDRESS__ // the sanitizer itself needs more memory than the limit here allows
/// Expects the message and exit status of a program that is limited to 400 MB and receives a line without an end.
void ExpectAnEndWithoutMemory(const TemporaryFolder& folder, const std::string& program, const std::string& name) {
    const std::string errors = folder.Path("errors");
    const std::string command = "head -c 800000000 /dev/zero | tr \"\\\\0\" a | (ulimit -v 400000; exec " + program +
                                " >/dev/null 2>" + errors + ")";
    const int status = std::system(("bash -c '" + command + "'").c_str());
    EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 1);
    std::ifstream in(errors);
    const std::string said{std::istreambuf_iterator<char>(in), {}};
    EXPECT_EQ(said, name + ": out of memory; every file is as the last completed save left it\n");
}

TEST_F(AResultFromLineToFile, EndsWithAMessageWhereMemoryRunsOut) {
    ExpectAnEndWithoutMemory(Root, std::string(QUORIN_CONSOLE) + " --root " + Root.Name(), "quorin-console");
}

TEST(TheInstrument, EndsWithAMessageWhereMemoryRunsOut) {
    const TemporaryFolder folder;
    ExpectAnEndWithoutMemory(folder, std::string(QUORIN_INSTRUMENT) + " --print /dev/stdin", "quorin-instrument");
}
#endif

} // namespace
} // namespace live
