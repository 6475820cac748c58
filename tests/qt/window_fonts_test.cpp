// SPDX-License-Identifier: MIT
// The console's stories once more in a window with its own fonts. Rows are higher there and pages hold fewer of them;
// all the rest goes as written.
#include "tests/console/story.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;

using Json = nlohmann::ordered_json;

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
    for (const char character : info.param.stem().string())
        title += std::isalnum(static_cast<unsigned char>(character)) != 0 ? character : '_';
    return title;
}

/// What depends on how wide and how high letters are.
bool IsMetric(const std::string& member) {
    return member == "widths" || member == "heights" || member == "box" || member == "top";
}

void DropMetrics(Json& value) {
    if (value.is_object()) {
        std::vector<std::string> metrics;
        for (const auto& member : value.items()) {
            if (IsMetric(member.key()))
                metrics.push_back(member.key());
        }
        for (const std::string& member : metrics)
            value.erase(member);
        if (value.contains("font") && value["font"].is_array())
            value["font"].erase(1); // its size
    }
    if (value.is_structured()) {
        for (Json& part : value)
            DropMetrics(part);
    }
}

/// The line of a story that asks for a picture: "> show", or ">> show" inside of a box.
bool IsShow(const std::string& line) {
    const std::size_t word = line.find_first_not_of('>');
    return word != std::string::npos && word > 0 && line.substr(word) == " show";
}

/// A story without its pictures, and its objects without what depends on letters.
std::string WithoutMetrics(const std::string& text) {
    std::istringstream in(text);
    std::string kept;
    bool inPicture = false;
    for (std::string line; std::getline(in, line);) {
        inPicture = IsShow(line) || (inPicture && line.rfind("    ", 0) == 0);
        if (inPicture && line[0] == ' ')
            continue;
        Json object = Json::parse(line, nullptr, false);
        if (object.is_object()) {
            DropMetrics(object);
            line = object.dump();
        }
        kept += line + "\n";
    }
    return kept;
}

class StoryInOtherLetters : public testing::TestWithParam<fs::path> {
protected:
    StoryInOtherLetters() { ::setenv("QUORIN_WINDOW_FONTS", "1", 1); }
    ~StoryInOtherLetters() override { ::unsetenv("QUORIN_WINDOW_FONTS"); }
};

TEST_P(StoryInOtherLetters, GoesAsWrittenButForSizes) {
    std::ifstream in(GetParam(), std::ios::binary);
    const std::string written((std::istreambuf_iterator<char>(in)), {});
    const std::string played = story::Play(written, QUORIN_CONSOLE);
    EXPECT_EQ(story::Difference(WithoutMetrics(written), WithoutMetrics(played)), "");
}

INSTANTIATE_TEST_SUITE_P(InAWindow, StoryInOtherLetters, testing::ValuesIn(Stories()), Title);

TEST(Masking, DropsPicturesAndSizesAlone) {
    const std::string story =
        "# prose\n> show\n    picture\n{\"done\":\"show\"}\n$ cat x\n    kept\n"
        "{\"grid\":{\"row\":1,\"top\":3,\"box\":[1],\"font\":[\"Tahoma\",8]},\"event\":\"box\"}\n";
    EXPECT_EQ(WithoutMetrics(story), "# prose\n> show\n{\"done\":\"show\"}\n$ cat x\n    kept\n"
                                     "{\"grid\":{\"row\":1,\"font\":[\"Tahoma\"]},\"event\":\"box\"}\n");
}

} // namespace
