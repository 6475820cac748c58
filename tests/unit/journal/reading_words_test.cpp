// SPDX-License-Identifier: MIT
#include "journal/reading_words.h"

#include <gtest/gtest.h>

namespace journal {
namespace {

Line Reading(const char* verdict) {
    return {{"verdict", verdict},   {"types", {"Moisture", "M1"}}, {"value", "14.1"},   {"unit", "%"},
            {"origin", "QI-0002"},  {"expected", "QI-0001"},       {"field", "Inside"}, {"old", "13 %"},
            {"file", "qrn0001.txt"}};
}

TEST(ReadingWords, AreThoseOfTheWindow) {
    EXPECT_EQ(ResultOf(Reading("taken")), "Moisture 14.1 %");
    EXPECT_EQ(VerdictOf(Reading("taken")), "● Moisture 14.1 % → Inside");
    EXPECT_EQ(VerdictOf(Reading("replaced")), "● Moisture 14.1 % → Inside, in place of 13 %");
    EXPECT_EQ(VerdictOf(Reading("norow")), "○ refused: no row of qrn0001.txt asks for \"Moisture\"");
    EXPECT_EQ(VerdictOf(Reading("origin")), "○ refused: from QI-0002, connected is QI-0001");
    EXPECT_EQ(VerdictOf(Reading("emptied")), "○ lost: Moisture 14.1 % came while a question was open");
}

TEST(ReadingWords, NameTheLimitThatAValueIsOutsideOf) {
    Line reading = Reading("taken");
    reading["limit"] = "failhigh";
    EXPECT_EQ(VerdictOf(reading), "● Moisture 14.1 % → Inside; outside of its limit failhigh");
}

TEST(ReadingWords, OfANewerVerdictAreItsName) {
    EXPECT_EQ(VerdictOf(Reading("frozen")), "frozen");
    EXPECT_FALSE(IsStored("frozen"));
}

TEST(ReadingWords, NeedNothingOfALine) {
    EXPECT_EQ(VerdictOf(Line::object()), "");
    EXPECT_EQ(ResultOf({{"types", {7}}, {"value", "a\nb"}}), "a b ");
}

TEST(Verdicts, OfStoredReadingsAreThree) {
    EXPECT_EQ(StoredVerdicts(), "notype, replaced, taken");
    for (const char* verdict : {"kept", "openfield", "norow", "nocolumn", "norecord", "offscreen", "trace", "origin",
                                "connect", "shape", "waiting", "emptied", ""})
        EXPECT_FALSE(IsStored(verdict)) << verdict;
}

} // namespace
} // namespace journal
