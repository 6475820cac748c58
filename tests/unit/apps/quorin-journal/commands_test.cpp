// SPDX-License-Identifier: MIT
#include "tests/support/help_text.h"
#include "tests/unit/apps/quorin-journal/journal_run.h"

#include <sys/wait.h>

namespace reader {
namespace {

using testing::HasSubstr;

TEST_F(Journal, HelpNamesEveryCommand) {
    const Outcome help = Bare({"--help"});
    for (const char* word :
         {"--journal", "--root", "list", "readings", "follow", "history", "verify", "raw", "export", "story", "forget"})
        EXPECT_THAT(help.Output, HasSubstr(word));
    EXPECT_THAT(help.Output, HasSubstr("\n  5  done, and some of the input was odd"));
    support::ExpectPlainHelp(help.Output);
    EXPECT_EQ(help.Status, 0);
}

TEST_F(Journal, HelpOfReadingsNamesTheVerdicts) {
    const Outcome help = Bare({"readings", "--help"});
    for (const char* word : {"--from", "--to", "--json", "--refused", "all verdicts but notype, replaced, taken"})
        EXPECT_THAT(help.Output, HasSubstr(word));
    EXPECT_EQ(help.Status, 0);
}

TEST_F(Journal, VersionIsThatOfAllPrograms) {
    EXPECT_EQ(Bare({"--version"}).Output, "quorin-journal V 0.27\n");
}

TEST_F(Journal, WrongUsageEndsWithTwoAndSaysWhy) {
    for (const Words& words : {Words{},
                               {"frob"},
                               {"readings", "--bogus"},
                               {"list", "--json"},
                               {"readings", "--from", "yesterday"},
                               {"readings", "--to", "2026-02-30"},
                               {"raw", "--from", "2026-11-22T25:00"},
                               {"readings", "--from", "2026-11-22", "--to", "2026-11-21T10:00"},
                               {"list", "raw"}}) {
        const Outcome wrong = Run(words);
        EXPECT_EQ(wrong.Status, 2) << testing::PrintToString(words);
        EXPECT_EQ(wrong.Output, "") << testing::PrintToString(words);
        EXPECT_THAT(wrong.Errors, testing::StartsWith("quorin-journal: ")) << testing::PrintToString(words);
    }
}

TEST_F(Journal, OfARootThatHasNoneIsTold) {
    Day("2026-11-22", {Start()});
    for (const Words& words :
         {Words{"list"}, {"readings"}, {"raw"}, {"export"}, {"history", "qrn0001.txt"}, {"verify"}}) {
        Words asked = words;
        asked.insert(asked.end(), {"--root", Other});
        const Outcome none = Run(asked);
        EXPECT_EQ(none.Errors, "quorin-journal: no journal of that root folder\n") << words[0];
        EXPECT_EQ(none.Output, "") << words[0];
        EXPECT_EQ(none.Status, 2) << words[0];
    }
}

TEST_F(Journal, AFolderThatIsMissingIsTold) {
    const Outcome missing = Bare({"list", "--journal", "/nowhere/journal"});
    EXPECT_EQ(missing.Errors, "quorin-journal: can't read the folder /nowhere/journal: No such file or directory\n");
    EXPECT_EQ(missing.Status, 2);
}

TEST_F(Journal, IsInTheStateFolderUnlessToldOtherwise) {
    std::filesystem::create_directories(Folder.Path("state/quorin/journal"));
    Folder.Put("state/quorin/journal/2026-11-22-0123456789abcdef.jsonl", "");
    const Outcome list = Bare({"list"}, "XDG_STATE_HOME='" + Folder.Path("state") + "'");
    EXPECT_THAT(list.Output, HasSubstr("0123456789abcdef"));
    EXPECT_EQ(list.Status, 0);
}

TEST_F(Journal, TakesTheOptionsOfAllBeforeTheCommandToo) {
    EXPECT_EQ(Bare({"--journal", Folder.Path(), "list"}).Status, 0);
}

TEST_F(Journal, OutputThatCannotBeWrittenIsAFailure) {
    Day("2026-11-22", {Start()});
    const std::string command = std::string(QUORIN_JOURNAL) + " list --journal " + Folder.Path() + " >/dev/full 2>&1";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 4);
}

} // namespace
} // namespace reader
