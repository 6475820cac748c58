// SPDX-License-Identifier: MIT
#include "apps/quorin-import/rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace importer {
namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

class ImportedRow : public testing::Test {
protected:
    ImportedRow() {
        Matches.Fields = {{.Value = 0}, {.Value = 1, .Unit = 2}, {}, {.Value = 3, .Kind = values::ColumnKind::Date}};
    }
    std::string Row(const Names& cells) { return Maker.Row(cells, 7); }

    Matching Matches;
    const Names Columns = {"site", "moisture", "moisture_unit", "day"};
    RowMaker Maker{Matches, Columns};
};

TEST_F(ImportedRow, HasEachValueInItsField) {
    EXPECT_EQ(Row({"Loft", "24.5", "%", "2026-11-21"}), "Loft|24.5 %||21/11/2026");
    EXPECT_EQ(Row({"=1+2", "dry", "", "05/03/2007"}), "=1+2|dry||05/03/2007");
    EXPECT_EQ(Row({"", "", "%", ""}), "|%||");
    EXPECT_THAT(Maker.Odd(), ElementsAre());
}

TEST_F(ImportedRow, HasNoUnitWithoutANumber) {
    Matches.Fields[1] = {.Value = 1, .FixedUnit = "%"};
    EXPECT_EQ(Row({"a", "24,5", "", ""}), "a|24,5 %||");
    EXPECT_EQ(Row({"a", "", "", ""}), "a|||");
}

TEST_F(ImportedRow, HasNoBarAndNoLineEndInAField) {
    EXPECT_EQ(Row({"a|b", "one\r\ntwo\nthree\r", "", ""}), "a\xC2\xA6"
                                                           "b|one two three ||");
    EXPECT_EQ(Row({std::string("x\0y", 3), "", "", ""}), "x y|||");
    EXPECT_THAT(
        Maker.Odd(),
        ElementsAre("line 7: a value has a bar, which separates the fields of a table: a broken bar stands for it",
                    "line 7: a value has a line end or a NUL: a blank stands for it",
                    "line 7: a value has a line end or a NUL: a blank stands for it"));
}

TEST_F(ImportedRow, OfAnotherLengthIsTold) {
    EXPECT_EQ(Row({"a"}), "a|||");
    EXPECT_EQ(Row({"a", "b", "c", "", "e"}), "a|b c||");
    EXPECT_THAT(Maker.Odd(), ElementsAre("line 7: 1 of 4 values: the others are empty",
                                         "line 7: 5 values under 4 columns: the others are left out"));
}

TEST_F(ImportedRow, KeepsATextThatIsNoDate) {
    EXPECT_EQ(Row({"", "", "", "2026-02-30"}), "|||2026-02-30");
    EXPECT_EQ(Row({"", "", "", "11/21/2026"}), "|||11/21/2026");
    EXPECT_EQ(Maker.Odd().size(), 2U);
}

TEST_F(ImportedRow, IsToldTwentyTimesAndCounted) {
    for (int i = 0; i < 22; ++i)
        Row({"a"});
    EXPECT_EQ(Maker.Odd().size(), 21U);
    EXPECT_EQ(Maker.Odd().back(), "and 2 more");
}

} // namespace
} // namespace importer
