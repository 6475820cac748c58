// SPDX-License-Identifier: MIT
#include "exporting/workbook.h"

#include "exporting/exact_numbers.h"
#include "exporting/sheet_text.h"
#include "exporting/zip_check.h"
#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace exporting {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Lines = std::vector<std::string>;

class Workbooks : public testing::Test {
protected:
    /// Adds a table whose fields "N" are numbers, "D" are dates and "T" are times.
    void Add(const std::string& bytes, const std::string& name, const Plan& plan = {}) {
        Source source;
        source.Bytes = bytes;
        source.Fields = {{.Field = "N", .CsvName = "", .Kind = values::ColumnKind::Measured},
                         {.Field = "D", .CsvName = "", .Kind = values::ColumnKind::Date},
                         {.Field = "T", .CsvName = "", .Kind = values::ColumnKind::Time}};
        Book.Add(TableView(source, plan), name, Odd);
    }
    /// Returns the lines of what another reader finds in the workbook.
    Lines Sheets() {
        EXPECT_EQ(Book.Close(), "");
        EXPECT_EQ(std::system(("python3 '" QUORIN_WORKBOOK "' '" + Place.Path("w.xlsx") + "' > '" +
                               Place.Path("found") + "' 2>&1")
                                  .c_str()),
                  0);
        std::istringstream found(Place.Bytes("found"));
        Lines lines;
        for (std::string line; std::getline(found, line);)
            lines.push_back(line);
        return lines;
    }

    TemporaryRoot Place;
    Workbook Book{Place.Path("w.xlsx"), {.Rows = 3, .Columns = 3, .Characters = 16}};
    Lines Odd;
};

/// Returns the number format of a cell with this number.
std::string FormatOfNumber(const std::string& number) {
    return NumberFormatOf(values::PlainNumber(number)).value_or("text");
}

TEST_F(Workbooks, HaveNumbersThatLookAsTheyWereWritten) {
    Add("N\n23.40 %\n12e4 %\n", "s", {.Units = Units::Header});
    EXPECT_THAT(Sheets(), ElementsAre("[s]", "A='N [%]'", "A=(23.4, '0.00')", "A=(120000.0, '0.0E+0')"));
    EXPECT_EQ(Odd, Lines());
}

/// What a person sees has each digit of the table, and no other: one digit before the point, as many as there are
/// behind.
TEST_F(Workbooks, ShowEachDigitOfANumberWithAnExponent) {
    const std::pair<const char*, const char*> shown[] = {
        {"12e3", "0.0E+0"}, {"-1.20e3", "0.00E+0"}, {"0.012e-3", "0.0E+0"}, {"100e3", "0.00E+0"},
        {"5e-7", "0E+0"},   {"+.50E5", "0.0E+0"},   {"0e3", "0E+0"},        {"0.00e3", "0.00E+0"},
    };
    for (const auto& [number, format] : shown)
        EXPECT_EQ(FormatOfNumber(number), format) << number;
}

TEST_F(Workbooks, ShowEachDigitOfATinyNumber) {
    const std::string zeros(31, '0');
    EXPECT_EQ(FormatOfNumber("0." + zeros + "123"), "0.00E+0");
    EXPECT_EQ(FormatOfNumber("0." + zeros.substr(3) + "12"), "0." + zeros.substr(1)) << "30 places are shown";
}

TEST_F(Workbooks, ShowTheSignOfANegativeZero) {
    EXPECT_EQ(FormatOfNumber("-0.0"), "0.0;-0.0;-0.0");
    EXPECT_EQ(FormatOfNumber("-0.04"), "0.00");
    EXPECT_EQ(FormatOfNumber("-0e2"), "0E+0;-0E+0;-0E+0");
}

/// A spreadsheet shows "###" in place of a number that is wider than its column.
TEST_F(Workbooks, HaveColumnsAsWideAsTheirNumbers) {
    Add("N|D\n12345678901.2345|1\n5|1\n", "s");
    EXPECT_EQ(Book.Close(), "");
    ASSERT_EQ(std::system(("python3 -c 'import sys,zipfile,re;"
                           "print(*re.findall(\"width=.([0-9]+)\",zipfile.ZipFile(sys.argv[1])"
                           ".read(\"xl/worksheets/sheet1.xml\").decode()))' '" +
                           Place.Path("w.xlsx") + "' > '" + Place.Path("found") + "'")
                              .c_str()),
              0);
    EXPECT_THAT(Place.Bytes("found"), testing::StartsWith("18 10"));
}

TEST_F(Workbooks, KeepAsTextWhatTheyCantShow) {
    Add("N\n1." + std::string(31, '0') + "\n", "s", {.Units = Units::Header});
    EXPECT_THAT(Sheets(), testing::Contains("A='1." + std::string(14, '0') + "'"));
    EXPECT_THAT(Odd,
                testing::Contains("1 number has more digits than a spreadsheet keeps, or is too large: kept as text"));
}

TEST_F(Workbooks, KeepAsTextWhatWouldLoseADigit) {
    Add("N\n12345.678901\n1234567890123456 m\n", "s", {.Units = Units::Header});
    EXPECT_THAT(Sheets(), testing::Contains("A='1234567890123456', B='m'")) << "which has 16 digits";
    EXPECT_THAT(Odd, ElementsAre("1 number has more digits than a spreadsheet keeps, or is too large: kept as text"));
}

TEST_F(Workbooks, HaveDaysAndTimesOfDay) {
    Add("D|T\n21/11/2026|6:00\n28/02/1900|18:00:00\n", "s");
    EXPECT_THAT(Sheets(), ElementsAre("[s]", "A='D', B='T'", "A=(46347.0, 'yyyy-mm-dd'), B=(0.25, 'hh:mm')",
                                      "A='1900-02-28', B=(0.75, 'hh:mm:ss')"));
    EXPECT_THAT(Odd, ElementsAre(HasSubstr("1 date is before 1900-03-01")));
}

TEST_F(Workbooks, HaveNoFormula) {
    Add("A\n=1+2\n00123\n", "s");
    EXPECT_THAT(Sheets(), ElementsAre("[s]", "A='A'", "A='=1+2'", "A='00123'"));
}

TEST_F(Workbooks, ContinueALongTableOnAnotherSheet) {
    Add("A\n1\n2\n3\n4\n5\n", "s");
    EXPECT_THAT(Sheets(), ElementsAre("[s]", "A='A'", "A='1'", "A='2'", "[s (2)]", "A='A'", "A='3'", "A='4'", "[s (3)]",
                                      "A='A'", "A='5'"));
}

TEST_F(Workbooks, TellWhatIsLeftOutOrReplaced) {
    Add("A|B|C|D\n0123456789abcdefX|\xF0\x9F\x94\xA7"
        "23456789abcdefX|caf\xE9|d\n",
        "s");
    EXPECT_THAT(Sheets(), ElementsAre("[s]", "A='A', B='B', C='C'",
                                      "A='0123456789abcdef', B='\xF0\x9F\x94\xA7"
                                      "23456789abcdef', C='caf\xEF\xBF\xBD'"));
    EXPECT_THAT(Odd, ElementsAre("record 1, column 1: longer than the 16 characters of a cell: the rest is left out",
                                 "record 1, column 2: longer than the 16 characters of a cell: the rest is left out",
                                 "4 columns, of which a sheet holds 3: the others are left out",
                                 "1 row has bytes that are no UTF-8: U+FFFD stands for them"));
}

TEST_F(Workbooks, WhoseFolderIsGoneAreAFailure) {
    Workbook lost(Place.Path("gone/w.xlsx"));
    Source source;
    source.Bytes = "A\n1\n";
    const Plan plan;
    lost.Add(TableView(source, plan), "s", Odd);
    EXPECT_NE(lost.Close(), "");
}

TEST(TextOfACell, ComesBackAsItWas) {
    EXPECT_EQ(TextOfCell(std::string("a\0b\r\x1F\t", 6), 99).Text, "a_x0000_b_x000D__x001F_\t");
    EXPECT_EQ(TextOfCell("_x0041_ _x_ _x00G1_", 99).Text, "_x005F_x0041_ _x_ _x00G1_");
    EXPECT_EQ(TextOfCell("\xEF\xBF\xBF", 99).Text, "_xFFFF_");
    EXPECT_EQ(TextOfCell("1234\x01", 10).Text, "1234") << "no part of an escape";
}

TEST(SheetNames, AreSuchAsSpreadsheetsTake) {
    Lines taken;
    const auto name = [&](const std::string& wanted) { return SheetName(wanted, taken); };
    EXPECT_EQ(name("North wall"), "North wall");
    EXPECT_EQ(name("NORTH WALL"), "NORTH WALL (2)");
    EXPECT_EQ(name("\xC3\x84"), "\xC3\x84");
    EXPECT_EQ(name("\xC3\xA4"), "\xC3\xA4 (2)") << "the small letter";
    EXPECT_EQ(name("a[b]:c*?/\\\x01"), "a_b__c_____");
    EXPECT_EQ(name("'it's'"), "_it's_");
    EXPECT_EQ(name(""), "Sheet");
    EXPECT_EQ(name(" "), "Sheet (2)");
    EXPECT_EQ(name("history"), "history_");
    EXPECT_EQ(name(std::string(40, 'x')), std::string(31, 'x'));
    EXPECT_EQ(name(std::string(50, 'x')), std::string(27, 'x') + " (2)");
    EXPECT_EQ(name(std::string(30, 'y') + "\xF0\x9F\x94\xA7"), std::string(30, 'y')) << "it counts as two";
}

TEST(AZipOfXml, IsWholeWithTheEndTagOfEachDocument) {
    const TemporaryRoot place;
    const auto isWhole = [&](const std::string& document) {
        EXPECT_EQ(std::system(("python3 -c 'import zipfile; zipfile.ZipFile(\"" + place.Path("z") +
                               "\", \"w\", zipfile.ZIP_DEFLATED).writestr(\"a.xml\", \"" + document + "\")'")
                                  .c_str()),
                  0);
        return IsWholeZipOfXml(place.Path("z"));
    };
    EXPECT_TRUE(isWhole("<?xml?>\\n<a b=''><c></c></a>\\n")); // the shell drops the quotes
    EXPECT_FALSE(isWhole("<?xml?><a><c></c>"));
    EXPECT_FALSE(isWhole("<?xml?><a><c></c></"));
    EXPECT_TRUE(isWhole("<?xml?><a>\" + \"x\" * 300000 + \"</a>"));
    std::string bytes = place.Bytes("z");
    place.Put("cut", bytes.substr(0, bytes.size() - 30));
    EXPECT_FALSE(IsWholeZipOfXml(place.Path("cut")));
    bytes[60] = static_cast<char>(bytes[60] ^ 1);
    place.Put("other", bytes);
    EXPECT_FALSE(IsWholeZipOfXml(place.Path("other")));
    EXPECT_FALSE(IsWholeZipOfXml(place.Path("none")));
}

} // namespace
} // namespace exporting
