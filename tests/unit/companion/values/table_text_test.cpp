// SPDX-License-Identifier: MIT
#include "companion/values/table_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace values {
namespace {

using testing::ElementsAre;

std::vector<std::string_view> LinesOf(std::string_view bytes) {
    std::vector<std::string_view> lines;
    for (LineWalk walk(bytes); walk.Next();)
        lines.push_back(walk.Line());
    return lines;
}

TEST(LinesOfATable, HaveNeitherTheirEndsNorAMark) {
    EXPECT_THAT(LinesOf("\xEF\xBB\xBF"
                        "A|B\r\n1|2\n\n3|\r"),
                ElementsAre("A|B", "1|2", "", "3|"));
    EXPECT_THAT(LinesOf("A"), ElementsAre("A"));
    EXPECT_THAT(LinesOf(""), ElementsAre());
}

TEST(LinesOfATable, AreNumberedFromOne) {
    LineWalk walk("a\nb\n");
    walk.Next();
    EXPECT_EQ(walk.Number(), 1U);
    walk.Next();
    EXPECT_EQ(walk.Number(), 2U);
    EXPECT_FALSE(walk.Next());
}

TEST(FieldsOfALine, AreBetweenBars) {
    std::vector<std::string_view> fields;
    Split("a||c|", fields);
    EXPECT_THAT(fields, ElementsAre("a", "", "c", ""));
    Split("", fields);
    EXPECT_THAT(fields, ElementsAre(""));
}

} // namespace
} // namespace values
