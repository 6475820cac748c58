// SPDX-License-Identifier: MIT
// The demonstration's instrument in a window: what it sends when it is asked, and its cable.
#include "apps/quorin/demo_terminal.h"

#include "tests/support/running_instrument.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace quorin {
namespace {

using instrument::Eventually;
using instrument::LineWith;
using instrument::Reader;
using instrument::RecordsOf;
using testing::ElementsAre;

/// The instrument on its line.
struct Meter {
    DemoTerminal Line;
    apps::DemoInstrument Instrument{Line};
};

const std::string Introduction = "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n";

/// Reads so many records.
std::vector<std::string> Records(Reader& reader, std::size_t count) {
    std::string text;
    for (std::string byte = " "; !byte.empty() && RecordsOf(instrument::Recording(text)).size() <= count;
         text += byte) {
        byte = reader.Read(1);
        if ((text + byte).ends_with("[/BLob]\r\n") && RecordsOf(instrument::Recording(text + byte)).size() == count)
            return RecordsOf(instrument::Recording(text + byte));
    }
    return {text};
}

std::string TypeOf(const std::string& record) {
    return LineWith(record, "[RESULT_TYPE");
}

TEST(DemoTerminal, SendsNothingUnasked) {
    const Meter meter;
    ASSERT_EQ(meter.Line.Problem(), "");
    Reader reader(meter.Line.Port());
    ASSERT_TRUE(reader.IsOpen()) << meter.Line.Port();
    EXPECT_TRUE(meter.Line.IsHeard());
    EXPECT_EQ(reader.ReadWhatIsThere(), "");
}

TEST(DemoTerminal, SendsTheKindThatIsAskedForIntroduced) {
    Meter meter;
    EXPECT_THAT(meter.Instrument.Kinds(), ElementsAre("Moisture", "Temperature", "Humidity"));
    Reader reader(meter.Line.Port());
    for (const std::size_t kind : {2, 0, 0, 1}) {
        meter.Instrument.SendKind(kind);
        const auto records = Records(reader, 2);
        EXPECT_EQ(records.front(), Introduction);
        EXPECT_EQ(LineWith(records.back(), "[ORIGIN"), "[ORIGIN \"QI-0001\"]\r\n");
        EXPECT_EQ(TypeOf(records.back()).substr(0, 14 + meter.Instrument.Kinds()[kind].size()),
                  "[RESULT_TYPE \"" + meter.Instrument.Kinds()[kind]);
    }
    EXPECT_EQ(reader.ReadWhatIsThere(), "");
}

TEST(DemoTerminal, SendsOneOfEachKindAtOnce) {
    Meter meter;
    Reader reader(meter.Line.Port());
    meter.Instrument.SendAll();
    const auto records = Records(reader, 6);
    ASSERT_EQ(records.size(), 6U);
    EXPECT_EQ(TypeOf(records[1]), "[RESULT_TYPE \"Moisture\" \"M1\"]\r\n");
    EXPECT_EQ(TypeOf(records[3]), "[RESULT_TYPE \"Temperature\" \"T1\"]\r\n");
    EXPECT_EQ(TypeOf(records[5]), "[RESULT_TYPE \"Humidity\" \"H1\"]\r\n");
    EXPECT_EQ(LineWith(records[1], "[DESCRIPTIVE_VAR"), LineWith(records[5], "[DESCRIPTIVE_VAR")) << "at one place";
}

TEST(DemoTerminal, SendsAReadingOfAnotherOrigin) {
    Meter meter;
    Reader reader(meter.Line.Port());
    meter.Instrument.SendOfAStranger();
    const auto records = Records(reader, 2);
    EXPECT_EQ(records.front(), Introduction);
    EXPECT_EQ(LineWith(records.back(), "[ORIGIN"), "[ORIGIN \"STRANGER\"]\r\n");
}

TEST(DemoTerminal, KeepsNothingForALaterListener) {
    Meter meter;
    EXPECT_FALSE(meter.Line.IsHeard());
    meter.Instrument.SendAll();
    Reader reader(meter.Line.Port());
    EXPECT_EQ(reader.ReadWhatIsThere(), "");
}

TEST(DemoTerminal, DoesNotWaitForAListenerThatReadsNothing) {
    Meter meter;
    const Reader reader(meter.Line.Port());
    bool isFull = false;
    for (int times = 0; times < 1000 && !isFull; ++times)
        meter.Instrument.SendAll(), isFull = meter.Instrument.Words() ==
                                             u"Simulated instrument: the line is full, one of each was not sent whole";
    EXPECT_TRUE(isFull);
}

TEST(DemoTerminal, UnpluggedLeavesItsListenerAndComesBack) {
    Meter meter;
    Reader first(meter.Line.Port());
    meter.Line.Unplug();
    EXPECT_EQ(first.Read(1), "") << "the end of the line";
    EXPECT_EQ(meter.Line.Port(), "");
    EXPECT_FALSE(meter.Line.IsHeard());
    meter.Instrument.SendAll();
    meter.Line.Plug();
    Reader second(meter.Line.Port());
    meter.Instrument.SendKind(0);
    EXPECT_EQ(Records(second, 2).front(), Introduction);
}

TEST(DemoTerminal, TellsWhenItCanNotBeStarted) {
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    const DemoTerminal meter;
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(meter.Port(), "");
    EXPECT_EQ(meter.Problem(), "can't open a pseudo terminal: Too many open files");
}

} // namespace
} // namespace quorin
