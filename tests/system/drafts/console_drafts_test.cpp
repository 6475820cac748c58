// SPDX-License-Identifier: MIT
// A program that is killed with an unsaved record on its screen, and what the next one recovers.
#include "tests/support/running_console.h"
#include "tests/unit/apps/quorin-console/console_run.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <unistd.h>

namespace console {
namespace {

namespace fs = std::filesystem;
using live::RunningConsole;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string Header = "Place|Moisture|Remark\n";
const std::string Blob = R"("[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"14.1\"]\r\n)"
                         R"([RESULT_UNIT \"%\"]\r\n[/BLob]\r\n")";

class KilledConsole : public Console {
protected:
    KilledConsole() {
        ::setenv("XDG_STATE_HOME", State.Path().c_str(), 1);
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Put("meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                         "Place|1||||||\nMoisture|1||Moisture||||\nRemark|1||||||\n");
        Put("qrn0001.txt", Header + "a||c\n1|2|3\n");
        Root.Put("settings.ini", "[Settings]\nComPort=Com1\n");
    }
    void Put(const std::string& name, const std::string& bytes) { Root.Put("Quorin/" + name, bytes); }
    std::string Download() { return Root.Bytes("Quorin/qrn0001.txt"); }

    /// Starts a program, opens the first record, runs the commands, and kills it. Returns its output.
    std::string KilledAfter(const Words& commands, const std::string& clock = "real") {
        std::string output;
        RunningConsole program({"--clock", clock, "--root", Root.Path().string()});
        for (const Words& part : {OpenTheDownload, commands})
            for (const std::string& command : part)
                output += program.Tell(command);
        EXPECT_THAT(output, Not(HasSubstr("error")));
        ::kill(program.Id(), SIGKILL);
        EXPECT_EQ(program.End(), -1);
        return output;
    }
    Outcome Recover(const std::string& what) { return Tell({}, {"--recover", what}); }
    std::size_t DraftsKept() {
        const fs::path folder = State.Path() / "quorin/drafts";
        return fs::exists(folder)
                   ? static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()))
                   : 0;
    }

    const Words Typed = {"tap 2 1", "set typed", "tick 2000"};
    support::TemporaryFolder State;
};

TEST_F(KilledConsole, HasItsRecordPutBack) {
    KilledAfter(Typed);
    EXPECT_EQ(Download(), Header + "a||c\n1|2|3\n");

    const Outcome listed = Recover("list");
    EXPECT_EQ(listed.Status, 0) << listed.Errors;
    ASSERT_EQ(listed.Lines.size(), 1U) << listed.Output;
    const Json draft = listed.Line(0).at("draft");
    EXPECT_EQ(draft.at("file"), "qrn0001.txt");
    EXPECT_EQ(draft.at("row"), 1);
    EXPECT_EQ(draft.at("fields")[2], Json::parse(R"({"field":"Remark","text":"typed","saved":"c"})"));
    EXPECT_FALSE(listed.Line(0).contains("error"));

    const Outcome put = Recover("put");
    EXPECT_EQ(put.Status, 0) << put.Errors;
    EXPECT_EQ(put.Line(0).at("put"), true);
    EXPECT_EQ(Download(), Header + "a||typed\n1|2|3\n");
    EXPECT_THAT(Recover("list").Lines, IsEmpty()) << "once";
    EXPECT_EQ(DraftsKept(), 0U);
}

TEST_F(KilledConsole, HasAReadingPutBack) {
    EXPECT_THAT(KilledAfter({"receive " + Blob, "tick 1500"}), HasSubstr(R"("frequency":1046)"));
    EXPECT_EQ(Recover("put").Status, 0);
    EXPECT_EQ(Download(), Header + "a|14.1 %|c\n1|2|3\n");
}

TEST_F(KilledConsole, HasItsRecordForgotten) {
    KilledAfter(Typed);
    const Outcome forgotten = Recover("forget");
    EXPECT_EQ(forgotten.Status, 0);
    EXPECT_EQ(forgotten.Line(0).at("forgotten"), true);
    EXPECT_EQ(DraftsKept(), 0U);
    EXPECT_EQ(Download(), Header + "a||c\n1|2|3\n");
}

TEST_F(KilledConsole, HasNothingPutIntoARecordThatHasChanged) {
    KilledAfter(Typed);
    Put("qrn0001.txt", Header + "other||c\n1|2|3\n");
    const Outcome put = Recover("put");
    EXPECT_EQ(put.Status, 1);
    EXPECT_EQ(put.Line(0).at("error"), "the record has changed");
    EXPECT_EQ(Download(), Header + "other||c\n1|2|3\n");
    EXPECT_EQ(DraftsKept(), 1U) << "it is kept to be looked at";
}

TEST_F(KilledConsole, HasNothingToGiveBackOnceItIsSaved) {
    KilledAfter({"tap 2 1", "set typed", "tick 2000", "choose Close"});
    EXPECT_EQ(Download(), Header + "a||typed\n1|2|3\n");
    EXPECT_EQ(DraftsKept(), 0U);
}

TEST_F(KilledConsole, HasItsRecordShownToAPerson) {
    KilledAfter(Typed);
    const Outcome shown = Tell({}, {"--recover", "list", "--text"});
    EXPECT_THAT(shown.Output, HasSubstr("    not saved: qrn0001.txt, record 1, "));
    EXPECT_THAT(shown.Output, HasSubstr("      Remark: typed (saved before: \"c\")\n"));
    EXPECT_THAT(Tell({}, {"--recover", "put", "--text"}).Output, HasSubstr("    put back\n"));
}

TEST_F(KilledConsole, IsToldByTheNextOne) {
    KilledAfter(Typed);
    RunningConsole next({"--clock", "real", "--root", Root.Path().string()});
    EXPECT_THAT(next.Greeting(), HasSubstr("A record of an earlier run was not saved."));
    EXPECT_EQ(next.End(), 0);
}

TEST_F(KilledConsole, SaysNothingOfTheDraftsOfAnotherRoot) {
    KilledAfter(Typed);
    const support::TemporaryFolder other;
    const Outcome listed = Bare({"--recover", "list", "--root", other.Path().string()});
    EXPECT_EQ(listed.Output, "");
    EXPECT_EQ(DraftsKept(), 1U);
}

TEST_F(KilledConsole, KeepsNoDraftsByAVirtualClock) {
    KilledAfter(Typed, "virtual");
    EXPECT_EQ(DraftsKept(), 0U);
}

TEST_F(KilledConsole, KeepsItsDraftsToItsOwner) {
    KilledAfter(Typed);
    const fs::path folder = State.Path() / "quorin/drafts";
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    for (const auto& entry : fs::directory_iterator(folder))
        EXPECT_EQ(entry.status().permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

// If the drafts can't be stored, only they are lost: the form works as without them, and the failure is reported.

struct PlaceRow {
    const char* Case;
    bool (*Spoil)(const fs::path& state); ///< false if this user can't
    const char* Why;
};

void PrintTo(const PlaceRow& row, std::ostream* out) {
    *out << row.Case;
}

bool PutAFile(const fs::path& state) {
    std::ofstream(state / "quorin") << "x";
    return true;
}

bool PutALink(const fs::path& state) {
    fs::create_directories(state / "quorin");
    fs::create_directories(state / "elsewhere");
    fs::create_symlink(state / "elsewhere", state / "quorin/drafts");
    return true;
}

bool PutAnothersFolder(const fs::path& state) {
    const fs::path folder = state / "quorin/drafts";
    fs::create_directories(folder);
    return ::chown(folder.c_str(), 65534, 65534) == 0;
}

class DraftsInABadPlace : public KilledConsole, public testing::WithParamInterface<PlaceRow> {};

TEST_P(DraftsInABadPlace, AreAWarningAndNothingElse) {
    if (!GetParam().Spoil(State.Path()))
        GTEST_SKIP() << "only root can give a folder away";
    const std::string output = KilledAfter({"tap 2 1", "set typed", "tick 2000", "choose Close"});
    EXPECT_THAT(output, HasSubstr(R"({"event":"warning","about":"draft",)"));
    EXPECT_THAT(output, HasSubstr(GetParam().Why));
    EXPECT_EQ(Download(), Header + "a||typed\n1|2|3\n");
}

INSTANTIATE_TEST_SUITE_P(Places, DraftsInABadPlace,
                         testing::Values(PlaceRow{"a file", PutAFile, "is not kept until it is saved"},
                                         PlaceRow{"a link", PutALink, "it is a link"},
                                         PlaceRow{"another user's", PutAnothersFolder, "belongs to another user"}));

} // namespace
} // namespace console
