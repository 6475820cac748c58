// SPDX-License-Identifier: MIT
// Each command of quorin-console: what it does, which arguments it refuses, and when it can't be carried out.
#include "tests/unit/apps/quorin-console/console_run.h"

namespace console {
namespace {

using testing::HasSubstr;

const Words OnTheRecord = OpenTheDownload;
const Words InTheField = Joined({OpenTheDownload, {"tap 0 1", "set ab"}});
const Words OverTheDate = Joined({OpenTheDownload, {"tap 1 1"}});
const Words OverTheQuestion = {"choose inf editor...", "choose Delete"};
const Words OverThePrompt = {"choose Preferences...", "tap 4"};
const Words OnPreferences = {"choose Preferences...", "tick 100"};

// What each command changes: a member of the screen or of the state object.

struct Use {
    const char* Command;
    Words Before;
    const char* Place; ///< as a JSON pointer; one into the state has no second part
    Json Value;
    Words Options = {};
};

void PrintTo(const Use& use, std::ostream* out) {
    *out << use.Command << " -> " << use.Place;
}

class UseOf : public Console, public testing::WithParamInterface<Use> {};

TEST_P(UseOf, ACommandShows) {
    const Use& use = GetParam();
    const Outcome run = Tell(Joined({use.Before, {use.Command, "screen", "state"}}), use.Options);
    const std::vector<Json> done = run.All("done");
    ASSERT_GE(done.size(), 3U);
    for (const Json& object : done)
        EXPECT_FALSE(object.contains("error")) << object;
    Json seen = run.Last("screen");
    seen.update(run.Last("SelectedDriver"));
    EXPECT_EQ(seen.at(Json::json_pointer(use.Place)), use.Value);
}

// clang-format off: a row a use
INSTANTIATE_TEST_SUITE_P(
    Of, UseOf,
    testing::Values(
        Use{"tap 1", OnPreferences, "/screen", "ScrList"}, Use{"tap 1", OnPreferences, "/PreferenceRow", 1},
        Use{"tap 0 1", OnTheRecord, "/input/kind", "text"}, Use{"tap 1 1", OnTheRecord, "/input/kind", "date"},
        Use{"hold 2", OnPreferences, "/grid/row", 2}, Use{"hold 2", OnPreferences, "/screen", "ScrPreferences"},
        Use{"hold 1 0", OnTheRecord, "/grid/col", 0}, Use{"menu 1 1", {}, "/screen", "ScrDrivers"},
        Use{"menu 2 1", {}, "/screen", "ScrPreferences"},
        Use{"title 1", OnPreferences, "/screen", "ScrMain", {"--device", "7"}},
        Use{"title 1", OnPreferences, "/screen", "ScrPreferences", {"--device", "0"}},
        Use{"choose Preferences...", {}, "/screen", "ScrPreferences"},
        Use{R"(choose "Preferences...")", {}, "/screen", "ScrPreferences"},
        Use{"choose Back", OnPreferences, "/screen", "ScrMain"},
        Use{"choose Back", OnPreferences, "/screen", "ScrMain", {"--device", "7"}},
        Use{"key 40", OnPreferences, "/grid/row", 1}, Use{"key 310", {}, "/screen", "ScrDrivers"},
        Use{"key 120", InTheField, "/input/text", "abx"}, Use{"key 8", InTheField, "/input/text", "a"},
        Use{"type cd e", InTheField, "/input/text", "abcd e"},
        Use{R"(type "\u00b5\ud83d\ude00")", InTheField, "/input/text", "ab\xC2\xB5\xF0\x9F\x98\x80"},
        Use{"type cd", InTheField, "/grid/cells/0/1", "abcd"}, Use{"set cd", InTheField, "/input/text", "cd"},
        Use{"set cd", InTheField, "/grid/cells/0/1", "cd"},
        Use{"pick 2008-02-29", OverTheDate, "/grid/cells/1/1", "29/02/2008"},
        Use{"pick 2008-02-29", OverTheDate, "/input", nullptr},
        Use{"answer no", OverTheQuestion, "/screen", "ScrInstalledDrivers"},
        Use{"pick 2008-02-29 ", OverTheDate, "/grid/cells/1/1", "29/02/2008"},
        Use{"answer no ", OverTheQuestion, "/screen", "ScrInstalledDrivers"},
        Use{"tick 100 ", {"choose Preferences..."}, "/RepaintPending", false},
        Use{"serial drop ", OnTheRecord, "/RxText", ""}, Use{"command File Debug...", {}, "/screen", "ScrFileDebug"},
        Use{"command \"ok\"", {"choose Start..."}, "/screen", "ScrDownloads"},
        Use{"record 2", Joined({OnTheRecord, {"choose New Record", "choose First Record"}}), "/TableRowIndex", 2},
        Use{"tick 99", {"choose Preferences..."}, "/RepaintPending", true},
        Use{"tick 100", {"choose Preferences..."}, "/RepaintPending", false},
        Use{"tick 0", {"choose Preferences..."}, "/RepaintPending", true},
        Use{"tick 5000", OnTheRecord, "/LinkState", 2},
        Use{"jump 5000", OnTheRecord, "/LinkState", 1}, // the device has slept
        Use{"jump 99", {"choose Preferences..."}, "/RepaintPending", true},
        Use{"receive abc", OnTheRecord, "/RxText", "abc"}, Use{R"(receive "a\r\nb")", OnTheRecord, "/RxText", "b"},
        Use{"serial drop", OnTheRecord, "/RxText", ""},
        Use{"tick 500", Joined({OnTheRecord, {"serial drop", "serial fail 1"}}), "/LinkOpen", false},
        Use{"tick 1000", Joined({OnTheRecord, {"serial drop", "serial fail 1"}}), "/LinkOpen", true},
        Use{"tick 9000", Joined({OnTheRecord, {"serial drop", "serial fail -1"}}), "/LinkOpen", false},
        Use{"serial fail 0", Joined({OnTheRecord, {"serial fail -1"}}), "/LinkOpen", true},
        Use{"keyboard -1 0 200 240 120", {}, "/form", {0, 0, 240, 200}, {"--device", "3"}},
        Use{"keyboard 0 0 0 0 0", {"keyboard -1 0 200 240 120"}, "/form", {0, 0, 240, 320}, {"--device", "3"}},
        Use{"close", OnPreferences, "/screen", "ScrMain"},
        Use{"background", OnPreferences, "/screen", "ScrPreferences"},
        Use{"maximise", OnPreferences, "/screen", "ScrPreferences"},
        Use{"minimise", OnPreferences, "/screen", "ScrPreferences"}));
// clang-format on

// A command that can't be carried out says so and changes nothing.

struct Failure {
    Words Before;
    Words Commands;
    Words Options = {};
};

void PrintTo(const Failure& failure, std::ostream* out) {
    *out << testing::PrintToString(failure.Before) << " then " << testing::PrintToString(failure.Commands);
}

class FailureOf : public Console, public testing::WithParamInterface<Failure> {};

/// One run tries all commands of a row. Each must leave the screen and the state unchanged.
TEST_P(FailureOf, ACommandSaysWhyAndChangesNothing) {
    const Failure& failure = GetParam();
    Words told = Joined({failure.Before, {"screen", "state"}});
    for (const std::string& command : failure.Commands)
        told = Joined({told, {command, "screen", "state"}});
    const Outcome run = Tell(told, failure.Options);
    const std::vector<Json> done = run.All("done");
    const std::vector<Json> screens = run.All("screen");
    const std::vector<Json> states = run.All("SelectedDriver");
    ASSERT_EQ(screens.size(), failure.Commands.size() + 1);
    ASSERT_EQ(states.size(), failure.Commands.size() + 1);
    std::size_t errors = 0;
    for (const Json& object : done)
        errors += object.contains("error") ? 1U : 0U;
    EXPECT_EQ(errors, failure.Commands.size()) << testing::PrintToString(run.Lines);
    for (std::size_t i = 0; i < failure.Commands.size(); ++i) {
        EXPECT_EQ(screens[i + 1], screens[i]) << failure.Commands[i];
        EXPECT_EQ(states[i + 1], states[i]) << failure.Commands[i];
    }
    EXPECT_EQ(run.Status, 0);
}

// clang-format off: a row a command, with the arguments that it does not take
INSTANTIATE_TEST_SUITE_P(
    ForItsArguments, FailureOf,
    testing::Values(
        Failure{OnPreferences,
                {"tap", "tap x", "tap 0 x", "tap 0 0 0", "tap 1.5", "tap 0x1", "tap 99999999999999999999"}},
        Failure{OnPreferences, {"hold", "hold x", "hold 0 x", "hold 0 0 0", "hold 3000000000"}},
        Failure{{}, {"menu", "menu 1", "menu x 1", "menu 1 x", "menu 1 1 1"}},
        Failure{{}, {"title", "title x", "title 1 1"}},
        Failure{{}, {"choose", R"(choose "Start...)", R"(choose "Start..." x)"}},
        Failure{OnPreferences, {"key", "key x", "key 0", "key -40", "key 40 40", "key 40.0", "key 99999999999"}},
        Failure{InTheField, {R"(type "x)", R"(type "\q")"}}, Failure{InTheField, {R"(set "x)", R"(set "x" y)"}},
        Failure{OverTheDate,
                {"pick", "pick x", "pick 2007-02-29", "pick 2007-3-6", "pick 06/03/2007", "pick 0000-01-01",
                 "pick 2007-03-06T00:00:00"}},
        Failure{OverTheQuestion, {"answer", "answer maybe", "answer YES", "answer yes no"}},
        Failure{{"choose Preferences..."},
                {"tick", "tick x", "tick -1", "tick 1.5", "tick 100 100", "tick 9223372036854775807",
                 "tick 99999999999999999999"}},
        Failure{{"choose Preferences..."}, {"jump", "jump x", "jump -1", "jump 9223372036854775807", "jump 100 100"}},
        Failure{OnTheRecord, {"collect", "collect x", "collect 0", "collect -1", "collect 1 1"}},
        Failure{OnTheRecord, {"record", "record x", "record 1 1", "record 1.0", "record 99999999999"}},
        Failure{OnTheRecord, {R"(receive "x)", R"(say "x)"}},
        Failure{OnTheRecord,
                {"serial", "serial fail", "serial fail x", "serial fail -2", "serial open", "serial drop 1"}},
        Failure{{}, {"named", "named fail", "named fail x", "named open", "named ok 1"}},
        Failure{{},
                {"keyboard", "keyboard 1", "keyboard 1 2 3 4", "keyboard 1 2 3 4 5 6", "keyboard 1 x 3 4 5",
                 "keyboard -2 0 0 240 100", "keyboard 32768 0 0 240 100"},
                {"--device", "3"}},
        Failure{{}, {"disk", "disk fail", "disk fail x", "disk fail -2", "disk full", "disk ok 1"}}));

// Commands at moments when they can't be carried out.
INSTANTIATE_TEST_SUITE_P(
    ForItsMoment, FailureOf,
    testing::Values(
        Failure{OnPreferences, {"tap 6", "tap -1", "tap 0 1", "tap 0 -1", "hold 6", "hold 0 1"}},
        Failure{OverThePrompt, {"tap 0", "hold 0"}},
        Failure{{}, {"menu 0 1", "menu 3 1", "menu 1 0", "menu 1 6", "menu 1 3", "menu 2 4", "title 0", "title 3"}},
        Failure{OnPreferences, {"menu 2 1", "title 2"}},
        Failure{{}, {"choose Nothing", "choose start...", "choose Start... ", "choose Main", "choose Back"}},
        Failure{OnPreferences, {"type x", "set x", "pick 2007-03-06", "answer ok", "answer yes"}},
        Failure{OverTheDate, {"type x", "set x"}}, Failure{InTheField, {"pick 2007-03-06"}},
        Failure{OverTheQuestion,
                {"tap 0", "hold 0", "menu 1 1", "title 1", "choose Edit", "choose Back", "key 27", "key 120", "type x",
                 "set x", "pick 2007-03-06", "close", "answer ok"}},
        Failure{OnPreferences, {"receive x", "serial drop"}}, Failure{{}, {"jump 100"}, {"--clock", "real"}},
        Failure{OnTheRecord, {"record 0", "record 2", "record -1"}}, Failure{OverTheDate, {"record 1"}},
        Failure{OverTheQuestion, {"command Back", "record 1"}}, Failure{{}, {"record 1"}},
        Failure{{}, {"command Next Record", "command delete record", "command Ok", "command Open", "command Save"}},
        Failure{OverThePrompt,
                {"command New Record", "command Zoom", "command Enter Custom Serial ID...", "command x"}},
        Failure{OverTheDate, {"command Next Record", "command Preferences..."}},
        Failure{{}, {"close now", "show me", "background 1"}},
        Failure{{}, {"nonsense", "Tap 0", "TICK 5", "choose... x", "{}", "\"tap\" 0"}}));
// clang-format on

TEST_F(Console, AnswersABoxThatHasOneButton) {
    Root.Put("settings.ini", "[Settings]\nComPort=SERVER\n");
    const Words toTheBox = {"choose Bluetooth Debug...", "tick 500"};
    const Outcome wrong = Tell(Joined({toTheBox, {"answer yes", "answer no"}}));
    EXPECT_TRUE(wrong.Line(wrong.Lines.size() - 3).contains("error"));
    EXPECT_EQ(wrong.Lines.rbegin()[1], R"({"ready":1})");
    EXPECT_EQ(wrong.Lines.back(), R"({"done":"tick"})"); // the end of the input closes it
    const Outcome right = Tell(Joined({toTheBox, {"answer ok"}}));
    EXPECT_THAT(Words(right.Lines.end() - 3, right.Lines.end()),
                testing::ElementsAre(R"({"done":"answer"})", R"({"done":"tick"})", R"({"ready":0})"));
}

TEST_F(Console, AnswersBothQuestionsWithYes) {
    Tell(Joined({OverTheQuestion, {"answer yes", "answer yes"}}));
    EXPECT_EQ(Root.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\n");
}

TEST_F(Console, LetsTheDiskFailUntilItIsToldOtherwise) {
    const Words newRecord = {"tap 0 1", "set 1", "choose New Record"};
    Tell(Joined({OnTheRecord, {"disk fail -1"}, newRecord}));
    EXPECT_THAT(Root.Bytes("Quorin/qrn0001.txt"), testing::Not(HasSubstr("1|")));
    Tell(Joined({OnTheRecord, {"disk fail -1", "disk ok"}, newRecord}));
    EXPECT_THAT(Root.Bytes("Quorin/qrn0001.txt"), HasSubstr("1|"));
}

class NamedConnection : public Console {
protected:
    NamedConnection() {
        InstallMeter("C/Data/Quorin/");
        Root.Put("settings.ini", "[Settings]\nComPort=Host\n");
    }
    Outcome Connect(const Words& before, const Words& after = {}) {
        return Tell(Joined({before, OnTheRecord, after, {"state"}}), {"--device", "9"});
    }
};

TEST_F(NamedConnection, OpensUnlessItIsToldToFail) {
    EXPECT_EQ(Connect({}).Last("SelectedDriver")["NamedLinkOpen"], true);
    const Outcome failed = Connect({"named fail 1234"}, {"answer ok"});
    EXPECT_EQ(failed.Last("event")["text"], "Failed: 1234");
    EXPECT_EQ(failed.Last("SelectedDriver")["NamedLinkOpen"], false);
    const Outcome again = Connect({"named fail 1234"}, {"answer ok", "named ok", "tick 1000"});
    EXPECT_EQ(again.Last("SelectedDriver")["NamedLinkOpen"], true);
}

/// The form shows no message about it, as on a device, but the console reports it.
TEST_F(Console, TellsASaveThatFailedOnceAndByTheNameOfTheTable) {
    const Outcome run =
        Tell(Joined({OpenTheDownload, {"tap 0 1", "set 12", "key 13", "disk fail -1", "choose Next Record"}}));
    EXPECT_EQ(run.Status, 0);
    EXPECT_THAT(run.Lines,
                testing::Contains(R"({"event":"notsaved","file":"qrn0001.txt","error":"the disk is full"})").Times(1));
    EXPECT_EQ(run.Errors, "quorin-console: not saved: qrn0001.txt, the disk is full\n");
    EXPECT_THAT(Root.Bytes("Quorin/qrn0001.txt"), testing::Not(HasSubstr("12")));
}

TEST_F(Console, SaysAtTheEndOfItsInputWhichRecordIsLost) {
    const std::string lost = "quorin-console: row 1 of qrn0001.txt was NOT saved\n";
    EXPECT_EQ(Tell(Joined({OpenTheDownload, {"tap 0 1", "set 12"}})).Errors, lost);
    EXPECT_EQ(Tell(Joined({OpenTheDownload, {"tap 0 1", "set 12", "key 13", "choose Close"}})).Errors, "");
    EXPECT_EQ(Tell(OpenTheDownload).Errors, "");
    EXPECT_EQ(Tell(Joined({OpenTheDownload, {"tap 0 1", "set 13", "nonsense"}}), {"--strict"}).Errors, lost);
}

TEST_F(Console, NamesALostRecordThatHasNoFileByItsDownload) {
    std::filesystem::remove(Root.Path() / "Quorin/qrn0001.txt");
    std::filesystem::create_directory(Root.Path() / "Quorin/qrn0001.txt");
    const std::string reading = R"(receive "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"2\"]\r\n)"
                                R"([RESULT_UNIT \"%\"]\r\n[/BLob]\r\n")";
    const Outcome run = Tell(Joined({OpenTheDownload, {"tick 1000", reading, "tick 1100"}}));
    EXPECT_THAT(run.Errors, testing::EndsWith("\nquorin-console: the record of qrn0001.txt was NOT saved\n"));
}

/// Not even in the root folder, because it is no volume of such a device.
TEST_F(Console, MakesNoFileWhereNoVolumeCanBeUsedAndTellsIt) {
    for (const char* device : {"1", "3", "6", "9", "12"}) {
        const Outcome run =
            Tell({"choose Start...", "choose Back", "choose inf editor...", "command New"},
                 {"--device", device, "--volume", "Card:\\=fail", "--settings", (Root.Path() / "own.ini").string()});
        EXPECT_EQ(run.Status, 0) << run.Errors;
        EXPECT_THAT(run.Lines,
                    testing::Contains(R"({"event":"notsaved","file":"drivers.txt","error":"it does not exist"})"));
        for (const char* name : {"drivers.txt", "qrnctrl.txt", "untitled.txt", "My Documents", "PALM", "Databases"})
            EXPECT_FALSE(Root.Has(name)) << device << " " << name;
    }
}

TEST_F(Console, TellsASettingThatCouldNotBeStored) {
    const Outcome run = Tell({"disk fail -1", "choose Preferences...", "tap 3"});
    EXPECT_EQ(run.Last("event").dump(),
              R"({"event":"notsaved","file":"the setting COLOUR","error":"the disk is full"})");
    EXPECT_EQ(run.Errors, "quorin-console: not saved: the setting COLOUR, the disk is full\n");
}

TEST_F(Console, WaitsAsLongAsItIsToldOnTheMachinesClock) {
    const Outcome run = Tell({"choose Preferences...", "tick 150", "state"}, {"--clock", "real"});
    EXPECT_EQ(run.Last("SelectedDriver")["RepaintPending"], false);
}

} // namespace
} // namespace console
