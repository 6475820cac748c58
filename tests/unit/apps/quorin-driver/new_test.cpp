// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-driver/driver_run.h"

namespace driver {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST_F(DriverProgram, MakesAPackageThatNothingIsWrongWith) {
    const std::string stream = "'" + Samples + "/climate.stream'";
    const Outcome made = Run("new --from " + stream + " -o meter.qvd");
    EXPECT_EQ(made.Status, 0);
    EXPECT_EQ(made.Output + made.Errors, "");
    EXPECT_THAT(Folder.Bytes("meter.qvd"), HasSubstr("\nMoisture|1||Moisture||moisture||\n"));
    const Outcome checked = Run("check meter.qvd --stream " + stream);
    EXPECT_EQ(checked.Status, 0);
    EXPECT_THAT(checked.Output, EndsWith("\nmeter.qvd: nothing is wrong\n"));
}

TEST_F(DriverProgram, WritesThePackageToStandardOutput) {
    const std::string from = "new --from '" + Samples + "/climate.stream'";
    ASSERT_EQ(Run(from + " --output meter.qvd").Status, 0);
    EXPECT_EQ(Run(from).Output, Folder.Bytes("meter.qvd"));
}

TEST_F(DriverProgram, ReplacesNoFile) {
    Folder.Put("meter.qvd", "mine");
    const Outcome run = Run("new --from '" + Samples + "/climate.stream' -o meter.qvd");
    EXPECT_EQ(run.Status, 2);
    EXPECT_EQ(run.Errors, "quorin-driver: can't create meter.qvd: File exists\n");
    EXPECT_EQ(Folder.Bytes("meter.qvd"), "mine");
}

TEST_F(DriverProgram, LeavesNoHalfOfAPackage) {
    const Outcome run = Run("new --from '" + Samples + "/climate.stream' -o meter.qvd", "ulimit -f 0;");
    EXPECT_EQ(run.Status, 1);
    EXPECT_FALSE(Folder.Has("meter.qvd"));
}

TEST_F(DriverProgram, MakesNothingOfARecordingWithoutResults) {
    Folder.Put("noise", "[BLob]\r\n[CONNECT \"A\"]\r\n[/BLob]\r\nrubbish\r\n");
    const Outcome run = Run("new --from noise -o meter.qvd");
    EXPECT_EQ(run.Status, 2);
    EXPECT_EQ(run.Errors, "quorin-driver: noise has no result that comes to a record\n");
    EXPECT_FALSE(Folder.Has("meter.qvd"));
    EXPECT_EQ(Run("new --from none").Status, 2);
}

} // namespace
} // namespace driver
