// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

#include <cstdlib>

namespace reader {
namespace {

using testing::HasSubstr;

std::string Row(const std::string& what, int row, const std::string& old, const std::string& now,
                const std::string& file = "qrn0001.txt") {
    return R"({"ms":0,"event":"row","what":")" + what + R"(","file":")" + file + R"(","row":)" + std::to_string(row) +
           R"(,"old":")" + old + R"(","new":")" + now + "\"}";
}

class VerifiedJournal : public Journal {
protected:
    /// A session with one download and one reading, which was saved.
    void Session() {
        Day("2026-11-22",
            {Start(Root.Path()), Row("saved", 1, "|||", "Meter|qrn0001.txt|20261122|", "qrnctrl.txt"),
             Row("added", 1, "", "|"), Reading("2026-11-22T10:00:01", "taken"), Row("saved", 1, "|", "a|14.1 %")},
            Root.Path());
    }
    Outcome Verify() { return Run({"verify"}); }

    TemporaryRoot Root{support::PlaceInMemory()};
};

const std::string Explained = ":\n"
                              "  qrn0001.txt: 1 record as saved last, after 1 change\n"
                              "  1 reading was taken\n"
                              "All is explained.\n";

TEST_F(VerifiedJournal, IsExplainedByItsTables) {
    Session();
    for (const char* folder : {"Quorin", "My Documents/Quorin", "Card/PALM/Programs/Quorin"}) {
        Root.Put(std::string(folder) + "/qrn0001.txt", "\xEF\xBB\xBFPlace|Moisture\r\na|14.1 %\r\n");
        const Outcome verified = Verify();
        EXPECT_EQ(verified.Output, Root.Path() + Explained) << folder;
        EXPECT_EQ(verified.Errors, "");
        EXPECT_EQ(verified.Status, 0);
        std::filesystem::remove_all(Root.Path(folder));
    }
}

TEST_F(VerifiedJournal, IsExplainedByItsLineDatabases) {
    Session();
    std::filesystem::create_directory(Root.Path("Databases"));
    const std::string make = "sqlite3 '" + Root.Path("Databases/qrn0001.sqlite") +
                             "' \"CREATE TABLE \\\"DATABASE\\\" (TypeCode, CreatorCode);"
                             "INSERT INTO \\\"DATABASE\\\" VALUES (1413830740, 1);"
                             "CREATE TABLE TEXT (Position INTEGER PRIMARY KEY, LineNumber, LineData);"
                             "INSERT INTO TEXT VALUES (0, 1, 'Place|Moisture'), (1, 2, 'a|14.1 %')\"";
    ASSERT_EQ(std::system(make.c_str()), 0);
    EXPECT_EQ(Verify().Output, Root.Path() + Explained);
}

TEST_F(VerifiedJournal, NamesWhatAnotherToolHasDone) {
    Session();
    Root.Put("Quorin/qrn0001.txt", "Place|Moisture\nb|14.1 %\nc|\n");
    const Outcome verified = Verify();
    EXPECT_EQ(verified.Output,
              Root.Path() +
                  ":\n"
                  "  ! qrn0001.txt, record 1, saved 2026-11-22 10:00:00 as \"a|14.1 %\", is \"b|14.1 %\" now: it was "
                  "changed by another tool, or by a program that kept no journal\n"
                  "  ! qrn0001.txt, record 2, \"c|\", was added by another tool, or by a program that kept no "
                  "journal\n"
                  "  1 reading was taken\n"
                  "Not all is explained.\n");
    EXPECT_EQ(verified.Status, 5);
}

TEST_F(VerifiedJournal, NamesATableThatIsMissing) {
    Session();
    const Outcome verified = Verify();
    EXPECT_THAT(verified.Output, HasSubstr("  ! qrn0001.txt: the file is missing\n"));
    EXPECT_EQ(verified.Status, 5);
}

TEST_F(VerifiedJournal, NamesAReadingThatIsNowhere) {
    Day("2026-11-22", {Start(Root.Path()), Reading("2026-11-22T10:00:01", "taken")}, Root.Path());
    const Outcome verified = Verify();
    EXPECT_THAT(verified.Output, HasSubstr("  ! Moisture 14.1 %, taken 2026-11-22 10:00:01 for qrn0001.txt, is in no "
                                           "record that was saved\n"));
    EXPECT_EQ(verified.Status, 5);
}

TEST_F(VerifiedJournal, SaysWhatBecameOfEachReading) {
    Session();
    Root.Put("Quorin/qrn0001.txt", "Place|Moisture\na|14.1 %\n");
    Day("2026-11-23", {Start(Root.Path()), Reading("2026-11-23T10:00:01", "norow")}, Root.Path());
    EXPECT_THAT(Verify().Output,
                HasSubstr("  1 reading was taken\n  1 reading (norow): refused, no row asked for it\n"));
    EXPECT_EQ(Verify().Status, 0);
    Day("2026-11-24", {Start(Root.Path()), Reading("2026-11-24T10:00:01", "waiting")}, Root.Path());
    const Outcome verified = Verify();
    const std::string waits = "still waits, because another BLob of its burst was refused\n";
    EXPECT_THAT(verified.Output, HasSubstr("  1 reading (waiting): " + waits));
    EXPECT_THAT(verified.Output, HasSubstr("  ! Moisture 14.1 %, 2026-11-24 10:00:01: " + waits));
    EXPECT_EQ(verified.Status, 5);
}

TEST_F(VerifiedJournal, WithoutASessionIsNotVerified) {
    for (const bool isThere : {false, true}) {
        if (isThere)
            Day("2026-11-22", {});
        const Outcome verified = Verify();
        EXPECT_EQ(verified.Output, "");
        EXPECT_EQ(verified.Errors, "quorin-journal: no session in the journal\n");
        EXPECT_EQ(verified.Status, 2);
    }
}

TEST_F(VerifiedJournal, HasNoWordsForNoChanges) {
    Day("2026-11-22", {Start(Root.Path()), Row("added", 1, "", "a")}, Root.Path());
    Root.Put("Quorin/qrn0001.txt", "Place\na\n");
    EXPECT_THAT(Verify().Output, HasSubstr("  qrn0001.txt: 1 record as saved\n"));
}

TEST_F(VerifiedJournal, SaysWhereItBreaksOff) {
    const std::string last = R"({"time":"2026-11-22T18:31:38","ms":9,"event":"link","open":true})";
    const std::string line = "  the journal breaks off at 2026-11-22 18:31:38: a kill, a loss of power, or a journal "
                             "that could not be written\nAll is explained.\n";
    Day("2026-11-22", {Start(Root.Path()), last}, Root.Path());
    EXPECT_THAT(Verify().Output, testing::Not(HasSubstr("breaks off"))); // it may be running
    Bytes("2026-11-22", Start(Root.Path()) + "\n" + last + "\n{\"time\":\"2026", Root.Path());
    EXPECT_THAT(Verify().Output, HasSubstr(line));
    EXPECT_EQ(Verify().Status, 0);
    Day("2026-11-22", {Start(Root.Path()), last, Start(Root.Path())}, Root.Path());
    EXPECT_THAT(Verify().Output, HasSubstr(line));
    Day("2026-11-22", {Start(Root.Path()), R"({"ms":1,"event":"end"})", Start(Root.Path())}, Root.Path());
    EXPECT_THAT(Verify().Output, testing::Not(HasSubstr("breaks off")));
}

TEST_F(VerifiedJournal, NamesTextThatWasNotLookedAt) {
    Day("2026-11-22",
        {Start(Root.Path()), Reading("2026-11-22T10:00:01", "norow"),
         R"({"time":"2026-11-22T18:27:00","ms":1,"event":"received","from":"port","bytes":"[RESULT_UNIT \"%\"]"})",
         R"({"time":"2026-11-22T18:27:16","ms":2,"event":"received","from":"port","bytes":"[RESULT_UNIT \"m\"]"})",
         R"({"ms":3,"event":"end","why":"ended"})"},
        Root.Path());
    const std::string words =
        "text with 2 results arrived 2026-11-22 18:27:00 to 18:27:16 and was not looked at before the program ended\n";
    EXPECT_THAT(Verify().Output, HasSubstr("  ! " + words));
    EXPECT_EQ(Verify().Status, 5);
    EXPECT_THAT(Run({"readings"}).Output, testing::EndsWith("\n" + words));
    EXPECT_THAT(Run({"readings", "--json"}).Output, testing::Not(HasSubstr("text with")));
    EXPECT_EQ(Run({"readings", "--from", "2026-11-23"}).Output, "");
}

TEST_F(VerifiedJournal, DoesNotChooseBetweenTwoTables) {
    Session();
    Root.Put("Quorin/qrn0001.txt", "Place|Moisture\na|14.1 %\n");
    Root.Put("Card/PALM/Programs/Quorin/qrn0001.txt", "Place|Moisture\na|14.1 %\n");
    const Outcome verified = Verify();
    EXPECT_THAT(verified.Output, HasSubstr("  ! qrn0001.txt can't be compared: there are two of that name"));
    EXPECT_EQ(verified.Status, 5);
}

TEST_F(VerifiedJournal, NamesARootThatIsGone) {
    Day("2026-11-22", {Start("/nowhere/root")}, "/nowhere/root");
    EXPECT_EQ(Verify().Output, "/nowhere/root:\n  ! the root folder is not there\nNot all is explained.\n");
    EXPECT_EQ(Verify().Status, 5);
    EXPECT_FALSE(std::filesystem::exists("/nowhere"));
}

TEST_F(VerifiedJournal, IsVerifiedForEachRoot) {
    Session();
    Root.Put("Quorin/qrn0001.txt", "Place|Moisture\na|14.1 %\n");
    Day("2026-11-22", {Start("/nowhere/root")}, "/nowhere/root");
    EXPECT_EQ(Verify().Status, 5);
    EXPECT_EQ(Run({"verify", "--root", Root.Path()}).Output, Root.Path() + Explained);
}

} // namespace
} // namespace reader
