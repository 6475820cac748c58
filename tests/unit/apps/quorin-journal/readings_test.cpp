// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

#include <algorithm>

namespace reader {
namespace {

using testing::HasSubstr;

const std::string Origin =
    R"({"time":"2026-11-22T20:31:00","ms":9000,"event":"reading","verdict":"origin","types":["Temperature"],)"
    R"("value":"21.5","unit":"°C","variables":[],"origin":"QI-0002","row":null,"field":null,"file":"qrn0001.txt",)"
    R"("old":"","expected":"QI-0001","blob":"[BLob]\r"})";
const std::string OffScreen =
    R"({"time":"2026-11-22T20:32:00","ms":9500,"event":"reading","verdict":"offscreen","types":["Moisture"],)"
    R"("value":"14.2","unit":"%","variables":[],"origin":"","row":null,"field":null,"file":null,"old":""})";

TEST_F(Journal, ReadingsAreALineEachForPeople) {
    Day("2026-11-22", {Start(), Reading("2026-11-22T20:30:05", "taken"), Origin, OffScreen, R"({"event":"end"})"});
    const Outcome readings = Run({"readings"});
    EXPECT_EQ(readings.Output,
              "2026-11-22 20:30:05  qrn0001.txt  Moisture 14.1 %       ● Moisture 14.1 % → Moisture\n"
              "2026-11-22 20:31:00  qrn0001.txt  Temperature 21.5 °C   ○ refused: from QI-0002, connected is QI-0001\n"
              "2026-11-22 20:32:00  -            Moisture 14.2 %       ○ refused: no record is on the screen\n");
    EXPECT_EQ(readings.Errors, "");
    EXPECT_EQ(readings.Status, 0);
}

TEST_F(Journal, ReadingsForProgramsAreItsOwnLines) {
    const std::string odd =
        R"({ "verdict" : "taken", "event" : "reading", "time":"2026-11-22T20:30:00", "\u0041":1e0 })";
    Bytes("2026-11-22", Start() + "\n" + odd + "\n" + Origin + "\n");
    EXPECT_EQ(Run({"readings", "--json"}).Output, odd + "\n" + Origin + "\n");
    EXPECT_EQ(Run({"readings", "--json", "--refused"}).Output, Origin + "\n");
}

TEST_F(Journal, ReadingsThatAreRefusedAreAllNotInTheirField) {
    Words lines;
    for (const char* verdict : {"taken", "replaced", "kept", "openfield", "norow", "nocolumn", "norecord", "notype",
                                "offscreen", "trace", "origin", "connect", "shape", "waiting", "emptied", "newer"})
        lines.push_back(Reading("2026-11-22T20:30:05", verdict, verdict));
    Day("2026-11-22", lines);
    const std::string refused = Run({"readings", "--refused", "--json"}).Output;
    EXPECT_EQ(std::count(refused.begin(), refused.end(), '\n'), 13);
    for (const char* stored : {"taken", "replaced", "notype"})
        EXPECT_THAT(refused, testing::Not(HasSubstr(stored)));
}

TEST_F(Journal, ReadingsHaveTheirPeriod) {
    Day("2026-11-21", {Reading("2026-11-21T23:59:59", "taken", "1")});
    Day("2026-11-22", {Reading("2026-11-22T00:00:00", "taken", "2"), Reading("2026-11-22T20:30:59", "taken", "3"),
                       Reading("2026-11-22T20:31:00", "taken", "4")});
    const auto count = [this](const Words& words) {
        const std::string output = Run(words).Output;
        return std::count(output.begin(), output.end(), '\n');
    };
    EXPECT_EQ(count({"readings"}), 4);
    EXPECT_EQ(count({"readings", "--from", "2026-11-22"}), 3);
    EXPECT_EQ(count({"readings", "--to", "2026-11-21"}), 1);
    EXPECT_EQ(count({"readings", "--to", "2026-11-22T20:30"}), 3);
    EXPECT_EQ(count({"readings", "--from", "2026-11-22T20:30:59", "--to", "2026-11-22T20:30:59"}), 1);
}

/// A clock that was set back changes no order: the file has it as it happened.
TEST_F(Journal, ReadingsAreInTheOrderOfTheFile) {
    Day("2026-11-22", {Reading("2026-11-22T20:30:00", "taken", "1"), R"({"event":"clock","seconds":-3600})",
                       Reading("2026-11-22T19:30:01", "taken", "2")});
    EXPECT_EQ(Run({"readings"}).Output,
              "2026-11-22 20:30:00  qrn0001.txt  Moisture 1 %          ● Moisture 1 % → Moisture\n"
              "2026-11-22 19:30:01  qrn0001.txt  Moisture 2 %          ● Moisture 2 % → Moisture\n");
}

TEST_F(Journal, ReadingsOfSeveralRootsNameThem) {
    Day("2026-11-22", {Start(), Reading("2026-11-22T20:30:00", "taken", "1")});
    Day("2026-11-22", {Start(Other), Reading("2026-11-22T20:30:00", "taken", "2")}, Other);
    Day("2026-11-23", {Reading("2026-11-23T20:30:00", "taken", "3")}, Other);
    EXPECT_EQ(Run({"readings"}).Output,
              "/data/meter:\n"
              "2026-11-22 20:30:00  qrn0001.txt  Moisture 1 %          ● Moisture 1 % → Moisture\n"
              "/data/other:\n"
              "2026-11-22 20:30:00  qrn0001.txt  Moisture 2 %          ● Moisture 2 % → Moisture\n"
              "2026-11-23 20:30:00  qrn0001.txt  Moisture 3 %          ● Moisture 3 % → Moisture\n");
    EXPECT_THAT(Run({"readings", "--root", Other}).Output, testing::StartsWith("2026"));
}

TEST_F(Journal, ATornLastLineIsLeftOut) {
    Bytes("2026-11-22", Origin + "\n" + OffScreen); // whole, but its end is missing
    const Outcome readings = Run({"readings", "--json"});
    EXPECT_EQ(readings.Output, Origin + "\n");
    EXPECT_EQ(readings.Errors, "");
    EXPECT_EQ(readings.Status, 0);
}

TEST_F(Journal, ALineThatIsNoObjectIsToldAndLeftOut) {
    Bytes("2026-11-22", Origin + "\n{\"event\":\"read" + Origin + "\nx\n" + OffScreen + "\n");
    const Outcome readings = Run({"readings", "--json"});
    EXPECT_EQ(readings.Output, Origin + "\n" + OffScreen + "\n");
    EXPECT_EQ(readings.Errors, "quorin-journal: " + FileOf("2026-11-22") + ", line 2: no JSON object, left out\n" +
                                   "quorin-journal: " + FileOf("2026-11-22") + ", line 3: no JSON object, left out\n");
    EXPECT_EQ(readings.Status, 5);
}

TEST_F(Journal, EventsThatAreNotKnownArePassedOver) {
    Day("2026-11-22", {R"({"event":"reading2","verdict":"x"})", R"({"event":7})", Origin});
    const Outcome readings = Run({"readings", "--json"});
    EXPECT_EQ(readings.Output, Origin + "\n");
    EXPECT_EQ(readings.Status, 0);
}

TEST_F(Journal, AFileThatIsAFolderIsToldAndTheRestIsRead) {
    std::filesystem::create_directory(FileOf("2026-11-21"));
    Day("2026-11-22", {Origin});
    const Outcome readings = Run({"readings", "--json"});
    EXPECT_EQ(readings.Output, Origin + "\n");
    EXPECT_THAT(readings.Errors, HasSubstr("can't read " + FileOf("2026-11-21")));
    EXPECT_EQ(readings.Status, 1);
}

} // namespace
} // namespace reader
