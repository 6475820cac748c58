// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

namespace reader {
namespace {

TEST_F(Journal, ListShowsEachDayAndRoot) {
    Day("2026-11-22", {Start(), Reading("2026-11-22T10:00:01", "taken"), Reading("2026-11-22T10:00:02", "norow"),
                       Reading("2026-11-22T10:00:03", "openfield"), Start()});
    Day("2026-11-21", {Start(Other)}, Other);
    Day("2026-11-23", {R"({"ms":9,"event":"day","root":"/data/meter"})", Reading("2026-11-23T00:00:01", "replaced")});
    Folder.Put("notes.txt", "not a file of the journal");
    const Outcome list = Run({"list"});
    const auto name = [this](const std::string& day, const std::string& root) {
        return std::filesystem::path(FileOf(day, root)).filename().string() + "\n";
    };
    EXPECT_EQ(list.Output, "day         root           size  programs  taken  replaced  not taken  file\n"
                           "2026-11-21  /data/other   242 B         1      0         0          0  " +
                               name("2026-11-21", Other) +
                               "2026-11-22  /data/meter  1.1 kB         2      1         0          2  " +
                               name("2026-11-22", Meter) +
                               "2026-11-23  /data/meter   290 B         1      0         1          0  " +
                               name("2026-11-23", Meter));
    EXPECT_EQ(list.Errors, "");
    EXPECT_EQ(list.Status, 0);
}

TEST_F(Journal, ListHasOnlyTheRootThatIsAskedFor) {
    Day("2026-11-22", {Start()});
    Day("2026-11-22", {Start(Other)}, Other);
    EXPECT_THAT(Run({"list", "--root", Other}).Output, testing::Not(testing::HasSubstr(Meter)));
    EXPECT_THAT(Run({"list", "--root", "/data/../data/other/"}).Output, testing::HasSubstr(Other));
    EXPECT_THAT(Run({"list", "--root", "/data"}).Output, testing::Not(testing::HasSubstr("2026")));
}

TEST_F(Journal, ListCountsAFileThatDoesNotSayItsRoot) {
    Day("2026-11-22", {});
    EXPECT_EQ(Run({"list"}).Output, "day         root              size  programs  taken  replaced  not taken  file\n"
                                    "2026-11-22  8fd74ea254d29cc8   0 B         0      0         0          0  "
                                    "2026-11-22-8fd74ea254d29cc8.jsonl\n");
}

} // namespace
} // namespace reader
