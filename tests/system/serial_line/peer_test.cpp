// SPDX-License-Identifier: MIT
// An instrument that is disconnected and comes back, stops sending, and sends at different speeds.
#include "tests/system/serial_line/collection.h"
#include "tests/system/serial_line/records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <malloc.h>

namespace line {
namespace {

using testing::IsEmpty;

const std::string Up = "Bluetooth :-)";
const std::string Down = "Bluetooth :-(";

TEST(InstrumentThatGoes, IsSeenToBeGoneAtTheNextTick) {
    Collection collection;
    EXPECT_EQ(collection.Title(), Up);
    collection.PullOut();
    EXPECT_EQ(collection.Title(), Up);
    collection.Tick();
    EXPECT_EQ(collection.Title(), Down);
}

TEST(InstrumentThatGoes, IsTakenUpAgainWithinOneTickOfItsReturn) {
    Collection collection;
    for (const int ticksAway : {0, 1, 2, 50}) {
        collection.PullOut();
        collection.Tick(ticksAway);
        EXPECT_FALSE(collection.PortIsOpen());
        collection.PlugIn();
        collection.Tick();
        EXPECT_TRUE(collection.PortIsOpen()) << ticksAway;
        EXPECT_EQ(collection.Title(), Up);
    }
    EXPECT_THAT(collection.Device.Did.Boxes, IsEmpty());
}

TEST(InstrumentThatGoes, HasItsRecordDecodedFirst) {
    Collection collection;
    collection.Deliver(Hello + Result("Moisture", "1", "%"));
    collection.PullOut();
    collection.PlugIn();
    collection.Tick(); // decodes, and does not look at the port
    EXPECT_EQ(collection.Values(), "1 %\n\n\nQI-7\n");
    EXPECT_FALSE(collection.PortIsOpen());
    collection.Tick();
    EXPECT_TRUE(collection.PortIsOpen());
}

TEST(InstrumentThatGoes, IsKnownWhenItComesBack) {
    Collection collection;
    collection.Deliver(Hello);
    collection.PullOut();
    collection.Tick(2);
    collection.PlugIn();
    collection.Tick();
    collection.Deliver(Result("Moisture", "1", "%"));
    collection.Tick(2);
    EXPECT_EQ(collection.Values(), "1 %\n\n\nQI-7\n");
}

TEST(InstrumentThatGoes, MayComeBackInsideALine) {
    Collection collection;
    const std::string record = Result("Moisture", "1", "%");
    const std::size_t inside = record.find("oisture");
    collection.Deliver(Hello + record.substr(0, inside));
    collection.PullOut();
    collection.Tick();
    collection.PlugIn();
    collection.Tick();
    collection.Deliver(record.substr(inside));
    collection.Tick(2);
    EXPECT_EQ(collection.Values(), "1 %\n\n\nQI-7\n");
}

TEST(InstrumentThatPauses, InsideALineGoesOnAsIfItHadNot) {
    Collection collection;
    const std::string record = Result("Moisture", "1", "%");
    const std::size_t inside = record.find("RESULT_VALUE");
    collection.Deliver(Hello + record.substr(0, inside));
    collection.Tick(2); // a second
    EXPECT_EQ(collection.Values(), "\n\n\n\n");
    collection.Deliver(record.substr(inside));
    collection.Tick(2);
    EXPECT_EQ(collection.Values(), "1 %\n\n\nQI-7\n");
}

// What comes while the device sleeps waits in the system. After the sleep the port is closed and opened.
TEST(DeviceThatSlept, GetsWhatCameMeanwhile) {
    Collection collection;
    collection.Line.Instrument.Send(Hello + Result("Moisture", "1", "%"));
    ASSERT_TRUE(Tells(collection.Device.Host.ports.Descriptor()));
    collection.Device.Platform.loop.Jump(10000);
    collection.Tick(6);
    EXPECT_EQ(collection.Values(), "1 %\n\n\nQI-7\n");
    EXPECT_TRUE(collection.PortIsOpen());
}

TEST(DeviceThatSlept, GetsWhatCameInFrontOfTheTickThatClosesThePort) {
    Collection collection;
    collection.Device.Platform.loop.Jump(10000);
    collection.Device.Platform.loop.HandleDue(); // the tick that sees the sleep
    collection.Line.Instrument.Send(Hello + Result("Moisture", "1", "%"));
    ASSERT_TRUE(Tells(collection.Device.Host.ports.Descriptor()));
    collection.Tick(); // closes the port
    EXPECT_FALSE(collection.PortIsOpen());
    collection.Line.ForgetWhatWaits();
    collection.Tick(4);
    EXPECT_EQ(collection.Values(), "1 %\n\n\nQI-7\n");
    EXPECT_TRUE(collection.PortIsOpen());
}

// --- a thousand times ------------------------------------------------------------------------------------------------

constexpr int Times = 1000;

std::ptrdiff_t OpenDescriptors() {
    using std::filesystem::directory_iterator;
    return std::distance(directory_iterator("/proc/self/fd"), directory_iterator());
}

/// Disconnects and reconnects the instrument, and expects the port to be open.
void Reconnect(Collection& collection) {
    collection.PullOut();
    collection.PlugIn();
    collection.Tick(2); // the first may decode and not look at the port
    ASSERT_TRUE(collection.PortIsOpen());
}

TEST(AThousandReconnects, DeliverAThousandResultsAndShowNoMessage) {
    Collection collection(Collection::On::Trace);
    collection.Deliver(Hello);
    std::string expected;
    for (int i = 0; i < Times; ++i) {
        collection.Deliver(Result("Moisture", std::to_string(i), "%"));
        ASSERT_NO_FATAL_FAILURE(Reconnect(collection)) << i;
        expected += "RT: Moisture\nDV: ORIGIN=QI-7\n" + std::to_string(i) + " %\n---\n";
    }
    EXPECT_EQ(collection.Values(), expected);
    EXPECT_THAT(collection.Device.Did.Boxes, IsEmpty());
}

TEST(AThousandReconnects, LeaveNoDescriptorOpenAndNoMemoryTaken) {
    Collection collection;
    const auto reconnectAfterAGreeting = [&collection](int times) {
        for (int i = 0; i < times; ++i) {
            collection.Deliver(Hello);
            ASSERT_NO_FATAL_FAILURE(Reconnect(collection)) << i;
            collection.Device.Did.Status.clear();
        }
    };
    reconnectAfterAGreeting(Times / 10);
    const auto descriptors = OpenDescriptors();
    const auto memory = mallinfo2().uordblks;
    reconnectAfterAGreeting(Times);
    EXPECT_EQ(OpenDescriptors(), descriptors);
    EXPECT_LE(mallinfo2().uordblks, memory + 4096);
}

TEST(AThousandOpenings, ThatFailShowNoMessageAndLeaveNoDescriptorOpen) {
    Collection collection;
    collection.PullOut();
    const auto descriptors = OpenDescriptors();
    collection.Tick(Times);
    EXPECT_EQ(OpenDescriptors(), descriptors);
    EXPECT_THAT(collection.Device.Did.Boxes, IsEmpty());
    EXPECT_EQ(collection.Title(), Down);
}

// --- at any pace -----------------------------------------------------------------------------------------------------

/// Returns how many of the trace's first results have the value that was sent.
int ResultsInOrder(Collection& collection) {
    auto& grid = collection.Device.Main();
    int results = 0;
    for (std::int32_t row = 2; row < grid.Rows(); row += 4, ++results)
        if (Shown(grid.Cell(row, 0)) != std::to_string(results) + " %")
            break;
    return results;
}

std::string ManyResults(int count) {
    std::string stream = Hello;
    for (int i = 0; i < count; ++i)
        stream += Result("Moisture", std::to_string(i), "%");
    return stream;
}

TEST(AFlood, OfTwoThousandRecordsIsDeliveredToTheLast) {
    Collection collection(Collection::On::Trace);
    collection.Deliver(ManyResults(2000));
    collection.Tick(2);
    EXPECT_EQ(ResultsInOrder(collection), 2000);
}

struct Pace {
    std::string Name;
    std::vector<std::size_t> Pieces; ///< their lengths, used in turn
    int TickEvery;                   ///< pieces; 0 for never
};
std::ostream& operator<<(std::ostream& out, const Pace& pace) {
    return out << pace.Name;
}

class AtAnyPace : public testing::TestWithParam<Pace> {};

TEST_P(AtAnyPace, EveryRecordIsDelivered) {
    Collection collection(Collection::On::Trace);
    const std::string stream = ManyResults(60);
    const Pace& pace = GetParam();
    std::size_t turn = 0;
    for (std::size_t place = 0; place < stream.size(); ++turn) {
        const std::size_t piece = pace.Pieces[turn % pace.Pieces.size()];
        collection.Deliver(std::string_view(stream).substr(place, piece));
        place += piece;
        if (pace.TickEvery != 0 && turn % static_cast<std::size_t>(pace.TickEvery) == 0)
            collection.Tick();
    }
    collection.Tick(2);
    EXPECT_EQ(ResultsInOrder(collection), 60);
}

INSTANTIATE_TEST_SUITE_P(Paces, AtAnyPace,
                         testing::Values(Pace{"single bytes", {1}, 0},
                                         Pace{"single bytes, ticks between them", {1}, 50},
                                         Pace{"4 KB at a time", {4096}, 0},
                                         Pace{"4 KB at a time, a tick each", {4096}, 1}, Pace{"9600 baud", {480}, 1},
                                         Pace{"now slow, now fast", {1, 4096, 1, 1, 700}, 1},
                                         Pace{"in primes", {2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37, 41}, 3}));

} // namespace
} // namespace line
