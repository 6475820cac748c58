// SPDX-License-Identifier: MIT
// An instrument that sends without being asked while a question is not answered for a while, as a user of the console
// experiences it.
#include "tests/support/running_console.h"
#include "tests/unit/apps/quorin-console/console_run.h"

namespace console {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Blob(const std::string& lines) {
    return "[BLob]\r\n" + lines + "\r\n[/BLob]\r\n";
}

std::string Reading(const std::string& type, std::size_t value) {
    return Blob("[ORIGIN \"QI-1\"]\r\n[RESULT_TYPE \"" + type + "\"]\r\n[RESULT_VALUE \"" + std::to_string(value) +
                "\"]\r\n[RESULT_UNIT \"%\"]");
}

/// A record of many fields, and a question about the first of them. The parameter is the number of readings that come
/// while the question is open.
class ReadingsDuringOneQuestion : public Console, public testing::WithParamInterface<std::size_t> {
protected:
    ReadingsDuringOneQuestion() {
        std::string table = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
        for (std::size_t field = 0; field <= GetParam(); ++field)
            table += Field(field) + "|1||" + Field(field) + "||||\n";
        Root.Put("Quorin/meter.txt", table);
        Person.emplace(Words{"--root", Root.Path().string()});
        for (const std::string& command : OpenTheDownload)
            Tell(command);
        Receive(Blob("[CONNECT \"QI-1\"]"));
        Receive(Reading(Field(0), 1000));
        Receive(Reading(Field(0), 1001));
        EXPECT_EQ(Open, 1U);
    }

    static std::string Field(std::size_t number) { return "F" + std::to_string(number); }

    std::string Tell(const std::string& command) {
        const std::string answers = Person->Tell(command);
        EXPECT_THAT(answers, Not(HasSubstr("\"error\":"))) << command;
        for (std::size_t at = answers.find(BoxEvent); at != std::string::npos; at = answers.find(BoxEvent, at + 1)) {
            ++Open;
            ++Asked;
        }
        Deepest = std::max(Deepest, Open);
        return answers;
    }
    /// Receives text over the line and lets enough time pass to decode it.
    void Receive(const std::string& text) {
        Tell("receive " + Json(text).dump());
        Tell("tick 1100");
    }
    void Answer(const std::string& answer) {
        ++Answered;
        --Open;
        Tell("answer " + answer);
    }
    /// Answers at a person's speed until no question is open.
    void AnswerAll(const std::string& answer) {
        while (Open > 0 && Answered < 10 * (GetParam() + 2)) {
            Answer(answer);
            Tell("tick 1100");
        }
        EXPECT_EQ(Open, 0U);
    }
    Json State() {
        const std::string answers = Tell("state"); // the object, and the report that the command is done
        return Json::parse(answers.substr(0, answers.find('\n')));
    }
    std::string Saved() {
        EXPECT_THAT(Tell("choose Close"), Not(HasSubstr("notsaved")));
        return Root.Bytes("Quorin/qrn0001.txt");
    }
    /// Returns the download with this value in the first field and none in the others.
    std::string Download(const std::string& first) {
        std::string names = Field(0);
        std::string values = first;
        for (std::size_t field = 1; field <= GetParam(); ++field) {
            names += "|" + Field(field);
            values += "|";
        }
        return names + "\n" + values + "\n";
    }

    static constexpr const char* BoxEvent = R"({"event":"box")";
    std::optional<live::RunningConsole> Person;
    std::size_t Open = 0;  ///< boxes that are open
    std::size_t Asked = 0; ///< boxes that have been opened
    std::size_t Deepest = 0;
    std::size_t Answered = 0;
};

TEST_P(ReadingsDuringOneQuestion, OfOneFieldAreAskedAboutOnceEachUnderTwoBoxesAtMost) {
    std::size_t waits = 0;
    for (std::size_t reading = 1; reading <= GetParam(); ++reading) {
        const std::string text = Reading(Field(0), 1001 + reading);
        Receive(text);
        waits += reading > 1 ? text.size() : 0; // the first reading has opened the second box
    }
    EXPECT_EQ(Open, 2U);
    EXPECT_EQ(State()["LinkHeld"], true);
    EXPECT_EQ(State()["CharactersWaiting"], waits);
    EXPECT_THAT(Tell("show"), HasSubstr("the newer of two"));

    AnswerAll("no");
    EXPECT_EQ(Deepest, 2U);
    EXPECT_EQ(Asked, GetParam() + 2) << "the one that stood is decoded once more, with the first that came";
    EXPECT_EQ(Answered, Asked);
    EXPECT_EQ(State()["LinkHeld"], false);
    EXPECT_EQ(State()["CharactersWaiting"], 0);
    EXPECT_EQ(State()["LinkOpen"], true);
    EXPECT_THAT(Tell("show"), Not(HasSubstr("the newer of two")));
    EXPECT_EQ(Saved(), Download("1000 %"));
}

TEST_P(ReadingsDuringOneQuestion, LeaveTheValueThatWasAnsweredWithYesLast) {
    for (std::size_t reading = 1; reading <= GetParam(); ++reading)
        Receive(Reading(Field(0), 1001 + reading));
    AnswerAll("yes");
    EXPECT_EQ(Deepest, 2U);
    EXPECT_EQ(Answered, GetParam() + 2);
    // The question that was opened first is answered last, so its reading, the oldest, replaces the others.
    EXPECT_EQ(Saved(), Download("1001 %"));
}

TEST_P(ReadingsDuringOneQuestion, OfOtherFieldsAllEndInTheirOwn) {
    std::string names = Field(0);
    std::string values = "1001 %";
    std::size_t waits = 0;
    for (std::size_t reading = 1; reading <= GetParam(); ++reading) {
        const std::string text = Reading(Field(reading), reading);
        Receive(text);
        waits += reading > 1 ? text.size() : 0;
        names += "|" + Field(reading);
        values += "|" + std::to_string(reading) + " %";
    }
    EXPECT_EQ(State()["CharactersWaiting"], waits);
    AnswerAll("yes");
    EXPECT_EQ(Deepest, 2U);
    EXPECT_EQ(Answered, 2U) << "the same question twice, and none about an empty field";
    EXPECT_EQ(Saved(), names + "\n" + values + "\n");
}

INSTANTIATE_TEST_SUITE_P(Counts, ReadingsDuringOneQuestion, testing::Values(3, 20, 200));

} // namespace
} // namespace console
