// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

#include <cstdlib>

namespace reader {
namespace {

const std::string Port =
    R"({"time":"2026-11-22T10:00:00","ms":70,"event":"received","from":"port","bytes":"[BLob]\r\n\u00b0\u0000%"})";
const std::string Mailbox =
    R"({"time":"2026-11-22T10:00:01","ms":570,"event":"received","from":"mailbox","text":"°C\r\n"})";
const std::string LaterRun = R"({"time":"2026-11-22T10:00:04","ms":5,"event":"received","from":"port","bytes":"end"})";

TEST_F(Journal, ExportIsARecordingWithTimes) {
    Day("2026-11-22", {Start(), Port, Mailbox, Start(), LaterRun});
    const Outcome recording = Run({"export"});
    EXPECT_EQ(recording.Output, "quorin-times 1\n0 [BLob]%0D%0A%B0%00%25\n500 %C2%B0C%0D%0A\n3000 end\n");
    EXPECT_EQ(recording.Status, 0);
    EXPECT_EQ(Run({"export", "--port"}).Output, "quorin-times 1\n0 [BLob]%0D%0A%B0%00%25\n4000 end\n");
    EXPECT_EQ(Run({"export", "--from", "2026-11-22T10:00:04"}).Output, "quorin-times 1\n0 end\n");
}

TEST_F(Journal, ExportIsPlayedByTheInstrument) {
    Day("2026-11-22", {Start(), Port, Mailbox, Start(), LaterRun});
    Folder.Put("recording", Run({"export"}).Output);
    const std::string play = std::string(QUORIN_INSTRUMENT) + " --print --times 0 '" + Folder.Path("recording") +
                             "' > '" + Folder.Path("played") + "'";
    EXPECT_EQ(std::system(play.c_str()), 0);
    EXPECT_EQ(Folder.Bytes("played"), Run({"raw"}).Output);
}

} // namespace
} // namespace reader
