// SPDX-License-Identifier: MIT
#include "journal/reading_fates.h"

#include "companion/readings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace journal {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string Waits = "Moisture 14.1 %, t1: still waits, because another BLob of its burst was refused";

class FateOfAReading : public testing::Test {
protected:
    void Reading(const char* verdict, const char* value = "14.1", const char* origin = "QI-1") {
        Fates_.Take({{"time", "t1"},
                     {"event", "reading"},
                     {"verdict", verdict},
                     {"types", {"Moisture"}},
                     {"value", value},
                     {"unit", "%"},
                     {"origin", origin},
                     {"file", "qrn0001.txt"}});
    }
    void Event(const char* event) { Fates_.Take({{"event", event}}); }
    void Received(const char* from) { Fates_.Take({{"event", "received"}, {"from", from}}); }

    ReadingFates Fates_;
};

TEST_F(FateOfAReading, ThatWasTakenIsNotTold) {
    for (const char* verdict : {"taken", "replaced", "notype"})
        Reading(verdict);
    EXPECT_THAT(Fates_.Counts(), IsEmpty());
    EXPECT_THAT(Fates_.Findings(), IsEmpty());
}

TEST_F(FateOfAReading, ThatWasRefusedIsCountedInWords) {
    for (const char* verdict : {"norow", "kept", "norow", "openfield", "origin", "shape", "connect", "trace"})
        Reading(verdict);
    EXPECT_THAT(Fates_.Counts(),
                ElementsAre("1 reading (connect): refused, it came with the connection",
                            "1 reading (kept): not taken, the old value was kept",
                            "2 readings (norow): refused, no row asked for it",
                            "1 reading (openfield): written to the text field that was open for typing",
                            "1 reading (origin): refused, it was of another instrument than the connected one",
                            "1 reading (shape): refused, the end tag of its BLob was not exact",
                            "1 reading (trace): listed on the trace, which stores nothing"));
    EXPECT_THAT(Fates_.Findings(), IsEmpty());
}

TEST_F(FateOfAReading, IsKnownWhateverItIs) {
    for (int fate = 0; fate <= static_cast<int>(platform::Fate::Emptied); ++fate)
        Reading(modStringTools::ToBytes(companion::NameOf(static_cast<platform::Fate>(fate))).c_str(), "1");
    EXPECT_THAT(Fates_.Counts(), testing::Contains("1 reading (offscreen): refused, no record was on the screen"));
    EXPECT_THAT(Fates_.Counts(), testing::Not(testing::Contains(testing::HasSubstr("does not know"))));
}

TEST_F(FateOfAReading, ThatWaitsIsAFinding) {
    Reading("waiting");
    Reading("taken", "15");
    Reading("taken", "14.1", "QI-2");
    EXPECT_THAT(Fates_.Counts(),
                ElementsAre("1 reading (waiting): still waits, because another BLob of its burst was refused"));
    EXPECT_THAT(Fates_.Findings(), ElementsAre(Waits));
}

TEST_F(FateOfAReading, ThatWaitedCountsByItsSecondVerdict) {
    Reading("waiting");
    Reading("waiting");
    Reading("taken");
    Reading("norow");
    EXPECT_THAT(Fates_.Counts(), ElementsAre("1 reading (norow): refused, no row asked for it"));
    EXPECT_THAT(Fates_.Findings(), IsEmpty());
}

TEST_F(FateOfAReading, ThatWaitsIsNotDeliveredByARefusal) {
    Reading("waiting");
    for (const char* verdict : {"origin", "shape", "connect"})
        Reading(verdict);
    EXPECT_THAT(Fates_.Findings(), ElementsAre(Waits));
}

TEST_F(FateOfAReading, ThatWaitedWhenItsProgramEndedIsLost) {
    for (const char* event : {"end", "start"}) {
        Fates_ = {};
        Reading("waiting");
        Event(event);
        Reading("taken");
        EXPECT_THAT(Fates_.Findings(), ElementsAre(Waits + ", and its program was over before it had another verdict"));
    }
}

TEST_F(FateOfAReading, ThatWaitsGoesOnAfterMidnight) {
    Reading("waiting");
    Event("day");
    Reading("taken");
    EXPECT_THAT(Fates_.Findings(), IsEmpty());
}

TEST_F(FateOfAReading, ThatIsInNoFileIsAFinding) {
    for (const char* verdict : {"nocolumn", "norecord", "emptied", "newer"})
        Reading(verdict);
    EXPECT_THAT(Fates_.Findings(), ElementsAre("Moisture 14.1 %, t1: shown, but no column of the file held it",
                                               "Moisture 14.1 %, t1: shown, but the file had no record for it",
                                               "Moisture 14.1 %, t1: lost, it came while a question was open",
                                               "Moisture 14.1 %, t1: a verdict that this program does not know"));
}

TEST_F(FateOfAReading, ThatWasTakenAgainIsNone) {
    Reading("emptied");
    Received("port");
    Reading("taken");
    EXPECT_THAT(Fates_.Findings(), testing::SizeIs(1)) << "the instrument has measured once more";
    Received("again");
    Reading("norow");
    EXPECT_THAT(Fates_.Findings(), testing::SizeIs(1));
    Received("again");
    Reading("taken");
    EXPECT_THAT(Fates_.Findings(), IsEmpty());
}

} // namespace
} // namespace journal
