// SPDX-License-Identifier: MIT
#include "backends/host/journal_file.h"

#include "journal/journal_format.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace backends {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string Root = "/data";

class JournalFiles : public testing::Test {
protected:
    std::string Folder() const { return (Place.Path() / "journal").string(); }
    JournalFile Journal(JournalLimits limits = {}) const { return {Folder(), Root, limits}; }
    static std::string NameOf(const std::string& day) { return TextOf(journal::FileName{day, journal::RootKey(Root)}); }
    std::string Bytes(const std::string& day) const { return Place.Bytes("journal/" + NameOf(day)); }
    void PutDay(const std::string& day, std::size_t bytes) const {
        Place.Put("journal/" + NameOf(day), std::string(bytes, '\n'));
        ::chmod(Folder().c_str(), 0700);
    }
    static std::string Why(JournalFile& file) { return modStringTools::ToBytes(file.Open("2026-11-22")); }

    support::TemporaryFolder Place;
};

TEST_F(JournalFiles, TakeTheLinesOfTheirDay) {
    JournalFile file = Journal();
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    EXPECT_EQ(file.Append("one"), NoError);
    ASSERT_EQ(file.Open("2026-11-23"), u"");
    EXPECT_EQ(file.Append("two"), NoError);
    EXPECT_EQ(Bytes("2026-11-22"), "one\n");
    EXPECT_EQ(Bytes("2026-11-23"), "two\n");
}

TEST_F(JournalFiles, AreContinuedByTheNextProgram) {
    for (const char* line : {"one", "two"}) {
        JournalFile file = Journal();
        ASSERT_EQ(file.Open("2026-11-22"), u"");
        EXPECT_EQ(file.Append(line), NoError);
    }
    EXPECT_EQ(Bytes("2026-11-22"), "one\ntwo\n");
}

TEST_F(JournalFiles, KeepAnInterruptedLineApart) {
    Place.Put("journal/" + NameOf("2026-11-22"), "one\n{\"time");
    ::chmod(Folder().c_str(), 0700);
    JournalFile file = Journal();
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    EXPECT_EQ(file.Append("two"), NoError);
    EXPECT_EQ(Bytes("2026-11-22"), "one\n{\"time\ntwo\n");
}

TEST_F(JournalFiles, AreKeptFromOthers) {
    PutDay("2026-11-22", 1);
    ::chmod((Folder() + "/" + NameOf("2026-11-22")).c_str(), 0644);
    JournalFile file = Journal();
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    struct stat found {};
    ASSERT_EQ(::fstat(file.Number(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0600U);
}

TEST_F(JournalFiles, MayBeInAFolderThatOthersRead) {
    std::filesystem::create_directory(Folder());
    ::chmod(Folder().c_str(), 0755);
    JournalFile file = Journal();
    EXPECT_EQ(file.Open("2026-11-22"), u"");
}

TEST_F(JournalFiles, AreNotInAFolderToWhichOthersWrite) {
    std::filesystem::create_directory(Folder());
    ::chmod(Folder().c_str(), 0777);
    JournalFile file = Journal();
    EXPECT_THAT(Why(file), HasSubstr("others may write to it"));
    EXPECT_FALSE(file.IsOpen());
}

TEST_F(JournalFiles, AreNotBehindALink) {
    std::filesystem::create_directory(Place.Path() / "elsewhere");
    std::filesystem::create_directory_symlink(Place.Path() / "elsewhere", Folder());
    JournalFile file = Journal();
    EXPECT_THAT(Why(file), testing::StartsWith("it is a link: "));
    std::filesystem::remove(Folder());
    std::filesystem::create_directory(Folder());
    std::filesystem::create_symlink(Place.Path() / "target", Folder() + "/" + NameOf("2026-11-22"));
    EXPECT_THAT(Why(file), testing::StartsWith("it is no regular file: "));
    EXPECT_FALSE(Place.Has("target"));
}

TEST_F(JournalFiles, AreNotInAFolderOfAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a folder to another user";
    std::filesystem::create_directory(Folder());
    ASSERT_EQ(::chown(Folder().c_str(), 65534, 65534), 0);
    JournalFile file = Journal();
    EXPECT_THAT(Why(file), HasSubstr("it belongs to another user"));
}

TEST_F(JournalFiles, OfTheOldestDaysAreRemovedBeyondASize) {
    PutDay("2026-11-19", 40);
    PutDay("2026-11-20", 40);
    PutDay("2026-11-21", 40);
    JournalFile file = Journal({.Bytes = 90, .Days = 0});
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    EXPECT_THAT(file.RemoveOldest(), ElementsAre(NameOf("2026-11-19")));
    file.Append(std::string(20, 'x'));
    EXPECT_THAT(file.RemoveOldest(), ElementsAre(NameOf("2026-11-20")));
    EXPECT_EQ(Bytes("2026-11-21").size(), 40U);
}

TEST_F(JournalFiles, OfTheDayAreNotRemovedHoweverLarge) {
    PutDay("2026-11-22", 100);
    PutDay("2026-11-23", 100); // of a program whose clock is ahead
    JournalFile file = Journal({.Bytes = 10, .Days = 1});
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    EXPECT_THAT(file.RemoveOldest(), IsEmpty());
}

TEST_F(JournalFiles, AreRemovedBeyondAnAge) {
    for (const char* day : {"2026-10-31", "2026-11-20", "2026-11-21"})
        PutDay(day, 1);
    JournalFile file = Journal({.Bytes = 1000, .Days = 2});
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    EXPECT_THAT(file.RemoveOldest(), ElementsAre(NameOf("2026-10-31"), NameOf("2026-11-20")));
}

/// Its clock may show another day.
TEST_F(JournalFiles, ThatAProgramWritesAreNotRemoved) {
    JournalFile other = Journal();
    ASSERT_EQ(other.Open("2007-03-05"), u"");
    JournalFile file("" + Folder(), "/other", {.Bytes = 1, .Days = 1});
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    EXPECT_THAT(file.RemoveOldest(), IsEmpty());
    other.Close();
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    EXPECT_THAT(file.RemoveOldest(), ElementsAre(NameOf("2007-03-05")));
}

TEST_F(JournalFiles, OfOtherProgramsStay) {
    Place.Put("journal/notes.txt", "x");
    Place.Put("journal/2026-01-01.jsonl", "x");
    ::chmod(Folder().c_str(), 0700);
    JournalFile file = Journal({.Bytes = 1, .Days = 1});
    ASSERT_EQ(file.Open("2026-11-22"), u"");
    EXPECT_THAT(file.RemoveOldest(), IsEmpty());
    EXPECT_TRUE(Place.Has("journal/notes.txt"));
}

} // namespace
} // namespace backends
