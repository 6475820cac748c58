// SPDX-License-Identifier: MIT
// The journal of a whole session, through the console.
#include "tests/unit/apps/quorin-console/console_run.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace console {
namespace {

using testing::HasSubstr;

const std::string Reading =
    "receive \"[BLob]\\r\\n[RESULT_TYPE \\\"Moisture\\\"]\\r\\n[RESULT_VALUE \\\"23.4\\\"]\\r\\n[RESULT_UNIT "
    "\\\"%\\\"]\\r\\n[/BLob]\\r\\n\"";

/// A session with a reading, a question, typing, and a save.
const Words Session = {Reading,    "tick 1500", Reading,  "tick 1500",    "answer no", "tap 0 1",
                       "type Tor", "tick 100",  "screen", "choose Close", "tick 100"};

/// Returns the bytes of each file beneath a folder, by its path.
std::map<std::string, std::string> Tree(const std::filesystem::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || entry.path().filename() == ".quorin.lock")
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        files[entry.path().lexically_relative(folder).string()] = std::string(std::istreambuf_iterator<char>(in), {});
    }
    return files;
}

/// Returns the output without the warnings of one name, and how many these were.
std::pair<Words, int> WithoutWarnings(const Words& lines, const std::string& about) {
    std::pair<Words, int> rest;
    for (const std::string& line : lines) {
        if (Json::parse(line).value("about", "") == about)
            ++rest.second;
        else
            rest.first.push_back(line);
    }
    return rest;
}

class JournalOfASession : public Console {
protected:
    JournalOfASession() { Before_ = Tree(Root.Path()); }

    std::string Folder() const { return (Place.Path() / "journal").string(); }
    Outcome Play(const Words& options) { return Tell(Joined({OpenTheDownload, Session}), options); }
    /// Puts the files back that the tests began with.
    void Restore() {
        std::filesystem::remove_all(Root.Path() / "Quorin");
        for (const auto& [name, bytes] : Before_)
            Root.Put(name, bytes);
    }
    /// Returns the events of one name.
    std::vector<Json> Events(const std::string& name) const {
        std::vector<Json> events;
        for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
            std::ifstream in(entry.path());
            for (std::string line; std::getline(in, line);) {
                Json event = Json::parse(line);
                if (event["event"] == name)
                    events.push_back(event);
            }
        }
        return events;
    }

    support::TemporaryFolder Place;

private:
    std::map<std::string, std::string> Before_;
};

/// Returns "menu 1 2 (New)" for an act.
std::string WordsOf(const Json& act) {
    std::string words = act["act"];
    for (const char* name : {"args", "text"}) {
        if (act.contains(name))
            words += " " + act[name].get<std::string>();
    }
    return words;
}

TEST_F(JournalOfASession, HasTheActsOfThePersonInTheirOrder) {
    EXPECT_EQ(Play({"--journal", Folder()}).Status, 0);
    Words acts;
    for (const Json& act : Events("act"))
        acts.push_back(WordsOf(act));
    const Words expected = {"title 1",   "menu 1 1",  "title 1", "menu 1 1",      "title 1", "menu 1 1",
                            "answer no", "press 0 1", "release", "set 23.4 %Tor", "title 1", "menu 1 5"};
    EXPECT_EQ(acts, expected);
}

TEST_F(JournalOfASession, HasEachReadingAndTheRowThatWasSaved) {
    EXPECT_EQ(Play({"--journal", Folder()}).Status, 0);
    ASSERT_EQ(Events("reading").size(), 2U);
    EXPECT_EQ(Events("reading")[0]["verdict"], "taken");
    EXPECT_EQ(Events("reading")[1]["verdict"], "kept");
    EXPECT_EQ(Events("received").size(), 2U);
    EXPECT_EQ(Events("row").back()["what"], "saved");
    EXPECT_THAT(Events("row").back()["new"].get<std::string>(), HasSubstr("23.4 %"));
    EXPECT_EQ(Events("end").size(), 1U);
}

TEST_F(JournalOfASession, HasTheLimitThatAReadingIsOutsideOf) {
    Root.Put("Meter.limits", "COLUMN|WARNLOW|WARNHIGH|FAILLOW|FAILHIGH\nMoisture||20||\n");
    EXPECT_EQ(Play({"--journal", Folder()}).Status, 0);
    EXPECT_EQ(Events("reading").at(0).value("limit", ""), "warnhigh");
}

TEST_F(JournalOfASession, IsKeptOnlyIfItIsAskedFor) {
    EXPECT_EQ(Play({}).Status, 0);
    EXPECT_EQ(Play({"--no-journal"}).Status, 0);
    EXPECT_FALSE(std::filesystem::exists(Folder()));
    const Outcome both = Play({"--no-journal", "--journal", Folder()});
    EXPECT_EQ(both.Status, 2);
    EXPECT_THAT(both.Errors, HasSubstr("--no-journal"));
    EXPECT_EQ(Play({"--journal", ""}).Status, 2);
}

/// What a loose plug sends is no text at all.
TEST_F(JournalOfASession, HasBytesThatAreNoText) {
    const Outcome run =
        Tell(Joined({OpenTheDownload, {"tick 1500"}}),
             {"--journal", Folder(), "--clock", "real", "--port", "1=exec:printf 'a\\377\\000\\260b'; sleep 5"});
    EXPECT_EQ(run.Status, 0) << run.Errors;
    std::string bytes;
    for (const Json& event : Events("received"))
        bytes += event["bytes"].get<std::string>();
    EXPECT_EQ(bytes, std::string("a\xC3\xBF\0\xC2\xB0"
                                 "b",
                                 7)); // a character for each byte
    EXPECT_EQ(Events("port").front()["address"], "exec:printf 'a\\377\\000\\260b'; sleep 5");
}

TEST_F(JournalOfASession, OfTwoRootsIsTwoFiles) {
    EXPECT_EQ(Play({"--journal", Folder()}).Status, 0);
    EXPECT_EQ(Bare({"--journal", Folder(), "--root", (Place.Path() / "other").string()}).Status, 0);
    EXPECT_EQ(Events("start").size(), 2U);
    const auto files = std::filesystem::directory_iterator(Folder());
    EXPECT_EQ(std::distance(begin(files), end(files)), 2);
}

TEST_F(JournalOfASession, OfTwoProgramsAtOnceIsOneEach) {
    std::filesystem::copy(Root.Path(), Place.Path() / "other", std::filesystem::copy_options::recursive);
    std::string input;
    for (const std::string& command : Joined({OpenTheDownload, Session}))
        input += command + "\n";
    const std::string second = std::string(QUORIN_CONSOLE) + " --root " + (Place.Path() / "other").string();
    const std::string journal = " --journal " + Folder();
    const Outcome run = Shell("{ " + Program() + journal + " <input >output 2>errors & " + second + journal +
                                  " <input >more 2>&1; wait; }",
                              input);
    EXPECT_EQ(run.Status, 0);
    std::map<std::string, int> readings; // by the file
    for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
        std::ifstream in(entry.path());
        for (std::string line; std::getline(in, line);)
            readings[entry.path().filename().string()] += Json::parse(line)["event"] == "reading" ? 1 : 0;
    }
    ASSERT_EQ(readings.size(), 2U);
    for (const auto& [file, count] : readings)
        EXPECT_EQ(count, 2) << file;
}

TEST_F(JournalOfASession, OfTwoRunsIsOneFile) {
    Play({"--journal", Folder()});
    Play({"--journal", Folder()});
    EXPECT_EQ(Events("start").size(), 2U);
    const auto files = std::filesystem::directory_iterator(Folder());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

/// A journal that can't be written.
struct Fault {
    const char* Name;
    void (*Prepare)(const std::filesystem::path& journal);
    const char* Why;
    const char* Shell = ""; ///< before the program
};

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.Name;
}

class JournalThatFails : public JournalOfASession, public testing::WithParamInterface<Fault> {};

TEST_P(JournalThatFails, ChangesNothingElseAndIsToldOnce) {
    const Outcome without = Play({"--no-journal"});
    const auto tables = Tree(Root.Path());
    Restore();
    if (::geteuid() != 0 && std::string(GetParam().Name) == "OfAnotherUser")
        GTEST_SKIP() << "only root can give a folder to another user";
    GetParam().Prepare(Folder());
    std::string input;
    for (const std::string& command : Joined({OpenTheDownload, Session}))
        input += command + "\n";
    // The limit of a file's size is not for the output, which is longer than a journal may be.
    const Outcome with = Shell("( (" + std::string(GetParam().Shell) + Program() + " --journal " + Folder() +
                                   ") <input 2>errors; echo $? >status ) | cat >output; exit $(cat status)",
                               input);
    EXPECT_EQ(with.Status, without.Status) << with.Errors;
    const auto [rest, told] = WithoutWarnings(with.Lines, "journal");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(rest, without.Lines);
    EXPECT_EQ(Tree(Root.Path()), tables);
    const auto warnings = with.All("about");
    ASSERT_FALSE(warnings.empty());
    EXPECT_THAT(warnings.front()["text"].get<std::string>(), HasSubstr(GetParam().Why));
}

const Fault Faults[] = {
    {"AFile", [](const std::filesystem::path& journal) { std::ofstream(journal) << "x"; }, "it is a file"},
    {"ALink",
     [](const std::filesystem::path& journal) {
         std::filesystem::create_directory(journal.string() + ".elsewhere");
         std::filesystem::create_directory_symlink(journal.string() + ".elsewhere", journal);
     },
     "it is a link"},
    {"WritableByOthers",
     [](const std::filesystem::path& journal) {
         std::filesystem::create_directory(journal);
         std::filesystem::permissions(journal, std::filesystem::perms::all);
     },
     "others may write to it"},
    {"OfAnotherUser",
     [](const std::filesystem::path& journal) {
         std::filesystem::create_directory(journal);
         EXPECT_EQ(::chown(journal.c_str(), 65534, 65534), 0);
     },
     "it belongs to another user"},
    {"Full", [](const std::filesystem::path&) {}, "full", "trap '' 25; ulimit -f 2; "},
};

INSTANTIATE_TEST_SUITE_P(Faults, JournalThatFails, testing::ValuesIn(Faults),
                         [](const auto& row) { return std::string(row.param.Name); });

} // namespace
} // namespace console
