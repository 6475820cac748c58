// SPDX-License-Identifier: MIT
// The console and the console in a window on a line, with the machine's clock: under a flood, with the instrument
// disconnected, and with records that come in pieces.
#include "tests/support/processor_time.h"
#include "tests/support/running_console.h"
#include "tests/system/serial_line/collection.h"
#include "tests/system/serial_line/records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <iostream>
#include <poll.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace line {
namespace {

using live::RunningConsole;
using support::ProcessorSeconds;
using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The bytes of a second on a line that is faster than any serial one.
constexpr std::size_t SecondOfAFlood = 5000000; // bytes

/// Sends the same bytes again and again at that speed, as far as they are read, until it is destroyed. It stops by
/// itself after a minute, so that a program which never rests fails the test and does not hang it.
class Flood {
public:
    Flood(int line, const std::string& bytes) {
        while (Bytes_.size() < AtATime)
            Bytes_ += bytes;
        Sender_ = std::thread([this, line] { Run(line); });
    }
    Flood(const Flood&) = delete;
    Flood& operator=(const Flood&) = delete;
    ~Flood() {
        Stop_ = true;
        Sender_.join();
    }
    std::size_t Sent() const { return Count_; }
    /// Returns false if it has stopped by itself.
    bool GoesOn() const { return !Ended_; }

private:
    static constexpr std::size_t AtATime = 65536;
    static constexpr double Longest = 60; // seconds

    void Run(int line) {
        ::fcntl(line, F_SETFL, O_NONBLOCK);
        std::size_t place = 0;
        for (const auto start = Clock::now(); !Stop_ && SecondsSince(start) < Longest;) {
            const ssize_t count = ::write(line, Bytes_.data() + place, Bytes_.size() - place);
            if (count > 0) {
                place = (place + static_cast<std::size_t>(count)) % Bytes_.size();
                Count_ += static_cast<std::size_t>(count);
                std::this_thread::sleep_for(std::chrono::duration<double>(static_cast<double>(count) / SecondOfAFlood));
            } else {
                pollfd full{line, POLLOUT, 0};
                ::poll(&full, 1, 20);
            }
        }
        Ended_ = true;
    }

    std::string Bytes_;
    std::atomic<bool> Stop_ = false;
    std::atomic<bool> Ended_ = false;
    std::atomic<std::size_t> Count_ = 0;
    std::thread Sender_;
};

class OnTheLine : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        Root.Put("Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Root.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Root.Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                     "Moisture|1||Moisture||||\nTemperature|1||Temperature||||\n");
        Root.Put("settings.ini", "[Settings]\nComPort=Com1\n");
    }
    std::vector<std::string> Options(const char* clock) const {
        return {"--clock", clock, "--root", Root.Path().string(), "--port", "1=" + Line.Path()};
    }
    static void Tell(RunningConsole& program, std::initializer_list<const char*> commands) {
        for (const char* command : commands)
            EXPECT_EQ(program.Tell(command).find("error"), std::string::npos) << command;
    }
    /// Lets time pass until the screen shows a text. Returns false if it does not after a minute.
    static bool Shows(RunningConsole& program, const std::string& text, const char* wait = "tick 100") {
        for (const auto start = Clock::now(); SecondsSince(start) < 60; program.Tell(wait)) {
            if (program.Tell("screen").find(text) != std::string::npos)
                return true;
        }
        return false;
    }

    Socket Line;
    support::TemporaryFolder Root;
};

class Flooded : public OnTheLine {};

/// Returns the median, over many commands, of the bytes that arrive between a command and its answer on a flooded line.
/// The sender does not stop meanwhile.
std::size_t BytesBeforeAnAnswer(RunningConsole& program, const Flood& flood, const char* screen) {
    std::vector<std::size_t> waits;
    while (waits.size() < 20 || (flood.Sent() < SecondOfAFlood && flood.GoesOn())) {
        const std::size_t before = flood.Sent();
        EXPECT_NE(program.Tell("screen").find(screen), std::string::npos);
        waits.push_back(flood.Sent() - before);
    }
    std::sort(waits.begin(), waits.end());
    std::cout << waits.size() << " answers, " << waits.back() / 1000 << " kB at most before one" << std::endl;
    EXPECT_TRUE(flood.GoesOn());
    return waits[waits.size() / 2];
}

TEST_P(Flooded, AnswersCommandsAllTheWhile) {
    RunningConsole program(Options("real"), GetParam());
    Tell(program, {"command Bluetooth Debug...", "tick 600"});
    const Flood flood(Line.Instrument.Number(),
                      std::string(3000, '~') + "\r\n" + Result("Moisture", "1", "%").substr(0, 40));
    EXPECT_LT(BytesBeforeAnAnswer(program, flood, "ScrBluetoothDebug"), SecondOfAFlood);
}

TEST_P(Flooded, AnswersCommandsAlsoOverARecordAndALineWithoutAnEnd) {
    RunningConsole program(Options("real"), GetParam());
    Tell(program, {"choose Start...", "choose Ok", "choose Open", "tick 600"});
    const Flood flood(Line.Instrument.Number(), std::string(3000, '~'));
    EXPECT_LT(BytesBeforeAnAnswer(program, flood, "ScrInfRecord"), SecondOfAFlood);
}

TEST_P(Flooded, EndsWhenItsInputDoes) {
    RunningConsole program(Options("real"), GetParam());
    Tell(program, {"command Bluetooth Debug...", "tick 600"});
    const Flood flood(Line.Instrument.Number(), std::string(3000, '~') + "\r\n");
    EXPECT_EQ(program.End(), 0);
    EXPECT_TRUE(flood.GoesOn()) << "it does not wait for the end of the flood";
}

TEST_P(Flooded, DeliversTwoThousandRecordsThatComeAtOnce) {
    RunningConsole program(Options("real"), GetParam());
    Tell(program, {"command Bluetooth Debug...", "tick 600"});
    std::thread sender([this] {
        Line.Instrument.Send(Hello);
        for (int i = 1; i <= 2000; ++i)
            Line.Instrument.Send(Result("Moisture", std::to_string(i), "%"));
    });
    EXPECT_TRUE(Shows(program, "[\"2000 %\"]"));
    sender.join();
    const std::string screen = program.Tell("screen");
    int missing = 0;
    for (int i = 1; i <= 2000; ++i)
        missing += screen.find("[\"" + std::to_string(i) + " %\"]") == std::string::npos ? 1 : 0;
    EXPECT_EQ(missing, 0);
}

class WithTheInstrumentGone : public OnTheLine {};

// A second of rest is measured up to five times, because a busy machine may disturb the measurement.
TEST_P(WithTheInstrumentGone, KeepsNoProcessorBusy) {
    RunningConsole program(Options("real"), GetParam());
    Tell(program, {"choose Start...", "choose Ok", "choose Open", "tick 600"});
    Line.PullOut();
    EXPECT_TRUE(Shows(program, "Bluetooth :-("));
    double least = 1;
    for (int i = 0; i < 5 && least >= 0.05; ++i) {
        const double before = ProcessorSeconds(program.Id());
        const auto start = Clock::now();
        std::this_thread::sleep_for(std::chrono::seconds(1));
        least = std::min(least, (ProcessorSeconds(program.Id()) - before) / SecondsSince(start));
    }
    std::cout << "busy for " << least * 100 << " % of a second" << std::endl;
    EXPECT_LT(least, 0.05);
    Line.PlugIn();
    EXPECT_TRUE(Shows(program, "Bluetooth :-)"));
}

class InPieces : public OnTheLine {};

TEST_P(InPieces, RecordsGiveTheSameAsInOne) {
    const std::string stream = Hello + Result("Moisture", "23.4", "\xC2\xB5g") +
                               Result("Temperature", "19",
                                      "\xB0"
                                      "C");
    const std::size_t letter = stream.find("\xC2\xB5");
    const std::size_t hello = Hello.size();
    for (const std::size_t place :
         {std::size_t{1}, hello - 1, hello, letter + 1, stream.rfind("[/BLob]"), stream.size()}) {
        Root.Put("Quorin/qrn0001.txt", "Moisture|Temperature\n|\n");
        RunningConsole program(Options("virtual"), GetParam());
        Tell(program, {"choose Start...", "choose Ok", "choose Open", "tick 500"});
        Line.Instrument.Send(stream.substr(0, place));
        Tell(program, {"tick 1500"});
        Line.Instrument.Send(stream.substr(place));
        EXPECT_TRUE(Shows(program,
                          "19 \xC2\xB0"
                          "C",
                          "tick 500"))
            << place;
        Tell(program, {"choose Close"});
        EXPECT_EQ(Root.Bytes("Quorin/qrn0001.txt"), "Moisture|Temperature\n23.4 \xC2\xB5g|19 \xC2\xB0"
                                                    "C\n")
            << "cut behind byte " << place;
        EXPECT_EQ(program.End(), 0);
    }
}

std::string ProgramName(const testing::TestParamInfo<const char*>& info) {
    return info.index == 0 ? "WithoutAWindow" : "InAWindow";
}

INSTANTIATE_TEST_SUITE_P(Programs, Flooded, testing::Values(QUORIN_CONSOLE, QUORIN_WINDOW_CONSOLE), ProgramName);
INSTANTIATE_TEST_SUITE_P(Programs, WithTheInstrumentGone, testing::Values(QUORIN_CONSOLE, QUORIN_WINDOW_CONSOLE),
                         ProgramName);
INSTANTIATE_TEST_SUITE_P(Programs, InPieces, testing::Values(QUORIN_CONSOLE), ProgramName);

} // namespace
} // namespace line
