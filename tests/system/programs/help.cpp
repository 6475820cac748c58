// SPDX-License-Identifier: MIT
#include "tests/system/programs/help.h"

#include "tests/support/lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace programs {

std::vector<std::string> Programs() {
    std::vector<std::string> names;
    for (const auto& folder : std::filesystem::directory_iterator(QUORIN_APPS))
        if (std::filesystem::exists(folder.path() / "main.cpp"))
            names.push_back(folder.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

std::string OutputOf(const std::string& command) {
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    std::string output;
    char bytes[4096];
    while (const std::size_t count = std::fread(bytes, 1, sizeof bytes, pipe))
        output.append(bytes, count);
    EXPECT_EQ(::pclose(pipe), 0) << command;
    return output;
}

Help HelpOf(const std::string& program, const std::string& subcommand) {
    static const std::regex option(R"(^ +(-\w,)?(--[a-z-]+)( ([^ ]+))?( +.*)?$)");
    static const std::regex command(R"(^  ([a-z]+) .*)");
    static const std::regex argument(R"(^  ([A-Z]+) .*)");
    Help help;
    std::string section;
    for (const std::string& line : support::Lines(OutputOf(QUORIN_BIN "/" + program + " " + subcommand + " --help"))) {
        std::smatch parts;
        if (line.empty())
            section.clear();
        else if (line.front() != ' ')
            section = line;
        else if (std::regex_match(line, parts, option))
            help.Options[parts[2]] = parts[4];
        else if (section == "Positionals:" && std::regex_match(line, parts, argument))
            help.Arguments.push_back(parts[1]);
        else if (section == "Subcommands:" && std::regex_match(line, parts, command))
            help.Subcommands.push_back(parts[1]);
        else if (section.starts_with("Commands, one a line") && std::regex_match(line, parts, command) &&
                 (help.ScriptCommands.empty() || help.ScriptCommands.back() != parts[1].str()))
            help.ScriptCommands.push_back(parts[1]);
    }
    return help;
}

std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path << " is not there";
    return std::string(std::istreambuf_iterator<char>(file), {});
}

} // namespace programs
