// SPDX-License-Identifier: MIT
// Tests the streams, the exit statuses and the options of quorin-console.
#include "tests/support/help_text.h"
#include "tests/support/printed_rows.h"
#include "tests/unit/apps/quorin-console/console_run.h"

#include <climits>
#include <filesystem>

namespace console {
namespace {

using support::PrintTo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const Words OpenTheQuestion = {"choose inf editor...", "choose Delete"}; ///< a message box with Yes and No
const Words OpenThePrompt = {"choose Preferences...", "tap 4"};          ///< asks for a port, and waits
const char* const Question =
    R"({"event":"box","text":"Delete Driver?","buttons":"yesno","icon":"question","title":"Quorin"})";

// The command line.

TEST_F(Console, TakesTheWordAfterARepeatableOptionAsItsScript) {
    Root.Put("script", "say read");
    const std::string script = (Root.Path() / "script").string();
    for (const Words& option : {Words{"--port", "2=/dev/null"}, Words{"--volume", ".\\=100"}})
        EXPECT_THAT(With(Joined({option, {script}}), "").Lines, testing::Contains(R"({"say":"read"})")) << option[0];
}

// The stream of answers.

TEST_F(Console, IsReadyBeforeEachCommandAndClosesEachWithOneObject) {
    EXPECT_THAT(Tell({"choose Start...", "tick 1"}).Lines,
                ElementsAre(R"({"ready":0})", R"({"done":"choose"})", R"({"ready":0})", R"({"done":"tick"})",
                            R"({"ready":0})"));
}

TEST_F(Console, CountsTheCommandThatABoxKeepsOpenAndClosesItLast) {
    const Outcome run = Tell(Joined({OpenTheQuestion, {"tick 1", "answer no"}}));
    EXPECT_THAT(run.Lines, ElementsAre(R"({"ready":0})", R"({"done":"choose"})", R"({"ready":0})", Question,
                                       R"({"ready":1})", R"({"done":"tick"})", R"({"ready":1})", R"({"done":"answer"})",
                                       R"({"done":"choose"})", R"({"ready":0})"));
}

TEST_F(Console, TellsOfAPromptByTheCountAlone) {
    const Outcome run = Tell(Joined({OpenThePrompt, {"set Com3", "choose Ok"}}));
    EXPECT_THAT(run.Lines, ElementsAre(R"({"ready":0})", R"({"done":"choose"})", R"({"ready":0})", R"({"ready":1})",
                                       R"({"done":"set"})", R"({"ready":1})", R"({"done":"choose"})",
                                       R"({"done":"tap"})", R"({"ready":0})"));
}

TEST_F(Console, CountsABoxInsideABoxAsTwo) {
    Root.Put("settings.ini", "[Settings]\nComPort=SERVER\n");
    const Outcome run = Tell(
        {"choose Start...", "choose Ok", "choose Open", "choose Delete Record", "tick 500", "answer ok", "answer no"});
    EXPECT_THAT(Words(run.Lines.end() - 10, run.Lines.end()),
                ElementsAre(HasSubstr("Delete Record?"), R"({"ready":1})", HasSubstr("RFCOMM Server not running"),
                            R"({"ready":2})", R"({"done":"answer"})", R"({"done":"tick"})", R"({"ready":1})",
                            R"({"done":"answer"})", R"({"done":"choose"})", R"({"ready":0})"));
}

const std::string ReceiveAResult = R"(receive "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n)"
                                   R"([RESULT_UNIT \"%\"]\r\n[/BLob]\r\n")";

TEST_F(Console, WritesTheEventsOfACommandBeforeItsEnd) {
    const Outcome run = Tell(Joined({OpenTheDownload, {ReceiveAResult, "tick 1500"}}));
    EXPECT_THAT(Words(run.Lines.end() - 8, run.Lines.end()),
                ElementsAre(R"({"done":"receive"})", R"({"ready":0})", R"({"event":"status","text":"Decoding Result"})",
                            R"({"event":"tone","frequency":1046,"duration":250})",
                            R"({"event":"status","text":"Busy"})", R"({"event":"status","text":null})",
                            R"({"done":"tick"})", R"({"ready":0})"));
    EXPECT_THAT(Words(run.Lines.begin() + 5, run.Lines.begin() + 8),
                ElementsAre(R"({"event":"status","text":"Busy"})", R"({"event":"status","text":null})",
                            R"({"done":"choose"})"));
}

TEST_F(Console, WritesTheEventsThatAreDueAfterACommandBeforeItsEnd) {
    const Outcome run = Tell(Joined({OpenTheDownload, {ReceiveAResult, "jump 1000"}}));
    EXPECT_THAT(Words(run.Lines.end() - 4, run.Lines.end()),
                ElementsAre(R"({"event":"status","text":"Busy"})", R"({"event":"status","text":null})",
                            R"({"done":"jump"})", R"({"ready":0})"));
}

TEST_F(Console, TellsOfKeysThatAreGrabbedGivenBackAndSent) {
    const Outcome start = Tell({}, {"--device", "7"});
    EXPECT_EQ(start.Lines.front(), R"({"event":"grab","key":2})");
    const Outcome run = Tell({"key 276"}, {"--device", "1"});
    EXPECT_THAT(Words(run.Lines.end() - 5, run.Lines.end()),
                ElementsAre(R"({"event":"release","key":276})", R"({"event":"send","character":276})",
                            R"({"event":"grab","key":276})", R"({"done":"key"})", R"({"ready":0})"));
}

TEST_F(Console, SkipsEmptyLinesAndComments) {
    const Outcome run = With({}, "\n   \n\t\n# choose Start...\n#\ntick 1\n\n");
    EXPECT_THAT(run.Lines, ElementsAre(R"({"ready":0})", R"({"done":"tick"})", R"({"ready":0})"));
}

class LinesOfCommands : public Console, public testing::WithParamInterface<const char*> {};

TEST_P(LinesOfCommands, MayEndAndBeginAsTheyLike) {
    const Outcome run = With({}, GetParam());
    EXPECT_THAT(run.Lines, ElementsAre(R"({"ready":0})", R"({"done":"choose"})", R"({"ready":0})",
                                       HasSubstr("ScrDrivers"), R"({"done":"screen"})", R"({"ready":0})"));
}

INSTANTIATE_TEST_SUITE_P(Inputs, LinesOfCommands,
                         testing::Values("choose Start...\nscreen\n", "choose Start...\nscreen",
                                         "choose Start...\r\nscreen\r\n", "  choose \t Start...\n\tscreen\n"));

struct TextRow {
    const char* Written;
    const char* Meant;
};

class TextOfACommand : public Console, public testing::WithParamInterface<TextRow> {};

TEST_P(TextOfACommand, IsTheRestOfTheLineOrAJsonString) {
    const Outcome run =
        Tell(Joined({OpenTheDownload, {"tap 0 1", std::string("set ") + GetParam().Written, "screen"}}));
    EXPECT_EQ(run.Last("screen")["input"]["text"], GetParam().Meant);
}

INSTANTIATE_TEST_SUITE_P(Rows, TextOfACommand,
                         testing::Values(TextRow{"plain", "plain"}, TextRow{"two  words", "two  words"},
                                         TextRow{"trailing ", "trailing "}, TextRow{R"(in "quotes")", R"(in "quotes")"},
                                         TextRow{R"(a\nb)", R"(a\nb)"},
                                         TextRow{R"("a\r\nb")", "a  b"}, // a field of one line

                                         TextRow{R"("say \"so\"")", "say \"so\""}, TextRow{R"("")", ""},
                                         TextRow{"", ""}, TextRow{R"("  blank")", "  blank"},
                                         TextRow{R"("# no comment")", "# no comment"},
                                         TextRow{R"("\u00b0C")", "\xC2\xB0"
                                                                 "C"},
                                         TextRow{"\xC2\xB0"
                                                 "C",
                                                 "\xC2\xB0"
                                                 "C"},
                                         TextRow{R"("\ud83d\ude00")", "\xF0\x9F\x98\x80"}));

// How it ends.

TEST_F(Console, EndsWithNoughtWhenItsInputDoes) {
    EXPECT_EQ(Tell({}).Status, 0);
    EXPECT_EQ(Tell({"nonsense"}).Status, 0) << "a command that fails is no failure of the program";
}

TEST_F(Console, EndsWithZeroWhenTheInputEndsUnderABoxOrPrompt) {
    const Outcome box = Tell(OpenTheQuestion);
    EXPECT_EQ(box.Status, 0);
    EXPECT_EQ(box.Errors, "");
    EXPECT_THAT(box.All("event").size(), 1U) << "it has not ended by itself";
    const Outcome prompt = Tell(OpenThePrompt);
    EXPECT_EQ(prompt.Status, 0);
    EXPECT_EQ(prompt.Errors, "");
    EXPECT_EQ(Root.Bytes("Quorin/drivers.txt"), "NAME|INFFILE\nMeter|meter.txt\n");
}

TEST_F(Console, EndsWithNoughtAndAnEventWhenTheProgramEndsByItself) {
    const Outcome run = Tell({"choose Exit", "tick 1"});
    EXPECT_EQ(run.Status, 0);
    EXPECT_THAT(run.Lines, ElementsAre(R"({"ready":0})", R"({"event":"end"})", R"({"done":"choose"})"));
}

TEST_F(Console, ClosesEachOpenCommandWhenItEndsInsideAPrompt) {
    const Outcome run = Tell(Joined({OpenThePrompt, {"choose Back", "close", "close", "tick 1"}}));
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.All("done").size(), 5U);
    EXPECT_EQ(run.Lines.back(), R"({"done":"close"})");
}

TEST_F(Console, EndsWithOneAndSaysWhyOnARunTimeFailure) {
    Root.Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\na|1|||green|||\n");
    const Outcome run = Tell(Joined({OpenTheDownload, {"screen"}}));
    EXPECT_EQ(run.Status, 1);
    ASSERT_GE(run.Lines.size(), 2U);
    EXPECT_EQ(run.Lines[run.Lines.size() - 2],
              R"x({"event":"failure","text":"DISPLAY \"green\" is not a number (row 1 of meter.txt)"})x");
    EXPECT_EQ(run.Line(run.Lines.size() - 1)["done"], "choose");
    EXPECT_THAT(run.Errors, HasSubstr("DISPLAY \"green\" is not a number"));
}

TEST_F(Console, EndsWithThreeAtTheFirstFailureWhenItIsStrict) {
    const Outcome run = Tell({"tick 1", "nonsense", "tick 2"}, {"--strict"});
    EXPECT_EQ(run.Status, 3);
    EXPECT_EQ(run.All("done").size(), 2U);
    EXPECT_THAT(run.Lines.back(), HasSubstr(R"({"done":"nonsense","error":)"));
    EXPECT_EQ(Tell({"tick 1"}, {"--strict"}).Status, 0);
}

TEST_F(Console, EndsWithThreeInsideABoxToo) {
    EXPECT_EQ(Tell(Joined({OpenTheQuestion, {"tap 0"}}), {"--strict"}).Status, 3);
}

TEST_F(Console, ReadsNothingMoreAfterQuit) {
    const Outcome run = Tell(Joined({OpenTheQuestion, {"quit", "tick 1"}}));
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Lines.back(), R"({"done":"quit"})");
    EXPECT_THAT(run.All("event").size(), 1U);
}

// Options.

class WrongUsage : public Console, public testing::WithParamInterface<Words> {};

TEST_P(WrongUsage, EndsWithTwoAndALineThatSaysWhy) {
    const Outcome run = With(GetParam(), "tick 1\n");
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Lines, IsEmpty());
    EXPECT_THAT(run.Errors, testing::StartsWith("quorin-console: "));
    EXPECT_THAT(run.Errors, HasSubstr("\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Options, WrongUsage,
    testing::Values(Words{"--bogus"}, Words{"--device", "-1"}, Words{"--device", "1.5"}, Words{"--device", "32768"},
                    Words{"--device", "toaster"}, Words{"--device", ""}, Words{"--device"}, Words{"--screen", "640"},
                    Words{"--screen", "640x"}, Words{"--screen", "x480"}, Words{"--screen", "0x480"},
                    Words{"--screen", "640x-1"}, Words{"--screen", "640X480"}, Words{"--screen", "99999x99999"},
                    Words{"--volume", "Card"}, Words{"--volume", "Card:\\=big"}, Words{"--volume", "Card:\\="},
                    Words{"--volume", "Card:\\=1.5"}, Words{"--clock", "slow"}, Words{"--clock", ""},
                    Words{"--now", "yesterday"}, Words{"--now", "2007-03-05"}, Words{"--now", "2007-02-30T00:00:00"},
                    Words{"--port", "1"}, Words{"--port", "x=/dev/null"}, Words{"--port", "1="},
                    Words{"--port", "=/dev/null"}, Words{"--port", "1=tcp:meter"},
                    Words{"--port", "1=bt:00:11:22:33:44:55"}, Words{"--port", "1=meter@/dev/null"},
                    Words{"--strict=maybe"}, Words{"one", "two"}, Words{"--volume", "=5"}, Words{"--volume", "Card=5"},
                    Words{"--volume", "Card:\\=-5"}, Words{"--port", "-1=/dev/null"}, Words{"/nowhere/script"},
                    Words{"/tmp"}, Words{"--root"}));

/// An empty version is valid, too: no device of that kind has soft keys then.
TEST_F(Console, TakesAnEmptyVersionAsItStands) {
    EXPECT_EQ(Tell({"state"}, {"--device", "3"}).Last("SoftKeyMenus")["SoftKeyMenus"], true);
    EXPECT_EQ(Tell({"state"}, {"--device", "3", "--os-version", ""}).Last("SoftKeyMenus")["SoftKeyMenus"], false);
}

TEST_F(Console, SaysWhichFolderIsAFile) {
    Root.Put("file", "");
    EXPECT_THAT(Bare({"--root", (Root.Path() / "file").string()}).Errors, HasSubstr("it is a file, not a folder"));
}

TEST_F(Console, NeedsARootFolderThatCanBeUsed) {
    Root.Put("file", "");
    const Outcome run = Bare({"--root", (Root.Path() / "file").string()});
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Errors, HasSubstr("root folder"));
}

TEST_F(Console, RemovesWhatAKilledProgramLeftHalfWritten) {
    const std::string left = "Quorin/.quorin-" + std::to_string(INT_MAX) + "-0"; // no process has this number
    Root.Put(left, "half");
    const auto path = Root.Path() / left;
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) - std::chrono::hours(25));
    Tell({"tick 1"});
    EXPECT_FALSE(std::filesystem::exists(path));
}

/// The sanitizers must be loaded first, unless their check of that is switched off.
constexpr char WithoutLocks[] = "ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" NO_LOCKS " ";

TEST_F(Console, ReportsAFolderThatCantBeLocked) {
    const Outcome run = Shell(WithoutLocks + Program() + " <input >output 2>errors", "quit\n");
    EXPECT_EQ(run.Status, 0) << run.Errors;
    const auto warning = run.Line(0);
    EXPECT_EQ(warning.value("event", ""), "warning") << run.Output;
    EXPECT_EQ(warning.value("about", ""), "lock");
    EXPECT_THAT(warning.value("text", ""), testing::HasSubstr(Root.Path().string() + " can't be locked"));
}

TEST_F(Console, MakesARootFolderThatIsMissing) {
    EXPECT_EQ(Bare({"--root", (Root.Path() / "new/deep").string()}).Status, 0);
    EXPECT_TRUE(std::filesystem::is_directory(Root.Path() / "new/deep"));
}

/// The first start creates the drivers table on the volume, whatever the name of the volume is.
TEST_F(Console, CreatesNothingOutsideOfTheRootForAnyVolumeName) {
    const auto inner = Root.Path() / "inner";
    std::filesystem::create_directory(Root.Path() / "beside");
    const std::string beside = (Root.Path() / "beside").string();
    for (const std::string& volume : {std::string("..\\"), std::string("..\\beside\\"), beside + "\\", beside + "/\\",
                                      std::string("/\\"), std::string("link\\"), std::string("..:\\")}) {
        std::filesystem::create_directory(inner);
        std::filesystem::create_directory_symlink(beside, inner / "link");
        const std::string words = "'" + volume + "=1000'";
        const auto start = "printf 'choose Start...\nchoose inf editor...\n' | " QUORIN_CONSOLE " --root '" +
                           inner.string() + "' --device 3 --volume " + words + " >/dev/null";
        EXPECT_EQ(std::system(start.c_str()), 0) << volume;
        EXPECT_TRUE(std::filesystem::is_empty(beside)) << volume;
        EXPECT_FALSE(Root.Has("My Documents")) << volume;
        std::filesystem::remove_all(inner);
    }
}

TEST_F(Console, TakesTheFolderOfUserDataWithoutARoot) {
    EXPECT_EQ(Bare({}, "XDG_DATA_HOME='" + (Root.Path() / "data").string() + "'").Status, 0);
    EXPECT_TRUE(std::filesystem::is_directory(Root.Path() / "data/quorin"));
}

TEST_F(Console, ShowsItsHelpAndVersion) {
    const Outcome help = Bare({"--help"});
    EXPECT_EQ(help.Status, 0);
    EXPECT_EQ(help.Errors, "");
    for (const char* word :
         {"--device", "--os-version", "--user",      "--screen", "--root",      "--volume", "--settings", "--clock",
          "--now",    "--port",       "--strict",    "--help",   "--version",   "SCRIPT",   "tap ROW",    "hold ROW",
          "menu M I", "title M",      "choose TEXT", "key CODE", "type TEXT",   "set TEXT", "pick",       "answer",
          "tick MS",  "jump MS",      "receive",     "serial",   "named",       "keyboard", "close",      "background",
          "maximise", "minimise",     "disk",        "screen",   "show",        "state",    "quit",       "collect N",
          "say TEXT", "--text",       "--verdicts",  "again N",  "command TEXT"})
        EXPECT_THAT(help.Output, HasSubstr(word));
    support::ExpectPlainHelp(help.Output);
    const Outcome version = Bare({"--version"});
    EXPECT_EQ(version.Status, 0);
    EXPECT_THAT(version.Lines, ElementsAre(HasSubstr("0.27")));
}

struct ScreenRow {
    Words Options;
    Json Form;
};

class ScreenOfADevice : public Console, public testing::WithParamInterface<ScreenRow> {};

TEST_P(ScreenOfADevice, IsItsOwnUnlessOneIsGiven) {
    EXPECT_EQ(Tell({"screen"}, GetParam().Options).Last("screen")["form"], GetParam().Form);
}

INSTANTIATE_TEST_SUITE_P(
    Options, ScreenOfADevice,
    testing::Values(ScreenRow{{}, {0, 0, 640, 480}}, ScreenRow{{"--device", "1"}, {0, 0, 160, 160}},
                    ScreenRow{{"--device", "3"}, {0, 0, 240, 320}}, ScreenRow{{"--device", "32767"}, {0, 0, 240, 320}},
                    ScreenRow{{"--device", "9", "--screen", "176x208"}, {0, 0, 176, 208}},
                    ScreenRow{{"--screen", "100x100"}, {0, 0, 640, 480}}, // a desktop's form has a size of its own
                    ScreenRow{{"--device", "palm-hires"}, {0, 0, 320, 320}}));

TEST_F(Console, OffersTheVolumesInTheirOrder) {
    const Words volumes = {"--volume", "Card:\\=99999", "--volume", "Gone:\\=fail", "--volume", "A:\\=20"};
    const Outcome run = Tell({"choose Preferences...", "tap 1", "screen"}, Joined({{"--device", "3"}, volumes}));
    EXPECT_EQ(run.Last("screen")["title"]["cells"], Json::parse(R"([["Select Volume"]])"));
    EXPECT_EQ(run.Last("screen")["grid"]["cells"], Json::parse(R"([["Card:\\"],["A:\\"]])"));
}

TEST_F(Console, ReportsItsVersionText) {
    const auto softKeys = [this](const char* version) {
        return Tell({"state"}, {"--device", "3", "--os-version", version}).Last("SelectedDriver")["SoftKeyMenus"];
    };
    EXPECT_EQ(softKeys("5.2"), true);
    EXPECT_EQ(softKeys("4.9"), false);
}

TEST_F(Console, KeepsItsSettingsWhereItIsTold) {
    const std::string file = (Root.Path() / "own.ini").string();
    EXPECT_EQ(Tell({"choose Preferences...", "tap 3"}, {"--settings", file}).Status, 0);
    EXPECT_THAT(Root.Bytes("own.ini"), HasSubstr("COLOUR=0"));
    EXPECT_THAT(Root.Bytes("settings.ini"), Not(HasSubstr("COLOUR")));
}

TEST_F(Console, StandsAtTheMomentThatItIsTold) {
    EXPECT_EQ(Tell({"choose Start...", "choose Ok", "choose New"}, {"--now", "2011-12-31T23:59:59"}).Status, 0);
    EXPECT_THAT(Root.Bytes("Quorin/qrnctrl.txt"), HasSubstr("20111231"));
    EXPECT_EQ(Tell({"choose Start...", "choose Ok", "choose New"}).Status, 0);
    EXPECT_THAT(Root.Bytes("Quorin/qrnctrl.txt"), HasSubstr("20070305"));
}

TEST_F(Console, ReadsAScript) {
    Root.Put("script", "# a script\nchoose Start...\nscreen\n");
    const Outcome run = With({(Root.Path() / "script").string()}, "choose Preferences...\n");
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Last("screen")["screen"], "ScrDrivers");
    EXPECT_EQ(run.All("done").size(), 2U);
}

} // namespace
} // namespace console
