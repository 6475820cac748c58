// SPDX-License-Identifier: MIT
#include "backends/files/left_files.h"

#include "tests/support/temporary_root.h"

#include <chrono>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

using namespace backends;

namespace {

/// Returns the number of a process that has ended.
std::string EndedProcess() {
    const pid_t process = ::fork();
    if (process == 0)
        ::_exit(0);
    ::waitpid(process, nullptr, 0);
    return std::to_string(process);
}

class LeftFiles : public testing::Test {
protected:
    void Put(const std::string& name, std::chrono::hours age = std::chrono::hours(25)) {
        Root.Put(name, "half");
        const auto changed = std::filesystem::last_write_time(Root.Path(name)) - age;
        std::filesystem::last_write_time(Root.Path(name), changed);
    }

    TemporaryRoot Root;
    const std::string Left = ".quorin-" + EndedProcess() + "-0";
};

TEST_F(LeftFiles, OfAnEndedProgramAreRemoved) {
    for (const std::string& name : {Left, "Quorin/" + Left, "Card/Quorin/Old/" + Left})
        Put(name);
    RemoveLeftFiles(Root.Path(), DepthOfRoot);
    EXPECT_FALSE(Root.Has(Left));
    EXPECT_EQ(Root.Entries("Quorin"), 0);
    EXPECT_EQ(Root.Entries("Card/Quorin/Old"), 0);
}

TEST_F(LeftFiles, StayForADay) {
    Put(Left, std::chrono::hours(23));
    RemoveLeftFiles(Root.Path(), DepthOfRoot);
    EXPECT_TRUE(Root.Has(Left));
}

TEST_F(LeftFiles, StayWhileTheirProgramRuns) {
    const std::string own = ".quorin-" + std::to_string(::getpid()) + "-0";
    for (const std::string& name : {own, std::string(".quorin-1-0")})
        Put(name);
    RemoveLeftFiles(Root.Path(), DepthOfRoot);
    EXPECT_TRUE(Root.Has(own));
    EXPECT_TRUE(Root.Has(".quorin-1-0"));
}

TEST_F(LeftFiles, AreThoseOfTheNameAlone) {
    for (const std::string& name :
         {std::string("00000001.txt"), std::string("qrn0001.txt"), std::string(".quorin.lock"),
          std::string(".quorin-0-0"), Left + "1x", Left.substr(0, Left.size() - 1), Left.substr(0, Left.size() - 2),
          "a" + Left, std::string(".quorin-x-0")}) {
        Put(name);
        RemoveLeftFiles(Root.Path(), DepthOfRoot);
        EXPECT_TRUE(Root.Has(name)) << name;
    }
}

TEST_F(LeftFiles, AreNotLookedForBehindALink) {
    Put("away/" + Left);
    std::filesystem::create_directory(Root.Path("root"));
    Root.Link(Root.Path("away"), "root/link");
    Root.Link(Root.Path("away/" + Left), "root/" + Left);
    RemoveLeftFiles(Root.Path("root"), DepthOfRoot);
    EXPECT_TRUE(Root.Has("away/" + Left));
    EXPECT_EQ(Root.Entries("root"), 2);
}

TEST_F(LeftFiles, AreNotLookedForDeeperThanAsked) {
    Put("Quorin/" + Left);
    RemoveLeftFiles(Root.Path(), 0);
    EXPECT_TRUE(Root.Has("Quorin/" + Left));
    RemoveLeftFiles(Root.Path("missing"), 0);
}

TEST(LeftTables, AreTheScratchFilesOfAFolder) {
    const TemporaryRoot root;
    for (const char* const name : {"00000815.txt", "12345678.txt", "1234567.txt", "123456789.txt", "1234567a.txt",
                                   "12345678.txt.txt", "qrn0001.txt", "Deeper/00000001.txt"})
        root.Put(name, "ab");
    root.Put("00000816.txt/file", "a folder");
    const std::vector<LeftTable> found = LeftTables(root.Path());
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].Name, "00000815.txt");
    EXPECT_EQ(found[1].Name, "12345678.txt");
    EXPECT_EQ(found[0].Size, 2);
    EXPECT_LT(std::abs(std::time(nullptr) - found[0].Changed), 1000);
    EXPECT_TRUE(LeftTables(root.Path("nowhere")).empty());
}

} // namespace
