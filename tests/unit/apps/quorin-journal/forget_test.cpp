// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

#include <ctime>

namespace reader {
namespace {

std::string DaysFromNow(int days) {
    const std::time_t then = std::time(nullptr) + days * 86400;
    std::tm parts{};
    ::localtime_r(&then, &parts);
    char text[sizeof "2026-11-22"];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d", &parts));
}

TEST_F(Journal, ForgetRemovesTheDaysBefore) {
    Day("2007-03-04", {Start()});
    Day("2007-03-05", {Start()});
    Day("2007-03-04", {Start(Other)}, Other);
    Folder.Put("2007-03-01.txt", "not a file of the journal");
    const Outcome forgotten = Run({"forget", "--before", "2007-03-05", "--root", Meter});
    EXPECT_EQ(forgotten.Output, "removed " + FileOf("2007-03-04") + "\n");
    EXPECT_EQ(forgotten.Errors, "");
    EXPECT_EQ(forgotten.Status, 0);
    EXPECT_EQ(Folder.Entries(), 3);
    EXPECT_EQ(Run({"forget", "--before", DaysFromNow(0)}).Status, 0);
    EXPECT_EQ(Folder.Entries(), 1);
}

TEST_F(Journal, ForgetKeepsTheDayOfARunningProgram) {
    Day(DaysFromNow(0), {Start()});
    EXPECT_EQ(Run({"forget", "--before", DaysFromNow(0)}).Output, "no file of a day before " + DaysFromNow(0) + "\n");
    EXPECT_EQ(Run({"forget", "--day", DaysFromNow(0)}).Status, 2);
    const Outcome refused = Run({"forget", "--before", DaysFromNow(2)});
    EXPECT_THAT(refused.Errors, testing::HasSubstr("is after today"));
    EXPECT_EQ(refused.Status, 2);
    EXPECT_EQ(Folder.Entries(), 1);
}

TEST_F(Journal, ForgetRemovesOneDay) {
    Day("2007-03-04", {Start()});
    Day("2007-03-05", {Start()});
    EXPECT_EQ(Run({"forget", "--day", "2007-03-03"}).Output, "no file of 2007-03-03\n");
    const Outcome forgotten = Run({"forget", "--day", "2007-03-05"});
    EXPECT_EQ(forgotten.Output, "removed " + FileOf("2007-03-05") + "\n");
    EXPECT_EQ(forgotten.Status, 0);
    EXPECT_EQ(Folder.Entries(), 1);
}

TEST_F(Journal, ForgetNeedsADay) {
    for (const Words& words : {Words{"forget"},
                               {"forget", "--before", "2007-03-05", "--day", "2007-03-04"},
                               {"forget", "--before", "2026"},
                               {"forget", "--before", "2007-02-30"}})
        EXPECT_EQ(Run(words).Status, 2);
}

TEST_F(Journal, ForgetTellsWhatCannotBeRemoved) {
    std::filesystem::create_directory(FileOf("2007-03-04"));
    const Outcome refused = Run({"forget", "--before", "2007-03-05"});
    EXPECT_THAT(refused.Errors, testing::HasSubstr("can't remove " + FileOf("2007-03-04") + ": "));
    EXPECT_EQ(refused.Status, 1);
}

} // namespace
} // namespace reader
