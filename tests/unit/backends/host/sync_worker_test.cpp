// SPDX-License-Identifier: MIT
#include "backends/host/sync_worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <unistd.h>

namespace backends {
namespace {

/// Standard input stands for a file: nothing is written.
constexpr int AnyFile = STDIN_FILENO;

TEST(Syncing, HappensInTheCallWhileTheDiskIsFast) {
    int calls = 0;
    SyncWorker syncs([&](int) {
        ++calls;
        return 0;
    });
    EXPECT_EQ(syncs.Write(AnyFile), 0);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(syncs.SlowOne());
}

TEST(Syncing, ReportsAFailure) {
    SyncWorker syncs([](int) {
        errno = EIO;
        return -1;
    });
    EXPECT_EQ(syncs.Write(AnyFile), EIO);
}

/// The first writing is slow, and the ones after it don't end before the test allows it.
class SlowDisk : public testing::Test {
protected:
    SlowDisk() { Syncs.Write(AnyFile); }
    ~SlowDisk() override { MayEnd = true; }

    std::atomic<bool> MayEnd{false};
    std::atomic<int> Calls{0};
    std::atomic<int> Failure{0};
    SyncWorker Syncs{[this](int) {
        if (++Calls == 1) {
            std::this_thread::sleep_for(SyncWorker::Longest + SyncWorker::Duration(20));
            return 0;
        }
        while (!MayEnd)
            std::this_thread::yield();
        errno = Failure;
        return Failure == 0 ? 0 : -1;
    }};
};

TEST_F(SlowDisk, HoldsUpNoLaterCall) {
    ASSERT_TRUE(Syncs.SlowOne());
    EXPECT_GT(*Syncs.SlowOne(), SyncWorker::Longest);
    EXPECT_EQ(Syncs.Write(AnyFile), 0); // returns although the disk does not
    EXPECT_EQ(Syncs.Write(AnyFile), 0);
}

TEST_F(SlowDisk, ReportsAFailureAtALaterCall) {
    Failure = EIO;
    EXPECT_EQ(Syncs.Write(AnyFile), 0);
    MayEnd = true;
    int failure = 0;
    for (int i = 0; failure == 0 && i < 10'000; ++i) {
        std::this_thread::sleep_for(SyncWorker::Duration(1));
        failure = Syncs.Write(AnyFile);
    }
    EXPECT_EQ(failure, EIO);
}

TEST_F(SlowDisk, IsWaitedForAtTheEnd) {
    MayEnd = true;
    {
        SyncWorker own([this](int) {
            if (++Calls == 2)
                std::this_thread::sleep_for(SyncWorker::Longest + SyncWorker::Duration(20));
            return 0;
        });
        own.Write(AnyFile);
        own.Write(AnyFile);
    }
    EXPECT_EQ(Calls, 3);
}

} // namespace
} // namespace backends
