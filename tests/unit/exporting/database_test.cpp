// SPDX-License-Identifier: MIT
#include "exporting/database.h"

#include "tests/support/other_tool.h"
#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace exporting {
namespace {

using testing::ElementsAre;
using Lines = std::vector<std::string>;

class Databases : public testing::Test {
protected:
    /// Adds a table whose fields "N" and "M" are numbers.
    void Add(const std::string& bytes, const std::string& file = "qrn0001.txt") {
        Source source;
        source.Bytes = bytes;
        const Plan plan{.Units = Units::Header, .Measured = {"N", "M"}};
        Base.Add(TableView(source, plan), {file, "Loft", "Meter", "m1", "ab12"}, Odd);
    }
    /// Returns the rows of a query, each joined by "|".
    Lines Query(const std::string& sql) {
        EXPECT_EQ(Base.Close(), "");
        return support::OtherTool(Place.Path("d.sqlite")).Do(sql);
    }

    TemporaryRoot Place;
    Database Base{Place.Path("d.sqlite")};
    Lines Odd;
};

TEST_F(Databases, HaveColumnsOfTheTypeOfAllTheirNumbers) {
    Add("N|M|A\n1|2.50|x\n9007199254740993||\n");
    EXPECT_THAT(Query("SELECT type FROM pragma_table_info('qrn0001'); SELECT N, typeof(M), M, typeof(A) FROM qrn0001"),
                ElementsAre("INTEGER", "REAL", "TEXT", "1|real|2.5|text", "9007199254740993|null|NULL|text"));
}

TEST_F(Databases, ChangeNoTextAmongNumbers) {
    Add("N|M\n1.5|0.12345678901234567\n00123|1\n");
    EXPECT_THAT(Query("SELECT type FROM pragma_table_info('qrn0001');"
                      "SELECT typeof(N), N, typeof(M), M FROM qrn0001"),
                ElementsAre("", "", "real|1.5|text|0.12345678901234567", "text|00123|integer|1"));
}

TEST_F(Databases, LoseNoDigitOfALongIntegerAmongFractions) {
    Add("N\n9007199254740993\n0.5\n");
    EXPECT_THAT(Query("SELECT N FROM qrn0001"), ElementsAre("9007199254740993", "0.5"));
}

TEST_F(Databases, KeepBytesThatAreNoTextAsABlob) {
    Add(std::string("A|B\ncaf\xE9|a\0b\n", 13));
    EXPECT_THAT(Query("SELECT hex(A), typeof(A), hex(B), typeof(B) FROM qrn0001"),
                ElementsAre("636166E9|blob|610062|blob"));
    EXPECT_THAT(Odd, ElementsAre("2 values have a NUL or bytes that are no UTF-8: a BLOB of the bytes"));
}

TEST_F(Databases, HaveARowForEachDownload) {
    Add("A\n1\n2\n");
    Add("A|a|\"x\n", "downloads.txt");
    Add("A\n", "sqlite_x.txt");
    EXPECT_THAT(Query("SELECT * FROM downloads; SELECT name FROM pragma_table_info('downloads_2')"),
                ElementsAre("qrn0001|qrn0001.txt|Loft|Meter|m1|ab12|2",
                            "downloads_2|downloads.txt|Loft|Meter|m1|ab12|0",
                            "table_sqlite_x|sqlite_x.txt|Loft|Meter|m1|ab12|0", "A", "a_2", "\"x"));
}

TEST_F(Databases, WhoseFolderIsGoneAreAFailure) {
    EXPECT_EQ(Database(Place.Path("gone/d.sqlite")).Close(), "unable to open database file");
}

} // namespace
} // namespace exporting
