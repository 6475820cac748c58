// SPDX-License-Identifier: MIT
// The instrument that a person plays by lines of standard input.
#include "apps/quorin-instrument/ask.h"

#include "apps/quorin-instrument/terminal_outlet.h"
#include "backends/descriptor/descriptor.h"
#include "tests/support/running_instrument.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <unistd.h>

namespace instrument {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

const std::vector<std::string> Kinds = {"Moisture", "Humidity"};

TEST(AskedOrder, IsAResultByNameOrNumber) {
    for (const char* const line : {"Humidity", " humidity\r", "2"}) {
        const Order order = ReadOrder(line, Kinds);
        EXPECT_EQ(order.What, Order::Kind::One) << line;
        EXPECT_EQ(order.ResultKind, 1U) << line;
    }
    EXPECT_EQ(ReadOrder("all", Kinds).What, Order::Kind::All);
    EXPECT_EQ(ReadOrder("Stranger", Kinds).What, Order::Kind::Stranger);
    EXPECT_EQ(ReadOrder("unplug", Kinds).What, Order::Kind::Unplug);
    EXPECT_EQ(ReadOrder("plug", Kinds).What, Order::Kind::Plug);
    EXPECT_EQ(ReadOrder("quit", Kinds).What, Order::Kind::Quit);
    EXPECT_EQ(ReadOrder(" ", Kinds).What, Order::Kind::None);
    EXPECT_EQ(ReadOrder("every 10", Kinds).Every, std::chrono::seconds(10));
}

TEST(AskedOrder, ThatIsNoneIsUnknown) {
    for (const char* const line : {"0", "3", "-1", "every", "every x", "every 99999999", "Moistures"}) {
        EXPECT_EQ(ReadOrder(line, Kinds).What, Order::Kind::Unknown) << line;
    }
}

/// A conversation with an instrument on a pseudo terminal.
class AskedOnATerminal : public testing::Test {
protected:
    AskedOnATerminal() {
        Line.Plug();
        MadeUpStream stream;
        stream.Kinds = ClimateKinds();
        Results.emplace(stream);
        Options.Fast = true;
    }
    /// Returns what was told, without the list of keys at the start.
    std::string Ask(const std::string& lines) {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        backends::Descriptor in(ends[0]);
        backends::Descriptor out(ends[1]);
        EXPECT_EQ(::write(out.Number(), lines.data(), lines.size()), static_cast<ssize_t>(lines.size()));
        out.Close();
        std::ostringstream told;
        EXPECT_EQ(instrument::Ask(*Results, Options, Line, in.Number(), told), Outcome::Done);
        EXPECT_THAT(told.str(), HasSubstr("1  Moisture\n2  Temperature\n3  Humidity\nall, stranger"));
        return told.str().substr(told.str().find("quit\n") + 5);
    }

    PseudoTerminal Line{""};
    std::optional<MadeToOrder> Results;
    PlayOptions Options;
};

TEST_F(AskedOnATerminal, SendsWhatEachLineNames) {
    Reader reader(Line.Path());
    EXPECT_EQ(Ask("3\nstranger\nall"), "Humidity sent\na stranger's reading sent\none of each sent\n");
    const auto records = RecordsOf(Recording(reader.ReadWhatIsThere()));
    ASSERT_EQ(records.size(), 10U) << "each with its introduction";
    EXPECT_TRUE(IsConnectRecord(records[0]));
    EXPECT_EQ(LineWith(records[1], "[RESULT_TYPE"), "[RESULT_TYPE \"Humidity\" \"H1\"]\r\n");
    EXPECT_EQ(LineWith(records[3], "[ORIGIN"), "[ORIGIN \"STRANGER\"]\r\n");
    EXPECT_EQ(LineWith(records[5], "[RESULT_TYPE"), "[RESULT_TYPE \"Moisture\" \"M1\"]\r\n");
    EXPECT_EQ(LineWith(records[9], "[RESULT_TYPE"), "[RESULT_TYPE \"Humidity\" \"H1\"]\r\n");
}

TEST_F(AskedOnATerminal, SaysThatNobodyListens) {
    EXPECT_EQ(Ask("1\n"), "nobody listens: nothing was sent\n");
}

TEST_F(AskedOnATerminal, PullsTheCableAndPlugsItIn) {
    Reader reader(Line.Path());
    testing::internal::CaptureStdout();
    EXPECT_EQ(Ask("unplug\n1\nplug\n"), "unplugged\nunplugged: nothing was sent\nplugged in\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), Line.Path() + "\n") << "it may be another one";
    EXPECT_EQ(reader.Read(1), "") << "the end of the line";
}

TEST_F(AskedOnATerminal, EndsAtQuitAndShowsTheKeysForAnotherWord) {
    const std::string told = Ask("what\nquit\n1\n");
    EXPECT_THAT(told, EndsWith("quit\n"));
    EXPECT_THAT(told, HasSubstr("1  Moisture\n"));
}

TEST(AskedInstrument, EndsWithTheEndOfItsInput) {
    const std::string command = "echo all | '" QUORIN_INSTRUMENT "' --ask --types A,B 2>&1";
    FILE* const program = ::popen(command.c_str(), "r");
    ASSERT_NE(program, nullptr);
    std::string output;
    for (int byte = 0; (byte = std::fgetc(program)) != EOF;) {
        output += static_cast<char>(byte);
    }
    EXPECT_EQ(::pclose(program), 0);
    EXPECT_THAT(output, testing::StartsWith("/dev/"));
    EXPECT_THAT(output, HasSubstr("\n1  A\n2  B\n"));
    EXPECT_THAT(output, HasSubstr("nobody listens: nothing was sent\n"));
}

} // namespace
} // namespace instrument
