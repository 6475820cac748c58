// SPDX-License-Identifier: MIT
// The demonstration's instrument: what it sends when it is asked, and its cable.
#include "apps/quorin/demo_instrument.h"

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

TEST(DemoInstrument, SendsNothingUnasked) {
    const DemoInstrument meter;
    ASSERT_EQ(meter.Problem(), "");
    Reader reader(meter.Port());
    ASSERT_TRUE(reader.IsOpen()) << meter.Port();
    EXPECT_TRUE(meter.IsHeard());
    EXPECT_EQ(reader.ReadWhatIsThere(), "");
}

TEST(DemoInstrument, SendsTheKindThatIsAskedForIntroduced) {
    DemoInstrument meter;
    EXPECT_THAT(meter.Kinds(), ElementsAre("Moisture", "Temperature", "Humidity"));
    Reader reader(meter.Port());
    for (const std::size_t kind : {2, 0, 0, 1}) {
        EXPECT_TRUE(meter.Send(kind));
        const auto records = Records(reader, 2);
        EXPECT_EQ(records.front(), Introduction);
        EXPECT_EQ(LineWith(records.back(), "[ORIGIN"), "[ORIGIN \"QI-0001\"]\r\n");
        EXPECT_EQ(TypeOf(records.back()).substr(0, 14 + meter.Kinds()[kind].size()),
                  "[RESULT_TYPE \"" + meter.Kinds()[kind]);
    }
    EXPECT_EQ(reader.ReadWhatIsThere(), "");
}

TEST(DemoInstrument, SendsOneOfEachKindAtOnce) {
    DemoInstrument meter;
    Reader reader(meter.Port());
    EXPECT_TRUE(meter.SendAll());
    const auto records = Records(reader, 6);
    ASSERT_EQ(records.size(), 6U);
    EXPECT_EQ(TypeOf(records[1]), "[RESULT_TYPE \"Moisture\" \"M1\"]\r\n");
    EXPECT_EQ(TypeOf(records[3]), "[RESULT_TYPE \"Temperature\" \"T1\"]\r\n");
    EXPECT_EQ(TypeOf(records[5]), "[RESULT_TYPE \"Humidity\" \"H1\"]\r\n");
    EXPECT_EQ(LineWith(records[1], "[DESCRIPTIVE_VAR"), LineWith(records[5], "[DESCRIPTIVE_VAR")) << "at one place";
}

TEST(DemoInstrument, SendsTheKindsInTurn) {
    DemoInstrument meter;
    Reader reader(meter.Port());
    for (const char* const type : {"Moisture\" \"M1", "Temperature\" \"T1", "Humidity\" \"H1", "Moisture\" \"M1"}) {
        EXPECT_TRUE(meter.SendNext());
        EXPECT_EQ(TypeOf(Records(reader, 2).back()), "[RESULT_TYPE \"" + std::string(type) + "\"]\r\n");
    }
}

TEST(DemoInstrument, SendsAReadingOfAnotherOrigin) {
    DemoInstrument meter;
    Reader reader(meter.Port());
    EXPECT_TRUE(meter.SendOfAStranger());
    const auto records = Records(reader, 2);
    EXPECT_EQ(records.front(), Introduction);
    EXPECT_EQ(LineWith(records.back(), "[ORIGIN"), "[ORIGIN \"STRANGER\"]\r\n");
}

TEST(DemoInstrument, KeepsNothingForALaterListener) {
    DemoInstrument meter;
    EXPECT_FALSE(meter.IsHeard());
    EXPECT_FALSE(meter.SendAll());
    Reader reader(meter.Port());
    EXPECT_EQ(reader.ReadWhatIsThere(), "");
}

TEST(DemoInstrument, DoesNotWaitForAListenerThatReadsNothing) {
    DemoInstrument meter;
    const Reader reader(meter.Port());
    bool isFull = false;
    for (int times = 0; times < 1000 && !isFull; ++times)
        isFull = !meter.SendAll();
    EXPECT_TRUE(isFull) << "and it says so";
}

TEST(DemoInstrument, UnpluggedLeavesItsListenerAndComesBack) {
    DemoInstrument meter;
    Reader first(meter.Port());
    meter.Unplug();
    EXPECT_EQ(first.Read(1), "") << "the end of the line";
    EXPECT_EQ(meter.Port(), "");
    EXPECT_FALSE(meter.IsHeard());
    EXPECT_FALSE(meter.SendAll());
    meter.Plug();
    Reader second(meter.Port());
    EXPECT_TRUE(meter.Send(0));
    EXPECT_EQ(Records(second, 2).front(), Introduction);
}

TEST(DemoInstrument, TellsWhenItCanNotBeStarted) {
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    const DemoInstrument meter;
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(meter.Port(), "");
    EXPECT_EQ(meter.Problem(), "can't open a pseudo terminal: Too many open files");
}

} // namespace
} // namespace quorin
