// SPDX-License-Identifier: MIT
#include "journal/taken_readings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace journal {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string Taken = "Moisture 14.1 %, taken t1 for qrn0001.txt, ";

class TakenReading : public testing::Test {
protected:
    void Reading(const char* verdict = "taken", const char* value = "14.1", const char* old = "") {
        Readings_.Take({{"time", "t1"},
                        {"event", "reading"},
                        {"verdict", verdict},
                        {"types", {"Moisture"}},
                        {"value", value},
                        {"unit", "%"},
                        {"file", "qrn0001.txt"},
                        {"old", old}});
    }
    void Row(const char* what, const char* now, const char* why = "", const char* file = "qrn0001.txt") {
        Line line = {{"time", "t2"}, {"event", "row"}, {"what", what}, {"file", file},
                     {"row", 1},     {"old", "||"},    {"new", now}};
        if (*why != '\0')
            line["why"] = why;
        Readings_.Take(line);
    }
    void Act(const char* act) { Readings_.Take({{"event", "act"}, {"act", act}}); }
    void Recover(const char* answer, const char* file = "qrn0001.txt") {
        Readings_.Take({{"time", "2026-11-22T18:35:47"},
                        {"event", "act"},
                        {"act", "recover"},
                        {"args", answer},
                        {"about", "A record of 18:35 was not saved: " + std::string(file) + ", record 1."}});
    }
    void End() { Readings_.Take({{"event", "end"}}); }
    void Start() { Readings_.Take({{"event", "start"}}); }

    TakenReadings Readings_;
};

TEST_F(TakenReading, InTheSavedRecordIsExplained) {
    Reading();
    Reading("notype", "5");
    Row("saved", "North|14.1 %|5 %");
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
    EXPECT_EQ(Readings_.Count(), 2U);
}

TEST_F(TakenReading, InNoRecordIsAFinding) {
    Reading();
    EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is in no record that was saved"));
    Row("saved", "|14.1 %|", "no space");
    EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is in no record that was saved"));
    Row("added", "|14.1 %|");
    Row("saved", "|14.1 %|", "", "qrn0002.txt");
    EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is in no record that was saved"));
}

TEST_F(TakenReading, ThatTheSavedRecordLacksIsAFinding) {
    Reading();
    Row("saved", "|114.1 %|");
    EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is not in the record that was saved t2"));
}

TEST_F(TakenReading, ThatAPersonHasReplacedIsExplained) {
    Reading();
    Reading("replaced", "15", "14.1 %");
    Row("saved", "|15 %|");
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
}

TEST_F(TakenReading, ThatWasOverwrittenInAnOpenFieldIsExplained) {
    Reading();
    Reading("openfield", "15", "14.1 %");
    Row("saved", "|15 %|");
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
}

TEST_F(TakenReading, ThatAPersonMayHaveTypedOverIsExplained) {
    Reading();
    Act("set");
    Row("saved", "|typed|");
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
}

TEST_F(TakenReading, IsNotExplainedByATextTypedBefore) {
    Act("set");
    Reading();
    Act("menu");
    Row("saved", "||");
    EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is not in the record that was saved t2"));
}

TEST_F(TakenReading, OfADeletedRecordIsExplained) {
    Reading();
    Row("deleted", "");
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
}

TEST_F(TakenReading, OfADeletedDownloadIsExplained) {
    Reading();
    Readings_.Take({{"event", "row"},
                    {"what", "deleted"},
                    {"file", "qrnctrl.txt"},
                    {"row", 1},
                    {"old", "Meter|qrn0001.txt|20261122|"},
                    {"new", ""}});
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
}

TEST_F(TakenReading, OfARunThatEndedIsNotInALaterRecord) {
    for (const bool hasEnd : {false, true}) {
        Readings_ = {};
        Reading();
        if (hasEnd)
            End();
        else
            Start();
        EXPECT_EQ(Readings_.Unsaved("qrn0001"), "");
        Act("set");
        Row("saved", "|14.1 %|");
        Row("deleted", "");
        EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is in no record that was saved"));
    }
}

TEST_F(TakenReading, ThatAPersonHasPutBackIsExplained) {
    Reading();
    Start();
    Recover("put", "qrn0002.txt");
    Row("saved", "|14.1 %|");
    EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is in no record that was saved"));
    Recover("put");
    Row("saved", "|14.1 %|");
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
}

TEST_F(TakenReading, ThatIsNotInTheRecordPutBackIsAFinding) {
    Reading();
    Start();
    Recover("put");
    Row("saved", "|15 %|");
    Row("saved", "|14.1 %|");
    EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is in no record that was saved"));
}

TEST_F(TakenReading, ThatAPersonHasForgottenIsExplained) {
    Reading();
    Start();
    Recover("later");
    Recover("forget", "qrn0002.txt");
    EXPECT_THAT(Readings_.Findings(), ElementsAre(Taken + "is in no record that was saved"));
    Recover("forget");
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
    EXPECT_THAT(Readings_.Forgotten(), ElementsAre(Taken + "was forgotten by a person 2026-11-22 18:35:47"));
}

TEST_F(TakenReading, ThatWasRefusedIsNone) {
    for (const char* verdict : {"norow", "kept", "openfield", "trace"})
        Reading(verdict);
    EXPECT_THAT(Readings_.Findings(), IsEmpty());
    EXPECT_EQ(Readings_.Count(), 0U);
}

} // namespace
} // namespace journal
