// SPDX-License-Identifier: MIT
#include "companion/words.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

using platform::ReadingLoss;
using platform::RecordPlace;

const platform::DateTime HalfPastEight{{2007, 3, 5}, 20, 30, 5, 0};
const platform::DateTime NextMorning{{2007, 3, 6}, 7, 0, 0, 0};

TEST(Words, OfARecordThatCantBeStored) {
    platform::OpenedRecord record{u"qrn0001.txt", RecordPlace::NoFile, platform::DiskFull, u"Meter", u"Meter", true};
    EXPECT_EQ(NoPlaceText(record), u"qrn0001.txt could not be created: the disk is full. Readings are not stored.");
    record.Place = RecordPlace::NoRecord;
    EXPECT_EQ(NoPlaceText(record),
              u"No record could be added to qrn0001.txt: the disk is full. Readings are not stored.");
}

TEST(Words, OfAReadingThatIsLost) {
    platform::LostReading reading{u"qrn0001.txt", ReadingLoss::NoFile, u"23.4 %", true, u"Moisture"};
    EXPECT_EQ(LossText(reading), u"the reading 23.4 % is not stored: the file could not be created");
    reading.Why = ReadingLoss::NoRow;
    EXPECT_EQ(LossText(reading), u"the reading 23.4 % is not stored: the file has no such record");
    reading.Why = ReadingLoss::NoField;
    EXPECT_EQ(LossText(reading), u"the reading 23.4 % is not stored: the record in the file has no field Moisture");
    reading.WithValue = false;
    reading.Fields = u"Site, Time";
    EXPECT_EQ(LossText(reading),
              u"what came with the reading 23.4 % is not stored: the record in the file has no field Site, Time");
    EXPECT_EQ(LossText({u"qrn0001.txt", ReadingLoss::Overwritten, u"1 %", true, u"Moisture"}),
              u"the reading 1 % is not stored: the formula or the variable of its row Moisture has replaced it");
}

TEST(Words, OfAReadingThatWaitsHaveItsDayWhereThatIsNotToday) {
    EXPECT_EQ(ReadingWaits(HalfPastEight, HalfPastEight).Words,
              u"A reading of 20:30 is still waiting and will go into this record.");
    EXPECT_EQ(ReadingWaits(NextMorning, HalfPastEight).Words,
              u"A reading of 20:30 on 05/03/2007 is still waiting and will go into this record.");
}

TEST(Words, OfARecordThatIsShownWithAnotherDriver) {
    EXPECT_EQ(OtherDriver({.File = u"qrn0001.txt", .Driver = u"Scale", .Owner = u"Meter", .Listed = false}).Words,
              u"This record belongs to driver Meter, it is shown with driver Scale: readings may land in the wrong "
              u"columns. Go Back and make a new download.");
    EXPECT_EQ(OtherDriver({.File = u"qrn0001.txt", .Driver = u"Meter", .Owner = u"Meter", .Listed = false}).Words,
              u"No list contains the download qrn0001.txt any more. Go Back and make a new download.");
}

TEST(Words, OfLimitsNameFiveFaultsAndCountTheRest) {
    std::vector<Text> faults = {u"line 2: a", u"line 3: b", u"line 5: c"};
    EXPECT_EQ(LimitsNotUsed(u"Site", faults).Words,
              u"Site.limits, line 2: a; line 3: b; line 5: c. What is wrong there is not used.");
    faults.insert(faults.end(), {u"line 6: d", u"line 7: e", u"line 8: f", u"line 9: g"});
    EXPECT_EQ(LimitsNotUsed(u"Site", faults).Words,
              u"Site.limits, line 2: a; line 3: b; line 5: c; line 6: d; line 7: e; and 2 more. What is wrong there is "
              u"not used.");
}

} // namespace
} // namespace companion
