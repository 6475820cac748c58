// SPDX-License-Identifier: MIT
#include "companion/values/quantity.h"

#include <gtest/gtest.h>

namespace values {
namespace {

std::string Apart(std::string_view field, DecimalSign sign = DecimalSign::Either) {
    const auto quantity = QuantityOf(field, sign);
    return quantity ? std::string(quantity->Number) + "|" + std::string(quantity->Unit) : "text";
}

TEST(NumberAndUnit, AreToldApart) {
    EXPECT_EQ(Apart("24.5 %"), "24.5|%");
    EXPECT_EQ(Apart("23.40 %RH"), "23.40|%RH") << "no digit is lost";
    EXPECT_EQ(Apart("  -3.1\t°C "), "-3.1|°C");
    EXPECT_EQ(Apart("20°C"), "20|°C");
    EXPECT_EQ(Apart("51%"), "51|%");
    EXPECT_EQ(Apart("1.5e-3 mol/l"), "1.5e-3|mol/l");
    EXPECT_EQ(Apart("0"), "0|");
    EXPECT_EQ(Apart("0.5 V"), "0.5|V");
    EXPECT_EQ(Apart("-.5"), "-.5|");
    EXPECT_EQ(Apart("24 /min"), "24|/min");
    EXPECT_EQ(Apart("12345678901234567890.123456789"), "12345678901234567890.123456789|");
}

TEST(NumberAndUnit, OfAnythingElseStayText) {
    for (const char* text : {"",      "  ",      "dry",  "<0.5", "> 3 %", "21/11/2026", "09:30", "1 234", "1.2.3",
                             "00123", "-007",    "=1+2", "5mm",  "3rd",   "2-3 %",      "4, 5",  "-",     ".",
                             "e5",    "+49 171", "7 -",  "1e5x", "12:",   "nan",        "inf",   "0x10"})
        EXPECT_EQ(Apart(text), "text") << text;
}

TEST(NumberAndUnit, HaveTheDecimalSignThatIsTold) {
    EXPECT_EQ(Apart("24,5 %"), "24,5|%");
    EXPECT_EQ(Apart("24,5 %", DecimalSign::Comma), "24,5|%");
    EXPECT_EQ(Apart("24,5 %", DecimalSign::Point), "text");
    EXPECT_EQ(Apart("24.5 %", DecimalSign::Comma), "text");
    EXPECT_EQ(Apart("24 %", DecimalSign::Comma), "24|%");
}

TEST(NumberAndUnit, OfACommaThatMayMeanThousandsStayText) {
    for (const char* text : {"1,234 kg", "-12,345", "123,456 g"})
        EXPECT_EQ(Apart(text), "text") << text;
    EXPECT_EQ(Apart("1,234 kg", DecimalSign::Comma), "1,234|kg") << "it was told";
    EXPECT_EQ(Apart("0,234 kg"), "0,234|kg");
    EXPECT_EQ(Apart("1,2345"), "1,2345|");
    EXPECT_EQ(Apart("1234,567"), "1234,567|");
    EXPECT_EQ(Apart("1.234 V"), "1.234|V");
}

TEST(WrittenNumber, IsAsProgramsReadIt) {
    EXPECT_EQ(PlainNumber("+24,50"), "24.50");
    EXPECT_EQ(PlainNumber("-,5"), "-0.5");
    EXPECT_EQ(PlainNumber("1E+3"), "1E+3");
}

TEST(WrittenNumber, IsTheNearestDouble) {
    EXPECT_EQ(ValueOf("24,5"), 24.5);
    EXPECT_EQ(ValueOf("-1e3"), -1000.0);
    EXPECT_EQ(ValueOf("1e999"), std::nullopt);
}

} // namespace
} // namespace values
