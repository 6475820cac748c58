// SPDX-License-Identifier: MIT
#include "journal/journal_format.h"

#include <gtest/gtest.h>

namespace journal {
namespace {

/// The offset basis and the hash of "a" are published with the algorithm.
TEST(JournalFile, IsNamedAfterDayAndRoot) {
    EXPECT_EQ(RootKey(""), "cbf29ce484222325");
    EXPECT_EQ(RootKey("a"), "af63dc4c8601ec8c");
    EXPECT_EQ(TextOf({"2026-11-22", "89abcdef01234567"}), "2026-11-22-89abcdef01234567.jsonl");
    EXPECT_EQ(FileNameFrom("2026-11-22-89abcdef01234567.jsonl"), (FileName{"2026-11-22", "89abcdef01234567"}));
}

TEST(JournalFile, OfAnotherNameIsNone) {
    for (const char* name : {"", "2026-11-22.jsonl", "2026-11-22-89ABCDEF01234567.jsonl",
                             "2026-11-22-89abcdef01234567.json", "2026-1x-22-89abcdef01234567.jsonl",
                             "2026-11-22_89abcdef01234567.jsonl", "2026-11-22-89abcdef01234567.jsonl~"})
        EXPECT_FALSE(FileNameFrom(name)) << name;
}

TEST(JournalFile, KeepsBytesThatAreNoUtf8) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(TextOfBytes("\xB0\x41"), "\xC2\xB0\x41");
    EXPECT_EQ(BytesOfText(Line::parse(Line(TextOfBytes(all)).dump()).get<std::string>()), all);
    EXPECT_FALSE(BytesOfText("\xE2\x82\xAC")); // above U+00FF
    EXPECT_FALSE(BytesOfText("a\xC3"));
    EXPECT_FALSE(BytesOfText("\xC3\x41"));
}

} // namespace
} // namespace journal
