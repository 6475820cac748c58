// SPDX-License-Identifier: MIT
// The limits of values, by the events of the console.
#include "tests/unit/apps/quorin-console/console_run.h"

#include <fstream>
#include <sstream>

namespace console {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string SampleBytes(const std::string& name) {
    std::ostringstream bytes;
    bytes << std::ifstream(std::string(QUORIN_SAMPLES) + "/" + name, std::ios::binary).rdbuf();
    return bytes.str();
}

/// The sample driver with a download, and settings in a folder of their own.
class LimitsOfTheSample : public Console {
protected:
    LimitsOfTheSample() {
        const std::string package = SampleBytes("climate.qvd");
        Root.Put("Quorin/climate.txt", package.substr(package.find("FIELDNAME|")));
        Root.Put("Quorin/drivers.txt", "NAME|INFFILE\nClimate Meter|climate.txt\n");
        Root.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nClimate Meter|qrn0001.txt|20070301|\n");
        Root.Put("config/settings.ini", "[Settings]\nComPort=Com1\n");
        PutLimits(SampleBytes("Climate Meter.limits"));
    }
    void PutLimits(const std::string& table) { Root.Put("config/Climate Meter.limits", table); }

    /// Opens the record and receives one reading of each type and value.
    Outcome Measure(const std::vector<std::pair<std::string, std::string>>& readings, const Words& last = {}) {
        Words commands = OpenTheDownload;
        for (const auto& [type, value] : readings) {
            const std::string blob = "[BLob]\r\n[RESULT_TYPE \"" + type + "\"]\r\n[RESULT_VALUE \"" + value +
                                     "\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
            commands.push_back("receive " + Json(blob).dump());
            commands.push_back("tick 1500");
        }
        return Tell(Joined({commands, last}),
                    {"--verdicts", "--settings", (Root.Path() / "config/settings.ini").string()});
    }
    /// Returns the verdict of each reading and its limit, if it is outside of one.
    static Words Limits(const Outcome& run) {
        Words limits;
        for (const Json& event : run.All("event"))
            if (event["event"] == "reading")
                limits.push_back(event.value("verdict", "") + (event.contains("limit") ? " " : "") +
                                 event.value("limit", ""));
        return limits;
    }
};

TEST_F(LimitsOfTheSample, AreInTheVerdictsAndChangeNothingElse) {
    const Outcome run = Measure({{"Moisture", "18.8"}, {"Temperature", "-10,5"}, {"Humidity", "50"}}, {"choose Close"});
    EXPECT_THAT(Limits(run), ElementsAre("taken warnhigh", "taken faillow", "taken")) << run.Output;
    EXPECT_THAT(Root.Bytes("Quorin/qrn0001.txt"), HasSubstr("||18.8 %|-10,5 %|50 %|"));
    EXPECT_THAT(run.Output, testing::Not(HasSubstr("\"warning\"")));
}

TEST_F(LimitsOfTheSample, SayWhichLineIsWrongAndUseTheRest) {
    PutLimits("COLUMN|WARNLOW|WARNHIGH|FAILLOW|FAILHIGH\nMoisture|x|16||\nPressure|1|||\n");
    const Outcome run = Measure({{"Moisture", "18.8"}});
    EXPECT_THAT(Limits(run), ElementsAre("taken warnhigh"));
    EXPECT_THAT(run.Output, HasSubstr(R"({"event":"warning","about":"limits","text":"Climate Meter.limits, line 2: )"
                                      R"(\"x\" is no number; line 3: the driver has no column \"Pressure\". What is )"
                                      R"(wrong there is not used."})"));
    EXPECT_EQ(run.Status, 0);
}

TEST_F(LimitsOfTheSample, AreReportedIfTheyCantBeRead) {
    std::filesystem::remove(Root.Path() / "config/Climate Meter.limits");
    std::filesystem::create_directory(Root.Path() / "config/Climate Meter.limits");
    const Outcome run = Measure({{"Moisture", "99"}});
    EXPECT_THAT(Limits(run), ElementsAre("taken"));
    EXPECT_THAT(run.Output, HasSubstr("Climate Meter.limits can't be read: it is a folder."));
}

TEST_F(LimitsOfTheSample, AreNoneWithoutAFile) {
    std::filesystem::remove(Root.Path() / "config/Climate Meter.limits");
    const Outcome run = Measure({{"Moisture", "99"}});
    EXPECT_THAT(Limits(run), ElementsAre("taken"));
    EXPECT_THAT(run.Output, testing::Not(HasSubstr("limits")));
}

} // namespace
} // namespace console
