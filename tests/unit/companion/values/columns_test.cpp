// SPDX-License-Identifier: MIT
#include "companion/values/columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace values {
namespace {

using testing::ElementsAre;

const std::vector<std::string_view> Table = {
    "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA",
    "Site|1|1|dv: Site||site||",
    "Moisture|1||Moisture||moisture||",
    "Probe|0||DV: {Moisture}Probe||||",
    "Day|1||||moisture|date|startdate",
    "Hour|1||||hour|TIME|",
    "Short|1",
};

std::vector<std::string> NamesOf(const std::vector<Column>& columns) {
    std::vector<std::string> names;
    for (const Column& column : columns)
        names.push_back(column.Name);
    return names;
}

TEST(ColumnsOfADownload, AreFoundByNameAndNotByPlace) {
    const auto columns = ColumnsOf({"day", "Moisture", "Lost", "Site"}, FieldRowsOf(Table));
    EXPECT_THAT(NamesOf(columns), ElementsAre("moisture", "moisture_2", "Lost", "site"));
    EXPECT_EQ(columns[0].Kind, ColumnKind::Date);
    EXPECT_EQ(columns[1].Kind, ColumnKind::Measured);
    EXPECT_EQ(columns[1].Field, "Moisture");
    EXPECT_EQ(columns[2].Kind, ColumnKind::Text);
    EXPECT_FALSE(columns[2].IsKnown);
    EXPECT_TRUE(columns[2].IsShown);
    EXPECT_EQ(columns[3].Kind, ColumnKind::Text) << "a variable is no measured value";
}

TEST(ColumnsOfADownload, AreCalledByTheirFieldIfTheyHaveNoOtherName) {
    const auto columns = ColumnsOf({"Probe", "Hour", "Short", "", "Short"}, FieldRowsOf(Table));
    EXPECT_THAT(NamesOf(columns), ElementsAre("Probe", "hour", "Short", "column 4", "Short_2"));
    EXPECT_FALSE(columns[0].IsShown);
    EXPECT_EQ(columns[0].Kind, ColumnKind::Text);
    EXPECT_EQ(columns[1].Kind, ColumnKind::Time);
}

TEST(ColumnsOfADownload, HaveADoubleThatIsTakenAlready) {
    EXPECT_THAT(NamesOf(ColumnsOf({"a_2", "a", "a"}, {})), ElementsAre("a_2", "a", "a_3"));
}

TEST(FieldsOfADriver, AreNoneWithoutATable) {
    EXPECT_TRUE(FieldRowsOf({}).empty());
}

TEST(AColumn, IsNumberedBehindABar) {
    EXPECT_EQ(NumberedColumn("|1"), 0U);
    EXPECT_EQ(NumberedColumn("|12"), 11U);
    for (const char* name : {"", "|", "3", "#3", "|0", "|-1", "|+1", "|x", "|3x", "| 3", "|99999999999999999999"})
        EXPECT_FALSE(NumberedColumn(name)) << name;
}

} // namespace
} // namespace values
