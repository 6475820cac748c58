// SPDX-License-Identifier: MIT
#include "journal/line_cutter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace journal {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> LinesOf(LineCutter& cutter) {
    std::vector<std::string> lines;
    while (const auto line = cutter.Next())
        lines.emplace_back(*line);
    return lines;
}

TEST(LineCutter, LeavesALineWithoutAnEnd) {
    LineCutter cutter;
    cutter.Add("one\n\ntwo\nthr");
    EXPECT_THAT(LinesOf(cutter), ElementsAre("one", "", "two"));
    EXPECT_THAT(LinesOf(cutter), IsEmpty());
}

TEST(LineCutter, PutsALineTogetherThatComesInParts) {
    LineCutter cutter;
    cutter.Add("o");
    EXPECT_THAT(LinesOf(cutter), IsEmpty());
    cutter.Add("n");
    EXPECT_THAT(LinesOf(cutter), IsEmpty());
    cutter.Add("e\nt");
    EXPECT_THAT(LinesOf(cutter), ElementsAre("one"));
    cutter.Add("wo\n");
    EXPECT_THAT(LinesOf(cutter), ElementsAre("two"));
}

} // namespace
} // namespace journal
