// SPDX-License-Identifier: MIT
// Plays each story of this folder. UPDATE_GOLDEN=1 writes the stories anew instead; the difference is then read.
#include "story.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Stories() {
    std::vector<fs::path> stories;
    for (const auto& entry : fs::directory_iterator(QUORIN_STORIES)) {
        if (entry.path().extension() == ".story")
            stories.push_back(entry.path());
    }
    std::sort(stories.begin(), stories.end());
    return stories;
}

std::string Title(const testing::TestParamInfo<fs::path>& info) {
    std::string title;
    bool capital = true;
    for (const char character : info.param.stem().string()) {
        if (std::isalnum(static_cast<unsigned char>(character)) == 0) {
            capital = true;
            continue;
        }
        title += capital ? static_cast<char>(std::toupper(static_cast<unsigned char>(character))) : character;
        capital = false;
    }
    return title;
}

class Story : public testing::TestWithParam<fs::path> {};

TEST_P(Story, GoesAsWritten) {
    std::ifstream in(GetParam(), std::ios::binary);
    const std::string written((std::istreambuf_iterator<char>(in)), {});
    const std::string played = story::Play(written, QUORIN_CONSOLE);
    if (std::getenv("UPDATE_GOLDEN") != nullptr) {
        std::ofstream(GetParam(), std::ios::binary) << played;
        return;
    }
    EXPECT_EQ(story::Difference(written, played), "");
}

INSTANTIATE_TEST_SUITE_P(STORY_SUITE, Story, testing::ValuesIn(Stories()), Title);

} // namespace
