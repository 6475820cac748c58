// SPDX-License-Identifier: MIT
#include "exporting/csv.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace exporting {
namespace {

std::string RowOf(const std::vector<Cell>& cells, const CsvForm& form = {}) {
    std::string csv;
    CsvWriter(form, csv).Row(cells);
    return csv;
}

TEST(Csv, HasQuotesWhereAReaderNeedsThem) {
    EXPECT_EQ(RowOf({{CellType::Text, "a,b"}, {CellType::Text, "say \"no\""}, {CellType::Text, "two\nlines\r"}}),
              "\"a,b\",\"say \"\"no\"\"\",\"two\nlines\r\"\r\n");
}

TEST(Csv, HasNoEmptyLineForARowOfNothing) {
    EXPECT_EQ(RowOf({{}}), "\"\"\r\n") << "readers skip an empty line";
    EXPECT_EQ(RowOf({{}, {}}), ",\r\n");
}

TEST(Csv, ChangesNoText) {
    EXPECT_EQ(RowOf({{CellType::Text, "=1+2"}, {CellType::Text, "00123"}, {CellType::Text, " a;b '"}, {}}),
              "=1+2,00123, a;b ',\r\n");
}

TEST(Csv, HasTheFormThatIsAskedFor) {
    CsvForm form;
    form.Delimiter = ';';
    form.DecimalComma = true;
    form.LineEnd = "\n";
    form.Mark = true;
    EXPECT_EQ(RowOf({{CellType::Number, "24.5"}, {CellType::Text, "1.5"}, {CellType::Text, "a;b"}}, form),
              "24,5;1.5;\"a;b\"\n");
    form.Delimiter = ',';
    EXPECT_EQ(RowOf({{CellType::Number, "24.5"}}, form), "\"24,5\"\n");
    std::string csv;
    CsvWriter(form, csv).Header({{.Name = "a"}});
    EXPECT_EQ(csv, "\xEF\xBB\xBF"
                   "a\n");
}

TEST(RawCsv, IsEachFieldAsItStands) {
    CsvForm form;
    form.LineEnd = "\n";
    EXPECT_EQ(RawCsv("A|B\r\n1|24,5 %\n\nx|y|z", form), "A,\"B\r\"\n1,\"24,5 %\"\n\"\"\nx,y,z");
}

TEST(RawCsv, ThatIsNoneIsRefused) {
    EXPECT_EQ(TableOfRawCsv("a\"b", {}), std::nullopt);
    EXPECT_EQ(TableOfRawCsv("\"open", {}), std::nullopt);
    EXPECT_EQ(TableOfRawCsv("\"a\"b", {}), std::nullopt);
    EXPECT_EQ(TableOfRawCsv("a\nb", {}), std::nullopt) << "the line ends are CR LF";
    EXPECT_EQ(TableOfRawCsv("a|b\r\n", {}), std::nullopt) << "it would be two fields";
    EXPECT_EQ(TableOfRawCsv("\"a\nb\"\r\n", {}), std::nullopt) << "it would be two lines";
}

/// Bars, quotes, line ends, NUL, bytes that are no UTF-8, short and long rows.
TEST(RawCsv, GivesTheSameTableAgain) {
    const char* const seedText = std::getenv("QUORIN_SEED");
    const auto seed = seedText != nullptr ? static_cast<unsigned>(std::atoi(seedText)) : std::random_device{}();
    std::mt19937 random(seed);
    const std::string bytes = std::string("|||\n\n\r\",;\t a1%") + '\0' + "\xFF\xC3\xA4\xEF\xBB\xBF";
    for (int round = 0; round < 5000; ++round) {
        std::string table;
        for (std::size_t length = random() % 40; length > 0; --length)
            table += bytes[random() % bytes.size()];
        CsvForm form;
        form.Delimiter = ",;\t"[random() % 3];
        form.LineEnd = random() % 2 == 0 ? "\r\n" : "\n";
        const std::string csv = RawCsv(table, form);
        ASSERT_EQ(TableOfRawCsv(csv, form), table) << "QUORIN_SEED=" << seed << "\n" << csv;
    }
}

} // namespace
} // namespace exporting
