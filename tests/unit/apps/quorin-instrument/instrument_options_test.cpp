// SPDX-License-Identifier: MIT
#include "tests/support/help_text.h"
#include "tests/support/running_instrument.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/wait.h>

namespace instrument {
namespace {

using Words = std::vector<std::string>;

struct WrongRow {
    Words Arguments;
};

void PrintTo(const WrongRow& row, std::ostream* out) {
    for (const std::string& word : row.Arguments) {
        *out << "[" << word << "] ";
    }
}

class WrongUsage : public testing::TestWithParam<WrongRow> {};

TEST_P(WrongUsage, EndsWithTwoAndSaysWhy) {
    RunningInstrument instrument(GetParam().Arguments);
    EXPECT_EQ(instrument.ExitStatus(), 2);
    EXPECT_THAT(instrument.Errors(), testing::StartsWith("quorin-instrument: "));
    EXPECT_EQ(instrument.Output(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WrongUsage,
    testing::Values(WrongRow{{"--bogus"}}, WrongRow{{"--count", "-1"}}, WrongRow{{"--count", "x"}},
                    WrongRow{{"--noise", "0"}}, WrongRow{{"--drop-line", "-3"}}, WrongRow{{"--interval", "-1"}},
                    WrongRow{{"--identity", "a\"b"}}, WrongRow{{"--identity", "a]b"}}, WrongRow{{"--types", "A,,B"}},
                    WrongRow{{"a.stream", "--count", "1"}}, WrongRow{{"a.stream", "b.stream"}},
                    WrongRow{{"--print", "--link", "x"}}, WrongRow{{"--device", "x", "--mailbox", "y"}},
                    WrongRow{{"--mailbox", "x", "--print"}}, WrongRow{{"--times", "1"}},
                    WrongRow{{"a", "--times", "-1"}}, WrongRow{{"a", "--times", "x"}},
                    WrongRow{{"a", "--times", "0.00001"}}, WrongRow{{"a", "--times", "nan"}},
                    WrongRow{{"a", "--times", "1", "--noise"}}, WrongRow{{"a", "--times", "1", "--fast"}},
                    WrongRow{{"a", "--times", "1", "--interval", "5"}}, WrongRow{{"a", "--ask"}},
                    WrongRow{{"--ask", "--print"}}, WrongRow{{"--ask", "--count", "1"}}));

TEST(CommandLine, HelpNamesEveryOption) {
    RunningInstrument instrument({"--help"});
    EXPECT_EQ(instrument.ExitStatus(), 0);
    for (const char* option : {"STREAM", "--count", "--seed", "--identity", "--types", "--device", "--mailbox",
                               "--print", "--ask", "--link", "--times", "--fast", "--interval", "--linger", "--noise",
                               "--split-lines", "--wrong-origin", "--lose-end-tag", "--drop-line"}) {
        EXPECT_THAT(instrument.Output(), testing::HasSubstr(option));
    }
    support::ExpectPlainHelp(instrument.Output());
}

TEST(CommandLine, PrintPausesForAnIntervalThatIsGiven) {
    const auto start = std::chrono::steady_clock::now();
    RunningInstrument instrument({"--print", "--count", "3", "--interval", "200"});
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(400)) << "two pauses";
}

TEST(CommandLine, PrintWritesTheStreamAndNothingElse) {
    RunningInstrument instrument({"--print", "--count", "6", "--seed", "6"});
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_EQ(instrument.Output(), Sample("climate.stream"));
    EXPECT_EQ(instrument.Errors(), "");
}

TEST(CommandLine, FaultWithoutANumberFallsOnEachRecord) {
    RunningInstrument instrument({"--print", "--count", "3", "--lose-end-tag"});
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_EQ(RecordsOf(Recording(instrument.Output())).size(), 2u) << "the connect record, then one that never ends";
}

TEST(CommandLine, FaultWithANumberFallsOnEachNthRecord) {
    RunningInstrument instrument({"--print", "--count", "4", "--wrong-origin", "3"});
    EXPECT_EQ(instrument.ExitStatus(), 0);
    const auto records = RecordsOf(Recording(instrument.Output()));
    ASSERT_EQ(records.size(), 5u);
    for (std::size_t i = 1; i < records.size(); ++i) {
        EXPECT_EQ(LineWith(records[i], "[ORIGIN") == "[ORIGIN \"QI-0001\"]\r\n", i != 3) << "record " << i;
    }
}

TEST(CommandLine, IdentityIsTheOneGiven) {
    RunningInstrument instrument({"--print", "--count", "1", "--identity", "B 2"});
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_THAT(instrument.Output(), testing::HasSubstr("[CONNECT \"B 2\"]"));
    EXPECT_THAT(instrument.Output(), testing::HasSubstr("[ORIGIN \"B 2\"]"));
}

/// The terminal would get the descriptor number of standard output, and its own name would be sent over the line.
TEST(CommandLine, AClosedOutputIsAFailureAndNoLine) {
    const TemporaryFolder place;
    const std::string command = "timeout 30 '" QUORIN_INSTRUMENT "' --count 1 >&- 2>'" + place.Path("errors") + "'";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_THAT(FileBytes(place.Path("errors")), testing::HasSubstr("Bad file descriptor"));
}

class Unreadable : public testing::TestWithParam<const char*> {};

TEST_P(Unreadable, RecordingIsAFailure) {
    RunningInstrument instrument({GetParam()});
    EXPECT_EQ(instrument.ExitStatus(), 1);
    EXPECT_EQ(instrument.Errors(), std::string("quorin-instrument: can't read the recording ") + GetParam() + "\n");
}

INSTANTIATE_TEST_SUITE_P(Paths, Unreadable, testing::Values("/nowhere/a.stream", "/tmp"));

} // namespace
} // namespace instrument
