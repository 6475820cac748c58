// SPDX-License-Identifier: MIT
// What script/run does on a terminal: an instrument, a driver package, and the readings on the disk.
#include "tests/support/places.h"
#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <sys/wait.h>
#include <thread>

namespace live {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

/// Measures the longest time for which this machine ran no program.
class Stalls {
public:
    using Clock = std::chrono::steady_clock;

    Stalls()
        : Watch_([this] {
              for (Clock::time_point before = Clock::now(); !Over_;) {
                  std::this_thread::sleep_for(std::chrono::milliseconds(50));
                  const Clock::time_point now = Clock::now();
                  Longest_ = std::max(Longest_.load(), std::chrono::duration<double>(now - before).count());
                  before = now;
              }
          }) {}
    Stalls(const Stalls&) = delete;
    Stalls& operator=(const Stalls&) = delete;
    ~Stalls() {
        Over_ = true;
        Watch_.join();
    }
    double LongestInSeconds() const { return Longest_; }

private:
    std::atomic<bool> Over_ = false;
    std::atomic<double> Longest_ = 0;
    std::thread Watch_;
};

/// The result of a run of the script.
struct ScriptRun {
    int Status = -1;
    std::string Output, Download;
};

class RunScript : public testing::Test {
protected:
    /// Runs the script with the programs of this build, without a display.
    ScriptRun Run(const std::string& words) {
        const std::string command =
            "env -u DISPLAY -u WAYLAND_DISPLAY QUORIN_BIN=" QUORIN_BIN " QUORIN_DEMO=" + Folder_.Path() +
            "/demo " QUORIN_RUN " " + words + " >" + Folder_.Path() + "/output 2>&1 </dev/null";
        const int status = std::system(command.c_str());
        const std::string download = "demo/root/Quorin/qrn0001.txt";
        return {.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
                .Output = Folder_.Bytes("output"),
                .Download = Folder_.Has(download) ? Folder_.Bytes(download) : "no download"};
    }
    /// Runs the script, and again only if the machine has stalled meanwhile: a stall of two seconds looks like a device
    /// that slept, so the instrument begins again and sends other records. A wrong result without a stall is not
    /// repeated.
    ScriptRun RunOnTime(const std::string& words) {
        constexpr double Late = 1; // seconds; half of what the program takes for a sleep
        constexpr int Tries = 3;
        for (int each = 1;; ++each) {
            const Stalls stalls;
            const ScriptRun run = Run(words);
            if (stalls.LongestInSeconds() < Late || each == Tries)
                return run;
            std::cerr << "run " << each << " does not count: the machine stood still for " << stalls.LongestInSeconds()
                      << " seconds\n";
        }
    }
    void Put(const std::string& name, const std::string& bytes) const { Folder_.Put(name, bytes); }
    std::string PathOf(const std::string& name) const { return Folder_.Path(name); }

private:
    TemporaryRoot Folder_{support::PlaceInMemory()};
};

/// The values in the download on the disk, without the columns that depend on the day.
const char* const FirstRecord = "North wall|Ada|18.8 %|20.6 \xC2\xB0"
                                "C|41.9 %RH|Air|Pin||";
const char* const SecondRecord = "Cellar|Cleo|15.1 %|24.7 \xC2\xB0"
                                 "C|69.8 %RH|Air|Pin||";

TEST_F(RunScript, EndsWithSixReadingsOnTheDisk) {
    const ScriptRun run = RunOnTime(QUORIN_SAMPLES "/climate.stream");
    EXPECT_EQ(run.Status, 0) << run.Output;
    EXPECT_THAT(run.Download, HasSubstr(FirstRecord));
    EXPECT_THAT(run.Download, HasSubstr(SecondRecord));
    for (const char* shown : {"\n== The start screen\n", "    asked: Driver installed\n", "\n== Reading 6 taken\n",
                              "\n== The download on disk: ", SecondRecord})
        EXPECT_THAT(run.Output, HasSubstr(shown));
    EXPECT_THAT(run.Output, testing::Not(HasSubstr("{\""))) << "nothing of it is for programs alone";
}

TEST_F(RunScript, CollectsWithoutARecordingToo) {
    const ScriptRun run = RunOnTime("");
    EXPECT_EQ(run.Status, 0) << run.Output;
    EXPECT_THAT(run.Output, HasSubstr("script/run: there is no display, so this runs on the terminal"));
    EXPECT_THAT(run.Output, HasSubstr("\n== Reading 6 taken\n"));
    EXPECT_EQ(std::count(run.Download.begin(), run.Download.end(), '\n'), 3) << "the columns and two records";
    const std::string row = "\n[^|\n]+\\|[^|\n]+\\|[0-9.]+ %\\|[0-9.]+ \xC2\xB0"
                            "C\\|[0-9.]+ %RH\\|";
    EXPECT_THAT(run.Download, ContainsRegex(row + "[^\n]*" + row)) << "three readings each";
}

TEST_F(RunScript, FailsWhenNothingIsCollected) {
    Put("silent.stream", "");
    const ScriptRun run = Run(PathOf("silent.stream"));
    EXPECT_EQ(run.Status, 1);
    EXPECT_THAT(run.Output, HasSubstr("script/run: no reading was collected\n"));
}

TEST_F(RunScript, RefusesARecordingThatIsNotThere) {
    const ScriptRun run = Run(PathOf("none.stream"));
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Output, HasSubstr("can't read the recording"));
}

} // namespace
} // namespace live
