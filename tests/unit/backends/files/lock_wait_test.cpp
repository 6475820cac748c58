// SPDX-License-Identifier: MIT
// Line databases that another program has locked.
#include "backends/files/line_database.h"

#include "tests/support/other_tool.h"
#include "tests/support/temporary_root.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

using namespace platform;
using backends::LineDatabase;
using backends::PathMap;

namespace {

class LockedDatabase : public testing::Test {
protected:
    LockedDatabase() {
        Id = Databases.Create(u"drivers", 1, 2).Id;
        EXPECT_EQ(Databases.DeclareTable(Id, u"TEXT", u"LineNumber long, LineData String"), NoError);
        EXPECT_TRUE(Append(u"one"));
        Tool.Open(Root.Path("Databases/drivers.sqlite"));
        Databases.Patience.Longest = std::chrono::milliseconds(100);
        Databases.Patience.Waiting = [this] { ++Moments; };
        Databases.Patience.Shown = [this](bool waits) { Shown.push_back(waits); };
    }

    bool Append(const Text& line) {
        return Databases.AddRecord(Id) == NoError &&
               Databases.WriteRecord(Id, {Databases.RecordCount(Id) + 1, line}) == NoError &&
               Databases.Commit(Id) == NoError;
    }

    TemporaryRoot Root;
    LineDatabase Databases{PathMap(Root.Path())};
    DatabaseId Id = 0;
    support::OtherTool Tool;
    int Moments = 0;
    std::vector<bool> Shown;
};

TEST_F(LockedDatabase, IsWaitedForFiveSeconds) {
    EXPECT_EQ(backends::LockWait().Longest, std::chrono::seconds(5));
}

TEST_F(LockedDatabase, IsReadOnceTheOtherLetsGo) {
    Tool.Lock();
    Databases.Patience.Longest = std::chrono::seconds(60);
    Databases.Patience.Waiting = [this] {
        if (++Moments == 100) // after more than a second, which a lock may well last
            Tool.LetGo();
    };
    EXPECT_EQ(Databases.BeginReading(Id), NoError);
    Databases.EndReading(Id);
    EXPECT_EQ(Databases.RecordCount(Id), 1);
    EXPECT_EQ(Moments, 100);
}

TEST_F(LockedDatabase, IsWaitedForOnceAnOperationHoweverManyCallsItHas) {
    Tool.Lock();
    EXPECT_EQ(Databases.BeginReading(Id), InUse);
    const int moments = Moments;
    EXPECT_GT(moments, 0);
    EXPECT_EQ(Databases.BeginReading(Id), InUse);
    EXPECT_EQ(Databases.BeginBatch(Id), InUse);
    EXPECT_EQ(Moments, moments);
    EXPECT_EQ(Shown, std::vector<bool>{true});
    EXPECT_TRUE(Databases.Patience.Renew());
    EXPECT_EQ(Shown, (std::vector<bool>{true, false}));
    EXPECT_FALSE(Databases.Patience.Renew()) << "nothing was waited for since";
    EXPECT_EQ(Databases.BeginReading(Id), InUse);
    EXPECT_GT(Moments, moments);
}

TEST_F(LockedDatabase, IsNoBrokenOneLater) {
    Tool.Lock();
    EXPECT_EQ(Databases.BeginReading(Id), InUse);
    Tool.LetGo();
    EXPECT_EQ(Databases.RecordCount(Id), 1);
    EXPECT_TRUE(Append(u"two"));
}

TEST_F(LockedDatabase, KeepsItsLineWhereAReaderDoesNotLetAChangeEnd) {
    Tool.Read();
    ASSERT_EQ(Databases.FindRecord(Id, 1), NoError);
    ASSERT_EQ(Databases.BeginEdit(Id), NoError);
    ASSERT_EQ(Databases.WriteRecord(Id, {1, u"new"}), NoError);
    EXPECT_EQ(Databases.Commit(Id), InUse);
    Tool.LetGo();
    LineRecord record;
    ASSERT_EQ(Databases.FindRecord(Id, 1), NoError);
    ASSERT_TRUE(Databases.ReadRecord(Id, record));
    EXPECT_EQ(record.LineData, u"one");
}

/// A batch that does not fit into memory would need the file for itself before it ends.
TEST_F(LockedDatabase, TakesALongBatchThatAReaderLetsEnd) {
    Tool.Read();
    ASSERT_EQ(Databases.BeginBatch(Id), NoError);
    for (int line = 0; line < 20000; ++line)
        ASSERT_TRUE(Append(Text(200, u'x')));
    Tool.LetGo();
    EXPECT_EQ(Databases.EndBatch(Id), NoError);
    EXPECT_EQ(Databases.RecordCount(Id), 20001);
}

TEST_F(LockedDatabase, CanNotBeOpenedAndThatIsNoMissingOne) {
    Databases.Close(Id);
    Tool.Lock();
    EXPECT_EQ(Databases.Open(u"drivers", DatabaseMode::ReadWrite).Error, InUse);
}

TEST_F(LockedDatabase, IsNotWrittenByOthersWhileItIsRead) {
    ASSERT_EQ(Databases.BeginReading(Id), NoError);
    EXPECT_FALSE(Tool.Can(R"(DELETE FROM "TEXT")"));
    Databases.EndReading(Id);
    EXPECT_TRUE(Tool.Can(R"(DELETE FROM "TEXT")"));
}

} // namespace
