// SPDX-License-Identifier: MIT
#include "journal/masking.h"

#include "journal/story.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace journal {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Received(const std::string& bytes) {
    return Line{{"ms", 10}, {"event", "received"}, {"from", "port"}, {"bytes", bytes}}.dump();
}
std::string Hide(Masking& masking, const std::string& line) {
    return masking.Masked(Line::parse(line)).dump();
}

TEST(Masking, KeepsTheShapeOfATextAlone) {
    EXPECT_EQ(Masked("North wall, 14.1 %"), "xxxxx xxxx, 00.0 %");
    EXPECT_EQ(Masked("Grüße €5"), "xxxxx x0");
    EXPECT_EQ(Masked(""), "");
}

TEST(Masking, KeepsTagsTypesAndUnitsOfARecord) {
    RecordMask mask;
    EXPECT_EQ(
        mask.Masked("[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[DESCRIPTIVE_VAR \"Site=North wall\"]\r\n"
                    "[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"),
        "[BLob]\r\n[ORIGIN \"xx-0000\"]\r\n[DESCRIPTIVE_VAR \"xxxx=xxxxx xxxx\"]\r\n"
        "[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"00.0\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
}

TEST(Masking, OfARecordGoesOnInItsNextPart) {
    RecordMask mask;
    EXPECT_EQ(mask.Masked("[RESULT_VA"), "[RESULT_VA");
    EXPECT_EQ(mask.Masked("LUE \"2"), "LUE \"0");
    EXPECT_EQ(mask.Masked("3.4\"]\r\n[RES"), "0.0\"]\r\n[RES");
}

TEST(Masking, HidesWhatIsNoKnownTag) {
    RecordMask mask;
    EXPECT_EQ(mask.Masked("[Smith 12]\r\nAda Lovelace\r\n [RESULT_TYPE \"x1\"]"),
              "[xxxxx 00]\r\nxxx xxxxxxxx\r\n [xxxxxx_xxxx \"x0\"]");
    EXPECT_EQ(mask.Masked("\n[RESULT_TYPES \"Ada\"]"), "\n[RESULT_TYPEx \"xxx\"]");
}

TEST(Masking, HidesWhatFollowsATypeInItsLine) {
    RecordMask mask;
    EXPECT_EQ(mask.Masked("[RESULT_TYPE \"M\"] [ORIGIN \"QI-0001\"]\r\n[RESULT_UNIT \"%\"] Ada"),
              "[RESULT_TYPE \"M\"] [xxxxxx \"xx-0000\"]\r\n[RESULT_UNIT \"%\"] xxx");
}

TEST(Masking, HidesWhatAPersonTyped) {
    Masking masking;
    EXPECT_THAT(Hide(masking, R"({"ms":5,"event":"act","act":"set","text":"Ada","about":"Site of Ada"})"),
                Not(HasSubstr("Ada")));
    EXPECT_THAT(Hide(masking, R"({"ms":5,"event":"act","act":"pick","args":"2007-03-05"})"), HasSubstr("0000-00-00"));
    EXPECT_THAT(Hide(masking, R"({"ms":5,"event":"act","act":"key","args":"65"})"), HasSubstr("00"));
    EXPECT_THAT(Hide(masking, R"({"ms":5,"event":"act","act":"key","args":"37"})"), HasSubstr("37"));
    EXPECT_THAT(Hide(masking, R"({"ms":5,"event":"act","act":"command","args":"Ada"})"), HasSubstr("xxx"));
}

TEST(Masking, KeepsWhereAPersonTapped) {
    Masking masking;
    const std::string tap = R"({"ms":5,"event":"act","act":"press","args":"2 1","about":"North"})";
    EXPECT_EQ(Hide(masking, tap), R"({"ms":5,"event":"act","act":"press","args":"2 1","about":"xxxxx"})");
    EXPECT_THAT(Hide(masking, R"({"event":"act","act":"menu","args":"1 3"})"), HasSubstr("1 3"));
}

TEST(Masking, HidesFoldersAndWordsOfTheCommandLine) {
    Masking masking;
    EXPECT_EQ(
        Hide(masking, R"({"event":"start","root":"/home/ada","user":"ada","words":["--root=/home/ada","ada.qvd"]})"),
        R"({"event":"start","root":"/xxxx/xxx","user":"xxx","words":["--root=/xxxx/xxx","xxx.xxx"]})");
}

TEST(Masking, OfRowsAndReadingsIsWhole) {
    Masking masking;
    EXPECT_THAT(Hide(masking, R"({"event":"row","what":"saved","file":"ada.txt","row":2,"old":"|","new":"Ada|1"})"),
                HasSubstr(R"("new":"xxx|0")"));
    EXPECT_THAT(Hide(masking, R"({"event":"reading","verdict":"taken","variables":{"Site":"Ada"},"value":"5"})"),
                Not(HasSubstr("Ada")));
}

TEST(Masking, LeavesAStoryThatCanBePlayed) {
    Masking masking;
    Story story;
    for (const std::string& line :
         {std::string(R"({"ms":0,"event":"start","clock":"virtual"})"), Received("[RESULT_VALUE \"1"),
          Received("4.1\"]\r\n"), std::string(R"({"ms":10,"event":"act","act":"set","text":"Ada"})")})
        story.Take(masking.Masked(Line::parse(line)));
    EXPECT_EQ(story.Commands(), "tick 10\nreceive \"[RESULT_VALUE \\\"0\"\nreceive \"0.0\\\"]\\r\\n\"\nset \"xxx\"\n");
}

} // namespace
} // namespace journal
