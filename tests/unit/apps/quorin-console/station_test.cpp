// SPDX-License-Identifier: MIT
// A station: each reading becomes a row without a person, and what a person must decide stops it with a reason.
#include "tests/unit/apps/quorin-console/console_run.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>

namespace console {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string Result(const std::string& type, const std::string& value, const std::string& origin = "") {
    const std::string from = origin.empty() ? "" : R"([ORIGIN \")" + origin + R"(\"]\r\n)";
    return R"([BLob]\r\n)" + from + R"([RESULT_TYPE \")" + type + R"(\"]\r\n[RESULT_VALUE \")" + value +
           R"(\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n)";
}

/// Returns the commands by which these BLobs arrive in one burst and are decoded.
Words Burst(const Words& blobs) {
    std::string text;
    for (const std::string& blob : blobs)
        text += blob;
    return {"receive \"" + text + "\"", "tick 2000"};
}

class StationOf : public Console {
protected:
    StationOf() { ::setenv("XDG_STATE_HOME", State.Path().c_str(), 1); }

    Outcome Collect(const std::vector<Words>& bursts, const Words& options = {}) {
        Words told = {"tick 2000"};
        for (const Words& burst : bursts)
            told = Joined({told, burst});
        return Tell(told, Joined({{"--station", "Meter", "--clock", "virtual"}, options}));
    }
    std::string Download(const std::string& name = "qrn0001.txt") { return Root.Bytes("Quorin/" + name); }
    /// Returns the states that the station has told, each with its words.
    static Words States(const Outcome& run) {
        Words states;
        for (const Json& event : run.All("state"))
            states.push_back(event.at("state").get<std::string>() + ": " + event.at("text").get<std::string>());
        return states;
    }
    static Words Verdicts(const Outcome& run) {
        Words verdicts;
        for (const Json& event : run.All("verdict"))
            verdicts.push_back(event.at("value").get<std::string>() + " " + event.at("verdict").get<std::string>());
        return verdicts;
    }

    support::TemporaryFolder State;
};

TEST_F(StationOf, EachBurstFillsARecordOfItsOwn) {
    const Outcome run = Collect({Burst({Result("Moisture", "14.1")}), Burst({Result("Moisture", "14.2")})});
    EXPECT_EQ(Download(), "Moisture|Day\n14.1 %|\n14.2 %|\n");
    EXPECT_THAT(Verdicts(run), ElementsAre("14.1 taken", "14.2 taken"));
    EXPECT_THAT(States(run), ElementsAre("collecting: Collects Meter into qrn0001.txt."));
    EXPECT_THAT(run.Output, Not(HasSubstr("\"box\"")));
    EXPECT_EQ(run.Status, 0);
}

TEST_F(StationOf, AReadingIsSavedBeforeTheNextOne) {
    Collect({Burst({Result("Moisture", "14.1")}), {"quit"}});
    EXPECT_EQ(Download(), "Moisture|Day\n14.1 %|\n");
}

TEST_F(StationOf, AnInstrumentThatRepeatsFillsARecordEach) {
    const Outcome run = Collect({Burst({Result("Moisture", "1"), Result("Moisture", "2"), Result("Moisture", "3")})});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n2 %|\n3 %|\n");
    EXPECT_THAT(run.Output, Not(HasSubstr("\"box\"")));
}

TEST_F(StationOf, ResultsOfOneBurstShareARecord) {
    Root.Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                 "Moisture|1||Moisture||||\nHeat|1||Heat||||\n");
    Collect({Burst({Result("Moisture", "1"), Result("Heat", "20")}), Burst({Result("Heat", "21")})});
    EXPECT_EQ(Download(), "Moisture|Heat\n1 %|20 %\n|21 %\n");
}

TEST_F(StationOf, AReadingWithoutARowBeginsNoRecord) {
    const Outcome run = Collect({Burst({Result("Moisture", "1")}), Burst({Result("Length", "2")})});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n");
    EXPECT_THAT(Verdicts(run), ElementsAre("1 taken", "2 norow"));
}

TEST_F(StationOf, ANewStartGoesOnBehindTheLastRecord) {
    Collect({Burst({Result("Moisture", "1")})});
    Collect({Burst({Result("Moisture", "2")})});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n2 %|\n");
}

TEST_F(StationOf, TheFirstDownloadIsMade) {
    Root.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\n");
    const Outcome run = Collect({Burst({Result("Moisture", "1")})});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n");
    EXPECT_EQ(Root.Bytes("Quorin/qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070305|\n");
}

TEST_F(StationOf, ADriverWithAnotherFieldGetsAnotherDownload) {
    Root.Put("Quorin/qrn0001.txt", "Moisture\nold\n");
    Collect({Burst({Result("Moisture", "1")})});
    EXPECT_EQ(Download(), "Moisture\nold\n");
    EXPECT_EQ(Download("qrn0002.txt"), "Moisture|Day\n1 %|\n");
}

TEST_F(StationOf, EachDayGetsADownloadIfAsked) {
    const Outcome run = Collect({Burst({Result("Moisture", "1")}),
                                 Burst({Result("Moisture", "2")}),
                                 {"jump 86400000", "tick 3000"},
                                 Burst({Result("Moisture", "3"), Result("Moisture", "4")}),
                                 Burst({Result("Moisture", "5")})},
                                {"--daily"});
    EXPECT_THAT(Download("qrn0001.txt"), "Moisture|Day\n|\n") << "it is of another day";
    EXPECT_EQ(Download("qrn0002.txt"), "Moisture|Day\n1 %|\n2 %|\n");
    EXPECT_EQ(Download("qrn0003.txt"), "Moisture|Day\n3 %|\n4 %|\n5 %|\n");
    EXPECT_EQ(Root.Bytes("Quorin/qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n"
                                                "Meter|qrn0002.txt|20070305|\nMeter|qrn0003.txt|20070306|\n");
    EXPECT_THAT(run.Output, Not(HasSubstr("waiting")));
    EXPECT_THAT(States(run), ElementsAre("collecting: Collects Meter into qrn0001.txt.",
                                         "collecting: Collects Meter into qrn0002.txt.",
                                         "collecting: Collects Meter into qrn0003.txt."));
}

TEST_F(StationOf, WithoutThatADayGoesOnInTheSameDownload) {
    Collect({Burst({Result("Moisture", "1")}), {"jump 86400000", "tick 3000"}, Burst({Result("Moisture", "2")})});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n2 %|\n");
}

TEST_F(StationOf, ABurstAtMidnightDoesNotWaitForADay) {
    const std::string burst = "receive \"" + Result("Moisture", "1") + "\"";
    const Outcome run = Collect({{"tick 1600", burst, "tick 2000"}}, {"--now", "2007-03-05T23:59:56", "--daily"});
    EXPECT_EQ(Download("qrn0002.txt"), "Moisture|Day\n1 %|\n");
    EXPECT_THAT(Root.Bytes("Quorin/qrnctrl.txt"), HasSubstr("Meter|qrn0002.txt|20070306|"));
}

TEST_F(StationOf, AFullDiskEndsItWithWhatIsNotSaved) {
    const Outcome run = Collect({Burst({Result("Moisture", "1")}), {"disk fail -1"}, Burst({Result("Moisture", "2")})});
    EXPECT_EQ(run.Status, 6);
    EXPECT_THAT(Verdicts(run), ElementsAre("1 taken", "2 norecord"));
    EXPECT_EQ(run.All("state").back().at("notsaved"), Json({"Moisture 2 %"}));
    EXPECT_THAT(States(run).back(), HasSubstr("stopped: qrn0001.txt can't be written: "));
    EXPECT_THAT(run.Errors, HasSubstr("ended by the station: qrn0001.txt can't be written: "));
    EXPECT_THAT(Download(), HasSubstr("1 %"));
}

TEST_F(StationOf, TheRestOfABurstIsToldToo) {
    const Outcome run = Collect({Burst({Result("Moisture", "1")}),
                                 {"disk fail -1"},
                                 Burst({Result("Moisture", "2"), Result("Moisture", "3"), Result("Moisture", "4")})});
    EXPECT_EQ(run.Status, 6);
    EXPECT_THAT(Verdicts(run), ElementsAre("1 taken", "2 norecord", "3 norecord", "4 norecord"));
}

TEST_F(StationOf, ASaveThatFailsEndsIt) {
    const Outcome run = Collect({{"disk fail -1"}, Burst({Result("Moisture", "1")})});
    EXPECT_EQ(run.Status, 6);
    EXPECT_THAT(Verdicts(run), ElementsAre("1 taken"));
    EXPECT_EQ(run.All("state").back().at("notsaved"), Json({"Moisture 1 %"}));
}

TEST_F(StationOf, AnotherInstrumentIsTold) {
    const std::string connect = R"([BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n)";
    const Outcome run =
        Collect({Burst({connect}), Burst({Result("Moisture", "1", "QI-1")}), Burst({Result("Moisture", "2", "QI-2")}),
                 Burst({Result("Moisture", "3", "QI-2")}), Burst({Result("Moisture", "4", "QI-1")})});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n4 %|\n");
    EXPECT_THAT(Verdicts(run), ElementsAre("1 taken", "2 origin", "3 origin", "4 taken"));
    EXPECT_THAT(States(run),
                ElementsAre(HasSubstr("collecting"), "connected: QI-1 has connected.",
                            HasSubstr("foreign: A reading of QI-2 was refused: the station collects from QI-1")));
}

TEST_F(StationOf, AnInstrumentThatHasNotConnectedIsTold) {
    const Outcome run = Collect({Burst({Result("Moisture", "1", "QI-1")})});
    EXPECT_THAT(States(run).back(), HasSubstr("QI-1 was refused: it has not said that it is connected. Switch it off"));
}

TEST_F(StationOf, ThatIsLeftSaysSo) {
    const Outcome run = Collect({{"choose Close"}, {"tick 100"}, {"choose Open"}, Burst({Result("Moisture", "1")})});
    EXPECT_THAT(States(run), ElementsAre(HasSubstr("collecting"), HasSubstr("left: A command has left the record"),
                                         HasSubstr("collecting")));
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n");
}

TEST_F(StationOf, AnOpenFieldTakesTheReadingOfItsRow) {
    Collect({{"tap 1 1", "pick 2008-02-29", "tick 100", "tap 0 1", "set 7"},
             Burst({Result("Moisture", "1")}),
             {"choose Close"}});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|29/02/2008\n");
}

TEST_F(StationOf, AQuestionOfAPersonStaysAboutItsRecord) {
    const Outcome run = Collect({Burst({Result("Moisture", "1")}),
                                 {"choose Delete Record"},
                                 Burst({Result("Moisture", "2")}),
                                 {"answer no", "answer no", "tick 2000"}});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n") << "no record was begun behind the one that is asked about";
    EXPECT_THAT(Verdicts(run), ElementsAre("1 taken", "2 kept"));
}

TEST_F(StationOf, AQuestionThatNobodyWillAnswerIsAnsweredWithNo) {
    const Outcome run = Collect({Burst({Result("Moisture", "1")}), {"choose Delete Record"}});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n");
    EXPECT_THAT(run.Output, HasSubstr(R"({"done":"answer"})"));
}

TEST_F(StationOf, AReadingOnAnEarlierRecordIsSavedToo) {
    Root.Put("Quorin/qrn0001.txt", "Moisture|Day\n|\n7 %|\n8 %|\n");
    const Outcome run =
        Collect({{"choose First Record", "tick 200"}, Burst({Result("Moisture", "1")}), {"state", "quit"}});
    EXPECT_EQ(Download(), "Moisture|Day\n1 %|\n7 %|\n8 %|\n");
    EXPECT_EQ(run.Last("SelectedDriver").at("TableRowIndex"), 3);
}

TEST_F(StationOf, APortThatIsGoneIsToldAndTheOneThatComesBack) {
    const Outcome run =
        Collect({{"serial fail -1", "serial drop", "tick 4000"}, {"tick 3000"}, {"serial fail 0", "tick 2000"}});
    EXPECT_THAT(States(run), ElementsAre(HasSubstr("collecting"), HasSubstr("linkdown: Com1 is not open: "),
                                         "linkup: Com1 is open."));
    const Outcome brief = Collect({{"serial drop", "tick 3000"}});
    EXPECT_THAT(States(brief), ElementsAre(HasSubstr("collecting"))) << "it was open again at once";
}

TEST_F(StationOf, APortWithoutAnAddressIsRefused) {
    const Outcome run = Shell("timeout 20 " + Program() + " --station Meter </dev/null >output 2>errors", "");
    EXPECT_EQ(run.Status, 2) << "124: it has begun";
    EXPECT_THAT(run.Errors, HasSubstr("Com1 has no address; --port 1=ADDRESS gives it one"));
}

TEST_F(StationOf, AMessageDoesNotHoldItUp) {
    Root.Put("settings.ini", "[Settings]\nComPort=SERVER\n");
    const Outcome run = Collect({{"tick 3000"}});
    EXPECT_THAT(run.Output, HasSubstr("RFCOMM Server not running"));
    EXPECT_THAT(run.Output, HasSubstr(R"({"done":"answer"})"));
    EXPECT_THAT(run.Output, Not(HasSubstr(R"({"ready":1})")));
}

TEST_F(StationOf, ThePortOfTheCommandLineIsChosen) {
    Root.Put("settings.ini", "");
    Collect({}, {"--port", "7=/dev/nothing-there"});
    EXPECT_THAT(Root.Bytes("settings.ini"), HasSubstr("ComPort=Com7"));
}

/// Numbered readings in bursts of all kinds, with dropped ports, midnights, and at the end a full disk.
class StationOnAWeek : public StationOf, public testing::WithParamInterface<unsigned> {};

TEST_P(StationOnAWeek, HasEachReadingInARowOrSaysWhatBecameOfIt) {
    std::mt19937 dice(GetParam());
    const auto throwOf = [&dice](unsigned sides) { return static_cast<int>(dice() % sides); };
    Words told = {"tick 2000"};
    int last = 1000;
    for (int burst = 0; burst < 120; ++burst) {
        std::string text;
        for (int more = throwOf(4); more >= 0; --more) {
            const char* const types[] = {"Moisture", "Moisture", "Moisture", "Length", "Heat"};
            text += Result(types[throwOf(5)], std::to_string(++last));
            if (throwOf(20) == 0)
                text += R"([BLob]\r\nnoise\r\n)";
        }
        told = Joined({told, {"receive \"" + text + "\"", "tick " + std::to_string(100 + throwOf(3000))}});
        if (throwOf(10) == 0)
            told = Joined({told, {"serial drop", "tick 3000"}});
        if (throwOf(10) == 0)
            told = Joined({told, {"jump " + std::to_string(throwOf(100'000'000)), "tick 5000"}});
        if (burst == 115)
            told = Joined({told, {"tick 5000", "disk fail -1"}});
    }
    Root.Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                 "Moisture|1||Moisture||||\nHeat|1||Heat||||\nAt|1|||||TIME|endtime\n");
    const Outcome run = Tell(Joined({told, {"tick 5000"}}), {"--station", "Meter", "--clock", "virtual", "--daily"});
    EXPECT_EQ(run.Status, 6) << run.Errors;
    std::map<int, std::string> fates; // of each number: the last verdict
    for (const Json& event : run.All("verdict"))
        fates[std::stoi(event.at("value").get<std::string>())] = event.at("verdict");
    const std::string lost = run.All("notsaved").back().at("notsaved").dump();
    std::string rows;
    for (int day = 1; day < 60; ++day)
        rows += Download("qrn00" + std::string(day < 10 ? "0" : "") + std::to_string(day) + ".txt");
    int received = 0; // the last one that arrived before the end
    for (const auto& [number, fate] : fates)
        received = std::max(received, number);
    EXPECT_GT(received, 1200);
    for (int number = 1001; number <= received; ++number) {
        const std::string value = std::to_string(number) + " %";
        if (fates[number] == "taken")
            EXPECT_TRUE(rows.find(value) != std::string::npos || lost.find(value) != std::string::npos) << number;
        else
            EXPECT_THAT(fates[number], testing::AnyOf("norow", "norecord")) << number;
        EXPECT_EQ(rows.find(value), rows.rfind(value)) << number << " is in two rows";
    }
    EXPECT_THAT(run.Output, Not(HasSubstr("\"box\"")));
}

INSTANTIATE_TEST_SUITE_P(Seeds, StationOnAWeek, testing::Range(1U, 13U));

struct Hindrance {
    const char* Name;
    const char* File;
    const char* Bytes;
    const char* Told;
};
class StationHinderedBy : public StationOf, public testing::WithParamInterface<Hindrance> {};

TEST_P(StationHinderedBy, DoesNotStartAndSaysWhy) {
    Root.Put(GetParam().File, GetParam().Bytes);
    const Outcome run = Collect({});
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Errors, HasSubstr(GetParam().Told));
    EXPECT_THAT(States(run).back(), HasSubstr(GetParam().Told));
}

const std::string InfHeader = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
const std::string NoResults = InfHeader + "Moisture|1||dv: Moisture||||\n";
const std::string Copies = InfHeader + "Moisture|1|1|Moisture||||\n";

// clang-format off: a row a hindrance
INSTANTIATE_TEST_SUITE_P(
    It, StationHinderedBy,
    testing::Values(Hindrance{"Driver", "Quorin/drivers.txt", "NAME|INFFILE\nOther|other.txt\n",
                              "the driver Meter is not installed"},
                    Hindrance{"Inf", "Quorin/drivers.txt", "NAME|INFFILE\nMeter|gone.txt\n",
                              "qrn0001.txt can't be opened with the driver Meter"},
                    Hindrance{"Results", "Quorin/meter.txt", NoResults.c_str(),
                              "the driver Meter has no field that takes a reading"},
                    Hindrance{"Copy", "Quorin/meter.txt", Copies.c_str(),
                              "the driver Meter copies Moisture into each new record"},
                    Hindrance{"Register", "Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nOther|other.txt|20070301|\n",
                              "no download of Meter can be made"},
                    Hindrance{"Port", "settings.ini", "", "no port is chosen; --port N=ADDRESS says which one"}),
    [](const testing::TestParamInfo<Hindrance>& hindrance) { return hindrance.param.Name; });
// clang-format on

TEST_F(StationOf, ItsStateHasTheNumberOfTheContract) {
    EXPECT_EQ(Tell({"state"}).Last("SelectedDriver").at("Contract"), 1);
}

TEST_F(StationOf, AnEmptyNameIsNoWish) {
    const Outcome run = Tell({}, {"--station", ""});
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Errors, HasSubstr("--station: it is empty"));
    EXPECT_EQ(Tell({}, {"--hand-over", ""}).Status, 2);
}

TEST_F(StationOf, OnlyAStationIsDaily) {
    const Outcome run = Tell({}, {"--daily"});
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Errors, HasSubstr("--daily: is for a station: --station DRIVER"));
}

TEST_F(StationOf, ThePlainTextSaysWhatItDoes) {
    const Outcome run = Collect({}, {"--text"});
    EXPECT_THAT(run.Output, HasSubstr("    station collecting: Collects Meter into qrn0001.txt.\n"));
}

} // namespace
} // namespace console
