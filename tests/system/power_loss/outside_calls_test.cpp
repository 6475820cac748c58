// SPDX-License-Identifier: MIT
// Calls outside of the data folder fail, each once: on a settings file that the user has named, on the lock of the root
// folder, and where folders are made at the start. The result is that of a good run, or the failure is reported.
#include "backends/files/root_lock.h"
#include "src/storage/settings.h"
#include "tests/system/power_loss/disk_calls.h"
#include "tests/system/power_loss/machine.h"

#include <cerrno>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace disk {
namespace {

using backends::LockResult;
using backends::RootLock;

constexpr int Errors[] = {EIO, EINTR, ESTALE, ENOMEM, EMFILE, EACCES};

/// Returns true if the program repeats the call, so that the failure is not reported.
bool IsDoneAgain(const Plan& plan) {
    return plan.Error == EINTR || (plan.Error == ESTALE && plan.Kind == Counted::Names);
}

/// Lets each call that an action makes under a folder fail once, with each error.
void FailEachCall(const std::string& folder, const std::function<void(const Plan&)>& action) {
    int points = 0;
    for (const Counted kind : {Counted::Steps, Counted::Reads, Counted::Looks, Counted::Names}) {
        for (const int error : Errors) {
            bool struck = true;
            for (int call = 1; struck && !testing::Test::HasFailure(); ++call) {
                SCOPED_TRACE("kind " + std::to_string(static_cast<int>(kind)) + ", call " + std::to_string(call) +
                             ", error " + std::to_string(error));
                action({Blow::Fail, call, error, kind});
                struck = Watch::Struck();
                points += struck ? 1 : 0;
            }
        }
    }
    EXPECT_GT(points, 20) << folder;
}

TEST(CallsOutsideOfTheRoot, OnTheSettingsAreMadeAgainOrToldOf) {
    const FreshFolder root;
    const FreshFolder home;
    const Tree before = {{}, {{"settings.ini", "# mine\n[Settings]\nComPort=OFF\nStorageVolume=.\\\n"}}};
    const Tree after = {{}, {{"settings.ini", "# mine\n[Settings]\nComPort=Com3\nStorageVolume=.\\\n"}}};
    FailEachCall(home.Path(), [&](const Plan& plan) {
        WriteTree(home.Path(), before);
        bool told = false;
        {
            const Watch watch(home.Path(), plan);
            Machine machine(root.Path(), Keeping::TextFiles, home.Path() + "/settings.ini");
            modQuorin::SetFilePaths();
            modQuorin::SaveSetting(u"ComPort", u"Com3");
            told = !machine.Did.Unsaved.empty();
        }
        const Tree left = ReadTree(home.Path());
        EXPECT_TRUE(left == after || (told && left == before)) << left.Files.size();
        EXPECT_FALSE(told && IsDoneAgain(plan));
    });
}

TEST(CallsOutsideOfTheRoot, OnASettingsFileWithoutAFolderAreToldOf) {
    const FreshFolder root;
    Machine machine(root.Path(), Keeping::TextFiles, root.Path() + "/none/settings.ini");
    modQuorin::SaveSetting(u"ComPort", u"Com3");
    EXPECT_THAT(machine.Did.Unsaved, testing::Contains(testing::Pair(u"the setting ComPort", u"it does not exist")));
}

/// Either the lock keeps a second program away, or its failure is reported.
TEST(CallsOutsideOfTheRoot, OnTheLockLeaveItHeldOrAreToldOf) {
    const FreshFolder root;
    const std::string ours = "quorin " + std::to_string(::getpid());
    FailEachCall(root.Path(), [&](const Plan& plan) {
        WriteTree(root.Path(), {});
        RootLock lock;
        LockResult result{};
        {
            const Watch watch(root.Path(), plan);
            result = lock.Take(root.Path(), "quorin");
        }
        RootLock second;
        if (result == LockResult::Held)
            EXPECT_EQ(second.Take(root.Path(), "quorin-console"), LockResult::Taken);
        else
            EXPECT_NE(result == LockResult::NoFolder ? lock.Refusal() : lock.Warning(), "");
        if (plan.Error == EINTR && result == LockResult::Held) {
            EXPECT_EQ(second.Holder(), ours);
        }
        EXPECT_TRUE(result == LockResult::Held || !IsDoneAgain(plan));
    });
}

TEST(CallsOutsideOfTheRoot, ThatMakeAFolderMakeItOrSayWhyNot) {
    const FreshFolder home;
    FailEachCall(home.Path(), [&](const Plan& plan) {
        WriteTree(home.Path(), {});
        auto error = platform::NoError;
        {
            const Watch watch(home.Path(), plan);
            error = backends::MakeFolders(home.Path() + "/.local/share/quorin");
        }
        const bool isThere = ReadTree(home.Path()).Folders.count(".local/share/quorin") != 0;
        EXPECT_TRUE(isThere || error != platform::NoError);
        EXPECT_TRUE(error == platform::NoError || plan.Error != EINTR) << NumberOf(error);
    });
}

} // namespace
} // namespace disk
