// SPDX-License-Identifier: MIT
#include "companion/reading_table.h"

#include "src/drivers/selection.h"
#include "src/view/screen_table.h"
#include "tests/support/heard_readings.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace companion {
namespace {

using platform::Fate;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TableOfReadings : public testing::Test {
protected:
    TableOfReadings() {
        Device.Platform.StartProgram();
        Device.SetTime("2007-03-05T20:30:12");
        modQuorin::Selection.SelectedDriver = u"Meter";
    }
    void Judge(Fate fate, const Text& type, const Text& value = u"14.1", const Text& blob = u"") {
        platform::Verdict verdict{.Fate = fate, .Row = 1, .Field = u"Wall", .File = u"qrn0001.txt"};
        verdict.Reading.Types = {type, u"M"};
        verdict.Reading.Value = value;
        verdict.Reading.Unit = u"%";
        verdict.Reading.Origin = u"QI-1";
        if (!blob.empty())
            verdict.Reading.Blob = std::make_shared<const Text>(blob);
        Table.ReadingJudged(verdict);
    }
    void TakeUp() {
        Table.DropExpired();
        Table.FindFresh();
        Table.ShowFresh();
    }
    std::vector<std::string> Types() {
        std::vector<std::string> types;
        for (std::size_t row = 0; row < Table.Rows(); ++row)
            types.push_back(modStringTools::ToBytes(Table.Cell(row, ReadingColumn::Type)));
        return types;
    }
    std::string Copied(const std::vector<std::size_t>& rows) { return modStringTools::ToBytes(Table.CopyOf(rows)); }

    support::TestDevice Device;
    ReadingTable Table;
};

TEST_F(TableOfReadings, SaysOfEachWhereItWentAndWhy) {
    Judge(Fate::Taken, u"Moisture");
    Judge(Fate::NoRow, u"Bogus");
    TakeUp();
    EXPECT_EQ(Copied({0, 1}),
              "2007-03-05 20:30:12\tQI-1\tMoisture, M\t14.1 %\t● taken\t\tqrn0001.txt\t2 Wall\tMoisture 14.1 % → Wall\n"
              "2007-03-05 20:30:12\tQI-1\tBogus, M\t14.1 %\t○ norow\t\tqrn0001.txt\t2 Wall\trefused: no row of Meter "
              "asks for \"Bogus\"\n");
}

TEST_F(TableOfReadings, ShowsADateOnlyOfAnotherDay) {
    Judge(Fate::Taken, u"Moisture");
    TakeUp();
    EXPECT_EQ(Table.Cell(0, ReadingColumn::Time), u"20:30:12");
    Device.SetTime("2007-03-06T00:00:01");
    EXPECT_EQ(Table.Cell(0, ReadingColumn::Time), u"05/03 20:30");
    EXPECT_EQ(Table.WholeCell(0, ReadingColumn::Time), u"2007-03-05 20:30:12");
}

TEST_F(TableOfReadings, HasTheLimitApartFromWhatBecameOfIt) {
    const ValueLimits limits(u"COLUMN|WARNLOW|FAILHIGH\nWall|15|20\n", {u"Wall"});
    Table.Use(limits);
    for (const char16_t* value : {u"14.1", u"17", u"20.5"})
        Judge(Fate::Taken, u"Moisture", value);
    TakeUp();
    EXPECT_EQ(Table.Cell(0, ReadingColumn::Limit), u"▲ warn < 15");
    EXPECT_EQ(Table.Cell(1, ReadingColumn::Limit), u"");
    EXPECT_EQ(Table.Cell(2, ReadingColumn::Limit), u"✖ fail > 20");
    EXPECT_EQ(Table.Cell(0, ReadingColumn::Verdict), u"● taken");
    EXPECT_EQ(Table.Cell(2, ReadingColumn::Explanation), u"Moisture 20.5 % → Wall");
    EXPECT_EQ(Table.Words(2), u"✖ fail: Moisture 20.5 % → Wall; above the limit 20");
    Table.SetFilter(u"warn", 0);
    EXPECT_EQ(Table.Rows(), 1U);
}

TEST_F(TableOfReadings, CopiesNoTabsOrLineEndsOfATextItself) {
    Judge(Fate::Trace, u"a\tb", u"1\r\n2");
    TakeUp();
    EXPECT_THAT(Copied({0}), HasSubstr("\ta b, M\t1  2 %\t"));
}

TEST_F(TableOfReadings, ShowsAReportOnlyOnceItIsTakenUp) {
    Judge(Fate::Taken, u"A");
    EXPECT_EQ(Table.Rows(), 0U);
    EXPECT_EQ(Table.Kept(), 1U);
    EXPECT_EQ(Table.FindFresh(), 1U);
    EXPECT_EQ(Table.Rows(), 0U);
    Table.ShowFresh();
    EXPECT_EQ(Table.Rows(), 1U);
    EXPECT_EQ(Table.FindFresh(), 0U);
}

TEST_F(TableOfReadings, IsFilteredByATextInAnyColumn) {
    Judge(Fate::Taken, u"Moisture");
    Judge(Fate::Taken, u"Temperature", u"19.5");
    Judge(Fate::NoRow, u"Bogus");
    Table.SetFilter(u"MOIST", 0);
    EXPECT_THAT(Types(), ElementsAre("Moisture, M"));
    Table.SetFilter(u"19.5", 0);
    EXPECT_THAT(Types(), ElementsAre("Temperature, M"));
    Table.SetFilter(u"norow", 0);
    EXPECT_THAT(Types(), ElementsAre("Bogus, M"));
    for (const char16_t* everywhere : {u"qi-1", u"QRN0001", u"wall", u"20:30:12", u""}) {
        Table.SetFilter(everywhere, 0);
        EXPECT_EQ(Table.Rows(), 3U) << modStringTools::ToBytes(everywhere);
    }
    Table.SetFilter(u"nothing", 0);
    EXPECT_THAT(Types(), IsEmpty());
}

TEST_F(TableOfReadings, IsFilteredByVerdict) {
    const auto choice = [](const Text& name) {
        std::size_t at = 0;
        while (VerdictChoices().at(at).Name != name)
            ++at;
        return at;
    };
    Judge(Fate::Taken, u"A");
    Judge(Fate::NoRow, u"B");
    Judge(Fate::Kept, u"C");
    Judge(Fate::Emptied, u"D");
    Table.SetFilter(u"", choice(u"Refused, lost or doubtful"));
    EXPECT_THAT(Types(), ElementsAre("B, M", "D, M"));
    Table.SetFilter(u"", choice(u"Taken"));
    EXPECT_THAT(Types(), ElementsAre("A, M"));
    Table.SetFilter(u"", choice(u"only \"emptied\""));
    EXPECT_THAT(Types(), ElementsAre("D, M"));
    Table.SetFilter(u"", choice(u"All verdicts"));
    EXPECT_EQ(Table.Rows(), 4U);
}

TEST_F(TableOfReadings, KeepsItsFilterForWhatComesLater) {
    Table.SetFilter(u"b", 0);
    Judge(Fate::Taken, u"A");
    Judge(Fate::Taken, u"B");
    TakeUp();
    EXPECT_THAT(Types(), ElementsAre("B, M"));
    EXPECT_EQ(Table.NumberAt(0), 2U);
    EXPECT_EQ(Table.RowOf(2), 0U);
    EXPECT_EQ(Table.RowOf(1), std::nullopt);
}

TEST_F(TableOfReadings, HasTheRecordOfARefusedOneAsItCame) {
    Judge(Fate::Origin, u"A", u"1", u"[BLob]\r\x01noise\r[/BLob]\r");
    Judge(Fate::Taken, u"B", u"2");
    TakeUp();
    EXPECT_TRUE(Table.IsAsReceived(0));
    EXPECT_EQ(Table.RawText(0, 100), u"[BLob]\n␁noise\n[/BLob]\n");
    EXPECT_EQ(Table.RawText(0, 6), u"[BLob]…");
    EXPECT_FALSE(Table.IsAsReceived(1));
    EXPECT_THAT(modStringTools::ToBytes(Table.RawText(1, 100)), HasSubstr("[RESULT_VALUE \"2\"]\n"));
}

TEST_F(TableOfReadings, DropsTheOldestBeyondItsSize) {
    for (std::size_t n = 0; n < ReadingTable::MostRows; ++n)
        Judge(Fate::Taken, u"A");
    TakeUp();
    EXPECT_EQ(Table.Rows(), ReadingTable::MostRows);
    Judge(Fate::Taken, u"B");
    Judge(Fate::Taken, u"C");
    EXPECT_EQ(Table.Kept(), ReadingTable::MostRows);
    EXPECT_EQ(Table.Expired(), 2U);
    EXPECT_EQ(Table.Cell(0, ReadingColumn::Type), u"") << "shown still, and not kept any more";
    EXPECT_EQ(Table.AgainRefusal(0, false), u"it is not kept any more");
    TakeUp();
    EXPECT_EQ(Table.Rows(), ReadingTable::MostRows);
    EXPECT_EQ(Table.NumberAt(0), 3U);
    EXPECT_EQ(Table.Cell(Table.Rows() - 1, ReadingColumn::Type), u"C, M");
}

TEST_F(TableOfReadings, DropsTheOldestBeyondTheSizeOfTheirText) {
    const Text large(KeptReadings::Capacity / 2, u'x');
    for (const char16_t* type : {u"A", u"B", u"C"})
        Judge(Fate::Shape, type, u"1", large);
    TakeUp();
    EXPECT_THAT(Types(), ElementsAre("B, M", "C, M"));
}

// A reading that is taken again.

TEST_F(TableOfReadings, TakesOneAgainOnARecordAndOnTheTrace) {
    Judge(Fate::NoRow, u"A");
    TakeUp();
    modQuorin::Screens.CurrentScreen = modQuorin::ScrDownloads;
    EXPECT_EQ(Table.AgainRefusal(0, false), u"neither a record nor the trace is on the screen");
    for (const auto screen : {modQuorin::ScrInfRecord, modQuorin::ScrBluetoothDebug}) {
        modQuorin::Screens.CurrentScreen = screen;
        EXPECT_EQ(Table.AgainRefusal(0, false), u"");
        EXPECT_EQ(Table.AgainRefusal(0, true), u"a message box is open");
    }
}

TEST_F(TableOfReadings, LeavesAloneWhatComesByItself) {
    modQuorin::Screens.CurrentScreen = modQuorin::ScrInfRecord;
    Judge(Fate::Waiting, u"A");
    TakeUp();
    EXPECT_EQ(Table.AgainRefusal(0, false), u"this reading waits and comes by itself");
}

TEST_F(TableOfReadings, HandsOverTheRecordAsThePortWould) {
    Judge(Fate::Origin, u"A", u"1", u"[BLob]\rnoise\r[/BLob]\r");
    TakeUp();
    const support::HeardReadings heard(Device);
    Table.TakeAgain(0);
    EXPECT_THAT(heard.Texts,
                ElementsAre(testing::Pair(platform::TextSource::Again, u"[BLob]\r\nnoise\r\n[/BLob]\r\n")));
}

} // namespace
} // namespace companion
