// SPDX-License-Identifier: MIT
// The program on a line. The test reads in place of the application.
#include "apps/quorin-instrument/pacing.h"
#include "tests/support/running_instrument.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace instrument {
namespace {

const std::string Recorded = std::string(QUORIN_SAMPLES) + "/climate.stream";

TEST(OnAPseudoTerminal, ReaderGetsTheRecordingToTheByte) {
    const std::string expected = Sample("climate.stream");
    RunningInstrument instrument({Recorded, "--fast"});
    Reader reader(instrument.FirstLine());
    ASSERT_TRUE(reader.IsOpen());
    EXPECT_EQ(reader.Read(expected.size()), expected);
}

TEST(OnAPseudoTerminal, NamesTheLineAndNothingElse) {
    RunningInstrument instrument({Recorded, "--fast"});
    const std::string name = instrument.FirstLine();
    EXPECT_TRUE(Exists(name)) << name;
    EXPECT_EQ(instrument.Output(), name + "\n");
    EXPECT_EQ(instrument.Errors(), "");
}

TEST(OnAPseudoTerminal, KeepsTheLineOpenAtTheEndUntilTheReaderGoes) {
    const std::string expected = Sample("climate.stream");
    RunningInstrument instrument({Recorded, "--fast"});
    Reader reader(instrument.FirstLine());
    ASSERT_TRUE(Eventually([&] { return instrument.SaysPlayed(); })) << instrument.Errors();
    EXPECT_EQ(reader.Read(expected.size()), expected) << "what came before the end is there to be read after it";
    reader.Close();
    EXPECT_EQ(instrument.ExitStatus(), 0);
}

TEST(OnAPseudoTerminal, LingersNoLongerThanTold) {
    RunningInstrument instrument({Recorded, "--fast", "--linger", "50"});
    Reader reader(instrument.FirstLine());
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_TRUE(reader.IsOpen());
}

TEST(OnAPseudoTerminal, Paces960BytesASecond) {
    const std::string expected = Sample("climate.stream");
    RunningInstrument instrument({Recorded});
    const std::string name = instrument.FirstLine();
    const auto start = std::chrono::steady_clock::now();
    Reader reader(name);
    EXPECT_EQ(reader.Read(expected.size()), expected);
    EXPECT_GE(std::chrono::steady_clock::now() - start, TransmissionTime(expected.size() - ChunkBytes));
}

// The reader is away for longer than the whole stream takes. Without a pause there would be nothing left to read when
// it returns. Bytes that were in transit when it left are lost.
TEST(OnAPseudoTerminal, PausesWhileTheReaderIsAwayAndRepeatsNothing) {
    const std::string expected = Sample("climate.stream");
    RunningInstrument instrument({Recorded});
    Reader first(instrument.FirstLine());
    const std::string before = first.Read(300);
    first.Close();
    std::this_thread::sleep_for(2 * TransmissionTime(expected.size()));
    Reader second(instrument.FirstLine());
    ASSERT_TRUE(Eventually([&] { return instrument.SaysPlayed(); }));
    const std::string after = second.ReadWhatIsThere();
    EXPECT_EQ(before, expected.substr(0, 300));
    ASSERT_FALSE(after.empty());
    ASSERT_LE(before.size() + after.size(), expected.size());
    EXPECT_EQ(after, expected.substr(expected.size() - after.size()));
}

TEST(OnAPseudoTerminal, SplitLinesArriveWhole) {
    const std::string expected = Sample("climate.stream");
    RunningInstrument instrument({Recorded, "--fast", "--split-lines", "3"});
    Reader reader(instrument.FirstLine());
    EXPECT_EQ(reader.Read(expected.size()), expected);
}

TEST(OnAPseudoTerminal, LinkNamesTheLineAndGoesWithIt) {
    const TemporaryFolder folder;
    const std::string link = folder.Path("meter");
    const std::string expected = Sample("climate.stream");
    RunningInstrument instrument({Recorded, "--fast", "--link", link});
    const std::string name = instrument.FirstLine();
    EXPECT_EQ(std::filesystem::read_symlink(link).string(), name);
    Reader reader(link);
    EXPECT_EQ(reader.Read(expected.size()), expected);
    reader.Close();
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST(OnAPseudoTerminal, LinkReplacesAStaleLinkButNoFile) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("/dev/pts/gone", folder.Path("stale"));
    WriteFile(folder.Path("file"), "mine");
    RunningInstrument stale({"--link", folder.Path("stale")});
    const std::string name = stale.FirstLine();
    EXPECT_EQ(std::filesystem::read_symlink(folder.Path("stale")).string(), name);
    RunningInstrument file({"--link", folder.Path("file")});
    EXPECT_EQ(file.ExitStatus(), 1);
    EXPECT_EQ(FileBytes(folder.Path("file")), "mine");
}

class Signalled : public testing::TestWithParam<int> {};

TEST_P(Signalled, EndsWellWithNobodyListening) {
    const TemporaryFolder folder;
    RunningInstrument instrument({"--link", folder.Path("meter")});
    instrument.FirstLine();
    instrument.Signal(GetParam());
    EXPECT_EQ(instrument.ExitStatus(), 0);
    EXPECT_FALSE(std::filesystem::is_symlink(folder.Path("meter")));
}

TEST_P(Signalled, EndsWellWithAReaderThatReadsNothing) {
    RunningInstrument instrument({"--fast"});
    Reader reader(instrument.FirstLine());
    reader.Read(1);
    instrument.Signal(GetParam());
    EXPECT_EQ(instrument.ExitStatus(), 0);
}

INSTANTIATE_TEST_SUITE_P(Signals, Signalled, testing::Values(SIGINT, SIGTERM));

// A pseudo terminal of the test is the serial device.
TEST(OnADevice, PlaysToItsEnd) {
    const backends::Descriptor master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    ASSERT_EQ(grantpt(master.Number()), 0);
    ASSERT_EQ(unlockpt(master.Number()), 0);
    const std::string device = ptsname(master.Number());
    const std::string expected = Sample("climate.stream");
    RunningInstrument instrument({Recorded, "--fast", "--device", device});
    EXPECT_EQ(instrument.ExitStatus(), 0) << instrument.Errors();
    std::string got;
    char block[4096];
    for (ssize_t count = 1; got.size() < expected.size() && count > 0;) { // it comes in pieces of any size
        count = read(master.Number(), block, sizeof block);
        got.append(block, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    EXPECT_EQ(got, expected);
    EXPECT_EQ(instrument.Output(), "") << "there is no line to name";
}

TEST(OnADevice, FailsWhereThereIsNoSerialLine) {
    RunningInstrument missing({"--device", "/nowhere/at/all"});
    EXPECT_EQ(missing.ExitStatus(), 1);
    EXPECT_EQ(missing.Errors(), "quorin-instrument: can't open /nowhere/at/all: No such file or directory\n");
    RunningInstrument wrong({"--device", "/dev/null"});
    EXPECT_EQ(wrong.ExitStatus(), 1);
    EXPECT_EQ(wrong.Errors(), "quorin-instrument: /dev/null is not a serial line\n");
}

} // namespace
} // namespace instrument
