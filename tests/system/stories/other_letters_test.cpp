// SPDX-License-Identifier: MIT
// The console's stories again, in a window or on the page with fonts of its own. Rows have other heights there, and
// pages other numbers of them; all else must be as in the stories. QUORIN_CONSOLE=PROGRAM plays them with another
// program.
#include "tests/system/stories/story.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;

using Json = nlohmann::ordered_json;

std::string TitleOf(const testing::TestParamInfo<fs::path>& info) {
    return story::Title(info.param);
}

/// Returns true if the member of an object depends on the size of letters.
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

/// Returns true for the line of a story that asks for a picture: "> show", or ">> show" inside of a box.
bool IsShow(const std::string& line) {
    const std::size_t word = line.find_first_not_of('>');
    return word != std::string::npos && word > 0 && line.substr(word) == " show";
}

/// Returns a story without its pictures, and its objects without the members that depend on letters.
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
    const char* const other = std::getenv("QUORIN_CONSOLE");
    const std::string played = story::Play(written, other != nullptr ? other : QUORIN_CONSOLE);
    EXPECT_EQ(story::Difference(WithoutMetrics(written), WithoutMetrics(played)), "");
}

INSTANTIATE_TEST_SUITE_P(STORY_SUITE, StoryInOtherLetters, testing::ValuesIn(story::Stories(QUORIN_STORIES)), TitleOf);

TEST(Masking, DropsPicturesAndSizesAlone) {
    const std::string story =
        "# prose\n> show\n    picture\n{\"done\":\"show\"}\n$ cat x\n    kept\n"
        "{\"grid\":{\"row\":1,\"top\":3,\"box\":[1],\"font\":[\"Tahoma\",8]},\"event\":\"box\"}\n";
    EXPECT_EQ(WithoutMetrics(story), "# prose\n> show\n{\"done\":\"show\"}\n$ cat x\n    kept\n"
                                     "{\"grid\":{\"row\":1,\"font\":[\"Tahoma\"]},\"event\":\"box\"}\n");
}

} // namespace
