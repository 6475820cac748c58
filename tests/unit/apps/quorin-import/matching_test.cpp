// SPDX-License-Identifier: MIT
#include "apps/quorin-import/matching.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace importer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Names = std::vector<std::string>;

const std::vector<values::Column> Fields = {{.Field = "Site", .Name = "place"},
                                            {.Field = "Moisture", .Name = "moisture"},
                                            {.Field = "Operator", .Name = "Operator"}};

TEST(ColumnsOfACsvFile, FillTheFieldsOfTheirNames) {
    const Matching byCsvName = Match({"OPERATOR", "place", "x"}, Fields, {});
    EXPECT_THAT(byCsvName.Filled, ElementsAre("\"Site\" from \"place\"", "\"Operator\" from \"OPERATOR\""));
    EXPECT_THAT(byCsvName.Unfilled, ElementsAre("\"Moisture\""));
    EXPECT_THAT(byCsvName.LeftOut, ElementsAre("\"x\""));
    EXPECT_EQ(Match({"site"}, Fields, {}).Fields.at(0).Value, 0U) << "by FIELDNAME";
}

TEST(ColumnsOfACsvFile, FillWhatTheyAreMappedTo) {
    const Matching mapped = Match({"Room", "Operator"}, Fields, {{"room", "site"}});
    EXPECT_EQ(mapped.Fields.at(0).Value, 0U);
    EXPECT_EQ(mapped.Fields.at(2).Value, 1U);
    EXPECT_EQ(Match({"Room"}, Fields, {{"Hall", "Site"}}).WhyNot, "The file has no column \"Hall\".");
    EXPECT_EQ(Match({"Room"}, Fields, {{"Room", "Sight"}}).WhyNot, "The driver has no field \"Sight\".");
}

TEST(ColumnsOfACsvFile, ThatFillTheSameFieldAreRefused) {
    EXPECT_EQ(Match({"Site", "place"}, Fields, {}).WhyNot,
              "The columns \"Site\" and \"place\" would both fill the field \"Site\".");
}

TEST(ColumnsOfACsvFile, OfUnitsBelongToTheirNumber) {
    const Matching split = Match({"moisture_unit", "moisture"}, Fields, {});
    EXPECT_EQ(split.Fields.at(1).Value, 1U);
    EXPECT_EQ(split.Fields.at(1).Unit, 0U);
    EXPECT_THAT(split.LeftOut, ElementsAre());
    const Matching header = Match({"Moisture [%]"}, Fields, {});
    EXPECT_EQ(header.Fields.at(1).FixedUnit, "%");
    EXPECT_THAT(Match({"place", "moisture_unit"}, Fields, {}).LeftOut, ElementsAre("\"moisture_unit\""))
        << "without a number";
}

TEST(ColumnsOfACsvFile, OfWhichNoneFillsAFieldAreRefused) {
    EXPECT_THAT(Match({"place;moisture"}, Fields, {}).WhyNot, HasSubstr("--delimiter"));
}

} // namespace
} // namespace importer
