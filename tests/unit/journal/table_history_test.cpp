// SPDX-License-Identifier: MIT
#include "journal/table_history.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace journal {
namespace {

using testing::ElementsAre;

constexpr auto None = TableHistory::None;

TEST(TableHistory, FollowsARecordOverAdditionsAndDeletions) {
    TableHistory rows;
    const auto first = rows.Added(1);
    const auto second = rows.Added(2);
    const auto between = rows.Added(2);
    EXPECT_THAT(rows.Rows(), ElementsAre(first, between, second));
    EXPECT_EQ(rows.Deleted(1), first);
    EXPECT_THAT(rows.Rows(), ElementsAre(between, second));
    EXPECT_EQ(rows.Named(2), second);
}

TEST(TableHistory, HasRecordsThatWereThereBefore) {
    TableHistory rows;
    const auto third = rows.Named(3);
    EXPECT_THAT(rows.Rows(), ElementsAre(None, None, third));
    EXPECT_EQ(rows.Named(3), third);
    const auto unknown = rows.Deleted(1);
    EXPECT_NE(unknown, third);
    EXPECT_THAT(rows.Rows(), ElementsAre(None, third));
    const auto last = rows.Added(5);
    EXPECT_THAT(rows.Rows(), ElementsAre(None, third, None, None, last));
}

TEST(TableHistory, OfADeletedTableIsNotThatOfTheNext) {
    TableHistory rows;
    const auto old = rows.Added(1);
    rows.Dropped();
    EXPECT_NE(rows.Added(1), old);
}

TEST(TableHistory, HasNoRecordForImpossibleRows) {
    TableHistory rows;
    for (const std::size_t row : {std::size_t{0}, static_cast<std::size_t>(-1)}) {
        EXPECT_EQ(rows.Named(row), None);
        EXPECT_EQ(rows.Added(row), None);
        EXPECT_EQ(rows.Deleted(row), None);
    }
    EXPECT_THAT(rows.Rows(), ElementsAre());
}

TEST(Tables, OfALineDatabaseHaveNoEnding) {
    EXPECT_TRUE(IsSameTable("qrn0001.txt", "qrn0001"));
    EXPECT_FALSE(IsSameTable("qrn0001.txt", "qrn0002.txt"));
    EXPECT_TRUE(IsRegister("qrnctrl"));
    EXPECT_TRUE(IsRegister("qrnctrl.txt"));
}

TEST(Tables, OfDownloadsAreTheSecondFieldOfTheRegister) {
    EXPECT_EQ(FileOfRegisterLine("Meter|qrn0001.txt|20070301|"), "qrn0001.txt");
    EXPECT_EQ(FileOfRegisterLine("Meter|qrn0001.txt"), "qrn0001.txt");
    EXPECT_EQ(FileOfRegisterLine("Meter"), "");
}

} // namespace
} // namespace journal
