// SPDX-License-Identifier: MIT
#include "companion/question_rush.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

using std::chrono::seconds;

const Text First = u"Replace: \r\n1 %\r\nWith:\r\n2 %?";
const Text Second = u"Replace: \r\n2 %\r\nWith:\r\n3 %?";

TEST(ARushOfQuestions, IsTheThirdWithinTenSeconds) {
    QuestionRush rush;
    EXPECT_FALSE(rush.Comes(First, seconds(1)));
    EXPECT_FALSE(rush.Comes(Second, seconds(3)));
    EXPECT_TRUE(rush.Comes(Second, seconds(11)));
    EXPECT_TRUE(rush.Comes(First, seconds(13))) << "and each one that follows as fast";
    EXPECT_FALSE(rush.Comes(First, seconds(22)));
}

TEST(ARushOfQuestions, ConsistsOfQuestionsOfOneKind) {
    QuestionRush rush;
    rush.Comes(First, seconds(1));
    rush.Comes(First, seconds(1));
    EXPECT_FALSE(rush.Comes(u"Delete Record?", seconds(1)));
    EXPECT_FALSE(rush.Comes(First, seconds(1)));
}

} // namespace
} // namespace companion
