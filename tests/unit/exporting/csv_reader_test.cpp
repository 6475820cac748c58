// SPDX-License-Identifier: MIT
#include "exporting/csv_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace exporting {
namespace {

using testing::ElementsAre;
using Row = std::vector<std::string>;

std::vector<Row> RowsOf(const std::string& csv, char delimiter = ',') {
    CsvReader reader(csv, delimiter);
    std::vector<Row> rows;
    for (Row row; reader.Next(row);)
        rows.push_back(row);
    EXPECT_FALSE(reader.HasFailed());
    return rows;
}

TEST(CsvRows, HaveQuotedTextsAndEitherLineEnd) {
    EXPECT_THAT(RowsOf("\xEF\xBB\xBF\"a\",b\r\n\"x, \"\"y\"\"\r\nz\",\n,last"),
                ElementsAre(Row{"a", "b"}, Row{"x, \"y\"\r\nz", ""}, Row{"", "last"}));
    EXPECT_THAT(RowsOf("a;b,c\n", ';'), ElementsAre(Row{"a", "b,c"}));
}

TEST(CsvRows, AreNotMadeOfEmptyLines) {
    EXPECT_THAT(RowsOf("a\n\n\r\nb\n\n"), ElementsAre(Row{"a"}, Row{"b"}));
    EXPECT_THAT(RowsOf(""), ElementsAre());
    EXPECT_THAT(RowsOf("a,b\n,\n"), ElementsAre(Row{"a", "b"}, Row{"", ""})) << "which has its delimiter";
}

TEST(CsvRows, HaveTheNumberOfTheirFirstLine) {
    const std::string csv = "a\n\n\"b\nc\"\nd\n";
    CsvReader reader(csv, ',');
    Row row;
    std::vector<std::size_t> lines;
    while (reader.Next(row))
        lines.push_back(reader.Line());
    EXPECT_THAT(lines, ElementsAre(1U, 3U, 5U));
}

TEST(CsvRows, EndWhereAQuoteCanNotBe) {
    for (const std::string csv : {"a\nb\"c\n", "a\n\"open\n", "a\n\"b\"c\n", "a\nb\rc\n"}) {
        CsvReader reader(csv, ',');
        Row row;
        EXPECT_TRUE(reader.Next(row)) << csv;
        EXPECT_FALSE(reader.Next(row)) << csv;
        EXPECT_TRUE(reader.HasFailed()) << csv;
        EXPECT_EQ(reader.Line(), 2U) << csv;
    }
}

} // namespace
} // namespace exporting
