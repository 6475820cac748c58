// SPDX-License-Identifier: MIT
#include "backends/files/root_lock.h"
#include "tests/unit/apps/quorin-console/climate_root.h"

#include <random>

namespace console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class Imports : public ClimateRoot {
protected:
    Outcome Import(const std::string& csv, const std::string& words = "") {
        Place.Put("in.csv", csv);
        return Run(QUORIN_IMPORT, "'" + Out("in.csv") + "' --driver 'Climate Meter' " + words);
    }
    Outcome Run(const std::string& program, const std::string& words) {
        return Shell(program + " --root '" + Root.Path().string() + "' " + words + " > output 2> errors", "");
    }
    /// Returns the rows of the register without their dates.
    std::string Register() {
        return Shell("cut -d'|' -f1,2,4 '" + (Root.Path() / "Quorin/qrnctrl.txt").string() + "' > output 2> errors", "")
            .Output;
    }
    bool HasTable(const std::string& name) { return fs::exists(Root.Path() / "Quorin" / name); }

    const std::string RegisterBefore = Table("qrnctrl.txt");
};

TEST_F(Imports, OfAWorkListAreANewDownloadWithItsRow) {
    const Outcome done = Import("Site,Remark\nCellar,\"damp, cold\"\nLoft,\n", "--alias 'Monday'");
    EXPECT_EQ(done.Status, 0) << done.Errors;
    EXPECT_EQ(done.Output, "qrn0003.txt: 2 records of the driver Climate Meter\n");
    EXPECT_THAT(done.Errors, HasSubstr("quorin-import: nothing fills the field \"Operator\"\n"));
    EXPECT_EQ(Table("qrn0003.txt"), "Site|Operator|Moisture|Temperature|Humidity|Probe|Wall Probe|Remark|Start "
                                    "Date|Start Time|End Date|End Time|Meter\n"
                                    "Cellar|||||||damp, cold|||||\nLoft||||||||||||\n");
    EXPECT_EQ(Register(), "DRIVER|FILE|ALIAS\nClimate Meter|qrn0001.txt|North wall\nGone|qrn0002.txt|\n"
                          "Climate Meter|qrn0003.txt|Monday\n");
}

TEST_F(Imports, OpenInTheForm) {
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nGone|qrn0002.txt|20070305|\n");
    EXPECT_EQ(Import("Site\nCellar\nLoft\n").Status, 0);
    const Outcome form = Tell({"choose Start...", "choose Ok", "choose Open", "tick 500", "show", "choose Close",
                               "choose New", "choose Back"});
    EXPECT_THAT(form.Output, HasSubstr("Cellar"));
    EXPECT_THAT(form.Output, HasSubstr("1/2"));
    EXPECT_EQ(Import("Site\nAttic\n").Output, "qrn0005.txt: 1 record of the driver Climate Meter\n")
        << "behind the one that the form has made";
}

TEST_F(Imports, OfAnExportAreTheSameDownload) {
    for (const char* units : {"split", "header", "keep"}) {
        const std::string words = std::string("qrn0001.txt --hidden --units ") + units + " -o '" + Out("e.csv") + "'";
        EXPECT_EQ(Run(QUORIN_EXPORT, words).Status, 0);
        const Outcome done = Import(Place.Bytes("e.csv"));
        EXPECT_EQ(done.Status, 0) << done.Errors;
        EXPECT_EQ(done.Errors, "");
        EXPECT_EQ(Table(done.Output.substr(0, 11)), Table("qrn0001.txt")) << units;
    }
}

TEST_F(Imports, ThatAreTriedChangeNothing) {
    const Outcome dry = Import("Site,Foo\nCellar,1\n", "--dry-run");
    EXPECT_EQ(dry.Output, "field \"Site\" from \"Site\"\n"
                          "qrn0003.txt: 1 record of the driver Climate Meter would be made; nothing was changed\n");
    EXPECT_THAT(dry.Errors, HasSubstr("the column \"Foo\" fills no field: it is left out"));
    EXPECT_EQ(dry.Status, 5);
    EXPECT_FALSE(HasTable("qrn0003.txt"));
    EXPECT_EQ(Table("qrnctrl.txt"), RegisterBefore);
}

TEST_F(Imports, AreRefusedWhileAnotherProgramHasTheRoot) {
    backends::RootLock lock;
    ASSERT_EQ(lock.Take(Root.Path().string(), "quorin"), backends::LockResult::Held);
    const Outcome refused = Import("Site\nCellar\n");
    EXPECT_EQ(refused.Status, 2);
    EXPECT_THAT(refused.Errors, HasSubstr("quorin"));
    EXPECT_EQ(Table("qrnctrl.txt"), RegisterBefore);
    EXPECT_EQ(Import("Site\nCellar\n", "--dry-run").Status, 0);
}

TEST_F(Imports, ThatAreNoUtf8AreTold) {
    const Outcome done = Import("Site\nK\xE4lte\n");
    EXPECT_EQ(done.Status, 5);
    EXPECT_THAT(done.Errors, HasSubstr("line 2: a value has bytes that are no UTF-8, which stay as they are"));
}

TEST_F(Imports, OfOldLineEndsSayWhatIsWrong) {
    EXPECT_THAT(Import("Site\rCellar\r").Errors, HasSubstr("line 1: a carriage return stands alone"));
}

TEST_F(Imports, HaveEachUnitOnce) {
    const Outcome done = Import("Site,Moisture,Moisture_unit\na,5 %,%\nb,6,%\nc,7 g,%\n");
    EXPECT_EQ(done.Status, 5);
    EXPECT_THAT(done.Errors, HasSubstr("line 4: \"7 g\" has a unit already, which stays: \"%\" is left out"));
    const std::string table = Table("qrn0003.txt");
    for (const char* value : {"|5 %|", "|6 %|", "|7 g|"})
        EXPECT_THAT(table, HasSubstr(value));
}

TEST_F(Imports, ReplaceNoFileThatTheRegisterDoesNotName) {
    Put("qrn0003.txt", "Site\nold\n");
    const Outcome refused = Import("Site\nCellar\n");
    EXPECT_EQ(refused.Status, 2);
    EXPECT_EQ(refused.Errors,
              "quorin-import: There is a file qrn0003.txt already, which the register does not name: move it away "
              "first.\n");
    EXPECT_EQ(Table("qrn0003.txt"), "Site\nold\n");
    EXPECT_EQ(Table("qrnctrl.txt"), RegisterBefore);
}

TEST_F(Imports, ThatCanNotBeAreRefusedInWords) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "has no header"},
        {"Site\n", "has no rows"},
        {"Site\n\"open\n", "line 2: a quote"},
        {"Site;Remark\na;b\n", "--delimiter"},
        {"Site,place\na,b\n", nullptr},
    };
    for (const auto& [csv, why] : cases) {
        const Outcome refused = Import(csv, why == nullptr ? "--map place=Nowhere" : "");
        EXPECT_EQ(refused.Status, 2) << csv;
        EXPECT_THAT(refused.Errors, HasSubstr(why == nullptr ? "has no field \"Nowhere\"" : why));
    }
    EXPECT_EQ(Run(QUORIN_IMPORT, "'" + Out("in.csv") + "' --driver Nobody").Status, 2);
    EXPECT_EQ(Run(QUORIN_IMPORT, "'" + Out("none.csv") + "' --driver 'Climate Meter'").Status, 2);
    EXPECT_EQ(Import("Site\na\n", "--alias 'a|b'").Status, 2);
    EXPECT_EQ(Table("qrnctrl.txt"), RegisterBefore);
}

TEST_F(Imports, ThatFindNoRoomLeaveNothing) {
    std::string csv = "Site\n";
    for (int i = 0; i < 20000; ++i)
        csv += std::string(40, 'x') + "\n";
    Place.Put("in.csv", csv);
    // 512 bytes a block
    const Outcome full =
        Shell("sh -c \"trap '' XFSZ; ulimit -f 400; " + std::string(QUORIN_IMPORT) + " --root '" +
                  Root.Path().string() + "' '" + Out("in.csv") + "' --driver 'Climate Meter'\" > output 2> errors",
              "");
    EXPECT_EQ(full.Status, 1);
    EXPECT_THAT(full.Errors, HasSubstr("qrn0003.txt can't be written: "));
    EXPECT_FALSE(HasTable("qrn0003.txt"));
    EXPECT_EQ(Table("qrnctrl.txt"), RegisterBefore);
}

/// Returns bytes with bars, quotes, line ends, NULs, bytes that are no UTF-8, and rows of any length.
std::string RandomTable(unsigned seed) {
    std::mt19937 random(seed);
    constexpr std::string_view Pieces[] = {"|",       "\"",   ",",        ";", "\n", "\r\n",         "\r",
                                           {"\0", 1}, "\xE9", "\xC3\xA9", " ", "a",  "\xEF\xBB\xBF", "=1+2"};
    std::string table = "Site";
    for (auto count = random() % 60; count > 0; --count)
        table += Pieces[random() % std::size(Pieces)];
    return table;
}

TEST_F(Imports, OfARawExportHaveEachByteOfTheTable) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        const std::string table = RandomTable(seed);
        Put("qrnctrl.txt", RegisterBefore);
        fs::remove(Root.Path() / "Quorin/qrn0003.txt");
        Put("qrn0001.txt", table);
        const std::string form = seed % 2 == 0 ? "" : " --line-end lf --delimiter ';'";
        const Outcome raw = Run(QUORIN_EXPORT, "qrn0001.txt --raw" + form);
        ASSERT_EQ(raw.Status, 0) << raw.Errors;
        const Outcome done = Import(raw.Output, "--raw" + form);
        EXPECT_EQ(done.Status, 5) << done.Errors << "the header is another one";
        ASSERT_TRUE(HasTable("qrn0003.txt")) << seed << ": " << done.Errors;
        ASSERT_EQ(Table("qrn0003.txt"), table) << "seed " << seed;
    }
}

TEST_F(Imports, OfARawExportOfAnotherFormAreRefused) {
    EXPECT_THAT(Import("Site\na\n", "--raw").Errors, HasSubstr("--line-end"));
    EXPECT_EQ(Import("Site\r\n\"a|b\"\r\n", "--raw").Status, 2);
}

} // namespace
} // namespace console
