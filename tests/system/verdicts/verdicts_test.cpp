// SPDX-License-Identifier: MIT
// Every verdict on a reading, produced through the console.
#include "tests/unit/apps/quorin-console/console_run.h"

#include <sys/resource.h>

namespace console {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

std::string Line(const std::string& tag, const std::string& value) {
    return "[" + tag + " \"" + value + "\"]\r\n";
}

std::string Blob(const std::string& lines, const std::string& end = "[/BLob]") {
    return "[BLob]\r\n" + lines + end + "\r\n";
}

std::string Result(const std::string& type, const std::string& value) {
    return Line("RESULT_TYPE", type) + Line("RESULT_VALUE", value) + Line("RESULT_UNIT", "%");
}

std::string Sent(const std::string& text) {
    return "receive " + Json(text).dump();
}

std::string From(const std::string& origin, const std::string& type, const std::string& value) {
    return Sent(Blob(Line("ORIGIN", origin) + Result(type, value)));
}

const std::string Connect = Sent(Blob(Line("CONNECT", "QI-1")));
const std::string Moisture = From("QI-1", "Moisture", "14.1");
const std::string Quiet = "tick 1500";

/// One way in which readings can end.
struct FateRow {
    const char* Name;
    Words Commands;              ///< after the instrument has connected, with a record on the screen
    Words Verdicts;              ///< one for each reading, in order
    const char* Field = nullptr; ///< of the last reading; null for none
};

void PrintTo(const FateRow& row, std::ostream* out) {
    *out << row.Name;
}

const FateRow Fates[] = {
    {"Taken", {Moisture, Quiet}, {"taken"}, "Moisture"},
    {"Replaced", {Moisture, Quiet, Moisture, Quiet, "answer yes"}, {"taken", "replaced"}, "Moisture"},
    {"Kept", {Moisture, Quiet, Moisture, Quiet, "answer no"}, {"taken", "kept"}, "Moisture"},
    {"OffScreenUnderACalendar", {"tap 3 1", Moisture, Quiet}, {"offscreen"}},
    {"OpenFieldOfAnotherRow", {"tap 1 1", Moisture, Quiet}, {"openfield"}, "Site"},
    {"OpenFieldOfItsOwnRow", {"tap 0 1", Moisture, Quiet}, {"openfield"}, "Moisture"},
    {"NoRow", {From("QI-1", "Bogus", "1"), Quiet}, {"norow"}},
    {"NoColumn", {From("QI-1", "Extra", "1"), Quiet}, {"nocolumn"}, "Extra"},
    {"NoType", {Sent(Blob(Line("RESULT_VALUE", "7") + Line("RESULT_UNIT", "%"))), Quiet}, {"notype"}, "Site"},
    {"OffScreen", {"choose Close", Moisture, Quiet}, {"offscreen"}},
    {"Trace", {"command BLUETOOTH DEBUG...", Quiet, Moisture, Quiet}, {"trace"}},
    {"Origin", {From("QI-2", "Moisture", "1"), Quiet}, {"origin"}},
    {"Connect", {Sent(Blob(Line("CONNECT", "QI-3") + Result("Moisture", "1"))), Quiet}, {"connect"}},
    {"Shape", {Sent(Blob(Result("Moisture", "1"), "[/BLob 2]")), Moisture, Quiet}, {"shape", "waiting"}},
    {"Waiting",
     {Moisture, From("QI-2", "Moisture", "1"), Quiet, From("QI-1", "Humidity", "50"), Quiet},
     {"origin", "waiting", "taken", "taken"},
     "Humidity"},
    {"Emptied",
     {Moisture, Quiet, Moisture, Quiet, From("QI-1", "Humidity", "50"), "answer no"},
     {"taken", "kept", "emptied"}},
    {"OpenFieldThatAPageKeyHasLeft", {"tap 0 1", "key 34", Moisture, Quiet}, {"openfield"}, "Moisture"},
    {"ConnectWithoutItsBracket",
     {Sent("[BLob]\r\n[CONNECT \"QI-1\"\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"), Quiet},
     {"notype"},
     "Site"},
    {"SecondRefusedBurst",
     {Moisture, From("QI-2", "Bogus", "1"), Quiet, From("QI-1", "Humidity", "50"), From("QI-2", "Bogus", "2"), Quiet},
     {"origin", "waiting", "origin", "waiting"}},
    {"SeveralOfOneRefusedBLob",
     {Sent(Blob(Line("ORIGIN", "QI-2") + Result("Moisture", "1") + Result("Humidity", "3"))), Quiet},
     {"origin", "origin"}},
    {"BLobCutByAnAnswer",
     {Moisture, Quiet, Moisture, Quiet, Sent("[BLob]\r\n" + Line("RESULT_TYPE", "Humidity")), "answer no",
      Sent(Line("RESULT_VALUE", "50") + Line("RESULT_UNIT", "%") + "[/BLob]\r\n"), Quiet, Sent("[/BLob]\r\n"), Quiet},
     {"taken", "kept", "emptied"}},
    {"SeveralOfABLobCutByAnAnswer",
     {Moisture, Quiet, Moisture, Quiet, Sent("[BLob]\r\n" + Result("Humidity", "50")), "answer no",
      Sent(Result("Bogus", "51") + "[/BLob]\r\n"), Quiet},
     {"taken", "kept", "emptied", "emptied"}},
    {"EmptiedOfAnotherInstrument",
     {Moisture, Quiet, Moisture, Quiet, From("QI-2", "Humidity", "50"), "answer no"},
     {"taken", "kept", "emptied"}},
    {"EmptiedWithTheEndOfItsBLob",
     {Moisture, Quiet, Moisture, Sent("[BLob]\r\n" + Line("RESULT_TYPE", "Humidity")), Quiet,
      Sent(Line("RESULT_VALUE", "50") + Line("RESULT_UNIT", "%") + "[/BLob]\r\n"), "answer no"},
     {"taken", "kept", "emptied"}},
    {"BLobWhoseMiddleAnAnswerCuts",
     {Moisture, Quiet, Moisture, Sent("[BLob]\r\n" + Line("RESULT_TYPE", "Humidity")), Quiet,
      Sent(Line("RESULT_VALUE", "50")), "answer no", Sent(Line("RESULT_UNIT", "%") + "[/BLob]\r\n"), Quiet,
      Sent(Line("RESULT_UNIT", "%") + "[/BLob]\r\n"), Quiet},
     {"taken", "kept", "taken"},
     "Humidity"},
    {"EmptiedFromTheMiddleOfItsBLob",
     {Moisture, Quiet, Moisture, Sent("[BLob]\r\n" + Result("Humidity", "49")), Quiet,
      Sent(Result("Humidity", "50") + Line("RESULT_UNIT", "mm")), "answer no",
      Sent(Result("Bogus", "51") + "[/BLob]\r\n"), Quiet},
     {"taken", "kept", "emptied", "emptied", "taken", "norow"}},
    {"EmptiedFromABLobInsideAnother",
     {Moisture, Quiet, Moisture, Sent("[BLob]\r\n"), Quiet,
      Sent(Result("Humidity", "49") + "[BLob]\r\n" + Result("Humidity", "50")), "answer no", Sent("[/BLob]\r\n"),
      Quiet},
     {"taken", "kept", "emptied", "emptied"}},
    {"EmptiedAfterTheEndOfItsBLob",
     {Moisture, Quiet, Moisture, Sent("[BLob]\r\n" + Result("Humidity", "49")), Quiet,
      Sent("[/BLob]\r\n[BLob]\r\n" + Result("Humidity", "50")), "answer no"},
     {"taken", "kept", "emptied", "emptied"}},
    {"BLobCutThatNeverEnds",
     {Moisture, Quiet, Moisture, Quiet, Sent("[BLob]\r\n" + Line("RESULT_TYPE", "Humidity")), "answer no",
      From("QI-1", "Humidity", "50"), Quiet},
     {"taken", "kept", "taken"},
     "Humidity"},
    {"ASecondQuestion",
     {Moisture, Quiet, Moisture, Quiet, From("QI-1", "Humidity", "50"), Quiet, "answer no", "answer no"},
     {"taken", "kept", "taken", "kept"},
     "Moisture"},
    {"EmptiedByTheFirstOfTwoQuestions",
     {Moisture, Quiet, Moisture, Quiet, From("QI-1", "Humidity", "50"), Quiet, "answer no",
      From("QI-1", "Humidity", "51"), "answer no"},
     {"taken", "kept", "taken", "kept", "emptied"}},
    {"SeveralOfOneBLob",
     {Sent(Blob(Result("Moisture", "1") + Result("Bogus", "2") + Result("Humidity", "3"))), Quiet},
     {"taken", "norow", "taken"},
     "Humidity"},
};

class FateOfAReading : public Console, public testing::WithParamInterface<FateRow> {
protected:
    FateOfAReading() {
        Root.Put("Quorin/meter.txt",
                 "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                 "Moisture|1||Moisture||||\nSite|1||||||\nHumidity|1||Humidity||||\nDay|1|||||DATE|\n"
                 "Extra|1||Extra||||\n");
        Root.Put("Quorin/qrn0001.txt", "Moisture|Site|Humidity|Day\n|||\n");
    }

    Outcome Play(const Words& commands, const Words& options = {"--verdicts"}) {
        return Tell(Joined({OpenTheDownload, {Connect, Quiet}, commands}), options);
    }
};

/// The events of the readings.
std::vector<Json> Readings(const Outcome& run) {
    std::vector<Json> readings;
    for (const Json& event : run.All("event")) {
        if (event["event"] == "reading")
            readings.push_back(event);
    }
    return readings;
}

TEST_P(FateOfAReading, HasItsVerdict) {
    const Outcome run = Play(GetParam().Commands);
    Words verdicts;
    for (const Json& reading : Readings(run))
        verdicts.push_back(reading["verdict"]);
    ASSERT_THAT(verdicts, ElementsAreArray(GetParam().Verdicts)) << run.Output;
    const Json field = Readings(run).back()["field"];
    EXPECT_EQ(field, GetParam().Field != nullptr ? Json(GetParam().Field) : Json());
}

TEST_P(FateOfAReading, SaysWhichReadingItWas) {
    for (const Json& reading : Readings(Play(GetParam().Commands))) {
        EXPECT_EQ(reading["types"].size(), 1U) << reading;
        EXPECT_THAT(reading.value("unit", ""), testing::AnyOf("%", "mm")) << reading;
    }
}

INSTANTIATE_TEST_SUITE_P(Each, FateOfAReading, testing::ValuesIn(Fates),
                         [](const auto& row) { return row.param.Name; });

TEST_F(FateOfAReading, IsNoRecordIfTheFileCantBeMade) {
    std::filesystem::remove(Root.Path() / "Quorin/qrn0001.txt");
    const Outcome run = Tell({"choose Start...", "choose Ok", "disk fail -1", "choose Open", "disk ok", "tick 500",
                              Connect, Quiet, Moisture, Quiet},
                             {"--verdicts"});
    ASSERT_EQ(Readings(run).size(), 1U) << run.Output;
    EXPECT_EQ(Readings(run)[0]["verdict"], "norecord");
}

TEST_F(FateOfAReading, IsReportedWithAllThatIsKnown) {
    const Outcome run = Play({From("QI-1", "Moisture", "14.1"), Quiet});
    ASSERT_EQ(Readings(run).size(), 1U);
    EXPECT_EQ(Readings(run)[0].dump(),
              R"({"event":"reading","verdict":"taken","types":["Moisture"],"value":"14.1","unit":"%","origin":"QI-1",)"
              R"("row":0,"field":"Moisture","file":"qrn0001.txt"})");
}

TEST_F(FateOfAReading, IsReportedWithAllItsTypes) {
    const Outcome run = Play({From("QI-1", "Bogus\" \"Moisture", "14.1"), Quiet});
    ASSERT_EQ(Readings(run).size(), 1U);
    EXPECT_EQ(Readings(run)[0]["types"], Json({"Bogus", "Moisture"}));
}

TEST_F(FateOfAReading, IsReportedWithTheExpectedOrigin) {
    const Outcome run = Play({From("QI-2", "Moisture", "14.1"), Quiet});
    ASSERT_EQ(Readings(run).size(), 1U);
    EXPECT_EQ(Readings(run)[0].dump(),
              R"({"event":"reading","verdict":"origin","types":["Moisture"],"value":"14.1","unit":"%","origin":"QI-2",)"
              R"("row":null,"field":null,"file":null,"expected":"QI-1"})");
}

TEST_F(FateOfAReading, ExpectsTheInstrumentOfItsTime) {
    const Outcome run = Play({From("QI-2", "Moisture", "1"), Sent(Blob(Line("CONNECT", "QI-2"))), Quiet});
    ASSERT_EQ(Readings(run).size(), 1U);
    EXPECT_EQ(Readings(run)[0].value("expected", ""), "QI-1");
}

TEST_F(FateOfAReading, HasTheConnectedOriginIfItNamesNone) {
    for (const std::string end : {"[/BLob]", "[/BLob 2]"}) {
        const Outcome run = Play({Sent(Blob(Result("Moisture", "1"), end)), Moisture, Quiet, "answer yes"});
        ASSERT_FALSE(Readings(run).empty()) << run.Output;
        EXPECT_EQ(Readings(run)[0].value("origin", ""), "QI-1") << end;
    }
}

/// Returns the largest memory, in megabytes, of all programs that this one has run so far.
long MegabytesOfPrograms() {
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    return used.ru_maxrss / 1024;
}

/// The BLob has 4,000 results, each of which inherits a type of 100,000 characters: copies of it are 800 MB.
TEST_F(FateOfAReading, NeedsNoMemoryForItsSiblings) {
    std::string lines = Line("RESULT_TYPE", std::string(100'000, 'x'));
    for (int result = 0; result < 4'000; ++result)
        lines += "[RESULT_UNIT \"\"]\r\n";
    const auto play = [&](const char* end) {
        std::string input;
        for (const std::string& command :
             Joined({OpenTheDownload, {Connect, Quiet, Sent(Blob(lines, end)), Moisture, Quiet}}))
            input += command + "\n";
        return Shell("ASAN_OPTIONS=quarantine_size_mb=8 " + Program() + " <input >output 2>errors", input);
    };
    EXPECT_EQ(play("[/BLob]").Status, 0);
    EXPECT_EQ(play("[/BLob 2]").Status, 0);
    EXPECT_LT(MegabytesOfPrograms(), 400);
}

/// Returns the events of a run in short: the verdicts of readings, saves, tones.
Words Events(const Outcome& run) {
    Words events;
    for (const Json& event : run.All("event")) {
        if (event["event"] == "reading")
            events.push_back(event["verdict"]);
        else if (event["event"] != "status")
            events.push_back(event["event"]);
    }
    return events;
}

TEST_F(FateOfAReading, ComesAfterItsToneAndBeforeTheSaveOfItsRecord) {
    const Outcome run = Play({Moisture, Quiet, "choose New Record", "choose Close"});
    EXPECT_THAT(Events(run), ElementsAre("tone", "taken", "saved"));
    EXPECT_EQ(run.Last("file").dump(), R"({"event":"saved","file":"qrn0001.txt","row":1})");
}

TEST_F(FateOfAReading, IsNotReportedUnlessThatIsAskedFor) {
    const Outcome run = Play({Moisture, Quiet, "choose New Record", "choose Close"}, {});
    EXPECT_EQ(run.Status, 0);
    EXPECT_THAT(Events(run), ElementsAre("tone"));
}

TEST_F(FateOfAReading, HasNoSaveAfterItThatFailed) {
    const Outcome run = Play({Moisture, Quiet, "disk fail -1", "choose New Record"});
    EXPECT_THAT(Events(run), testing::Not(testing::Contains("saved")));
    EXPECT_THAT(Events(run), testing::Contains("notsaved"));
}

/// This run saves the table of drivers.
TEST_F(FateOfAReading, HasNoSaveOfATableThatIsNoDownload) {
    const Outcome run =
        Tell({"choose inf editor...", "choose New", "tap 0 1", "set New", "choose Save"}, {"--verdicts"});
    EXPECT_NE(Root.Bytes("Quorin/drivers.txt").find("New|"), std::string::npos) << run.Output;
    EXPECT_THAT(Events(run), testing::IsEmpty());
}

TEST_F(FateOfAReading, IsForAPersonALineOfText) {
    const Outcome run = Play({Moisture, Quiet, "choose New Record"}, {"--verdicts", "--text"});
    EXPECT_THAT(run.Lines, testing::IsSupersetOf({"    reading taken: 14.1 %", "    saved: row 1 of qrn0001.txt"}));
}

/// A reading is reported with the open download only if it came to a record.
TEST_P(FateOfAReading, NamesTheDownloadOfItsRecord) {
    static const Words atARecord = {"taken", "replaced", "kept",     "openfield",
                                    "norow", "nocolumn", "norecord", "notype"};
    for (const Json& reading : Readings(Play(GetParam().Commands))) {
        const bool named = testing::Matches(testing::Contains(reading["verdict"]))(atARecord);
        EXPECT_EQ(reading["file"], named ? Json("qrn0001.txt") : Json()) << reading;
    }
}

// --- a reading that is taken again ---------------------------------------------------------------------------------

class ReadingTakenAgain : public FateOfAReading {
protected:
    Words VerdictsOf(const Words& commands) {
        const Outcome run = Play(commands);
        Words verdicts;
        for (const Json& reading : Readings(run))
            verdicts.push_back(reading["verdict"]);
        return verdicts;
    }
};

TEST_F(ReadingTakenAgain, GoesIntoTheRecordThatIsOpenThen) {
    const Outcome run = Play({Moisture, Quiet, "choose New Record", "again 1", Quiet, "choose Close"});
    EXPECT_EQ(Readings(run).size(), 2U) << run.Output;
    EXPECT_EQ(Root.Bytes("Quorin/qrn0001.txt"), "Moisture|Site|Humidity|Day\n14.1 %|||\n14.1 %|||\n");
}

TEST_F(ReadingTakenAgain, NeedsNoVerdictsInTheOutput) {
    Play({Moisture, Quiet, "choose New Record", "again 1", Quiet, "choose Close"}, {});
    EXPECT_EQ(Root.Bytes("Quorin/qrn0001.txt"), "Moisture|Site|Humidity|Day\n14.1 %|||\n14.1 %|||\n");
}

TEST_F(ReadingTakenAgain, IsListedOnTheTrace) {
    EXPECT_THAT(VerdictsOf({Moisture, Quiet, "choose Close", "command BLUETOOTH DEBUG...", Quiet, "again 1", Quiet}),
                ElementsAre("taken", "trace"));
}

TEST_F(ReadingTakenAgain, ComesWithoutItsSiblings) {
    EXPECT_THAT(VerdictsOf({Sent(Blob(Result("Bogus", "1") + Result("Moisture", "2"))), Quiet, "again 1", Quiet}),
                ElementsAre("norow", "taken", "norow"));
}

TEST_F(ReadingTakenAgain, IsRefusedOnceMoreIfItsInstrumentIs) {
    const std::string reading = From("QI-2", "Moisture", "1");
    EXPECT_THAT(VerdictsOf({reading, Quiet, "again 1", Quiet}), ElementsAre("origin", "origin"));
    EXPECT_THAT(VerdictsOf({reading, Quiet, Sent(Blob(Line("CONNECT", "QI-2"))), Quiet, "again 1", Quiet}),
                ElementsAre("origin", "taken"));
}

TEST_F(ReadingTakenAgain, IsRefusedOnceMoreForItsForm) {
    EXPECT_THAT(VerdictsOf({Sent(Blob(Result("Moisture", "1"), "[/BLob 2]")), Moisture, Quiet, "again 1", Quiet}),
                ElementsAre("shape", "waiting", "shape"));
}

TEST_F(ReadingTakenAgain, NamesTheInstrumentThatItCameFrom) {
    EXPECT_THAT(VerdictsOf({Moisture, Quiet, Sent(Blob(Line("CONNECT", "QI-2"))), Quiet, "again 1", Quiet}),
                ElementsAre("taken", "origin"));
}

TEST_F(ReadingTakenAgain, IsARecordOfItsOwnIfItsBLobHadNoEnd) {
    EXPECT_THAT(VerdictsOf({Moisture, Quiet, Moisture, Sent("[BLob]\r\n"), Quiet, Sent(Result("Humidity", "50")),
                            "answer no", Sent("[/BLob]\r\n"), Quiet, "again 3", Quiet}),
                ElementsAre("taken", "kept", "emptied", "taken"));
}

TEST_F(ReadingTakenAgain, ComesOnce) {
    EXPECT_THAT(VerdictsOf({From("QI-1", "Bogus", "1"), Quiet, "again 1", Quiet, Moisture, Quiet}),
                ElementsAre("norow", "norow", "taken"));
}

TEST_F(ReadingTakenAgain, WaitsWithOthersThatAre) {
    EXPECT_THAT(VerdictsOf({From("QI-1", "Bogus", "1"), Moisture, Quiet, Sent("half"), "again 1", "again 2",
                            Sent(" a line\r\n"), Quiet, "answer no"}),
                ElementsAre("norow", "taken", "norow", "kept"));
}

TEST_F(ReadingTakenAgain, WaitsUntilAHalfLineHasItsEnd) {
    EXPECT_THAT(VerdictsOf({From("QI-1", "Bogus", "1"), Quiet, Sent("[BLob]\r\n[RESULT_TY"), "again 1", Quiet}),
                ElementsAre("norow"));
    EXPECT_THAT(VerdictsOf({From("QI-1", "Bogus", "1"), Quiet, Sent("half"), "again 1", Sent(" a line\r\n"), Quiet}),
                ElementsAre("norow", "norow"));
}

TEST_F(ReadingTakenAgain, NeedsARecordOrTheTraceOnTheScreen) {
    const Outcome run = Play({Moisture, Quiet, "choose Close", "again 1"});
    EXPECT_EQ(run.Last("done").value("error", ""), "neither a record nor the trace is on the screen");
}

TEST_F(ReadingTakenAgain, NeedsTheAnswerToAnOpenBox) {
    const Outcome run = Play({Moisture, Quiet, Moisture, Quiet, "again 1", "answer no", Quiet});
    EXPECT_THAT(run.Output, testing::HasSubstr("a message box is open"));
    EXPECT_EQ(Readings(run).size(), 2U) << run.Output;
}

TEST_F(ReadingTakenAgain, ComesByItselfIfItWaits) {
    const Outcome run = Play({Moisture, From("QI-2", "Bogus", "1"), Quiet, "again 2"});
    EXPECT_EQ(run.Last("done").value("error", ""), "this reading waits and comes by itself");
}

TEST_F(ReadingTakenAgain, NeedsTheNumberOfAReading) {
    for (const char* number : {"0", "2", "-1", "x", "", "1 1"})
        EXPECT_NE(Play({Moisture, Quiet, std::string("again ") + number}).Last("done").value("error", ""), "")
            << number;
}

} // namespace
} // namespace console
