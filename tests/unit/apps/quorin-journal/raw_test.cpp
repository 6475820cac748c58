// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

namespace reader {
namespace {

const Words Received = {
    R"({"time":"2026-11-22T10:00:00","ms":0,"event":"received","from":"port","bytes":"[BLob]\r\n\u00b0\u0000\u00ff"})",
    R"({"time":"2026-11-22T10:00:01","ms":1,"event":"received","from":"mailbox","text":"°C\n"})",
    R"({"time":"2026-11-22T10:00:02","ms":2,"event":"received","from":"again","text":"again"})",
    R"({"time":"2026-11-22T10:00:03","ms":3,"event":"received","from":"port","bytes":"end"})",
    R"({"time":"2026-11-22T10:00:04","ms":4,"event":"emptied","text":"emptied"})",
};
const std::string First = std::string("[BLob]\r\n\xB0\0\xFF", 11);

TEST_F(Journal, RawIsWhatCameByteForByte) {
    Day("2026-11-22", Received);
    const Outcome raw = Run({"raw"});
    EXPECT_EQ(raw.Output, First + "°C\nend");
    EXPECT_EQ(raw.Errors, "");
    EXPECT_EQ(raw.Status, 0);
}

TEST_F(Journal, RawHasOneSourceAlone) {
    Day("2026-11-22", Received);
    EXPECT_EQ(Run({"raw", "--port"}).Output, First + "end");
    EXPECT_EQ(Run({"raw", "--mailbox"}).Output, "°C\n");
    EXPECT_EQ(Run({"raw", "--mailbox", "--port"}).Status, 2);
}

TEST_F(Journal, RawHasItsPeriod) {
    Day("2026-11-22", Received);
    EXPECT_EQ(Run({"raw", "--from", "2026-11-22T10:00:01"}).Output, "°C\nend");
    EXPECT_EQ(Run({"raw", "--to", "2026-11-22T10:00:00"}).Output, First);
}

TEST_F(Journal, RawTellsOfBytesThatAreNone) {
    Day("2026-11-22", {R"({"event":"received","from":"port","bytes":"€"})", Received[3]});
    const Outcome raw = Run({"raw"});
    EXPECT_EQ(raw.Output, "end");
    EXPECT_EQ(raw.Errors, "quorin-journal: " + FileOf("2026-11-22") +
                              ", line 1: its bytes have characters beyond U+00FF, left out\n");
    EXPECT_EQ(raw.Status, 5);
}

} // namespace
} // namespace reader
