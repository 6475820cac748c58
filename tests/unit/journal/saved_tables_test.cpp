// SPDX-License-Identifier: MIT
#include "journal/saved_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace journal {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string Another = " by another tool, or by a program that kept no journal";

class KeptTables : public testing::Test {
protected:
    void Row(const char* time, const char* what, int row, const char* old, const char* now,
             const char* file = "qrn0001.txt", const char* why = "") {
        Line line = {{"time", time}, {"event", "row"}, {"what", what}, {"file", file},
                     {"row", row},   {"old", old},     {"new", now}};
        if (*why != '\0')
            line["why"] = why;
        Tables_.Take(line);
    }
    /// The download is registered: the journal has it from its first row on.
    void Register(const char* file = "qrn0001.txt") {
        Row("t0", "saved", 1, "|||", ("Meter|" + std::string(file) + "|20261122|").c_str(), "qrnctrl.txt");
    }
    const SavedTable& Table() {
        const auto downloads = Tables_.Downloads();
        EXPECT_THAT(downloads, SizeIs(1));
        return *downloads.at(0);
    }
    std::vector<std::string> ComparedWith(const std::vector<std::string>& rows) {
        std::vector<std::string> lines = {"A|B"};
        lines.insert(lines.end(), rows.begin(), rows.end());
        return Compare(Table(), lines);
    }

    SavedTables Tables_;
};

TEST_F(KeptTables, AsTheyWereSavedAreExplained) {
    Register();
    Row("t1", "added", 1, "", "|");
    Row("t2", "saved", 1, "|", "a|");
    Row("t3", "added", 2, "", "z|");
    Row("t4", "added", 2, "", "|");
    Row("t5", "saved", 2, "|", "b|");
    Row("t6", "deleted", 1, "a|", "");
    EXPECT_THAT(ComparedWith({"b|", "z|"}), IsEmpty());
    EXPECT_THAT(Tables_.Findings(), IsEmpty());
    EXPECT_EQ(Table().Changes, 3U);
}

TEST_F(KeptTables, ThatAnotherToolHasChangedAreFindings) {
    Register();
    Row("t1", "added", 1, "", "a|");
    Row("t2", "added", 2, "", "b|");
    EXPECT_THAT(ComparedWith({"a|", "c|"}),
                ElementsAre("qrn0001.txt, record 2, saved t2 as \"b|\", is \"c|\" now: it was changed" + Another));
    EXPECT_THAT(ComparedWith({"a|"}),
                ElementsAre("qrn0001.txt, record 2, saved t2 as \"b|\", is missing: it was removed" + Another));
    EXPECT_THAT(ComparedWith({"a|", "b|", "c|"}), ElementsAre("qrn0001.txt, record 3, \"c|\", was added" + Another));
    EXPECT_THAT(Compare(Table(), std::nullopt), ElementsAre("qrn0001.txt: the file is missing"));
}

/// One change by a person is one finding.
TEST_F(KeptTables, AreComparedAsSequences) {
    Register();
    Row("t1", "added", 1, "", "a|");
    Row("t2", "added", 2, "", "b|");
    Row("t3", "added", 3, "", "c|");
    EXPECT_THAT(ComparedWith({"b|", "c|"}),
                ElementsAre("qrn0001.txt, record 1, saved t1 as \"a|\", is missing: it was removed" + Another +
                            "; the following moved up"));
    EXPECT_THAT(ComparedWith({"a|", "x|", "b|", "c|"}),
                ElementsAre("qrn0001.txt, record 2, \"x|\", was added" + Another + "; the following moved down"));
    EXPECT_THAT(ComparedWith({"a|", "c|", "b|"}), ElementsAre("qrn0001.txt, records 2 and 3 were exchanged" + Another));
    EXPECT_THAT(ComparedWith({"c|", "b|", "a|"}), ElementsAre("qrn0001.txt, records 1 and 3 were exchanged" + Another));
    EXPECT_THAT(ComparedWith({"x|", "b|"}), SizeIs(2));
    EXPECT_THAT(ComparedWith({"x|", "y|", "z|"}), SizeIs(3));
    EXPECT_THAT(ComparedWith({}), SizeIs(3));
}

TEST_F(KeptTables, ThatAreOtherOnesAreOneFinding) {
    Register();
    for (int row = 1; row <= 4100; ++row)
        Row("t1", "added", row, "", "a|");
    EXPECT_THAT(ComparedWith(std::vector<std::string>(4100, "b|")), SizeIs(1));
}

TEST_F(KeptTables, WithRowsBeforeTheJournalAreComparedWhereItHasThem) {
    Row("t1", "saved", 2, "x|", "b|");
    EXPECT_THAT(ComparedWith({"anything", "b|", "anything"}), IsEmpty());
    EXPECT_THAT(ComparedWith({"anything", "x|"}), SizeIs(1));
    EXPECT_THAT(ComparedWith({"b|", "anything"}), ElementsAre("qrn0001.txt, record 1, is missing: it was removed" +
                                                              Another + "; the following moved up"));
    EXPECT_THAT(ComparedWith({"anything", "inserted", "b|"}), SizeIs(1));
    EXPECT_THAT(ComparedWith({"anything"}), SizeIs(1));
}

TEST_F(KeptTables, ThatWereFoundChangedAreFindings) {
    Register();
    Row("t1", "added", 1, "", "a|");
    Row("t2", "saved", 1, "x|", "b|");
    EXPECT_THAT(Tables_.Findings(), ElementsAre("qrn0001.txt, record 1 was changed" + Another +
                                                ", between t1 and t2: it was saved as \"a|\" and found as \"x|\""));
    Row("t3", "saved", 3, "y|", "c|");
    EXPECT_EQ(Tables_.Findings().back(), "qrn0001.txt, record 2 was added" + Another + ", before t3");
}

TEST_F(KeptTables, ChangesThatFailedAreNone) {
    Register();
    Row("t1", "added", 1, "", "a|");
    Row("t2", "saved", 1, "a|", "b|", "qrn0001.txt", "no space");
    Row("t2", "deleted", 1, "a|", "", "qrn0001.txt", "no space");
    EXPECT_THAT(ComparedWith({"a|"}), IsEmpty());
}

TEST_F(KeptTables, ThatWereDeletedAreExplained) {
    Register();
    Row("t1", "added", 1, "", "a|");
    Row("t2", "deleted", 1, "Meter|qrn0001.txt|20261122|", "", "qrnctrl.txt");
    EXPECT_EQ(Table().DeletedAt, "t2");
    EXPECT_THAT(Compare(Table(), std::nullopt), IsEmpty());
    Register(); // the number is used again
    Row("t3", "added", 1, "", "b|");
    EXPECT_THAT(ComparedWith({"b|"}), IsEmpty());
    EXPECT_THAT(ComparedWith({"a|"}), SizeIs(1));
}

TEST_F(KeptTables, ThatAreRenamedStay) {
    Register();
    Row("t1", "added", 1, "", "a|");
    Row("t2", "saved", 1, "Meter|qrn0001.txt|20261122|", "Meter|qrn0001.txt|20261122|alias", "qrnctrl.txt");
    EXPECT_THAT(ComparedWith({}), SizeIs(1));
}

TEST_F(KeptTables, OfALineDatabaseAreTheirRegisteredOnes) {
    Register("qrn0001.txt");
    Row("t1", "added", 1, "", "a|", "qrn0001");
    EXPECT_THAT(ComparedWith({"a|"}), IsEmpty());
    EXPECT_THAT(ComparedWith({"b|"}), SizeIs(1));
}

TEST_F(KeptTables, HaveTextsAsTheJournalHasThem) {
    Register();
    Row("t1", "added", 1, "", "a\nb|\xEF\xBF\xBD");
    EXPECT_THAT(ComparedWith({"a b|\xFF"}), IsEmpty());
}

TEST_F(KeptTables, ThatAreNoDownloadsAreLeftOut) {
    Row("t1", "saved", 1, "a|", "b|", "meter.txt");
    Row("t1", "saved", 1, "a|", "b|", "drivers.txt");
    EXPECT_THAT(Tables_.Downloads(), IsEmpty());
}

} // namespace
} // namespace journal
