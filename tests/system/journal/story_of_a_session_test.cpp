// SPDX-License-Identifier: MIT
// Sessions of the console by the virtual clock: what quorin-journal says of them, and their stories played again.
#include "tests/unit/apps/quorin-console/console_run.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <unistd.h>

namespace console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string Received(const std::string& type, const std::string& value) {
    return R"("[BLob]\r\n[RESULT_TYPE \")" + type + R"(\"]\r\n[RESULT_VALUE \")" + value +
           R"(\"]\r\n[RESULT_UNIT \"°C\"]\r\n[/BLob]\r\n")";
}

/// Returns the bytes of each file beneath a folder, by its path.
std::map<std::string, std::string> Tree(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || entry.path().filename() == ".quorin.lock")
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        files[entry.path().lexically_relative(folder).string()] = std::string(std::istreambuf_iterator<char>(in), {});
    }
    return files;
}

class StoryOfASession : public Console {
protected:
    StoryOfASession() {
        Root.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\n");
        Root.Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                     "Place|1||||||\nMoisture|1||Moisture||||\nEnd|1||||||endtime\nDay|1|||||DATE|\n");
        Copy_ = Place.Path() / "copy";
        fs::copy(Root.Path(), Copy_, fs::copy_options::recursive);
    }

    /// Plays the commands on the root folder, with a journal.
    Outcome Play(const Words& commands, const Words& options = {}) {
        return Tell(commands, Joined({options, {"--journal", JournalFolder()}}));
    }
    Outcome Read(const std::string& words) {
        return Shell("'" QUORIN_JOURNAL "' --journal '" + JournalFolder() + "' " + words + " >output 2>errors", "");
    }
    /// Plays the last story of that day on a copy of the files as they were before.
    void ExpectTheSameFiles(const Words& options = {}, const std::string& day = "2007-03-05") {
        const Outcome story = Read("story " + day);
        ASSERT_EQ(story.Status, 0) << story.Errors;
        EXPECT_THAT(story.Output, StartsWith("# A session by the virtual clock"));
        Place.Put("story", story.Output);
        const Words words =
            Joined({{"--strict", "--root", Copy_.string()}, options, {(Place.Path() / "story").string()}});
        const Outcome played = Bare(words);
        EXPECT_EQ(played.Status, 0) << played.Output << played.Errors << story.Output;
        EXPECT_EQ(Tree(Copy_), Tree(Root.Path())) << story.Output;
    }
    std::string JournalFolder() { return (Place.Path() / "journal").string(); }
    std::string Download() { return Root.Bytes("Quorin/qrn0001.txt"); }

    const Words Begin = {"choose Start...", "choose Ok", "choose New", "tick 100", "choose Open", "tick 500"};
    support::TemporaryFolder Place;

private:
    fs::path Copy_;
};

TEST_F(StoryOfASession, GivesTheSameFiles) {
    const Outcome played = Play(Joined({Begin,
                                        {"receive " + Received("Moisture", "14.1"),
                                         "tick 1000",
                                         "tap 0 1",
                                         "type Nor",
                                         "tick 300",
                                         "set North \"wall\"",
                                         "choose New Record",
                                         "tick 100",
                                         "hold 0 1",
                                         "tick 100",
                                         "tap 0 1",
                                         "set South",
                                         "tick 250",
                                         "tap 3 1",
                                         "pick 2007-03-09",
                                         "jump 7200000",
                                         "tick 5000",
                                         "tick 1000",
                                         "receive " + Received("Moisture", "15"),
                                         "tick 1000",
                                         "choose First Record",
                                         "tick 100",
                                         "choose Close",
                                         "tick 100"}}));
    ASSERT_THAT(played.Output, Not(HasSubstr("error")));
    EXPECT_THAT(Download(), HasSubstr("North \"wall\"|14.1 °C|"));
    ExpectTheSameFiles();
}

/// The question opens in the middle of a tick, and time goes on while it is open: the end time of the record depends on
/// when it is answered.
TEST_F(StoryOfASession, WithAQuestionGivesTheSameFiles) {
    Play(Joined({Begin,
                 {"receive " + Received("Moisture", "14.1"), "tick 1000", "receive " + Received("Moisture", "15"),
                  "tick 3000", "tick 58100", "answer yes", "choose Close", "tick 100"}}));
    EXPECT_THAT(Download(), HasSubstr("|15 °C|09:31|"));
    ExpectTheSameFiles();
}

TEST_F(StoryOfASession, OverMidnightGivesTheSameFiles) {
    const Words late = {"--now", "2007-03-05T23:59:58"};
    Play(Joined({Begin,
                 {"receive " + Received("Moisture", "14.1"), "tick 3000", "receive " + Received("Moisture", "15"),
                  "tick 1000", "answer yes", "choose Close", "tick 100"}}),
         late);
    EXPECT_EQ(std::distance(fs::directory_iterator(JournalFolder()), fs::directory_iterator()), 2);
    EXPECT_THAT(Download(), HasSubstr("|15 °C|00:00|"));
    ExpectTheSameFiles(late);
}

TEST_F(StoryOfASession, OnAPalmGivesTheSameFiles) {
    const Words palm = {"--device", "palm"};
    Play({"choose Preferences...", "tick 100", "tap 2", "tap 1", "choose Back", "tick 100", "choose inf editor...",
          "choose New", "tap 0 1", "set Meter", "tap 1 1", "set meter", "tick 100", "choose Save", "tick 100"},
         palm);
    EXPECT_TRUE(Root.Has("Databases/meter.sqlite"));
    ExpectTheSameFiles(palm);
}

TEST_F(StoryOfASession, IsReadBackWhole) {
    Play(Joined({Begin,
                 {"receive " + Received("Moisture", "14.1"), "receive " + Received("Bogus", "7"), "tick 1000",
                  "choose Close", "tick 100"}}));
    const Outcome raw = Read("raw");
    EXPECT_EQ(raw.Output, Json::parse(Received("Moisture", "14.1")).get<std::string>() +
                              Json::parse(Received("Bogus", "7")).get<std::string>());
    EXPECT_EQ(Read("readings").Output,
              "2007-03-05 09:30:01  qrn0001.txt  Moisture 14.1 °C      ● Moisture 14.1 °C → Moisture\n"
              "2007-03-05 09:30:01  qrn0001.txt  Bogus 7 °C            ○ refused: no row of qrn0001.txt asks for "
              "\"Bogus\"\n");
    const Outcome verified = Read("verify");
    EXPECT_THAT(verified.Output, HasSubstr("  qrn0001.txt: 1 record as saved last, after 1 change\n"
                                           "  1 reading was taken\n"
                                           "  1 reading (norow): refused, no row asked for it\nAll is explained.\n"));
    EXPECT_EQ(verified.Status, 0);
    EXPECT_THAT(Read("history qrn0001.txt").Output, HasSubstr("Moisture 14.1 °C (taken)"));
    EXPECT_THAT(Read("list").Output, HasSubstr("      1         0          1  2007-03-05-"));
    for (const char* words : {"raw", "readings", "verify", "list", "export", "story 2007-03-05"})
        EXPECT_EQ(Read(words).Errors, "") << words;
}

TEST_F(StoryOfASession, ThatWasCutOffIsVerified) {
    Play(Joined({Begin, {"receive " + Received("Moisture", "14.1"), "tick 1000", "quit"}}));
    const Outcome verified = Read("verify");
    EXPECT_THAT(verified.Output, HasSubstr("  ! Moisture 14.1 °C, taken 2007-03-05 09:30:01 for qrn0001.txt, is in no "
                                           "record that was saved\n"));
    EXPECT_EQ(verified.Status, 5);
    Root.Put("Quorin/qrn0001.txt", Download() + "another|tool||\n");
    EXPECT_THAT(Read("verify").Output, HasSubstr("record 2, \"another|tool||\", was added by another tool"));
}

TEST_F(StoryOfASession, WithAReadingThatWaitsIsNotExplained) {
    const std::string refused = R"("[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_UNIT \"m\"]\r\n[/BLob 2]\r\n")";
    const Words waits = {"receive " + refused, "receive " + Received("Moisture", "14.1"), "tick 1000"};
    Play(Joined({Begin, waits, {"receive " + Received("Bogus", "7"), "tick 1000", "choose Close", "tick 100"}}));
    EXPECT_THAT(Read("verify").Output, HasSubstr("  1 reading was taken\n"
                                                 "  1 reading (norow): refused, no row asked for it\n"
                                                 "  1 reading (shape): refused, the end tag of its BLob was not exact\n"
                                                 "All is explained.\n"))
        << "it came with the next burst";
    Play(Joined({{"choose Start...", "choose Ok", "tap 0", "choose Open", "tick 500"}, waits, {"choose Close"}}));
    const Outcome verified = Read("verify");
    EXPECT_THAT(verified.Output,
                HasSubstr("  1 reading (waiting): still waits, because another BLob of its burst was refused\n"));
    EXPECT_THAT(verified.Output, HasSubstr("of its burst was refused, and its program was over before it had another "
                                           "verdict\nNot all is explained.\n"));
    EXPECT_EQ(verified.Status, 5);
}

} // namespace
} // namespace console
