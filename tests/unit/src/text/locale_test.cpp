// SPDX-License-Identifier: MIT
// Checks that a run under a locale really has that locale. All other tests check what such a run must not change.
#include "src/text/text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <sstream>
#include <string>

namespace {

class UnderALocale : public testing::Test {
protected:
    void SetUp() override {
        if (std::getenv("QUORIN_LOCALE") == nullptr)
            GTEST_SKIP() << "no locale is asked for";
        Wanted = std::getenv("QUORIN_LOCALE");
    }
    std::string Wanted;
};

TEST_F(UnderALocale, ItIsTheOneThatIsAskedFor) {
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), Wanted);
    EXPECT_EQ(std::locale().name(), Wanted);
}

// What a program that relied on the locale would write and compare.
TEST_F(UnderALocale, TheLibraryHasADecimalComma) {
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
    char number[16];
    std::snprintf(number, sizeof number, "%.1f", 1.5);
    EXPECT_STREQ(number, "1,5");
    std::ostringstream out;
    out << 1234.5;
    EXPECT_EQ(out.str(), "1.234,5");
}

TEST_F(UnderALocale, TheLibraryHasTheLettersOfTheCountry) {
    const bool turkish = Wanted.rfind("tr_TR", 0) == 0;
    EXPECT_EQ(std::towlower(L'I'), turkish ? L'\u0131' : L'i');
    EXPECT_EQ(std::towupper(L'i'), turkish ? L'\u0130' : L'I');
}

TEST_F(UnderALocale, TheProgramComparesAsEverywhere) {
    EXPECT_EQ(modStringTools::LowerCase(u"TITLE"), u"title");
    EXPECT_EQ(modStringTools::UpperCase(u"title"), u"TITLE");
    EXPECT_TRUE(modStringTools::SameIgnoringCase(u"INFFILE", u"inffile"));
}

} // namespace
