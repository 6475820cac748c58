// SPDX-License-Identifier: MIT
// Each session of the stories, made again from its journal.
#include "tests/support/temporary_root.h"
#include "tests/system/stories/story.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace {

namespace fs = std::filesystem;

std::string TitleOf(const testing::TestParamInfo<fs::path>& info) {
    return story::Title(info.param);
}

class StoryOfItsJournal : public testing::TestWithParam<fs::path> {};

TEST_P(StoryOfItsJournal, GivesTheSameFiles) {
    const TemporaryRoot place(support::PlaceInMemory());
    place.Put("report", "");
    ::setenv("QUORIN_CONSOLE", QUORIN_CONSOLE, 1);
    ::setenv("QUORIN_JOURNAL", QUORIN_JOURNAL, 1);
    ::setenv("QUORIN_REPORT", place.Path("report").c_str(), 1);
    std::ifstream in(GetParam(), std::ios::binary);
    const std::string written((std::istreambuf_iterator<char>(in)), {});
    if (written.find("&\n") != std::string::npos)
        GTEST_SKIP() << "another tool writes while a session of this story runs";
    EXPECT_EQ(story::Difference(written, story::Play(written, QUORIN_PLAY_TWICE)), "");
    EXPECT_EQ(place.Bytes("report"), "");
}

INSTANTIATE_TEST_SUITE_P(Stories, StoryOfItsJournal, testing::ValuesIn(story::Stories(QUORIN_STORIES)), TitleOf);

} // namespace
