// SPDX-License-Identifier: MIT
#include "backends/linux/port_holders.h"

#include "tests/support/temporary_root.h"

#include <unistd.h>

using namespace backends;

namespace {

class PortHolders : public testing::Test {
protected:
    void Process(const std::string& number, const std::string& program, const std::string& opened) {
        Proc.Put(number + "/comm", program + "\n");
        std::filesystem::create_directories(Proc.Path(number + "/fd"));
        Proc.Link("/dev/null", number + "/fd/0");
        Proc.Link(opened, number + "/fd/7");
    }
    auto Holders() { return HoldersByProcess({"/dev/ttyUSB0", "/dev/ttyUSB1"}, Proc.Path()); }
    std::string LockedBy(const std::string& content) {
        Locks.Put("LCK..ttyUSB0", content);
        const auto holder = HolderByLock("ttyUSB0", Locks.Path(), Proc.Path());
        return holder ? "[" + holder->Program + "|" + holder->Process + "]" : "nobody";
    }

    TemporaryRoot Proc;
    TemporaryRoot Locks;
};

TEST_F(PortHolders, AProgramWithTheDeviceOpenIsNamed) {
    Process("812", "ModemManager", "/dev/ttyUSB1");
    Process("9", "bash", "/dev/pts/4");
    const auto holders = Holders();
    ASSERT_EQ(holders.size(), 1U);
    EXPECT_EQ(holders.begin()->first, "/dev/ttyUSB1");
    EXPECT_EQ(holders.begin()->second.Program, "ModemManager");
    EXPECT_EQ(holders.begin()->second.Process, "812");
}

TEST_F(PortHolders, ThisProcessDoesNotCount) {
    Process(std::to_string(getpid()), "test", "/dev/ttyUSB0");
    EXPECT_TRUE(Holders().empty());
}

TEST_F(PortHolders, FoldersThatAreNoProcessDoNotCount) {
    Process("self", "bash", "/dev/ttyUSB0");
    Process("12x", "bash", "/dev/ttyUSB0");
    EXPECT_TRUE(Holders().empty());
}

TEST_F(PortHolders, ALockOfARunningProcessCounts) {
    Process("812", "minicom", "/dev/null");
    EXPECT_EQ(LockedBy("       812\n"), "[minicom|812]");
    EXPECT_EQ(LockedBy("812 minicom ann\n"), "[minicom|812]");
}

TEST_F(PortHolders, ALockOfAProcessThatHasEndedIsVoid) {
    EXPECT_EQ(LockedBy("       812\n"), "nobody");
}

TEST_F(PortHolders, ALockThatNamesNoProcessCountsWithoutAName) {
    EXPECT_EQ(LockedBy(""), "[|]");
    EXPECT_EQ(LockedBy("../../etc\n"), "[|]");
}

TEST_F(PortHolders, ALockOfAnotherDeviceDoesNotCount) {
    Locks.Put("LCK..ttyUSB10", "1");
    EXPECT_FALSE(HolderByLock("ttyUSB1", Locks.Path(), Proc.Path()));
}

} // namespace
