// SPDX-License-Identifier: MIT
#include "exporting/json_rows.h"

#include "exporting/data_package.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace exporting {
namespace {

TEST(JsonRow, HasNumbersAsTheyWereWritten) {
    JsonRows rows({{.Name = "a \"b\""}, {.Name = "n", .Type = CellType::Number}, {.Name = "t"}, {.Name = "none"}});
    EXPECT_EQ(rows.Line({{CellType::Text, "x\ty"}, {CellType::Number, "23.40"}, {CellType::Text, "00123"}, {}}),
              "{\"a \\\"b\\\"\":\"x\\ty\",\"n\":23.40,\"t\":\"00123\",\"none\":null}\n");
    EXPECT_EQ(rows.Replaced(), 0U);
}

TEST(JsonRow, HasNoByteThatIsNotUtf8) {
    JsonRows rows({{.Name = "a"}});
    const std::string line = rows.Line({{CellType::Text, "caf\xE9"}});
    EXPECT_EQ(nlohmann::json::parse(line).at("a"), "caf\xEF\xBF\xBD");
    EXPECT_EQ(rows.Replaced(), 1U);
}

TEST(DataPackageOfACsvFile, SaysWhatIsInIt) {
    CsvForm form;
    form.Delimiter = ';';
    const CsvFile file{"o.csv", "ab12", 100, 2, "qrn0001.txt", "Loft", "Meter"};
    const auto package = nlohmann::json::parse(
        DataPackage(file, form,
                    {{.Name = "moisture", .Field = "Moisture", .Type = CellType::Number, .Unit = "%"},
                     {.Name = "day", .Field = "Day", .Type = CellType::Date, .OtherTexts = 1}}));
    const auto& resource = package.at("resources").at(0);
    EXPECT_EQ(resource.at("path"), "o.csv");
    EXPECT_EQ(resource.at("hash"), "sha256:ab12");
    EXPECT_EQ(resource.at("driver"), "Meter");
    EXPECT_EQ(resource.at("dialect").at("delimiter"), ";");
    const auto& fields = resource.at("schema").at("fields");
    EXPECT_EQ(fields.at(0).dump(), R"({"name":"moisture","title":"Moisture","type":"number","unit":"%"})");
    EXPECT_EQ(fields.at(1).at("type"), "any") << "a text among its dates";
}

} // namespace
} // namespace exporting
