// SPDX-License-Identifier: MIT
// Plays each story of this folder. UPDATE_GOLDEN=1 rewrites the stories instead; a person then reads the difference.
// QUORIN_CONSOLE=PROGRAM plays them with another program.
#include "tests/system/stories/story.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace {

namespace fs = std::filesystem;

std::string TitleOf(const testing::TestParamInfo<fs::path>& info) {
    return story::Title(info.param);
}

fs::path Console() {
    const char* other = std::getenv("QUORIN_CONSOLE");
    return other != nullptr ? other : QUORIN_CONSOLE;
}

class Story : public testing::TestWithParam<fs::path> {};

TEST_P(Story, GoesAsWritten) {
    std::ifstream in(GetParam(), std::ios::binary);
    const std::string written((std::istreambuf_iterator<char>(in)), {});
    const std::string played = story::Play(written, Console());
    if (std::getenv("UPDATE_GOLDEN") != nullptr) {
        std::ofstream(GetParam(), std::ios::binary) << played;
        return;
    }
    EXPECT_EQ(story::Difference(written, played), "");
}

INSTANTIATE_TEST_SUITE_P(STORY_SUITE, Story, testing::ValuesIn(story::Stories(QUORIN_STORIES)), TitleOf);

} // namespace
