// SPDX-License-Identifier: MIT
// What earlier versions have left on disk, as script/freeze has kept it: each has to be read, and used, by this one.
// What a newer version has left is refused in words.
#include "apps/quorin/window_settings.h"
#include "tests/unit/apps/quorin-console/console_run.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::vector<std::string> Versions() {
    std::vector<std::string> versions;
    for (const auto& entry : fs::directory_iterator(QUORIN_FROZEN))
        versions.push_back(entry.path().filename().string());
    std::sort(versions.begin(), versions.end());
    return versions;
}

std::string BytesOf(const fs::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

/// Replaces the value of a line "NAME VALUE".
std::string WithLine(std::string text, const std::string& name, const std::string& value) {
    const std::size_t at = text.find("\n" + name + " ") + 1;
    return text.replace(at, text.find('\n', at) - at, name + " " + value);
}

/// A copy of what one version has left. Its root folder is another one than that of the draft was, which is named by
/// its path and its place on the disk.
class DiskOfVersion : public Console, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        fs::copy(fs::path(QUORIN_FROZEN) / GetParam(), Left.Path(), fs::copy_options::recursive);
        fs::remove_all(Root.Path());
        fs::copy(Left.Path() / "root", Root.Path(), fs::copy_options::recursive);
        const fs::path drafts = Left.Path() / "drafts";
        fs::create_directories(State.Path() / "quorin/drafts");
        for (const auto& entry : fs::directory_iterator(drafts))
            std::ofstream(State.Path() / "quorin/drafts" / entry.path().filename())
                << WithLine(BytesOf(entry.path()), "root", fs::canonical(Root.Path()).string());
        ::setenv("XDG_STATE_HOME", State.Path().c_str(), 1);
    }
    std::string Download() { return BytesOf(Root.Path() / "Quorin/qrn0001.txt"); }
    /// Runs quorin-journal on the journal.
    Outcome Journal(const std::string& words) {
        return Shell(std::string(QUORIN_JOURNAL) + " " + words + " --journal '" + (Left.Path() / "journal").string() +
                         "' > output 2> errors",
                     "");
    }
    fs::path OnlyFileIn(const fs::path& folder) { return fs::directory_iterator(folder)->path(); }

    support::TemporaryFolder Left;
    support::TemporaryFolder State;
};

INSTANTIATE_TEST_SUITE_P(Frozen, DiskOfVersion, testing::ValuesIn(Versions()),
                         [](const testing::TestParamInfo<std::string>& version) {
                             std::string name = "Version" + version.param;
                             std::replace(name.begin(), name.end(), '.', '_');
                             return name;
                         });

TEST_P(DiskOfVersion, OpensWithItsReading) {
    const std::string before = Download();
    ASSERT_THAT(before, HasSubstr("||23.4 %|"));
    const Outcome shown = Tell(Joined({OpenTheDownload, {"show", "choose Close"}}));
    EXPECT_EQ(shown.Status, 0) << shown.Errors;
    EXPECT_THAT(shown.Output, HasSubstr("23.4 %"));
    EXPECT_EQ(Download(), before);
}

TEST_P(DiskOfVersion, TakesAnotherReading) {
    const Outcome taken = Tell(Joined(
        {OpenTheDownload,
         {R"(receive "[BLob]\r\n[RESULT_TYPE \"Humidity\"]\r\n[RESULT_VALUE \"51\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n")",
          "tick 1500", "choose Close"}}));
    EXPECT_EQ(taken.Status, 0) << taken.Output;
    EXPECT_THAT(Download(), HasSubstr("||23.4 %||51 %|"));
}

TEST_P(DiskOfVersion, HasItsDraftPutBack) {
    const Outcome put = Tell({}, {"--recover", "put"});
    ASSERT_EQ(put.Status, 0) << put.Output;
    ASSERT_EQ(put.Lines.size(), 1U) << put.Output;
    EXPECT_EQ(put.Line(0).at("put"), true);
    EXPECT_THAT(Download(), HasSubstr("\n|Ångström|23.4 %|"));
}

TEST_P(DiskOfVersion, HasItsJournalRead) {
    const Outcome readings = Journal("readings");
    EXPECT_EQ(readings.Status, 0) << readings.Errors;
    EXPECT_THAT(readings.Output, HasSubstr("Moisture 23.4 % → Moisture"));
    EXPECT_EQ(readings.Errors, "");
}

TEST_P(DiskOfVersion, KeepsThePlaceOfItsWindow) {
    const quorin::WindowSettings remembered((Root.Path() / "settings.ini").string());
    std::istringstream place(remembered.Get("Place"));
    int x = 0, y = 0, width = 0, height = 0;
    EXPECT_TRUE(place >> x >> y >> width >> height) << remembered.Get("Place");
}

TEST_P(DiskOfVersion, OfANewerDraftIsRefusedAndLeft) {
    const fs::path draft = OnlyFileIn(State.Path() / "quorin/drafts");
    const std::string newer = "quorin-draft 2\n" + BytesOf(draft);
    std::ofstream(draft) << newer;
    const std::string before = Download();

    const Outcome put = Tell({}, {"--recover", "put"});
    EXPECT_EQ(put.Status, 1);
    EXPECT_EQ(put.Line(0).at("unreadable"),
              draft.string() + ": a newer program has written it, and only that can read it");
    EXPECT_EQ(Download(), before);
    EXPECT_EQ(BytesOf(draft), newer);

    const Outcome started = Tell({"choose Start..."}, {"--clock", "real"});
    ASSERT_FALSE(started.All("about").empty()) << started.Output;
    EXPECT_THAT(started.Output, HasSubstr(R"("about":"draftfile")"));
}

TEST_P(DiskOfVersion, OfANewerJournalIsRefused) {
    const fs::path day = OnlyFileIn(Left.Path() / "journal");
    std::string lines = BytesOf(day);
    const std::string version = R"("journal":1,)";
    ASSERT_NE(lines.find(version), std::string::npos);
    std::ofstream(day) << lines.replace(lines.find(version), version.size(), R"("journal":2,)");
    const Outcome readings = Journal("readings");
    EXPECT_EQ(readings.Status, 1);
    EXPECT_EQ(readings.Output, "");
    EXPECT_THAT(readings.Errors, HasSubstr("line 1: from here on a newer program has written, journal version 2"));
}

} // namespace
} // namespace console
