// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-console/climate_root.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class Exports : public ClimateRoot {
protected:
    Exports() { Put("qrn0002.txt", "A|B\n24.5 %|05/03/2007\n"); }
    Outcome Export(const std::string& words) {
        return Shell(
            std::string(QUORIN_EXPORT) + " --root '" + Root.Path().string() + "' " + words + " > output 2> errors", "");
    }
};

const std::string Shown =
    "site,operator,moisture,moisture_unit,temperature,temperature_unit,humidity,humidity_unit,probe,remark,"
    "start_date,start_time,end_date,end_time\r\n"
    "North wall,Ada,18.8,%,20.6,°C,41.9,%RH,Air,,2007-03-05,09:30,2007-03-05,09:31\r\n"
    "Cellar,Cleo,15.1,%,24.7,°C,69.8,%RH,Air,window open,2007-03-05,09:34,2007-03-05,09:36\r\n";

TEST_F(Exports, OfADownloadAreByItsFileOrItsAlias) {
    for (const char* name : {"qrn0001.txt", "'North wall'", "qrn0001"}) {
        const Outcome done = Export(name);
        EXPECT_EQ(done.Output, Shown);
        EXPECT_EQ(done.Errors, "");
        EXPECT_EQ(done.Status, 0);
    }
    const Outcome none = Export("nix");
    EXPECT_EQ(none.Errors, "quorin-export: There is no download nix.\n");
    EXPECT_EQ(none.Status, 2);
}

TEST_F(Exports, OfNothingListTheDownloads) {
    fs::remove(Root.Path() / "Quorin/qrn0002.txt");
    const Outcome list = Export("");
    EXPECT_EQ(list.Output, "qrn0001.txt        2  Climate Meter  \"North wall\"\nqrn0002.txt        -  Gone\n");
    EXPECT_EQ(list.Errors, "");
    EXPECT_EQ(list.Status, 0);
    EXPECT_EQ(Export("-o '" + Out("x.csv") + "'").Status, 2);
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\n");
    EXPECT_EQ(Export("").Errors, "quorin-export: there is no download in " + Root.Path().string() + "\n");
    EXPECT_EQ(Export("").Status, 0);
    ASSERT_EQ(::mkfifo((Root.Path() / "Quorin/qrn0003.txt").c_str(), 0600), 0);
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0003.txt|20070305|\n");
    EXPECT_THAT(Export("").Errors, HasSubstr("can't be read: "));
    EXPECT_EQ(Export("").Status, 1);
}

TEST_F(Exports, HaveTheFormatOfTheirName) {
    EXPECT_EQ(Export("qrn0001.txt -o '" + Out("a.jsonl") + "'").Status, 0);
    EXPECT_EQ(Place.Bytes("a.jsonl").front(), '{');
    EXPECT_EQ(Export("qrn0001.txt -o '" + Out("a.sqlite") + "'").Status, 0);
    EXPECT_THAT(Place.Bytes("a.sqlite"), HasSubstr("SQLite format 3"));
    EXPECT_EQ(Export("qrn0001.txt -o '" + Out("a.txt") + "'").Status, 0);
    EXPECT_EQ(Place.Bytes("a.txt"), Shown);
    EXPECT_EQ(Export("qrn0001.txt --format csv -o '" + Out("b.jsonl") + "'").Status, 0);
    EXPECT_EQ(Place.Bytes("b.jsonl"), Shown) << "what is asked for comes first";
}

TEST_F(Exports, WithNothingToldApartAreCsvWhateverTheirName) {
    EXPECT_EQ(Export("qrn0001.txt --raw").Status, 0);
    const std::string raw = Export("qrn0001.txt --raw").Output;
    for (const char* name : {"raw.xlsx", "raw.svg", "raw.jsonl"}) {
        EXPECT_EQ(Export("qrn0001.txt --raw -o '" + Out(name) + "'").Status, 0);
        EXPECT_EQ(Place.Bytes(name), raw) << name;
    }
}

TEST_F(Exports, OfNoColumnAreRefused) {
    const Outcome done = Export("qrn0001.txt --column nope -o '" + Out("none.csv") + "'");
    EXPECT_EQ(done.Status, 1);
    EXPECT_THAT(done.Errors, HasSubstr("qrn0001.txt has none of the columns that --column names."));
    EXPECT_FALSE(fs::exists(Place.Path() / "none.csv"));
}

TEST_F(Exports, ThatAreNoPlotRefuseItsOptionsByTheirFormat) {
    EXPECT_THAT(Export("qrn0001.txt --plot moisture").Errors,
                HasSubstr("csv: is no plot: --plot goes with --format svg, png, pdf or text"));
}

TEST_F(Exports, HaveADescriptionBesideTheirFile) {
    EXPECT_EQ(Export("qrn0001.txt -o '" + Out("climate.csv") + "'").Status, 0);
    EXPECT_EQ(Place.Bytes("climate.csv"), Shown);
    const auto resource = Json::parse(Place.Bytes("climate.datapackage.json")).at("resources").at(0);
    EXPECT_EQ(resource.at("path"), "climate.csv");
    EXPECT_EQ(resource.at("title"), "North wall");
    EXPECT_EQ(resource.at("driver"), "Climate Meter");
    EXPECT_EQ(resource.at("rows"), 2);
    const Outcome sum = Shell("sha256sum '" + Out("climate.csv") + "' > output 2> errors", "");
    EXPECT_EQ(resource.at("hash"), "sha256:" + sum.Output.substr(0, sum.Output.find(' ')));
}

TEST_F(Exports, ReplaceNeitherWhatTheyReadNorAFileOfTheRoot) {
    for (const char* name : {"qrn0001.txt", "qrn0002.txt", "drivers.txt"}) {
        const std::string before = Root.Bytes(std::string("Quorin/") + name);
        const Outcome refused = Export("qrn0001.txt -o '" + (Root.Path() / "Quorin" / name).string() + "'");
        EXPECT_EQ(refused.Status, 2);
        EXPECT_THAT(refused.Errors, HasSubstr("can't write"));
        EXPECT_EQ(Root.Bytes(std::string("Quorin/") + name), before);
    }
    EXPECT_EQ(Export("qrn0001.txt -o '" + (Root.Path() / "Quorin/new.csv").string() + "'").Status, 2);
    EXPECT_FALSE(fs::exists(Root.Path() / "Quorin/new.csv"));
    EXPECT_EQ(Export("qrn0001.txt -o '" + Out("gone/new.csv") + "'").Errors,
              "quorin-export: can't write " + Out("gone/new.csv") + ": there is no folder " + Out("gone") + "\n");
    const std::string table = Out("table.txt");
    std::ofstream(table) << "A\n1\n";
    EXPECT_EQ(Export("'" + table + "' -o '" + table + "'").Status, 2);
    EXPECT_EQ(Place.Bytes("table.txt"), "A\n1\n");
    std::ofstream(Out("other.txt")) << "A\n2\n";
    EXPECT_EQ(Export("'" + Out("other.txt") + "' '" + table + "' --format long -o '" + table + "'").Status, 2);
    EXPECT_EQ(Place.Bytes("table.txt"), "A\n1\n") << "a later source";
    fs::create_symlink(Root.Path() / "Quorin/qrn0002.txt", Place.Path() / "link.csv");
    const std::string before = Root.Bytes("Quorin/qrn0002.txt");
    EXPECT_EQ(Export("qrn0001.txt -o '" + Out("link.csv") + "'").Status, 2);
    EXPECT_EQ(Root.Bytes("Quorin/qrn0002.txt"), before) << "through a link";
    fs::create_directory(Place.Path() / "2026.11");
    EXPECT_EQ(Export("qrn0001.txt -o '" + Out("2026.11/climate") + "'").Status, 0);
    EXPECT_TRUE(fs::exists(Place.Path() / "2026.11/climate.datapackage.json"));
}

TEST_F(Exports, OfSeveralTablesGoIntoAFolderOrOneAfterTheOther) {
    EXPECT_EQ(Export("qrn0001.txt qrn0002.txt").Status, 2);
    const Outcome both = Export("qrn0001.txt qrn0002.txt -o '" + Out() + "'");
    EXPECT_EQ(both.Status, 0);
    EXPECT_EQ(both.Errors, "quorin-export: qrn0002.txt: the driver Gone is not installed: all columns are text\n");
    EXPECT_EQ(Place.Bytes("qrn0001.csv"), Shown);
    EXPECT_EQ(Place.Bytes("qrn0002.csv"), "A,B\r\n24.5 %,05/03/2007\r\n");
    const Outcome values = Export("qrn0001.txt qrn0002.txt --format long --name m1 --line-end lf");
    EXPECT_EQ(values.Lines.front(), "device,file,record,column,value");
    EXPECT_EQ(values.Lines.at(3), "m1,qrn0001.txt,1,moisture,18.8");
    EXPECT_EQ(values.Lines.back(), "m1,qrn0002.txt,1,B,05/03/2007");
}

TEST_F(Exports, NameEachOddRowAndWriteItAllTheSame) {
    Put("qrn0001.txt", "Site|Moisture\nLoft\na|1 %|more\nb|dry\n");
    const Outcome odd = Export("qrn0001.txt --line-end lf");
    EXPECT_EQ(odd.Output, "site,moisture,moisture_unit,beyond\nLoft,,,\na,1,%,more\nb,dry,,\n");
    EXPECT_EQ(
        odd.Errors,
        "quorin-export: qrn0001.txt, moisture: 1 value is no number with a unit, kept as text\n"
        "quorin-export: qrn0001.txt, line 2: 1 of 2 fields: the others are missing\n"
        "quorin-export: qrn0001.txt, line 3: 3 fields under 2 columns: the others are in the column \"beyond\"\n");
    EXPECT_EQ(odd.Status, 5);
}

TEST_F(Exports, OfJsonHaveAnObjectARecord) {
    const Outcome rows = Export("qrn0001.txt --format jsonl --record --hidden");
    ASSERT_EQ(rows.Lines.size(), 2U);
    EXPECT_EQ(rows.Line(1).at("record"), 2);
    EXPECT_EQ(rows.Line(1).at("moisture"), 15.1);
    EXPECT_EQ(rows.Line(0).at("remark"), nullptr);
    EXPECT_EQ(rows.Line(0).at("meter"), "QI-0001");
}

TEST_F(Exports, AreRefusedForWordsThatMeanNothing) {
    for (const char* words :
         {"--format doc", "--units metre", "--zone CET", "--delimiter ab", "--delimiter '|'", "--raw --format jsonl",
          "--line-end cr", "--raw --bom", "--raw --units keep", "--driver Nobody"}) {
        const Outcome refused = Export(std::string("qrn0001.txt ") + words);
        EXPECT_EQ(refused.Status, 2) << words;
        EXPECT_THAT(refused.Errors, HasSubstr("quorin-export: ")) << words;
        EXPECT_EQ(refused.Output, "") << words;
    }
}

TEST_F(Exports, ThatAreRawHaveEachByteOfTheTable) {
    Put("qrn0001.txt", std::string("\xEF\xBB\xBFSite|Moisture\r\na\0b|caf\xE9|\"q\"\n\nlast", 36));
    const Outcome raw = Export("qrn0001.txt --raw --line-end lf");
    EXPECT_EQ(raw.Output, std::string("\xEF\xBB\xBFSite,\"Moisture\r\"\na\0b,caf\xE9,\"\"\"q\"\"\"\n\"\"\nlast", 44));
    EXPECT_EQ(raw.Errors, "");
    EXPECT_EQ(raw.Status, 0);
}

TEST_F(Exports, OfARootThatIsNotThereCreateNone) {
    const fs::path gone = Place.Path() / "gone";
    const Outcome refused =
        Shell(std::string(QUORIN_EXPORT) + " --root '" + gone.string() + "' qrn0001.txt > output 2> errors", "");
    EXPECT_EQ(refused.Status, 2);
    EXPECT_FALSE(fs::exists(gone));
}

TEST_F(Exports, OfSeveralTablesAreTheSheetsOfOneWorkbook) {
    const std::string file = Out("all.xlsx");
    const Outcome done = Export("qrn0001.txt qrn0002.txt --format xlsx -o '" + file + "'");
    EXPECT_EQ(done.Status, 0) << done.Errors;
    const Outcome found = Shell("python3 '" QUORIN_WORKBOOK "' '" + file + "' > output 2> errors", "");
    EXPECT_EQ(found.Errors, "");
    ASSERT_EQ(found.Lines.size(), 7U) << found.Output;
    EXPECT_EQ(found.Lines.at(0), "[North wall]");
    EXPECT_THAT(found.Lines.at(2), HasSubstr("C=(18.8, '0.0'), D='%', E=(20.6, '0.0')"));
    EXPECT_THAT(found.Lines.at(2), HasSubstr("K=(39146.0, 'yyyy-mm-dd'), L=(0.3958333333333333, 'hh:mm')"));
    EXPECT_EQ(found.Lines.at(4), "[qrn0002]");
    EXPECT_EQ(found.Lines.at(6), "A='24.5 %', B='05/03/2007'");
    EXPECT_EQ(std::distance(fs::directory_iterator(Place.Path()), {}), 1) << "what it was made of is removed";
}

TEST_F(Exports, ToADatabaseHaveATableADownload) {
    const std::string file = Out("all.sqlite");
    EXPECT_EQ(Export("qrn0001.txt qrn0002.txt --format sqlite --name m1 -o '" + file + "'").Status, 0);
    const Outcome found = Shell("sqlite3 '" + file +
                                    "' 'SELECT moisture, remark IS NULL, start_date FROM qrn0001;"
                                    "SELECT file, alias, driver, device, records FROM downloads' > output 2> errors",
                                "");
    EXPECT_EQ(found.Output, "18.8|0|2007-03-05\n15.1|0|2007-03-05\nqrn0001.txt|North wall|Climate Meter|m1|2\n"
                            "qrn0002.txt|||m1|1\n");
    const Outcome sum =
        Shell("sqlite3 '" + file + "' \"SELECT sha256 || '  ' || '" + (Root.Path() / "Quorin/qrn0001.txt").string() +
                  "' FROM downloads LIMIT 1\" | sha256sum -c > output 2> errors",
              "");
    EXPECT_EQ(sum.Status, 0) << sum.Output;
}

TEST_F(Exports, OfAWorkbookGoToStandardOutput) {
    Export("qrn0001.txt --format xlsx | cat > '" + Out("piped.xlsx") + "'; true");
    EXPECT_EQ(Shell("python3 '" QUORIN_WORKBOOK "' '" + Out("piped.xlsx") + "' > output 2> errors", "").Errors, "");
}

TEST_F(Exports, ThatFindNoRoomLeaveTheOlderFileAsItWas) {
    std::string table = "A\n";
    for (int i = 0; i < 20000; ++i)
        table += std::to_string(i) + " " + std::string(40, 'x') + "\n";
    Put("qrn0002.txt", table);
    for (const std::string format : {"xlsx", "sqlite", "csv"}) {
        std::ofstream(Out("old." + format)) << "old";
        // 512 bytes a block: less than the rows take, but more than an XLSX file of them
        const Outcome full = Shell("sh -c \"trap '' XFSZ; ulimit -f 400; " + std::string(QUORIN_EXPORT) + " --root '" +
                                       Root.Path().string() + "' qrn0002.txt --format " + format + " -o '" +
                                       Out("old." + format) + "'\" > output 2> errors",
                                   "");
        EXPECT_EQ(full.Status, 1) << format;
        EXPECT_THAT(full.Errors, HasSubstr("can't write " + Out("old." + format) + ": ")) << format;
        EXPECT_EQ(Place.Bytes("old." + format), "old");
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(Place.Path()), {}), 3) << "nothing else is left";
}

/// Creates a line database in the main memory of a Palm OS device.
void CreateDatabase(const fs::path& root, const std::string& name, const std::vector<std::string>& lines) {
    fs::create_directories(root / "Databases");
    std::string sql =
        "CREATE TABLE DATABASE (TypeCode, CreatorCode); INSERT INTO DATABASE VALUES (0x54455854, 0x5156524E);"
        "CREATE TABLE TEXT (Position INTEGER PRIMARY KEY, LineNumber, LineData);";
    for (std::size_t i = 0; i < lines.size(); ++i)
        sql += "INSERT INTO TEXT VALUES (" + std::to_string(i) + "," + std::to_string(i + 1) + ",'" + lines[i] + "');";
    const std::string path = (root / "Databases" / (name + ".sqlite")).string();
    ASSERT_EQ(std::system(("sqlite3 '" + path + "' \"" + sql + "\"").c_str()), 0);
}

TEST_F(Exports, ReadALineDatabaseWhereItIs) {
    const fs::path& palm = Place.Path();
    CreateDatabase(palm, "drivers", {"NAME|INFFILE", "Meter|meter.txt"});
    CreateDatabase(palm, "qrnctrl", {"DRIVER|FILE|DATE|ALIAS", "Meter|qrn0001.txt|20070305|"});
    CreateDatabase(palm, "meter",
                   {"FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA", "Site|1||||site||",
                    "Moisture|1||Moisture||||"});
    CreateDatabase(palm, "qrn0001", {"Site|Moisture", "Loft|7.5 %"});
    const Outcome done = Shell(std::string(QUORIN_EXPORT) + " --device palm --root '" + palm.string() +
                                   "' --line-end lf qrn0001.txt > output 2> errors",
                               "");
    EXPECT_EQ(done.Status, 0) << done.Errors;
    EXPECT_EQ(done.Output, "site,Moisture,Moisture_unit\nLoft,7.5,%\n");
}

} // namespace
} // namespace console
