// SPDX-License-Identifier: MIT
// What script/run does on a terminal: an instrument, a driver package, and the readings on the disk.
#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

namespace live {
namespace {

using testing::HasSubstr;

class RunScript : public testing::Test {
protected:
    /// Runs the script with the programs of this build, as where there is no display.
    int Run(const std::string& words) {
        const std::string command =
            "env -u DISPLAY -u WAYLAND_DISPLAY QUORIN_BIN=" QUORIN_BIN " QUORIN_DEMO=" + Folder_.Path() +
            "/demo " QUORIN_RUN " " + words + " >" + Folder_.Path() + "/output 2>&1 </dev/null";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Output() const { return Folder_.Bytes("output"); }
    std::string Download() const { return Folder_.Bytes("demo/root/Quorin/qrn0001.txt"); }
    void Put(const std::string& name, const std::string& bytes) const { Folder_.Put(name, bytes); }
    std::string PathOf(const std::string& name) const { return Folder_.Path(name); }

private:
    TemporaryRoot Folder_;
};

/// The values that the download on the disk has, without the columns that depend on the day.
const char* const FirstRecord = "North wall|Ada|18.8 %|20.6 \xC2\xB0"
                                "C|41.9 %RH|Air|Pin||";
const char* const SecondRecord = "Cellar|Cleo|15.1 %|24.7 \xC2\xB0"
                                 "C|69.8 %RH|Air|Pin||";

/// A machine that stalls for two seconds looks like a device that slept: the instrument begins again, which ends in
/// other records. So it has three tries.
TEST_F(RunScript, EndsWithSixReadingsOnTheDisk) {
    bool collected = false;
    for (int i = 0; i < 3 && !collected; ++i)
        collected = Run(QUORIN_SAMPLES "/climate.stream") == 0 && Download().find(FirstRecord) != std::string::npos &&
                    Download().find(SecondRecord) != std::string::npos;
    EXPECT_TRUE(collected) << Output();
    for (const char* shown : {"\n== The start screen\n", "    asked: Driver installed\n", "\n== Reading 6 taken\n",
                              "\n== The download on disk: ", SecondRecord})
        EXPECT_THAT(Output(), HasSubstr(shown));
    EXPECT_THAT(Output(), testing::Not(HasSubstr("{\""))) << "nothing of it is for programs alone";
}

TEST_F(RunScript, FailsWhenNothingIsCollected) {
    Put("silent.stream", "");
    EXPECT_NE(Run(PathOf("silent.stream")), 0);
    EXPECT_THAT(Output(), HasSubstr("script/run: no reading was collected\n"));
}

TEST_F(RunScript, RefusesARecordingThatIsNotThere) {
    EXPECT_EQ(Run(PathOf("none.stream")), 2);
    EXPECT_THAT(Output(), HasSubstr("can't read the recording"));
}

} // namespace
} // namespace live
