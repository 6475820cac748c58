// SPDX-License-Identifier: MIT
#include "apps/quorin/problem_report.h"

#include "journal/journal_format.h"
#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace quorin {
namespace {

using Step = backends::qt::ReportSource::Step;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ProblemReports : public testing::Test {
protected:
    ProblemReports() {
        Folder.Put("data/x", "");
        Folder.Put("settings.ini", "[Settings]\nComPort=Com1\nRFCOMM_Path=c:\\ada\\\nFONTSIZE=8\n");
        Folder.Put("window.ini", "[Window]\nPlace=10,20\nPin1=/dev/serial/by-id/Ada\n");
        Day("2026-11-22",
            R"({"time":"2026-11-22T10:00:00","ms":0,"event":"start","program":"quorin","version":"V 1","root":")" +
                Root() + R"(","words":["--device","palm","--root=/home/ada"],"clock":"real"}
{"ms":100,"event":"act","act":"menu","args":"1 2"}
{"ms":200,"event":"act","act":"set","text":"Ada Lovelace"}
{"ms":300,"event":"received","from":"port","bytes":"[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"14.1\"]\r\n"}
)");
    }
    std::string Root() { return std::filesystem::canonical(Folder.Path("data")).string(); }
    void Day(const std::string& day, const std::string& lines) {
        Folder.Put("journal/" + journal::TextOf(journal::FileName{day, journal::RootKey(Root())}), lines);
    }
    ReportFacts Facts() {
        return {{.Root = Root(),
                 .Settings = Folder.Path("settings.ini"),
                 .WindowSettings = Folder.Path("window.ini"),
                 .Journal = Folder.Path("journal"),
                 .Drafts = ""},
                {{"program", "quorin V 1"}, {"Qt", "6"}}};
    }
    std::string Masked() { return ProblemReport(Facts(), "2026-11-22", false); }
    std::string Whole() { return ProblemReport(Facts(), "2026-11-22", true); }

    TemporaryRoot Folder;
};

TEST_F(ProblemReports, HaveVersionsSettingsAndTheStoryOfADay) {
    const std::string report = Whole();
    EXPECT_THAT(report, HasSubstr("program: quorin V 1\nQt: 6\n"));
    EXPECT_THAT(report, HasSubstr("== settings.ini ==\n[Settings]\nComPort=Com1\n"));
    EXPECT_THAT(report, HasSubstr("== window.ini ==\n[Window]\nPlace=10,20\nPin1=/dev/serial/by-id/Ada\n"));
    EXPECT_THAT(report, HasSubstr("session 1 of 1, begun 2026-11-22 10:00:00 in " + Root()));
    EXPECT_THAT(report, HasSubstr("menu 1 2\n"));
    EXPECT_THAT(report, HasSubstr("set \"Ada Lovelace\"\n"));
    EXPECT_THAT(report, HasSubstr("14.1"));
}

TEST_F(ProblemReports, MaskTextsValuesNamesAndPaths) {
    const std::string report = Masked();
    for (const char* const secret : {"Ada", "ada", "Lovelace", "14.1", "/dev/serial"})
        EXPECT_THAT(report, Not(HasSubstr(secret)));
    EXPECT_THAT(report, Not(HasSubstr(Root())));
    for (const char* const stays : {"set \"xxx xxxxxxxx\"", "menu 1 2", "Moisture", "00.0", "ComPort=Com1",
                                    "FONTSIZE=8", "Place=10,20", "begun 2026-11-22 10:00:00", "--device", "--root="})
        EXPECT_THAT(report, HasSubstr(stays));
}

TEST_F(ProblemReports, SayWhetherTheyAreMasked) {
    EXPECT_THAT(Masked(), HasSubstr("are masked: x is a letter"));
    EXPECT_THAT(Whole(), HasSubstr("Nothing is masked"));
}

TEST_F(ProblemReports, AreOfTheDaysOfThisRootFolder) {
    Day("2026-11-23", "{\"event\":\"end\"}\n");
    Folder.Put("journal/" + journal::TextOf(journal::FileName{"2026-11-24", journal::RootKey("/other")}), "{}\n");
    EXPECT_THAT(DaysOfReport(Facts().Places), ElementsAre("2026-11-23", "2026-11-22"));
    EXPECT_THAT(ProblemReport(Facts(), "2026-11-23", false), HasSubstr("nothing that the journal can show"));
}

TEST_F(ProblemReports, HaveASessionThatGoesOnFromTheDayBefore) {
    Day("2026-11-23", R"({"time":"2026-11-23T00:00:00","ms":900,"event":"day","program":"quorin","root":")" + Root() +
                          R"(","words":[],"clock":"real"}
{"ms":950,"event":"act","act":"menu","args":"2 3"}
)");
    const std::string later = ProblemReport(Facts(), "2026-11-23", true);
    EXPECT_THAT(later, HasSubstr("begun 2026-11-23 00:00:00"));
    EXPECT_THAT(later, HasSubstr("\ntick 50\nmenu 2 3\n")) << "since midnight";
    EXPECT_THAT(later, Not(HasSubstr("menu 1 2")));
    EXPECT_THAT(Whole(), Not(HasSubstr("menu 2 3"))) << "each day has its own lines";
}

TEST_F(ProblemReports, AreMadeWithoutAJournal) {
    ReportFacts facts = Facts();
    facts.Places.Journal.clear();
    facts.Places.Settings = Folder.Path("nowhere");
    EXPECT_THAT(DaysOfReport(facts.Places), IsEmpty());
    EXPECT_THAT(ProblemReport(facts, "", false), HasSubstr("no journal"));
    EXPECT_THAT(ProblemReport(facts, "", false), HasSubstr("no such file"));
}

TEST_F(ProblemReports, TellLinesThatCantBeRead) {
    Day("2026-11-22", "{\"event\":\"start\",\"ms\":0}\nnonsense Ada\n");
    EXPECT_THAT(Masked(), HasSubstr("line 2 of the journal is left out"));
    EXPECT_THAT(Masked(), Not(HasSubstr("Ada")));
}

TEST_F(ProblemReports, AreNotWrittenOverAFileUnasked) {
    const std::string path = Folder.Path("report.txt");
    EXPECT_EQ(SaveReport(path, "one", false).Result, Step::Done);
    EXPECT_EQ(SaveReport(path, "two", false).Result, Step::Exists);
    EXPECT_EQ(Folder.Bytes("report.txt"), "one");
    EXPECT_EQ(SaveReport(path, "two", true).Result, Step::Done);
    EXPECT_EQ(Folder.Bytes("report.txt"), "two");
}

TEST_F(ProblemReports, BelongToTheirOwnerAlone) {
    ASSERT_EQ(SaveReport(Folder.Path("report.txt"), "one", false).Result, Step::Done);
    constexpr auto Owners = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    EXPECT_EQ(std::filesystem::status(Folder.Path("report.txt")).permissions(), Owners);
    std::filesystem::permissions(Folder.Path("report.txt"), std::filesystem::perms(0644));
    ASSERT_EQ(SaveReport(Folder.Path("report.txt"), "two", true).Result, Step::Done);
    EXPECT_EQ(std::filesystem::status(Folder.Path("report.txt")).permissions(), Owners) << "also over an older file";
}

TEST_F(ProblemReports, SayWhyTheyCantBeWritten) {
    EXPECT_EQ(SaveReport(Folder.Path("nowhere/report.txt"), "one", false).Result, Step::Failed);
    EXPECT_FALSE(SaveReport(Folder.Path("nowhere/report.txt"), "one", false).Why.empty());
    EXPECT_EQ(SaveReport(Folder.Path("data"), "one", true).Result, Step::Failed);
    const auto full = SaveReport("/dev/full", "one", true); // no regular file
    EXPECT_EQ(full.Result, Step::Failed);
}

TEST(MaskedSetting, KeepsNumbersAndNamesOfPorts) {
    EXPECT_EQ(MaskedSetting("FONTSIZE=8"), "FONTSIZE=8");
    EXPECT_EQ(MaskedSetting("COLOUR=-1"), "COLOUR=-1");
    EXPECT_EQ(MaskedSetting("ComPort=Com12"), "ComPort=Com12");
    EXPECT_EQ(MaskedSetting("[Settings]"), "[Settings]");
    EXPECT_EQ(MaskedSetting("ComPort=0815"), "ComPort=0000");
    EXPECT_EQ(MaskedSetting("ComPort=Comrade 1"), "ComPort=xxxxxxx 0");
    EXPECT_EQ(MaskedSetting("; Ada's"), "; xxx'x");
    EXPECT_EQ(MaskedSetting("nonsense"), "xxxxxxxx");
    EXPECT_EQ(MaskedSetting("  # Anna = 5"), "  # xxxx = 0");
    EXPECT_EQ(MaskedSetting("[Anna]"), "[xxxx]");
    EXPECT_EQ(MaskedSetting("Phone=0171 234567"), "xxxxx=0000 000000");
    EXPECT_EQ(MaskedSetting("Pin1=10.0.0.7"), "Pin1=00.0.0.0");
    EXPECT_EQ(MaskedSetting("Place=10 20 640 480 maximized"), "Place=00 00 000 000 xxxxxxxxx");
    EXPECT_EQ(MaskedSetting("Place=10 20 640 480"), "Place=10 20 640 480");
}

TEST(VersionsOfRun, NameProgramLibrarySystemAndDevice) {
    std::string all;
    for (const auto& [what, which] : VersionsOfRun(3))
        all += what + "=" + which + "\n";
    EXPECT_THAT(all, HasSubstr("program=quorin V "));
    EXPECT_THAT(all, HasSubstr(std::string("Qt=") + qVersion()));
    EXPECT_THAT(all, HasSubstr("kernel=Linux "));
    EXPECT_THAT(all, HasSubstr("device type=3\n"));
    EXPECT_THAT(all, HasSubstr("system="));
}

} // namespace
} // namespace quorin
