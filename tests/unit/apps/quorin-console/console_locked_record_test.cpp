// SPDX-License-Identifier: MIT
// The console on a Palm OS device, a record on the screen, and another program that locks its line database.
#include "apps/quorin-console/session.h"
#include "backends/headless/headless_platform.h"
#include "src/app/start_up.h"
#include "src/link/receive.h"
#include "tests/support/other_tool.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <optional>
#include <sstream>
#include <unistd.h>
#include <utility>

namespace console {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// The output of the console, line by line as it is flushed.
class Listener final : public std::stringbuf {
public:
    std::function<void(const std::string&)> Line;

private:
    int sync() override {
        const std::string line = str();
        str({});
        Line(line);
        return 0;
    }
};

/// The program of the console in this process. Each step is performed once the one before has been answered.
class LockedRecordOnTheConsole : public testing::Test {
protected:
    LockedRecordOnTheConsole() {
        MakeDatabase("drivers", {"NAME|INFFILE", "Meter|meter.txt"});
        MakeDatabase("qrnctrl", {"DRIVER|FILE|DATE|ALIAS", "Meter|qrn0001.txt|20070301|"});
        MakeDatabase("meter", {"FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA", "Place|1||||||",
                               "Moisture|1||Moisture||||"});
        MakeDatabase("qrn0001", {"Place|Moisture", "one|", "two|"});
        Root_.Put("settings.ini", "[Settings]\nComPort=Com1\n");
        EXPECT_EQ(::pipe2(Input_, O_CLOEXEC), 0);
        Ears_.Line = [this](const std::string& line) { Hear(line); };
        Talk_.emplace(Input_[0], Voice_, false);
        backends::DeviceOptions options;
        options.DeviceType = 1;
        options.Root = Root_.Path().string();
        options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
        Host_.emplace(options);
        Device.emplace(*Host_, *Talk_, Talk_->Out());
        User_.emplace(*Device);
        Talk_->Use(*Device, *User_);
        Patience().Longest = std::chrono::milliseconds(60);
        for (const char* command : {"choose Start...", "choose Ok", "choose Open", "tick 1100", "tap 1 1", "set 23.4"})
            WillTell(command);
        WillDo([this] { Tool_.Open(Database("qrn0001")); });
    }
    ~LockedRecordOnTheConsole() override {
        modQuorin::ResetModules();
        Device.reset();
        ::close(Input_[0]);
    }

    void WillTell(const std::string& command) { WillHear(command, {}); }
    /// Adds a command, and what is done with the output since the command before.
    void WillHear(const std::string& command, std::function<void(const std::string&)> hear) {
        Steps_.push_back([this, command, hear = std::move(hear)] {
            Heard_ = hear;
            const std::string line = command + "\n";
            EXPECT_EQ(::write(Input_[1], line.data(), line.size()), static_cast<ssize_t>(line.size()));
            return true;
        });
    }
    void WillDo(std::function<void()> act) {
        Steps_.push_back([act = std::move(act)] {
            act();
            return false;
        });
    }
    void WillLock() {
        WillDo([this] { Tool_.Lock(); });
    }
    void WillLetGo() {
        WillDo([this] { Tool_.LetGo(); });
    }
    /// Runs until no step is left. The program has written everything then.
    void Run() {
        try {
            Talk_->Run();
        } catch (const backends::ProgramOver& over) {
            Talk_->Over(over);
        }
        EXPECT_TRUE(Steps_.empty());
    }
    backends::LockWait& Patience() { return Host_->hostDatabases.Patience; }
    std::vector<std::string> Lines() const {
        return support::OtherTool(Database("qrn0001")).Do("SELECT LineData FROM TEXT ORDER BY LineNumber");
    }

    std::string Said; ///< the output since the last command

    static constexpr const char* NotSaved =
        R"({"event":"notsaved","file":"qrn0001","error":"another program is using it"})";
    std::optional<backends::headless::HeadlessPlatform> Device;

private:
    std::optional<backends::HostDevice> Host_;
    std::optional<backends::headless::HeadlessHand> User_;
    std::filesystem::path Database(const std::string& name) const {
        return Root_.Path() / "Databases" / (name + ".sqlite");
    }
    void MakeDatabase(const std::string& name, const std::vector<std::string>& lines) const {
        std::filesystem::create_directories(Root_.Path() / "Databases");
        std::string sql = "CREATE TABLE \"DATABASE\" (TypeCode, CreatorCode);"
                          "INSERT INTO \"DATABASE\" VALUES (0x54455854, 0x5156524E);"
                          "CREATE TABLE TEXT (Position INTEGER PRIMARY KEY, LineNumber, LineData);";
        for (std::size_t i = 0; i < lines.size(); ++i)
            sql +=
                "INSERT INTO TEXT VALUES (" + std::to_string(i) + "," + std::to_string(i + 1) + ",'" + lines[i] + "');";
        support::OtherTool(Database(name)).Do(sql);
    }
    void Hear(const std::string& line) {
        if (line.rfind("{\"ready\":", 0) != 0) {
            Said += line;
            return;
        }
        EXPECT_THAT(Said, Not(HasSubstr("\"error\":\"no")));
        if (Heard_)
            Heard_(Said);
        Heard_ = {};
        Said.clear();
        bool isTold = false;
        while (!isTold && !Steps_.empty()) {
            const auto step = std::move(Steps_.front());
            Steps_.pop_front();
            isTold = step();
        }
        if (!isTold)
            ::close(Input_[1]);
    }

    support::TemporaryFolder Root_;
    int Input_[2] = {-1, -1};
    Listener Ears_;
    std::ostream Voice_{&Ears_};
    std::optional<Session> Talk_;
    std::deque<std::function<bool()>> Steps_; ///< each returns true if it has sent a command
    std::function<void(const std::string&)> Heard_;
    support::OtherTool Tool_;
};

TEST_F(LockedRecordOnTheConsole, IsToldByAnEventAndSavedByTheNextCommand) {
    WillLock();
    WillHear("choose Next Record", [](const std::string& said) { EXPECT_THAT(said, HasSubstr(NotSaved)); });
    WillHear("screen", [](const std::string& said) {
        EXPECT_THAT(said, HasSubstr(R"(["Place","one"],["Moisture","23.4"])"));
        EXPECT_THAT(said, HasSubstr(R"("1/2")"));
    });
    WillLetGo();
    WillDo([this] { EXPECT_THAT(Lines(), ElementsAre("Place|Moisture", "one|", "two|")); });
    WillHear("choose Next Record", [](const std::string& said) { EXPECT_THAT(said, Not(HasSubstr("notsaved"))); });
    WillHear("screen", [](const std::string& said) {
        EXPECT_THAT(said, HasSubstr(R"(["Place","two"],["Moisture",""])"));
        EXPECT_THAT(said, HasSubstr(R"("2/2")"));
    });
    Run();
    EXPECT_THAT(Lines(), ElementsAre("Place|Moisture", "one|23.4", "two|"));
}

/// Minutes pass, a tick is due and a reading comes. None of these is handled during the wait, and the port stays open.
TEST_F(LockedRecordOnTheConsole, IsWaitedForWithNothingRaisedAndNoSleep) {
    int moments = 0;
    std::string before;
    WillDo([&] {
        Patience().Longest = std::chrono::minutes(1);
        Patience().Waiting = [&] {
            if (moments++ == 0) {
                Device->serial.Arrive(u"something\r\n");
                before = Said;
            }
            Device->loop.Jump(60000);
            EXPECT_EQ(Said, before) << "nothing is said";
            EXPECT_EQ(modBluetooth::Receive.ReadyText, u"") << "nothing is read";
            if (moments > 5)
                Patience().Longest = {};
        };
    });
    WillLock();
    WillHear("choose Next Record", [&](const std::string& said) {
        EXPECT_THAT(said, HasSubstr(NotSaved));
        EXPECT_GT(moments, 5);
    });
    WillHear("state", [](const std::string& said) {
        EXPECT_THAT(said, HasSubstr(R"("ReadyText":"something\r\n")")) << "it was read behind the wait";
        EXPECT_THAT(said, HasSubstr(R"("LinkState":2)"));
    });
    WillLetGo();
    WillTell("tick 500");
    WillHear("state", [](const std::string& said) {
        EXPECT_THAT(said, HasSubstr(R"("LinkState":2)"));
        EXPECT_THAT(said, HasSubstr(R"("LinkOpen":true)"));
    });
    Run();
}

} // namespace
} // namespace console
