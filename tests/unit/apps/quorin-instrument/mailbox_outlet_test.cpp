// SPDX-License-Identifier: MIT
// The program as the server of a mailbox. The test takes deliveries as the application would.
#include "tests/support/running_instrument.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace instrument {
namespace {

const std::string Recorded = std::string(QUORIN_SAMPLES) + "/climate.stream";

class InAMailbox : public testing::Test {
protected:
    std::vector<std::string> Arguments(std::vector<std::string> others) const {
        others.insert(others.begin(), {"--mailbox", Box.Name()});
        return others;
    }

    /// Does what the application's tick does: waits while the lock exists, then reads and deletes the delivery. Empty
    /// if none came.
    std::string TakeDelivery() {
        if (!Eventually([this] { return !Exists(Lock) && Exists(Delivery); })) {
            return {};
        }
        const std::string bytes = FileBytes(Delivery);
        std::filesystem::remove(Delivery);
        return bytes;
    }

    TemporaryFolder Box;
    const std::string Run = Box.Path("rfcomm.run");
    const std::string Lock = Box.Path("ipcout.lock");
    const std::string Delivery = Box.Path("ipcout.txt");
};

TEST_F(InAMailbox, EachRecordIsOneDelivery) {
    RunningInstrument instrument(Arguments({Recorded, "--fast"}));
    for (const std::string& record : RecordsOf(Recording(Sample("climate.stream")))) {
        ASSERT_EQ(TakeDelivery(), record);
    }
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_EQ(instrument.Errors(), "played\n");
}

TEST_F(InAMailbox, LeavesTheFolderEmptyAtTheEnd) {
    RunningInstrument instrument(Arguments({"--count", "1", "--fast"}));
    TakeDelivery();
    TakeDelivery();
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_TRUE(std::filesystem::is_empty(Box.Name()));
}

TEST_F(InAMailbox, WaitsUntilAnOldDeliveryIsGone) {
    WriteFile(Delivery, "old");
    RunningInstrument instrument(Arguments({Recorded, "--fast"}));
    ASSERT_TRUE(Eventually([this] { return Exists(Run); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(TakeDelivery(), "old");
    EXPECT_EQ(TakeDelivery(), RecordsOf(Recording(Sample("climate.stream"))).at(0));
}

TEST_F(InAMailbox, LockLeftByAKilledServerIsTakenAway) {
    WriteFile(Lock, "");
    RunningInstrument instrument(Arguments({Recorded, "--fast"}));
    EXPECT_FALSE(TakeDelivery().empty());
}

TEST_F(InAMailbox, SplitRecordComesInTwoDeliveries) {
    const auto records = RecordsOf(Recording(Sample("climate.stream")));
    RunningInstrument instrument(Arguments({Recorded, "--fast", "--split-lines"}));
    EXPECT_EQ(TakeDelivery(), records.at(0));
    const std::string first = TakeDelivery();
    const std::string second = TakeDelivery();
    EXPECT_FALSE(second.empty());
    EXPECT_EQ(first + second, records.at(1));
}

TEST_F(InAMailbox, StaysUntilTheLastDeliveryIsTaken) {
    RunningInstrument instrument(Arguments({"--count", "1", "--fast"}));
    TakeDelivery();
    ASSERT_TRUE(Eventually([&] { return instrument.SaysPlayed(); }));
    EXPECT_TRUE(Exists(Run));
    TakeDelivery();
    EXPECT_EQ(instrument.ExitStatus(), 0);
}

TEST_F(InAMailbox, LingersNoLongerThanToldAndLeavesTheDelivery) {
    RunningInstrument instrument(Arguments({"--count", "1", "--fast", "--linger", "50"}));
    TakeDelivery();
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_TRUE(Exists(Delivery));
    EXPECT_FALSE(Exists(Run));
}

TEST_F(InAMailbox, EndOfTheServerShowsAfterEverySignal) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        RunningInstrument instrument(Arguments({"--fast"}));
        ASSERT_TRUE(Eventually([this] { return Exists(Run) && Exists(Delivery); }));
        instrument.Signal(number);
        EXPECT_EQ(instrument.ExitStatus(), 0);
        EXPECT_FALSE(Exists(Run));
        EXPECT_FALSE(Exists(Lock));
        EXPECT_TRUE(Exists(Delivery)) << "a complete delivery stays";
    }
}

TEST_F(InAMailbox, DeliveryThatCanNotBeWrittenFailsAndLeavesNoLock) {
    std::filesystem::create_directory(Box.Path("ipcout.tmp"));
    RunningInstrument instrument(Arguments({"--fast"}));
    EXPECT_EQ(instrument.ExitStatus(), 1);
    EXPECT_EQ(instrument.Errors(), "quorin-instrument: can't write " + Box.Path("ipcout.tmp") + ": Is a directory\n");
    EXPECT_FALSE(Exists(Lock));
    EXPECT_FALSE(Exists(Run));
    EXPECT_FALSE(Exists(Delivery));
}

TEST_F(InAMailbox, FailsWhereThereIsNoFolder) {
    RunningInstrument missing({"--mailbox", Box.Path("none")});
    EXPECT_EQ(missing.ExitStatus(), 1);
    WriteFile(Box.Path("file"), "");
    RunningInstrument file({"--mailbox", Box.Path("file")});
    EXPECT_EQ(file.ExitStatus(), 1);
    EXPECT_EQ(file.Errors(), "quorin-instrument: the mailbox " + Box.Path("file") + " is not a folder\n");
}

} // namespace
} // namespace instrument
