// SPDX-License-Identifier: MIT
#include "journal/causes.h"

#include <gtest/gtest.h>

namespace journal {
namespace {

class CausesOfARow : public testing::Test {
protected:
    void Take(const char* line) { Causes_.Take(Line::parse(line)); }
    std::string AtARow() {
        Take(R"({"event":"row"})");
        return Causes_.Text();
    }
    Causes Causes_;
};

TEST_F(CausesOfARow, AreTheActsAndReadingsBefore) {
    Take(R"({"event":"act","act":"press","args":"0 1","about":"Site"})");
    Take(R"({"event":"act","act":"release"})");
    Take(R"({"event":"act","act":"set","text":"North \"wall\""})");
    Take(R"({"event":"link","open":true})");
    Take(R"({"event":"reading","verdict":"taken","types":["Moisture"],"value":"14.1","unit":"%"})");
    Take(R"({"event":"act","act":"answer","args":"no","about":"Replace?"})");
    Take(R"({"event":"act","act":"key","args":"13"})");
    EXPECT_EQ(AtARow(), R"(tap Site, set "North \"wall\"", Moisture 14.1 % (taken), answer no to "Replace?", key 13)");
}

TEST_F(CausesOfARow, AreThoseSinceTheRowBefore) {
    Take(R"({"event":"act","act":"close"})");
    EXPECT_EQ(AtARow(), "close");
    EXPECT_EQ(AtARow(), "close"); // one act, two rows
    Take(R"({"event":"act","act":"menu","args":"1 4","about":"New"})");
    EXPECT_EQ(AtARow(), "menu New");
}

TEST_F(CausesOfARow, AreThoseOfTheRun) {
    Take(R"({"event":"act","act":"close"})");
    Take(R"({"event":"start"})");
    EXPECT_EQ(AtARow(), "");
}

TEST_F(CausesOfARow, AreOnOneLine) {
    Take(R"({"event":"act","act":"answer","args":"no","about":"Replace\n\"x\"?"})");
    EXPECT_EQ(AtARow(), R"(answer no to "Replace "x"?")");
}

TEST_F(CausesOfARow, NameAMenuByTheEntryThatWasChosen) {
    Take(R"({"event":"act","act":"title","args":"1","about":"File"})");
    Take(R"({"event":"act","act":"menu","args":"1 4","about":"New"})");
    Take(R"({"event":"act","act":"title","args":"1","about":"Ok"})");
    EXPECT_EQ(AtARow(), "menu New, title Ok");
}

TEST_F(CausesOfARow, AreTheLastOnesWhereThereAreMany) {
    for (int i = 1; i <= 9; ++i)
        Take((R"({"event":"act","act":"key","args":")" + std::to_string(i) + "\"}").c_str());
    EXPECT_EQ(AtARow(), "… key 4, key 5, key 6, key 7, key 8, key 9");
    Take(R"({"event":"act","act":"close"})");
    EXPECT_EQ(AtARow(), "close");
}

} // namespace
} // namespace journal
