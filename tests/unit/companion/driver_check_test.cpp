// SPDX-License-Identifier: MIT
#include "companion/driver_check.h"

#include "companion/file_lines.h"
#include "src/drivers/inf_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

namespace companion {
namespace {

using testing::IsEmpty;

std::string Told(const std::vector<Finding>& found) {
    std::string all;
    for (const Finding& finding : found)
        all += std::to_string(finding.Line) + ":" + std::to_string(finding.Column) + " " +
               modStringTools::ToBytes(NameOf(finding.Grade) + u": " + finding.Words) + "\n";
    return all;
}

std::vector<Finding> Check(const Text& package) {
    return CheckPackage(LinesOf(package), {{u"Sound Meter", u"sound.txt"}, {u"Scales", u"scales.txt"}});
}

const Text InfHead = modQuorin::InfHeader + u"\n";
const Text DriverHead = u"Meter|meter.txt\n" + InfHead;
const Text PlainRows = u"Site|1|1|dv: Site||site||\nPerson|1|1|||person||\n";

/// A package that nothing is wrong with but these rows, the first of which is line 6.
Text WithRows(const Text& rows) {
    return DriverHead + PlainRows + u"Moisture|1||Moisture||moisture||\n" + rows;
}

/// A package, and what is wrong with it.
struct TrapRow {
    const char* Name;
    Text Package;
    std::string Findings;
};

void PrintTo(const TrapRow& row, std::ostream* out) {
    *out << row.Name;
}

class Trap : public testing::TestWithParam<TrapRow> {};

TEST_P(Trap, IsFound) {
    EXPECT_EQ(Told(Check(GetParam().Package)), GetParam().Findings);
}

std::string NameOfRow(const testing::TestParamInfo<TrapRow>& row) {
    return row.param.Name;
}

INSTANTIATE_TEST_SUITE_P(
    OfTheDriver, Trap,
    testing::Values(
        TrapRow{"NothingAtAll", u"", "1:1 error: no line names a driver: the form installs nothing\n"},
        TrapRow{"OnlyComments", u"# a\n\n# b\n", "1:1 error: no line names a driver: the form installs nothing\n"},
        TrapRow{"NoBar", u"\n# a\nMeter\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "3:1 error: the line that names the driver has no |: nothing is installed\n"},
        TrapRow{"NoName", u"|meter.txt\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:1 error: the driver has no name: it can be neither edited nor deleted\n"},
        TrapRow{"NoInfFile", u"Meter|\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the line names no inf file\n"},
        TrapRow{"BarInTheInfFile", u"Meter|a|b\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the name of the inf file has a bar in it: \"a|b\"\n"},
        TrapRow{"APath", u"Meter|a/b.txt\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the inf file is a path, \"a/b.txt\", and not a bare name\n"},
        TrapRow{"ListOfDrivers", u"Meter|Drivers.TXT\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the inf file would replace the list of all drivers\n"},
        TrapRow{"Register", u"Meter|qrnctrl.txt\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the inf file would replace the register of all downloads\n"},
        TrapRow{"ADownload", u"Meter|qrn0012.txt\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the inf file would replace the download \"qrn0012.txt\"\n"},
        TrapRow{"APackage", u"Meter|meter.qvd\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the inf file has the name of a driver package, \"meter.qvd\", which it may replace\n"},
        TrapRow{"AScratchFile", u"Meter|12345678.txt\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the inf file has the name of a scratch file, \"12345678.txt\"\n"},
        TrapRow{"AnotherDriversInfFile", u"Meter|Scales.txt\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:7 error: the inf file would replace that of the installed driver \"Scales\"\n"},
        TrapRow{"InstalledAlready", u"SCALES|scales.txt\n" + InfHead + PlainRows + u"M|1||M||||\n",
                "1:1 error: the driver \"Scales\" is installed already\n"}),
    NameOfRow);

INSTANTIATE_TEST_SUITE_P(
    OfTheHeader, Trap,
    testing::Values(
        TrapRow{"NoHeader", u"Meter|meter.txt\n", "1:1 error: the inf table is missing after this line\n"},
        TrapRow{"ARowInItsPlace", u"Meter|meter.txt\n" + PlainRows,
                "2:1 error: this line must be the header of the inf table, FIELDNAME|VISIBLE|COPY|...\n"},
        TrapRow{"NoFlagOfSight", u"Meter|meter.txt\nFIELDNAME|BLOB|DISPLAY|DATATYPE|FORMULA|COPY|CSVNAME\nA|M|||||\n",
                "2:1 error: the header has no column VISIBLE: every field is hidden\n"
                "2:1 warning: no field is shown\n"
                "3:1 warning: one of the first two fields is hidden, and with it NAME of a driver after a download was "
                "open\n"},
        TrapRow{"UnknownAndDoubled",
                u"Meter|meter.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA|visible|Colour\n"
                u"A|1||M||||||\n",
                "2:62 warning: the column \"visible\" is there already, and is not used\n"
                "2:70 warning: the column \"Colour\" is not used\n"},
        TrapRow{"NoRows", DriverHead, "2:1 error: the inf table has no rows\n"}),
    NameOfRow);

INSTANTIATE_TEST_SUITE_P(
    OfARow, Trap,
    testing::Values(
        TrapRow{"AnEmptyLine", WithRows(u"\nRemark|1||||||\n\n\n"),
                "6:1 error: an empty line is a row: the program ends when a download is opened\n"},
        TrapRow{"TooFewBars", WithRows(u"Remark|1||||\n"),
                "6:1 error: the row has no DATATYPE: bars are missing, and the program ends when a download is "
                "opened\n"},
        TrapRow{"TooManyBars", WithRows(u"Remark|1||||||||\n"),
                "6:1 warning: the row has 10 fields, and the header 8: a bar ends a value\n"},
        TrapRow{"NoNameOfTheField", WithRows(u"|1||||||\n"), "6:1 warning: the field has no name\n"},
        TrapRow{"TwoOfOneName", WithRows(u"site|1||||||\n"), "6:1 warning: line 3 has the name \"site\" already\n"},
        TrapRow{"FlagsThatAreNone", WithRows(u"Remark|yes|true|||||\n"),
                "6:8 warning: VISIBLE \"yes\" counts as 0: only 1 is yes\n"
                "6:12 warning: COPY \"true\" counts as 0: only 1 is yes\n"},
        TrapRow{"AColourThatIsNoNumber", WithRows(u"Remark|1|||red|||\n"),
                "6:12 error: DISPLAY \"red\" is no number: the program ends when a download is opened\n"},
        TrapRow{"AnUnknownKind", WithRows(u"Remark|1|||||DATUM|\n"),
                "6:14 warning: DATATYPE \"DATUM\" is unknown: the field is edited as text\n"},
        TrapRow{"AnUnknownFormula", WithRows(u"Remark|1||||||today\n"),
                "6:15 warning: the formula \"today\" is unknown, and empties the field with each reading\n"}),
    NameOfRow);

INSTANTIATE_TEST_SUITE_P(
    OfWhatFillsARow, Trap,
    testing::Values(
        TrapRow{"NoReadings", DriverHead + u"Site|1||||||\nPerson|1||||||\n",
                "2:1 warning: no row has a BLOB: the driver receives no readings\n"},
        TrapRow{"AReadingIntoADate", WithRows(u"Day|1||Day|||date|\n"),
                "6:14 error: a reading in a row for dates ends the program when the row is tapped\n"},
        TrapRow{"AVariableIntoADate", WithRows(u"Day|1||dv: Day|||DATE|\n"),
                "6:18 warning: a variable that is no date, in a row for dates, ends the program when the row is "
                "tapped\n"},
        TrapRow{"AFormulaOverAReading", WithRows(u"End|1||End||||endtime\n"),
                "6:15 error: the formula \"endtime\" replaces what the instrument has sent\n"},
        TrapRow{"AnUnknownFormulaOverAReading", WithRows(u"End|1||End||||now\n"),
                "6:15 error: the formula \"now\" is unknown, and empties the field after each reading\n"},
        TrapRow{"ACopiedReading", WithRows(u"Depth|1|1|Depth||||\n"),
                "6:9 warning: each new record begins with the last reading, and the next one is asked about "
                "(\"Replace\")\n"},
        TrapRow{"TwoRowsOfOneType", WithRows(u"Again|1||MOISTURE||||\n"),
                "6:10 warning: this field is never filled: line 5 gets \"MOISTURE\"\n"},
        TrapRow{"TwoRowsOfOneVariable", WithRows(u"Again|1||dv: site||||\n"),
                "3:10 warning: this field is never filled: line 6 gets \"Site\"\n"},
        TrapRow{"ATypedRowTwice", WithRows(u"A|1||dv: {Moisture}Probe||||\nB|1||dv: {moisture}probe||||\n"),
                "7:6 warning: this field is never filled: line 6 gets \"probe\"\n"},
        TrapRow{"AVariableOfAnUnknownType", WithRows(u"A|1||dv: {Depth}Probe||||\n"),
                "6:6 warning: this field is never filled: no row asks for results of type \"Depth\"\n"},
        TrapRow{"VariablesAlone", DriverHead + PlainRows,
                "3:10 warning: this field is never filled: a variable comes with a result that a row asks for, and no "
                "row asks "
                "for one\n"},
        TrapRow{"AMarkWithoutABlank", WithRows(u"A|1||dv:Probe||||\n"),
                "6:6 warning: \"dv:Probe\" is taken for a result type: a variable is written \"dv: NAME\", with one "
                "blank\n"},
        TrapRow{"ATwoBlankMark", WithRows(u"A|1||dv:  Probe||||\n"),
                "6:6 warning: the blank at the beginning or end of \"dv:  Probe\" is compared as well\n"},
        TrapRow{"TheMarkOfTheTrace", WithRows(u"A|1||RT: Depth||||\n"),
                "6:6 warning: \"RT: Depth\" has the RT: of \"Bluetooth Debug...\", which is no part of a type's "
                "name\n"},
        TrapRow{"AVariableWithoutAName", WithRows(u"A|1||dv: ||||\n"),
                "6:6 warning: the blank at the beginning or end of \"dv: \" is compared as well\n"
                "6:6 warning: \"dv: \" names no variable\n"},
        TrapRow{"AnEqualsSignInAName", WithRows(u"A|1||dv: a=b||||\n"),
                "6:6 warning: \"dv: a=b\" is never filled: the name of a variable ends before its first =\n"},
        TrapRow{"NamesThatEndAlike", WithRows(u"A|1||dv: TestSite||||\n"),
                "6:6 warning: the variables \"TestSite\" and \"Site\" are mistaken for each other in one record: one "
                "name must not be the end of the other\n"},
        TrapRow{
            "NamesThatEndAlikeInTheirOrder", DriverHead + u"A|1||dv: TestMark||||\nB|1||dv: Mark||||\nM|1||M||||\n",
            "4:6 warning: the variables \"Mark\" and \"TestMark\" are mistaken for each other in one record: one name "
            "must not be the end of the other\n"},
        TrapRow{"TheEndOfOrigin", WithRows(u"A|1||dv: N||||\n"),
                "6:6 warning: the variables \"N\" and \"ORIGIN\" are mistaken for each other in one record: one name "
                "must not be the end of the other\n"},
        TrapRow{"ADateAsTheFirst", DriverHead + u"Day|1|||||DATE|\nSite|1||||||\nM|1||M||||\n",
                "3:11 warning: one of the first two fields is a date: a tap on NAME of a driver ends the program after "
                "a download was open\n"},
        TrapRow{"AHiddenSecond", DriverHead + u"Site|1||||||\nPerson|0||||||\nM|1||M||||\n",
                "4:8 warning: one of the first two fields is hidden, and with it INFFILE of a driver after a download "
                "was open\n"}),
    NameOfRow);

TEST(DriverCheck, FindsNothingInAGoodPackage) {
    EXPECT_EQ(
        Told(Check(u"# comment\n\n" +
                   WithRows(u"# another\nDepth|1||Depth||||\nStart|1|||255||DATE|StartDate\nProbe|1||dv: Probe||||\n"
                            u"Wall|0||dv: {Moisture}Probe||||\nId|0||dv: ORIGIN||||\n\n"))),
        "");
}

TEST(DriverCheck, LeavesOutATableOfTooManyRows) {
    Text rows;
    for (int i = 0; i < 1000; ++i)
        rows += u"A|1||||||\n";
    EXPECT_EQ(Told(Check(WithRows(rows))),
              "2:1 warning: the inf table has 1003 rows: more than 1000 are not checked\n");
}

TEST(DriverCheck, ShowsNoControlCharacterOfThePackage) {
    const std::vector<Finding> found = Check(WithRows(u"A|1|||\u001B[31m\u009B|||\n"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().Words, u"DISPLAY \" [31m \" is no number: the program ends when a download is opened");
}

TEST(DriverCheck, ReadsTheListOfInstalledDrivers) {
    const auto drivers = InstalledDrivers(LinesOf(u"inffile|NAME\r\na.txt|A\r\nshort\r\nb.txt|B|more\r\n"));
    ASSERT_EQ(drivers.size(), 2U);
    EXPECT_EQ(drivers[1].Name, u"B");
    EXPECT_EQ(drivers[1].InfFile, u"b.txt");
    EXPECT_THAT(InstalledDrivers({}), IsEmpty());
    EXPECT_THAT(InstalledDrivers(LinesOf(u"NAME\nA\n")), IsEmpty());
}

} // namespace
} // namespace companion
