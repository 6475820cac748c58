// SPDX-License-Identifier: MIT
#include "companion/verdict_words.h"

#include "tests/support/printed_rows.h"

#include <gtest/gtest.h>

#include <ostream>

namespace companion {
namespace {

using platform::Fate;
using platform::Verdict;

struct WordsRow {
    Fate Of;
    const char* Line;
    Outcome Is;
};

void PrintTo(const WordsRow& row, std::ostream* out) {
    *out << row.Line;
}

Verdict Moisture(Fate fate) {
    Verdict verdict{.Fate = fate, .Row = 1, .Field = u"Wall", .Old = u"12.0 %", .File = u"qrn0001.txt"};
    verdict.Reading.Types = {u"Moisture", u"M"};
    verdict.Reading.Value = u"14.1";
    verdict.Reading.Unit = u"%";
    verdict.Reading.Origin = u"QI-0002";
    verdict.Expected = u"QI-0001";
    return verdict;
}

std::string LineOf(const Verdict& verdict) {
    return modStringTools::ToBytes(WordsOf(verdict, u"Climate Meter").Line);
}

class WordsOfAVerdict : public testing::TestWithParam<WordsRow> {};

TEST_P(WordsOfAVerdict, SayWhatBecameOfTheReading) {
    const Verdict verdict = Moisture(GetParam().Of);
    EXPECT_EQ(LineOf(verdict), GetParam().Line);
    EXPECT_EQ(WordsOf(verdict, u"Climate Meter").Outcome, GetParam().Is);
}

INSTANTIATE_TEST_SUITE_P(
    OfEachFate, WordsOfAVerdict,
    testing::Values(WordsRow{Fate::Taken, "● Moisture 14.1 % → Wall", Outcome::Taken},
                    WordsRow{Fate::Replaced, "● Moisture 14.1 % → Wall, in place of 12.0 %", Outcome::Taken},
                    WordsRow{Fate::Kept, "○ Wall keeps 12.0 %, not Moisture 14.1 %", Outcome::Left},
                    WordsRow{Fate::OpenField, "● into the open field: Wall, Moisture 14.1 %", Outcome::Alarm},
                    WordsRow{Fate::NoRow, "○ refused: no row of Climate Meter asks for \"Moisture\"", Outcome::Alarm},
                    WordsRow{Fate::NoColumn, "● shown, but no column of qrn0001.txt holds it", Outcome::Alarm},
                    WordsRow{Fate::NoRecord, "● shown, but qrn0001.txt has no record for it", Outcome::Alarm},
                    WordsRow{Fate::NoType, "● Moisture 14.1 % → Wall, without a type", Outcome::Taken},
                    WordsRow{Fate::OffScreen, "○ refused: no record is on the screen", Outcome::Alarm},
                    WordsRow{Fate::Trace, "● Moisture 14.1 %, shown here and not stored", Outcome::Left},
                    WordsRow{Fate::Origin, "○ refused: from QI-0002, connected is QI-0001", Outcome::Alarm},
                    WordsRow{Fate::Connect, "○ refused: Moisture 14.1 % came with the connection", Outcome::Alarm},
                    WordsRow{Fate::Shape, "○ refused: the end tag of its BLob is not exact", Outcome::Alarm},
                    WordsRow{Fate::Waiting, "○ waits: another BLob of its burst was refused", Outcome::Alarm},
                    WordsRow{Fate::Emptied, "○ lost: Moisture 14.1 % came while a question was open", Outcome::Alarm}));

TEST_P(WordsOfAVerdict, HaveNoLongPart) {
    const Text text(41, u'x');
    Verdict verdict{.Fate = GetParam().Of, .Field = text, .Old = text, .Expected = text};
    verdict.Reading = {.Types = {text}, .Value = text, .Unit = text, .Variables = {}, .Origin = text};
    EXPECT_EQ(WordsOf(verdict, text).Line.find(text), Text::npos);
}

TEST(WordsOfAnInstrument, AreShortAndOnOneLine) {
    Verdict verdict = Moisture(Fate::Taken);
    verdict.Reading.Value = u"1\r\n4\x7f" + Text(100, u'x');
    EXPECT_EQ(LineOf(verdict), "● Moisture 1  4 " + std::string(35, 'x') + "… → Wall");
    verdict.Reading.Value = Text(39, u'x') + u"\U0001F600";
    EXPECT_EQ(LineOf(verdict), "● Moisture " + std::string(39, 'x') + "… → Wall") << "no half of a character";
}

TEST(WordsOfAnInstrument, DoNotHideThatAPartIsMissing) {
    Verdict verdict = Moisture(Fate::NoRow);
    verdict.Reading.Types = {u""};
    EXPECT_EQ(LineOf(verdict), "○ refused: no row of Climate Meter asks for a result without a type");
    verdict = Moisture(Fate::NoType);
    verdict.Reading.Types = {u""};
    EXPECT_EQ(LineOf(verdict), "● 14.1 % → Wall, without a type");
    verdict = Moisture(Fate::Origin);
    verdict.Reading.Origin.clear();
    verdict.Expected.clear();
    EXPECT_EQ(LineOf(verdict), "○ refused: it names no instrument, no instrument is connected");
}

} // namespace
} // namespace companion
