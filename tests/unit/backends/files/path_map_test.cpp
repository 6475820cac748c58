// SPDX-License-Identifier: MIT
#include "backends/files/path_map.h"

#include "tests/support/printed_rows.h"
#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/path_of.h"

#include <gtest/gtest.h>
#include <memory>

using backends::FileEntry;
using backends::LastLink;
using backends::PathMap;
using backends::RelativePath;
using platform::NoError;
using platform::PathRefused;

namespace {

using support::PrintTo;

/// Returns the path beneath the root, or why there is none.
std::string Mapped(const Text& devicePath) {
    std::string path;
    const auto error = RelativePath(devicePath, path);
    return error == NoError ? path : "error " + std::to_string(NumberOf(error));
}

struct PathRow {
    Text DevicePath;
    std::string HostPath;
};

class MapsToTheHost : public testing::TestWithParam<PathRow> {};

TEST_P(MapsToTheHost, BeneathTheRoot) {
    EXPECT_EQ(Mapped(GetParam().DevicePath), GetParam().HostPath);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MapsToTheHost,
    testing::Values(PathRow{u"Card:\\x.txt", "Card/x.txt"}, PathRow{u"Card:\\", "Card"}, PathRow{u"Card:", "Card"},
                    PathRow{u"c:\\ipc\\", "c/ipc"}, PathRow{u"C:\\ipc\\", "C/ipc"}, PathRow{u".\\", ""},
                    PathRow{u".", ""}, PathRow{u"\\", ""}, PathRow{u".\\Quorin\\drivers.txt", "Quorin/drivers.txt"},
                    PathRow{u"\\My Documents\\Quorin\\", "My Documents/Quorin"},
                    PathRow{u"\\Application Data\\Volatile\\RFCOMM\\", "Application Data/Volatile/RFCOMM"},
                    PathRow{u"Card:\\a..b", "Card/a..b"}, PathRow{u"Card:\\...", "Card/..."},
                    PathRow{u"Card:\\.hidden", "Card/.hidden"},
                    PathRow{u"Gerät:\\Größe.txt", "Ger\xC3\xA4t/Gr\xC3\xB6\xC3\x9F"
                                                  "e.txt"},
                    PathRow{u"Card:\\\xDCFF", "Card/\xFF"}, PathRow{u"\\" + Text(255, u'x'), std::string(255, 'x')}));

class RefusesThePath : public testing::TestWithParam<Text> {};

TEST_P(RefusesThePath, ThatMayLeadOutside) {
    EXPECT_EQ(Mapped(GetParam()), "error " + std::to_string(NumberOf(PathRefused)));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RefusesThePath,
    testing::Values(u"", u"..", u"..\\", u"..\\x", u".\\..\\x", u"Card:\\..\\x", u"Card:\\a\\..\\..\\x", u"..:\\x",
                    u".:\\x", u".\\.\\x", u"\\.\\x", u"Card:\\.\\x", u"Card:\\a\\.", u"/etc/passwd", u"Card:\\/etc",
                    u"Card:\\a/../../x", u"Card:/x", u"\\\\server\\share", u"Card:\\\\x", u"Card:\\x\\\\", u"\\\\",
                    u".\\\\x", u"Card:\\a:b", u"Card:x", u":\\x", u"::\\x", u"Card::\\x", u"\\Card:\\x", u"\\:",
                    u"Card:\\C:\\x", u"\\" + Text(256, u'x'), Text(u"Card:\\a\0b", 10), Text(u"\0", 1), Text(256, u'x'),
                    u"Card:\\" + Text(128, u'é'), u"Card:\\\xDC2E\xDC2E\\" + Text(1, u'\0')));

INSTANTIATE_TEST_SUITE_P(WithoutAVolume, RefusesThePath,
                         testing::Values(u"x.txt", u"My Documents\\Quorin\\", u"Quorin\\drivers.txt", u"Card\\x"));

/// Returns the place of an entry beneath the root, or why there is none.
std::string PlaceOf(const TemporaryRoot& root, const Text& devicePath) {
    FileEntry entry;
    const auto error = PathMap(root.Path()).Entry(devicePath, LastLink::Follow, entry);
    if (error != NoError)
        return "error " + std::to_string(NumberOf(error));
    const std::string path = PathOf(entry.Folder) + "/" + entry.Name;
    return path.compare(0, root.Path().size(), root.Path()) == 0 ? path.substr(root.Path().size()) : "outside";
}

TEST(EntryOfADevicePath, HasTheLinksInsideTheRootTakenOut) {
    const TemporaryRoot root;
    root.Put("Card/real/x.txt", "x");
    root.Link("real", "Card/link");
    root.Link("x.txt", "Card/real/y.txt");
    EXPECT_EQ(PlaceOf(root, u"Card:\\link\\x.txt"), "/Card/real/x.txt");
    EXPECT_EQ(PlaceOf(root, u"Card:\\link\\y.txt"), "/Card/real/x.txt");
    EXPECT_EQ(PlaceOf(root, u"Card:\\link\\new.txt"), "/Card/real/new.txt");
}

TEST(EntryOfADevicePath, IsRefusedWhereALinkLeadsOutside) {
    const TemporaryRoot root;
    const TemporaryRoot elsewhere;
    elsewhere.Put("secret.txt", "secret");
    root.Link(elsewhere.Path(), "c");
    EXPECT_EQ(PlaceOf(root, u"c:\\secret.txt"), "error 75");
}

TEST(PathMapRoot, MayBeReachedOverALink) {
    const TemporaryRoot root;
    root.Put("real/x.txt", "x");
    root.Link("real", "link");
    FileEntry entry;
    ASSERT_EQ(PathMap(root.Path("link")).Entry(u".\\x.txt", LastLink::Follow, entry), NoError);
    EXPECT_EQ(PathOf(entry.Folder) + "/" + entry.Name, root.Path("real/x.txt"));
}

TEST(PathMapRoot, IsMadeWithTheFoldersAboveIt) {
    const TemporaryRoot root;
    const PathMap paths(root.Path("a/b/c"));
    EXPECT_TRUE(std::filesystem::is_directory(root.Path("a/b/c")));
}

TEST(PathMapRoot, ThatCannotBeMadeFailsEveryPath) {
    const TemporaryRoot root;
    root.Put("file", "no folder");
    FileEntry entry;
    const PathMap paths(root.Path("file/below"));
    EXPECT_EQ(paths.Entry(u".\\x.txt", LastLink::Follow, entry), platform::FileNotFound);
}

/// As when a card is taken out of the tablet and put in again.
TEST(PathMapRoot, ThatWasAwayAndIsBackServesOn) {
    const TemporaryRoot root;
    const PathMap paths(root.Path("card"));
    std::filesystem::rename(root.Path("card"), root.Path("away"));
    FileEntry entry;
    EXPECT_EQ(paths.Entry(u".\\x.txt", LastLink::Follow, entry), platform::FileNotFound);
    std::filesystem::create_directory(root.Path("card"));
    EXPECT_EQ(paths.Entry(u".\\x.txt", LastLink::Follow, entry), NoError);
}

/// A failure at the start does not matter once the folder exists.
TEST(PathMapRoot, ThatCouldNotBeMadeAtTheStartServesOnceItIsThere) {
    const TemporaryRoot root;
    root.Put("above", "no folder");
    const PathMap paths(root.Path("above/root"));
    FileEntry entry;
    EXPECT_EQ(paths.Entry(u".\\x.txt", LastLink::Follow, entry), platform::FileNotFound);
    std::filesystem::remove(root.Path("above"));
    std::filesystem::create_directories(root.Path("above/root"));
    EXPECT_EQ(paths.Entry(u".\\x.txt", LastLink::Follow, entry), NoError);
}

TEST(PathMapFolder, IsMadeOnAVolumeThatIsThereAlone) {
    const TemporaryRoot root;
    const PathMap paths(root.Path());
    EXPECT_EQ(paths.MakeFolder(u"Card:\\PALM\\Programs\\"), platform::FileNotFound);
    EXPECT_FALSE(root.Has("Card"));
    EXPECT_EQ(paths.MakeVolume(u"Card:\\"), NoError);
    EXPECT_EQ(paths.MakeFolder(u"Card:\\PALM\\Programs\\"), NoError);
    EXPECT_EQ(paths.MakeFolder(u"\\My Documents\\Quorin\\"), NoError);
    EXPECT_TRUE(root.Has("Card/PALM/Programs"));
    EXPECT_TRUE(root.Has("My Documents/Quorin"));
}

} // namespace
