// SPDX-License-Identifier: MIT
// What bash offers for a half of a command line. Those for zsh and fish have the same form.
#include "tests/support/lines.h"
#include "tests/support/temporary_root.h"
#include "tests/system/programs/help.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

namespace programs {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;
using Words = std::vector<std::string>;

Words Sum(Words words, const std::map<std::string, std::string>& options) {
    for (const auto& [option, value] : options)
        words.push_back(option);
    return words;
}

/// Returns what is offered for the last of the words after the program's name, which may be half a word.
Words Offered(const std::string& program, const Words& words) {
    std::string all = "'" QUORIN_BIN "/" + program + "'";
    for (const std::string& word : words)
        all += " '" + word + "'";
    const std::string script = "source '" QUORIN_COMPLETIONS "/bash/" + program + "'; COMP_WORDS=(" + all +
                               "); COMP_CWORD=" + std::to_string(words.size()) + "; $(complete -p " + program +
                               R"( | sed "s/.*-F \([^ ]*\) .*/\1/") "${COMP_WORDS[0]}" "${COMP_WORDS[-1]}" )"
                               R"("${COMP_WORDS[-2]}"; printf "%s\n" "${COMPREPLY[@]}")";
    return support::Lines(OutputOf("bash -c '" + std::regex_replace(script, std::regex("'"), R"('\'')") + "'"));
}

class Completion : public testing::TestWithParam<std::string> {};

TEST_P(Completion, OffersEachOption) {
    EXPECT_THAT(Offered(GetParam(), {"--"}), UnorderedElementsAreArray(Sum({}, HelpOf(GetParam()).Options)));
}

INSTANTIATE_TEST_SUITE_P(Of, Completion, testing::ValuesIn(Programs()),
                         [](const auto& row) { return std::regex_replace(row.param, std::regex("-"), "_"); });

TEST(Completions, OfferSubcommandsAndThenTheirOptions) {
    EXPECT_THAT(Offered("quorin-journal", {""}), UnorderedElementsAreArray(HelpOf("quorin-journal").Subcommands));
    EXPECT_THAT(Offered("quorin-journal", {"--root", "/tmp", "hi"}), ElementsAre("history"));
    EXPECT_THAT(Offered("quorin-journal", {"story", "--"}),
                UnorderedElementsAre("--help", "--journal", "--root", "--version", "--session"));
}

TEST(Completions, OfferTheValuesOfAnOption) {
    EXPECT_THAT(Offered("quorin", {"--device", "pa"}), ElementsAre("palm", "palm-hires"));
    EXPECT_THAT(Offered("quorin-console", {"--clock", ""}), ElementsAre("virtual", "real"));
    EXPECT_THAT(Offered("quorin", {"--user", ""}), ElementsAre(""));
}

TEST(Completions, KnowAnOptionThatHasAShortName) {
    const TemporaryRoot folder;
    folder.Put("package.qvd", "");
    EXPECT_THAT(Offered("quorin-driver", {"new", "--o"}), ElementsAre("--output"));
    EXPECT_THAT(Offered("quorin-driver", {"new", "--output", folder.Path("")}),
                ElementsAre(folder.Path("package.qvd")));
    EXPECT_THAT(Offered("quorin-driver", {"check", folder.Path("")}), ElementsAre(folder.Path("package.qvd")));
}

TEST(Completions, OfferFoldersAndFilesWhereTheyAreMeant) {
    const TemporaryRoot folder;
    folder.Put("inside/file", "");
    folder.Put("settings", "");
    const std::string all = folder.Path("");
    EXPECT_THAT(Offered("quorin", {"--root", all}), ElementsAre(folder.Path("inside")));
    EXPECT_THAT(Offered("quorin", {"--settings", all}),
                UnorderedElementsAre(folder.Path("inside"), folder.Path("settings")));
    EXPECT_THAT(Offered("quorin-instrument", {"--noise", all + "s"}), ElementsAre(folder.Path("settings")));
}

} // namespace
} // namespace programs
