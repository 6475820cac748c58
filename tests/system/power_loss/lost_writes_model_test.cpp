// SPDX-License-Identifier: MIT
// What the model of a loss of power can lose, tear and reorder, and what it can't.
#include "tests/system/power_loss/lost_writes.h"

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace disk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

const std::string Old(2048, 'o');
const std::string New(2048, 'n');

class PowerLoss : public testing::Test {
protected:
    PowerLoss() { WriteTree(Folder.Path(), {{"sub"}, {{"file", Old}}}); }

    std::string At(const std::string& name) const { return Folder.Path() + "/" + name; }
    static void Write(int file, const std::string& bytes, std::int64_t offset = 0) {
        EXPECT_EQ(::pwrite(file, bytes.data(), bytes.size(), offset), static_cast<ssize_t>(bytes.size()));
    }
    void Sync(const std::string& name) const {
        const int file = ::open(At(name).c_str(), O_RDONLY);
        EXPECT_EQ(::fsync(file), 0);
        ::close(file);
    }
    void Put(const std::string& name, const std::string& bytes, bool synced = true, int flags = O_CREAT) const {
        const int file = ::open(At(name).c_str(), O_WRONLY | flags, 0600);
        Write(file, bytes);
        EXPECT_TRUE(!synced || ::fsync(file) == 0);
        ::close(file);
    }
    /// Returns the different trees of a thousand damages after the action.
    std::set<Tree> TreesAfter(const std::function<void()>& action) const {
        const Watch watch(Folder.Path());
        action();
        const LostWrites model(Watch::Began(), Watch::StepsTaken(), Watch::StepsTaken().size());
        std::set<Tree> trees;
        for (std::uint32_t seed = 0; seed < 1000; ++seed)
            trees.insert(model.Damaged(seed));
        return trees;
    }
    /// Returns the contents of a file in these trees; "(missing)" if it does not exist.
    std::set<std::string> Contents(const std::string& name, const std::function<void()>& action) const {
        std::set<std::string> contents;
        for (const Tree& tree : TreesAfter(action)) {
            const auto found = tree.Files.find(name);
            contents.insert(found == tree.Files.end() ? "(missing)" : found->second);
        }
        return contents;
    }

    const FreshFolder Folder;
};

TEST_F(PowerLoss, CostsNothingWhereNothingWasDone) {
    EXPECT_THAT(Contents("file", [] {}), ElementsAre(Old));
}

TEST_F(PowerLoss, MayCostAWriteThatWasNotSyncedTearItOrKeepIt) {
    const std::set<std::string> contents = Contents("file", [this] { Put("file", New, false); });
    EXPECT_THAT(contents, Contains(Old));
    EXPECT_THAT(contents, Contains(New));
    EXPECT_THAT(contents, Contains(std::string(512, 'o') + std::string(512, 'n') + std::string(1024, 'o')));
    EXPECT_TRUE(std::any_of(contents.begin(), contents.end(), [](const std::string& bytes) {
        const std::size_t place = bytes.find('o'); // the beginning of the write, not whole sectors
        return place != std::string::npos && place % 512 != 0 && bytes.find('n', place) == std::string::npos;
    }));
}

TEST_F(PowerLoss, CostsNoWriteThatWasSynced) {
    EXPECT_THAT(Contents("file", [this] { Put("file", New); }), ElementsAre(New));
}

TEST_F(PowerLoss, MayKeepALaterWriteAndCostAnEarlierOne) {
    const auto contents = Contents("file", [this] {
        const int file = ::open(At("file").c_str(), O_WRONLY);
        Write(file, "1", 0);
        Write(file, "2", 1);
        ::close(file);
    });
    EXPECT_THAT(contents, UnorderedElementsAre(Old, "1o" + Old.substr(2), "o2" + Old.substr(2), "12" + Old.substr(2)));
}

TEST_F(PowerLoss, MayBringTwoWritesToOnePlaceInEitherOrder) {
    const auto contents = Contents("file", [this] {
        const int file = ::open(At("file").c_str(), O_WRONLY);
        Write(file, "1");
        Write(file, "2");
        ::close(file);
    });
    EXPECT_THAT(contents, UnorderedElementsAre(Old, "1" + Old.substr(1), "2" + Old.substr(1)));
}

/// A program that truncates a file and writes it again in place may lose both texts or mix them.
TEST_F(PowerLoss, MayCostTheEmptyingAndKeepWhatWasWrittenBehindIt) {
    const auto contents = Contents("file", [this] { Put("file", "1", false, O_TRUNC); });
    EXPECT_THAT(contents, UnorderedElementsAre(Old, "", "1", "1" + Old.substr(1)));
}

TEST_F(PowerLoss, MayCostANewNameAlthoughItsContentWasSynced) {
    EXPECT_THAT(Contents("new", [this] { Put("new", New); }), UnorderedElementsAre("(missing)", New));
}

TEST_F(PowerLoss, CostsNoNameOnceItsFolderWasSynced) {
    const auto contents = Contents("new", [this] {
        Put("new", New);
        Sync("");
    });
    EXPECT_THAT(contents, ElementsAre(New));
}

TEST_F(PowerLoss, MayKeepANameWithoutItsContent) {
    const auto contents = Contents("new", [this] {
        Put("new", "1", false);
        Sync("");
    });
    EXPECT_THAT(contents, UnorderedElementsAre("", "1"));
}

TEST_F(PowerLoss, LeavesTheOldFileOrTheNewOneOfARename) {
    const auto replace = [this] {
        Put("new", New);
        ::rename(At("new").c_str(), At("file").c_str());
    };
    EXPECT_THAT(Contents("file", replace), UnorderedElementsAre(Old, New));
}

TEST_F(PowerLoss, LeavesTheNewFileOfARenameThatWasSynced) {
    const auto trees = TreesAfter([this] {
        Put("new", New);
        ::rename(At("new").c_str(), At("file").c_str());
        Sync("");
    });
    EXPECT_THAT(trees, ElementsAre(Tree{{"sub"}, {{"file", New}}}));
}

TEST_F(PowerLoss, MayTearAFileThatWasRenamedBeforeItWasSynced) {
    const auto contents = Contents("file", [this] {
        Put("new", New, false);
        ::rename(At("new").c_str(), At("file").c_str());
        Sync("");
    });
    EXPECT_THAT(contents, Contains(""));
    EXPECT_GT(contents.size(), 10U);
}

TEST_F(PowerLoss, MayBringTheOldNameBackIfOnlyTheOtherFolderSynced) {
    const auto trees = TreesAfter([this] {
        ::rename(At("file").c_str(), At("sub/file").c_str());
        Sync("sub");
    });
    const Tree moved{{"sub"}, {{"sub/file", Old}}};
    const Tree both{{"sub"}, {{"file", Old}, {"sub/file", Old}}};
    EXPECT_THAT(trees, UnorderedElementsAre(moved, both));
}

TEST_F(PowerLoss, MayBringADeletedFileBackUntilItsFolderIsSynced) {
    EXPECT_THAT(Contents("file", [this] { ::unlink(At("file").c_str()); }), UnorderedElementsAre("(missing)", Old));
    WriteTree(Folder.Path(), {{"sub"}, {{"file", Old}}});
    const auto contents = Contents("file", [this] {
        ::unlink(At("file").c_str());
        Sync("");
    });
    EXPECT_THAT(contents, ElementsAre("(missing)"));
}

TEST_F(PowerLoss, CostsAllFilesOfAFolderThatIsLost) {
    const auto trees = TreesAfter([this] {
        ::mkdir(At("made").c_str(), 0700);
        Put("made/new", New);
        Sync("made");
    });
    const Tree lost{{"sub"}, {{"file", Old}}};
    const Tree kept{{"sub", "made"}, {{"file", Old}, {"made/new", New}}};
    EXPECT_THAT(trees, UnorderedElementsAre(lost, kept));
}

TEST_F(PowerLoss, IsTheSameForTheSameSeed) {
    const Watch watch(Folder.Path());
    Put("file", New, false);
    const LostWrites model(Watch::Began(), Watch::StepsTaken(), Watch::StepsTaken().size());
    for (std::uint32_t seed = 0; seed < 100; ++seed)
        EXPECT_TRUE(model.Damaged(seed) == model.Damaged(seed));
}

} // namespace
} // namespace disk
