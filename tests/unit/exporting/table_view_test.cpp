// SPDX-License-Identifier: MIT
#include "exporting/table_view.h"

#include "exporting/csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace exporting {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using values::ColumnKind;

const std::vector<values::FieldRow> Fields = {
    {"Site", "site", ColumnKind::Text, true},    {"Moisture", "moisture", ColumnKind::Measured, true},
    {"Day", "", ColumnKind::Date, true},         {"Hour", "", ColumnKind::Time, true},
    {"Meter", "meter", ColumnKind::Text, false},
};
const std::string Table = "Site|Moisture|Day|Hour|Meter\n"
                          "North wall|24,5 %|5/3/07|9:30|QI-1\n"
                          "00123|dry|soon|late|QI-1\n"
                          "|19 °C|21/11/2026|10:00|\n";

/// Returns the table as CSV with LF.
std::string Csv(const std::string& table, const Plan& plan = {}, const std::vector<values::FieldRow>& fields = Fields) {
    const Source source{.File = "qrn0001.txt", .Alias = "Loft", .Bytes = table, .Fields = fields};
    const TableView view(source, plan);
    std::string csv;
    CsvForm form;
    form.LineEnd = "\n";
    CsvWriter writer(form, csv);
    writer.Header(view.Columns());
    view.ForEachRow([&](const std::vector<Cell>& cells) { writer.Row(cells); });
    return csv;
}

TEST(ExportedTable, HasNumbersUnitsAndDatesByThemselves) {
    EXPECT_EQ(Csv(Table), "site,moisture,moisture_unit,Day,Hour\n"
                          "North wall,24.5,%,2007-03-05,09:30\n"
                          "00123,dry,,soon,late\n"
                          ",19,°C,2026-11-21,10:00\n");
}

TEST(ExportedTable, HasTheUnitInTheNameIfThereIsOneAlone) {
    const Plan plan{.Units = Units::Header, .Dates = Dates::Keep};
    EXPECT_EQ(Csv("Site|Moisture\na|1 %\nb|2 %\nc|\n", plan), "site,moisture [%]\na,1\nb,2\nc,\n");
    EXPECT_EQ(Csv("Site|Moisture\na|1\nb|2\n", plan), "site,moisture\na,1\nb,2\n");
    EXPECT_EQ(Csv("Site|Moisture\na|1 %\nb|2 g\n", plan), "site,moisture,moisture_unit\na,1,%\nb,2,g\n");
}

TEST(ExportedTable, StaysAsItIsIfThatIsAsked) {
    const Plan plan{.Units = Units::Keep, .Dates = Dates::Keep};
    EXPECT_EQ(Csv("Moisture|Day\n24.5 %|5/3/07\n", plan), "moisture,Day\n24.5 %,5/3/07\n");
}

TEST(ExportedTable, HasTheNamedColumnsInTheirOrder) {
    const Plan plan{.Columns = {"Hour", "MOISTURE", "Nowhere"}};
    EXPECT_EQ(Csv("Site|Moisture|Day|Hour\na|1 %|1/2/03|9:30\n", plan), "Hour,moisture\n09:30,1\n");
    const Source source{.File = "", .Alias = "", .Bytes = Table, .Fields = Fields};
    EXPECT_THAT(TableView(source, plan).Odd(), ElementsAre("there is no column Nowhere"));
}

TEST(ExportedTable, HasWhatIsAskedForBesides) {
    const Plan plan{.Zone = "+01:00", .Hidden = true, .Alias = true, .Record = true, .Measured = {"SITE"}};
    EXPECT_EQ(Csv("Site|Hour|Meter\n7 m|9:30|QI-1\n", plan), "alias,record,site,site_unit,Hour,meter\n"
                                                             "Loft,1,7,m,09:30+01:00,QI-1\n");
}

TEST(ExportedTable, ReadsTheDecimalSignThatIsTold) {
    EXPECT_EQ(Csv("Moisture\n24,5 %\n", {.Decimal = values::DecimalSign::Point}),
              "moisture,moisture_unit\n\"24,5 %\",\n");
}

TEST(ExportedTable, OfAnUnknownDriverIsText) {
    EXPECT_EQ(Csv("Moisture|Day\n24.5 %|5/3/07\n", {}, {}), "Moisture,Day\n24.5 %,5/3/07\n");
}

TEST(ExportedTable, KeepsWhatIsBeyondItsColumns) {
    const std::string table = "Site|Day\na|5/3/07|x|y\nb\n";
    EXPECT_EQ(Csv(table), "site,Day,beyond\na,2007-03-05,x|y\nb,,\n");
    const Source source{.Bytes = table, .Fields = Fields};
    const Plan plan;
    const TableView view(source, plan);
    EXPECT_THAT(view.Odd(), ElementsAre("line 2: 4 fields under 2 columns: the others are in the column \"beyond\"",
                                        "line 3: 1 of 2 fields: the others are missing"));
}

TEST(ExportedTable, NamesAColumnThatIsAskedForAndNotThere) {
    const Source source{.Bytes = "Site\na\n", .Fields = Fields};
    const Plan plan{.Measured = {"Weight"}};
    EXPECT_THAT(TableView(source, plan).Odd(), ElementsAre("there is no column Weight"));
}

TEST(ExportedTable, NamesTwentyOddRowsAndCountsTheOthers) {
    std::string table = "A|B\n";
    for (int row = 0; row < 25; ++row)
        table += "short\n";
    const Source source{.Bytes = table};
    const Plan plan;
    const TableView view(source, plan);
    ASSERT_EQ(view.Odd().size(), 21U);
    EXPECT_EQ(view.Odd().back(), "and 5 more");
}

TEST(ExportedTable, CountsWhatCouldNotBeToldApart) {
    const Source source{.Bytes = Table, .Fields = Fields};
    const Plan plan;
    const TableView view(source, plan);
    EXPECT_EQ(view.Rows(), 3U);
    EXPECT_THAT(view.Untold(),
                ElementsAre("moisture: 1 value is no number with a unit, kept as text",
                            "Day: 1 value is no date, kept as text", "Hour: 1 value is no time, kept as text"));
    EXPECT_THAT(view.Odd(), IsEmpty());
}

TEST(ExportedTable, HasNoTwoColumnsOfOneName) {
    EXPECT_EQ(Csv("moisture_unit|Moisture|beyond\na|1 %|b|c\n"),
              "moisture_unit,moisture,moisture_unit_2,beyond,beyond_2\na,1,%,b,c\n");
}

TEST(ExportedTable, WithoutALineHasNoColumns) {
    const Source source;
    const Plan plan;
    EXPECT_THAT(TableView(source, plan).Columns(), IsEmpty());
}

TEST(ATableView, HasColumnsByTheirNumber) {
    const Source source{.Bytes = "Caf\xE9|M|#2\nx|5 %|y\n",
                        .Fields = {{.Field = "M", .CsvName = "", .Kind = values::ColumnKind::Measured}}};
    Plan plan{.Record = true, .Columns = {"|2", "|1", "#2"}};
    const auto names = [&] {
        std::vector<std::string> found;
        const TableView view(source, plan);
        for (const OutColumn& column : view.Columns())
            found.push_back(column.Name);
        return found;
    };
    EXPECT_THAT(names(), testing::ElementsAre("M", "M_unit", "Caf\xE9", "#2"))
        << "a number and its unit are of one field";
    plan.Columns = {"|1", "|4"};
    EXPECT_THAT(names(), testing::ElementsAre("Caf\xE9"));
    EXPECT_THAT(TableView(source, plan).Odd(), testing::ElementsAre("there is no column |4"));
    plan = {.Measured = {"|3", "|9"}};
    EXPECT_THAT(names(), testing::ElementsAre("Caf\xE9", "M", "M_unit", "#2", "#2_unit"));
    EXPECT_THAT(TableView(source, plan).Odd(), testing::ElementsAre("there is no column |9"));
}

TEST(ATableView, HasOneColumnOfNamesThatDifferByCase) {
    const Source source{.Bytes = "Site|SITE\nx|y\n"};
    for (const auto& [wanted, name] : {std::pair("Site", "Site"), {"SITE", "SITE"}, {"site", "Site"}}) {
        const Plan plan{.Columns = {wanted}};
        const TableView view(source, plan);
        ASSERT_EQ(view.Columns().size(), 1U) << wanted;
        EXPECT_EQ(view.Columns().front().Name, name);
    }
}

TEST(ATableView, CountsTheRowsForWhoWatchesThem) {
    std::string bytes = "A\n";
    for (int i = 0; i < 2500; ++i)
        bytes += "x\n";
    const Source source{.Bytes = bytes};
    const Plan plan;
    TableView view(source, plan);
    std::vector<std::size_t> passed;
    view.Watch([&](std::size_t rows) { passed.push_back(rows); });
    view.ForEachRow([](const std::vector<Cell>&) {});
    EXPECT_THAT(passed, testing::ElementsAre(1000, 1000, 500));
}

} // namespace
} // namespace exporting
