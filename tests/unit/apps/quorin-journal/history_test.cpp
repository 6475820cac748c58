// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

namespace reader {
namespace {

/// A change of a row, at a time of 2026-11-22 or of another day.
std::string Row(const std::string& time, const std::string& what, int row, const std::string& old,
                const std::string& now, const std::string& file = "qrn0001.txt", const std::string& more = "") {
    const std::string day = time.size() > 8 ? "" : "2026-11-22T";
    return R"({"time":")" + day + time + R"(","ms":0,"event":"row","what":")" + what + R"(","file":")" + file +
           R"(","row":)" + std::to_string(row) + R"(,"old":")" + old + R"(","new":")" + now + "\"" + more + "}";
}

std::string Menu(const std::string& about) {
    return R"({"event":"act","act":"menu","args":"1 1","about":")" + about + "\"}";
}

TEST_F(Journal, HistoryFollowsEachRecord) {
    Day("2026-11-22",
        {Start(), Menu("Open"), Row("10:00:00", "added", 1, "", "|"), Reading("2026-11-22T10:00:01", "taken"),
         Menu("New Record"), Row("10:00:02", "saved", 1, "|", "|14.1 %"), Row("10:00:02", "added", 2, "", "|"),
         Menu("Close"), Row("10:00:03", "saved", 2, "|", "b|"), Row("10:00:03", "saved", 1, "x|y", "x|z", "other.txt"),
         Menu("Delete Record"), Row("10:00:04", "deleted", 1, "|14.1 %", ""),
         Row("10:00:05", "saved", 1, "b|", "c|", "qrn0001.txt", R"(,"why":"no space")")});
    Day("2026-11-23", {R"({"ms":9,"event":"day","root":"/data/meter"})", Menu("Close"),
                       Row("2026-11-23T10:00:00", "saved", 1, "b|", "d|")});
    const Outcome history = Run({"history", "qrn0001.txt"});
    EXPECT_EQ(history.Output, "record 1\n"
                              "  2026-11-22 10:00:02  added  |\n"
                              "                         Moisture 14.1 % (taken), menu New Record\n"
                              "  2026-11-22 10:00:03  saved  |  →  b|\n"
                              "                         menu Close\n"
                              "  2026-11-22 10:00:05  not saved: no space  b|  →  c|\n"
                              "                         menu Delete Record\n"
                              "  2026-11-23 10:00:00  saved  b|  →  d|\n"
                              "                         menu Close\n"
                              "a record that was deleted, record 1 then\n"
                              "  2026-11-22 10:00:00  added  |\n"
                              "                         menu Open\n"
                              "  2026-11-22 10:00:02  saved  |  →  |14.1 %\n"
                              "                         Moisture 14.1 % (taken), menu New Record\n"
                              "  2026-11-22 10:00:04  deleted  |14.1 %\n"
                              "                         menu Delete Record\n");
    EXPECT_EQ(history.Status, 0);
}

TEST_F(Journal, HistoryEndsWithTheDownload) {
    Day("2026-11-22", {Row("10:00:00", "added", 1, "", "|"),
                       Row("10:00:01", "deleted", 2, "Meter|qrn0001.txt|20261122|", "", "qrnctrl.txt"),
                       Row("10:00:02", "added", 1, "", "|")});
    EXPECT_EQ(Run({"history", "qrn0001.txt"}).Output,
              "record 1\n"
              "  2026-11-22 10:00:02  added  |\n"
              "a record that was deleted, record 1 then\n"
              "  2026-11-22 10:00:00  added  |\n"
              "  2026-11-22 10:00:01  deleted with the download  Meter|qrn0001.txt|20261122|\n");
}

TEST_F(Journal, HistoryOfTwoRootsIsOfEach) {
    Day("2026-11-22", {Start(), Row("10:00:00", "added", 1, "", "a")});
    Day("2026-11-22", {Start(Other), Row("10:00:01", "added", 1, "", "b")}, Other);
    const std::string both = Run({"history", "qrn0001.txt"}).Output;
    EXPECT_THAT(both, testing::HasSubstr("/data/meter:\nrecord 1\n  2026-11-22 10:00:00  added  a\n"));
    EXPECT_THAT(both, testing::HasSubstr("/data/other:\nrecord 1\n  2026-11-22 10:00:01  added  b\n"));
    EXPECT_EQ(Run({"history", "qrn0001.txt", "--root", Other}).Output, "record 1\n  2026-11-22 10:00:01  added  b\n");
}

TEST_F(Journal, HistoryNeedsATable) {
    EXPECT_EQ(Run({"history"}).Status, 2);
    Day("2026-11-22", {Start(), Row("10:00:00", "added", 1, "", "|")});
    const Outcome wrong = Run({"history", "nope.txt"});
    EXPECT_EQ(wrong.Output, "");
    EXPECT_EQ(wrong.Errors, "quorin-journal: the journal has nothing of nope.txt\n");
    EXPECT_EQ(wrong.Status, 2);
}

TEST_F(Journal, HistoryHasReadingsThatWereNotSaved) {
    Day("2026-11-22", {Start(), Reading("2026-11-22T10:00:01", "taken"),
                       R"({"time":"2026-11-22T10:00:02","ms":1,"event":"end","why":"ended"})", Start(),
                       Reading("2026-11-22T10:00:03", "taken", "15"), Start()});
    EXPECT_EQ(Run({"history", "qrn0001.txt"}).Output,
              "readings that are in no record\n"
              "  2026-11-22 10:00:02  not saved: Moisture 14.1 %, the program ended\n"
              "  2026-11-22 10:00:03  not saved: Moisture 15 %, the journal breaks off\n");
}

} // namespace
} // namespace reader
