// SPDX-License-Identifier: MIT
#include "tests/support/help_text.h"
#include "tests/unit/apps/quorin-driver/driver_run.h"

namespace driver {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* InfHead = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";

std::string Package(const std::string& rows) {
    return std::string("Meter|meter.txt\n") + InfHead + "Site|1||||||\nPerson|1||||||\n" + rows;
}

TEST_F(DriverProgram, FindsNothingInTheSample) {
    const Outcome run = Run("check '" + Samples + "/climate.qvd' --stream '" + Samples + "/climate.stream'");
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Errors, "");
    EXPECT_THAT(run.Output, HasSubstr("\nTemperature, T1: 2 results such as 20.6 °C → Temperature; ORIGIN → Meter; "
                                      "Site → Site; Operator → Operator; Probe → Probe\n"));
    EXPECT_THAT(run.Output, HasSubstr("climate.qvd: nothing is wrong\n"));
}

TEST_F(DriverProgram, SaysWhatIsWrongByLineAndColumn) {
    Folder.Put("a.qvd", Package("Depth|1||Depth|blue|||\n"));
    const Outcome run = Run("check a.qvd");
    EXPECT_EQ(run.Status, 5);
    EXPECT_EQ(run.Output,
              "a.qvd:5:16: error: DISPLAY \"blue\" is no number: the program ends when a download is opened\n");
}

TEST_F(DriverProgram, EndsWellWhereThereAreOnlyNotes) {
    Folder.Put("a.qvd", Package("Depth|1||Depth||||\nMoisture|1||Moisture||||\n"));
    const Outcome run = Run("check a.qvd --stream '" + Samples + "/climate.stream'");
    EXPECT_THAT(run.Output, HasSubstr("a.qvd:5:10: note: nothing in the recording fills this field\n"));
    EXPECT_THAT(run.Output, HasSubstr("a.qvd: warning: 2 results of the recording with \"Humidity, H1\": no row asks"));
    EXPECT_EQ(run.Status, 5);
    Folder.Put("b.stream", "[BLob]\n[RESULT_TYPE \"Moisture\"]\n[RESULT_VALUE \"1\"]\n[RESULT_UNIT \"%\"]\n[/BLob]\n");
    EXPECT_EQ(Run("check a.qvd --stream b.stream").Status, 0);
}

TEST_F(DriverProgram, WritesJsonForPrograms) {
    Folder.Put("a.qvd", Package("Depth|1||Depth|blue|||\n"));
    Folder.Put("b.stream", "[BLob]\n[RESULT_TYPE \"Depth\" \"D1\"]\n[RESULT_VALUE \"1\"]\n[RESULT_UNIT \"m\"]\n"
                           "[RESULT_TYPE \"X\"]\n[RESULT_UNIT \"m\"]\n[/BLob]\n");
    const Outcome run = Run("check a.qvd --stream b.stream --json");
    EXPECT_EQ(
        run.Output,
        R"({"line":5,"column":16,"severity":"error","text":"DISPLAY \"blue\" is no number: the program ends when a download is opened"})"
        "\n"
        R"({"line":null,"column":null,"severity":"warning","text":"1 result of the recording with \"X\": no row asks for it"})"
        "\n"
        R"({"types":["Depth","D1"],"results":1,"example":"1 m","field":"Depth","line":5,"why":null,"variables":{}})"
        "\n"
        R"({"types":["X"],"results":1,"example":"1 m","field":null,"line":null,"why":"no row asks for it","variables":{}})"
        "\n");
}

TEST_F(DriverProgram, ReadsARecordingWithTimes) {
    Folder.Put("a.qvd", Package("Depth|1||Depth||||\n"));
    Folder.Put("b.times", "quorin-times 1\n0 [BLob]%0D%0A[RESULT_TYPE \"Depth\"]%0D%0A[RESULT_VALUE \"1\"]%0D%0A\n"
                          "15 [RESULT_UNIT \"%B0\"]%0D%0A[/BLob]%0D%0A\n");
    EXPECT_THAT(Run("check a.qvd --stream b.times").Output, StartsWith("Depth: 1 result such as 1 ° → Depth\n"));
}

TEST_F(DriverProgram, ComparesNoRecordingWithTooManyRows) {
    std::string rows;
    for (int row = 0; row < 33'000; ++row)
        rows += "Depth|1||Other||||\n";
    Folder.Put("a.qvd", Package(rows + "Depth|1||Moisture||||\n"));
    Folder.Put("b.stream", "[BLob]\n[RESULT_TYPE \"Moisture\"]\n[RESULT_VALUE \"1\"]\n[RESULT_UNIT \"%\"]\n[/BLob]\n");
    const Outcome run = Run("check a.qvd --stream b.stream");
    EXPECT_THAT(run.Output, testing::HasSubstr("more than 1000 are not checked"));
    EXPECT_EQ(run.Status, 5);
}

TEST_F(DriverProgram, ComparesWithTheInstalledDrivers) {
    Folder.Put("a.qvd", Package("Depth|1||Depth||||\n"));
    Folder.Put("drivers.txt", "NAME|INFFILE\nOther|METER.txt\n");
    const Outcome run = Run("check a.qvd --drivers drivers.txt");
    EXPECT_EQ(run.Output, "a.qvd:1:7: error: the inf file would replace that of the installed driver \"Other\"\n");
    EXPECT_EQ(run.Status, 5);
}

TEST_F(DriverProgram, WarnsOfAFileThatIsNotOffered) {
    Folder.Put("a.txt", Package("Depth|1||Depth||||\n"));
    EXPECT_EQ(Run("check a.txt").Output,
              "a.txt: warning: the name of the file does not end in .qvd: it is not offered for installation\n");
    Folder.Put("B.QVD", Package("Depth|1||Depth||||\n"));
    EXPECT_EQ(Run("check B.QVD").Output, "B.QVD: nothing is wrong\n");
}

TEST_F(DriverProgram, SaysWhyAFileCantBeRead) {
    Folder.Put("folder.qvd/inside", "");
    Folder.Put("large.qvd", std::string(1'000'001, 'x'));
    Folder.Put("picture.qvd", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16));
    ASSERT_EQ(std::system(("mkfifo '" + Folder.Path("pipe.qvd") + "'").c_str()), 0);
    const auto refused = [this](const std::string& words, const std::string& why) {
        const Outcome run = Run("check " + words);
        EXPECT_EQ(run.Status, 2) << words;
        EXPECT_EQ(run.Output, "");
        EXPECT_EQ(run.Errors, "quorin-driver: can't read " + why + "\n");
    };
    refused("none.qvd", "none.qvd: No such file or directory");
    refused("folder.qvd", "folder.qvd: it is a folder");
    refused("large.qvd", "large.qvd: it is larger than 1 MB");
    refused("picture.qvd", "picture.qvd: it is no text file");
    refused("pipe.qvd", "pipe.qvd: it is no plain file");
    Folder.Put("a.qvd", Package("Depth|1||Depth||||\n"));
    refused("a.qvd --stream none", "none: No such file or directory");
    refused("a.qvd --drivers folder.qvd", "folder.qvd: it is a folder");
}

TEST_F(DriverProgram, ShowsItsCommandsAndOptions) {
    EXPECT_THAT(Run("--help").Output, HasSubstr("\n  check                     Say what is wrong"));
    support::ExpectPlainHelp(Run("--help").Output);
    EXPECT_THAT(Run("check --help").Output, HasSubstr("\n  --stream FILE             Say where each"));
    EXPECT_EQ(Run("").Status, 2);
    EXPECT_EQ(Run("").Errors, "quorin-driver: A subcommand is required\nRun with --help for more information.\n");
    EXPECT_EQ(Run("check").Status, 2);
    EXPECT_THAT(Run("--version").Output, StartsWith("quorin-driver V "));
}

} // namespace
} // namespace driver
