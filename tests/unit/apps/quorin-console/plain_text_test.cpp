// SPDX-License-Identifier: MIT
// A script that is played for a person: headlines, screens as text, and waits for readings.
#include "tests/unit/apps/quorin-console/console_run.h"

namespace console {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class PlayedScript : public Console {
protected:
    static std::string Receive(const std::string& value) {
        return R"(receive "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \")" + value +
               R"(\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n")";
    }
    std::string TextOf(const Words& commands) { return Tell(commands, {"--text"}).Output; }
};

TEST_F(PlayedScript, ShowsHeadlinesAndScreensAsText) {
    EXPECT_EQ(TextOf({"say The drivers", "choose Start...", "tick 100", "show"}),
              "\n== The drivers\n"
              "\n"
              "      Drivers\n"
              "    --------------------------------------------------------------------------------\n"
              "    > Meter\n"
              "    --------------------------------------------------------------------------------\n"
              "    [Ok]                                                                      [Back]\n");
}

TEST_F(PlayedScript, ShowsBoxesWarningsAndFailedCommands) {
    const std::string text = TextOf({"choose inf editor...", "choose Delete", "show", "answer ok", "answer no"});
    EXPECT_THAT(text, HasSubstr("    asked: Delete Driver?\n"));
    EXPECT_THAT(text, HasSubstr("    answer: the box has "));
    EXPECT_THAT(text, Not(HasSubstr("{\"")));
    Root.Put("settings.ini", "[Settings]\nComPort=x\n");
    EXPECT_THAT(TextOf({"tick 1000"}), HasSubstr("    warning: The setting ComPort "));
}

TEST_F(PlayedScript, WritesAHeadlineAsJsonToo) {
    EXPECT_THAT(Tell({R"(say "a \"b\"")"}).Lines, Contains(R"({"say":"a \"b\""})"));
}

TEST_F(PlayedScript, CollectsReadingsAndDrawsEach) {
    const std::string text = TextOf(Joined({OpenTheDownload, {Receive("23.4"), "collect 1", "say after"}}));
    const std::size_t reading = text.find("\n== Reading 1 taken\n");
    EXPECT_THAT(text.substr(reading), HasSubstr("23.4 %"));
    EXPECT_LT(reading, text.find("\n== after\n"));
}

TEST_F(PlayedScript, FailsWhenNoReadingComes) {
    const Outcome run = Tell(Joined({OpenTheDownload, {Receive("23.4"), "collect 2"}}), {"--strict"});
    EXPECT_EQ(run.Last("show").empty(), false) << "the first one was taken";
    EXPECT_EQ(run.Lines.back(), R"({"done":"collect","error":"no reading was taken for 5 seconds"})");
    EXPECT_EQ(run.Status, 3);
}

TEST_F(PlayedScript, AnswersAQuestionOfACollectionWithYes) {
    const Outcome run =
        Tell(Joined({OpenTheDownload, {Receive("1"), "collect 1", Receive("2"), "collect 2", "choose Close"}}));
    EXPECT_THAT(run.Output, HasSubstr("Replace: "));
    EXPECT_EQ(Root.Bytes("Quorin/qrn0001.txt"), "Moisture|Day\n2 %|\n");
}

TEST_F(PlayedScript, LeavesAQuestionOfAnotherCommandOpen) {
    EXPECT_EQ(Tell({"choose inf editor...", "choose Delete"}).Last("ready")["ready"], 1);
}

} // namespace
} // namespace console
