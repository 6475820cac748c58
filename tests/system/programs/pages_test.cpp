// SPDX-License-Identifier: MIT
// A man page has what the program's --help has, and nothing else.
#include "tests/support/lines.h"
#include "tests/system/programs/help.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

namespace programs {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAreArray;

/// What a man page has, by the name of its sub-command; empty for what is outside of one.
struct Page {
    std::map<std::string, std::map<std::string, std::string>> Options; ///< of each sub-command
    std::map<std::string, std::string> Texts; ///< of the synopsis, empty name, and of each sub-command
    std::vector<std::string> ScriptCommands;  ///< in bold at the beginnings of paragraphs
};

std::string PathOf(const std::string& page) {
    return QUORIN_PAGES "/" + page + ".scd";
}

Page PageOf(const std::string& program) {
    static const std::regex option(R"(\*(-\w, )?(--[a-z-]+)\*( _([^_]+)_)?)");
    static const std::regex command(R"(\*([a-z]+)\*)");
    Page page;
    std::string section;
    std::string subcommand;
    page.Options[""];
    for (const std::string& line : support::Lines(BytesOf(PathOf(program + ".1")))) {
        if (section == "SYNOPSIS" || !subcommand.empty())
            page.Texts[subcommand] += line;
        if (line.starts_with("# ")) {
            section = line.substr(2);
            subcommand.clear();
        } else if (line.starts_with("## ")) {
            subcommand = line.substr(3);
            page.Options[subcommand];
        } else if (line.starts_with("*")) {
            const bool isOption = line.starts_with("*-");
            for (std::sregex_iterator at(line.begin(), line.end(), option), end; isOption && at != end; ++at)
                page.Options[subcommand][(*at)[2]] = (*at)[4];
            if (section == "COMMANDS" && subcommand.empty())
                for (std::sregex_iterator at(line.begin(), line.end(), command), end; at != end; ++at)
                    page.ScriptCommands.push_back((*at)[1]);
        }
    }
    return page;
}

class ManPage : public testing::TestWithParam<std::string> {};

TEST_P(ManPage, HasTheOptionsOfTheProgram) {
    EXPECT_EQ(PageOf(GetParam()).Options[""], HelpOf(GetParam()).Options);
}

TEST_P(ManPage, HasTheSubcommandsAndTheirOptions) {
    auto described = PageOf(GetParam()).Options;
    described.erase("");
    std::map<std::string, std::map<std::string, std::string>> offered;
    for (const std::string& subcommand : HelpOf(GetParam()).Subcommands) {
        offered[subcommand] = HelpOf(GetParam(), subcommand).Options;
        offered[subcommand].erase("--help"); // the page says once that each has it
    }
    EXPECT_EQ(described, offered);
}

TEST_P(ManPage, NamesTheArguments) {
    std::vector<std::string> subcommands = HelpOf(GetParam()).Subcommands;
    subcommands.emplace_back();
    Page page = PageOf(GetParam());
    for (const std::string& subcommand : subcommands) {
        for (const std::string& argument : HelpOf(GetParam(), subcommand).Arguments)
            EXPECT_THAT(page.Texts[subcommand], HasSubstr("_" + argument + "_")) << subcommand;
    }
}

TEST_P(ManPage, HasTheCommandsOfAScript) {
    const std::vector<std::string> offered = HelpOf(GetParam()).ScriptCommands;
    EXPECT_EQ(offered.empty(), GetParam() != "quorin-console");
    EXPECT_THAT(PageOf(GetParam()).ScriptCommands, UnorderedElementsAreArray(offered));
}

INSTANTIATE_TEST_SUITE_P(Of, ManPage, testing::ValuesIn(Programs()),
                         [](const auto& row) { return std::regex_replace(row.param, std::regex("-"), "_"); });

TEST(ManPages, NameOnlyPagesThatAreThere) {
    static const std::regex reference(R"(\*(quorin[a-z-]*)\*\(([0-9])\))");
    for (const auto& file : std::filesystem::directory_iterator(QUORIN_PAGES)) {
        const std::string page = BytesOf(file.path());
        for (std::sregex_iterator at(page.begin(), page.end(), reference), end; at != end; ++at)
            EXPECT_TRUE(std::filesystem::exists(PathOf((*at)[1].str() + "." + (*at)[2].str())))
                << file.path() << " names " << at->str();
    }
}

} // namespace
} // namespace programs
