// SPDX-License-Identifier: MIT
#include "backends/files/host_files.h"

#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/path_of.h"

#include <sys/stat.h>

using namespace platform;
using namespace backends;

namespace {

mode_t ModeOf(const std::string& path) {
    struct stat found {};
    EXPECT_EQ(stat(path.c_str(), &found), 0) << path;
    return found.st_mode & 07777;
}

TEST(MadeFolders, AreMadeForTheirOwnerAlone) {
    const TemporaryRoot home;
    ASSERT_EQ(MakeFolders(home.Path(".local/share/quorin")), NoError);
    EXPECT_EQ(ModeOf(home.Path(".local")), 0700U);
    EXPECT_EQ(ModeOf(home.Path(".local/share/quorin")), 0700U);
}

TEST(MadeFolders, LeaveWhatIsThereAsItIs) {
    const TemporaryRoot home;
    std::filesystem::create_directory(home.Path("shared"));
    ASSERT_EQ(chmod(home.Path("shared").c_str(), 0755), 0);
    ASSERT_EQ(MakeFolders(home.Path("shared/quorin")), NoError);
    EXPECT_EQ(ModeOf(home.Path("shared")), 0755U);
    EXPECT_EQ(MakeFolders(home.Path("shared/quorin")), NoError);
}

TEST(MadeFolders, CanNotBeMadeInAFile) {
    const TemporaryRoot home;
    home.Put("file", "");
    EXPECT_EQ(MakeFolders(home.Path("file")), FileNotFound);
    EXPECT_EQ(MakeFolders(home.Path("file/quorin")), FileNotFound);
}

TEST(EntryOfAPath, IsBehindTheLinksThatAPersonHasMade) {
    const TemporaryRoot home;
    home.Put("elsewhere/real.ini", "");
    home.Link("elsewhere/real.ini", "settings.ini");
    FileEntry entry;
    ASSERT_EQ(EntryAt(home.Path("settings.ini"), entry), NoError);
    EXPECT_EQ(PathOf(entry.Folder) + "/" + entry.Name, home.Path("elsewhere/real.ini"));
}

TEST(EntryOfAPath, NeedNotBeThere) {
    const TemporaryRoot home;
    FileEntry entry;
    ASSERT_EQ(EntryAt(home.Path("new.ini"), entry), NoError);
    EXPECT_EQ(entry.Name, "new.ini");
    EXPECT_EQ(EntryAt(home.Path("no folder/new.ini"), entry), FileNotFound);
}

} // namespace
