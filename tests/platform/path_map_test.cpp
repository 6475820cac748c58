// SPDX-License-Identifier: MIT
#include "platform/common/path_map.h"

#include "temporary_root.h"

#include <gtest/gtest.h>
#include <memory>

using platform::NoError;
using platform::PathRefused;
using platform::common::PathMap;

namespace {

const std::string Outside = "outside the root";

/// The host path beneath the root, or why there is none.
std::string Mapped(const TemporaryRoot& root, const Text& devicePath) {
    std::string path;
    const auto error = PathMap(root.Path()).HostPath(devicePath, path);
    if (error != NoError)
        return "error " + std::to_string(error);
    return path.compare(0, root.Path().size(), root.Path()) == 0 ? path.substr(root.Path().size()) : Outside;
}

struct Row {
    Text DevicePath;
    std::string HostPath;
};

class MapsToTheHost : public testing::TestWithParam<Row> {};

TEST_P(MapsToTheHost, BeneathTheRoot) {
    const TemporaryRoot root;
    EXPECT_EQ(Mapped(root, GetParam().DevicePath), GetParam().HostPath);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MapsToTheHost,
    testing::Values(Row{u"Card:\\x.txt", "/Card/x.txt"}, Row{u"Card:\\", "/Card"}, Row{u"Card:", "/Card"},
                    Row{u"c:\\ipc\\", "/c/ipc"}, Row{u"C:\\ipc\\", "/C/ipc"}, Row{u".\\", ""}, Row{u".", ""},
                    Row{u"\\", ""}, Row{u".\\Quorin\\drivers.txt", "/Quorin/drivers.txt"},
                    Row{u"My Documents\\Quorin\\", "/My Documents/Quorin"},
                    Row{u"\\Application Data\\Volatile\\RFCOMM\\", "/Application Data/Volatile/RFCOMM"},
                    Row{u"Card:\\a..b", "/Card/a..b"}, Row{u"Card:\\...", "/Card/..."},
                    Row{u"Card:\\.hidden", "/Card/.hidden"},
                    Row{u"Gerät:\\Größe.txt", "/Ger\xC3\xA4t/Gr\xC3\xB6\xC3\x9F"
                                              "e.txt"},
                    Row{u"Card:\\\xDCFF", "/Card/\xFF"}, Row{Text(255, u'x'), "/" + std::string(255, 'x')}));

class RefusesThePath : public testing::TestWithParam<Text> {};

TEST_P(RefusesThePath, ThatMayLeadOutside) {
    const TemporaryRoot root;
    EXPECT_EQ(Mapped(root, GetParam()), "error " + std::to_string(PathRefused));
}

INSTANTIATE_TEST_SUITE_P(Rows, RefusesThePath,
                         testing::Values(u"", u"..", u"..\\", u"..\\x", u".\\..\\x", u"Card:\\..\\x",
                                         u"Card:\\a\\..\\..\\x", u"..:\\x", u".:\\x", u".\\.\\x", u"\\.\\x",
                                         u"Card:\\.\\x", u"Card:\\a\\.", u"/etc/passwd", u"Card:\\/etc",
                                         u"Card:\\a/../../x", u"Card:/x", u"\\\\server\\share", u"Card:\\\\x",
                                         u"Card:\\x\\\\", u"\\\\", u".\\\\x", u"Card:\\a:b", u"Card:x", u":\\x",
                                         u"::\\x", u"Card::\\x", u"\\Card:\\x", u"\\:", u"Card:\\C:\\x",
                                         Text(u"Card:\\a\0b", 10), Text(u"\0", 1), Text(256, u'x'),
                                         u"Card:\\" + Text(128, u'é'), u"Card:\\\xDC2E\xDC2E\\" + Text(1, u'\0')));

class PathMapWithLinks : public testing::Test {
protected:
    PathMapWithLinks() {
        Root.Put("Card/real/x.txt", "x");
        Elsewhere.Put("secret.txt", "secret");
    }
    TemporaryRoot Root;
    TemporaryRoot Elsewhere;
};

TEST_F(PathMapWithLinks, FollowsALinkThatStaysInside) {
    Root.Link("real", "Card/relative");
    Root.Link(Root.Path("Card/real"), "Card/absolute");
    EXPECT_EQ(Mapped(Root, u"Card:\\relative\\x.txt"), "/Card/real/x.txt");
    EXPECT_EQ(Mapped(Root, u"Card:\\absolute\\new.txt"), "/Card/real/new.txt");
}

TEST_F(PathMapWithLinks, FollowsALinkToTheRootItself) {
    Root.Link(Root.Path(), "Card/top");
    EXPECT_EQ(Mapped(Root, u"Card:\\top\\Card"), "/Card");
}

TEST_F(PathMapWithLinks, RefusesALinkToAFolderOutside) {
    Root.Link(Elsewhere.Path(), "Card/out");
    EXPECT_EQ(Mapped(Root, u"Card:\\out\\secret.txt"), "error 75");
    EXPECT_EQ(Mapped(Root, u"Card:\\out\\new.txt"), "error 75");
    EXPECT_EQ(Mapped(Root, u"Card:\\out"), "error 75");
}

TEST_F(PathMapWithLinks, RefusesALinkToAFileOutside) {
    Root.Link(Elsewhere.Path("secret.txt"), "Card/out.txt");
    EXPECT_EQ(Mapped(Root, u"Card:\\out.txt"), "error 75");
}

TEST_F(PathMapWithLinks, RefusesALinkThatGoesUp) {
    Root.Link("../..", "Card/up");
    EXPECT_EQ(Mapped(Root, u"Card:\\up\\x"), "error 75");
}

TEST_F(PathMapWithLinks, RefusesALinkThatLeavesOverALinkInside) {
    Root.Link(Elsewhere.Path(), "second");
    Root.Link(Root.Path("second"), "first");
    EXPECT_EQ(Mapped(Root, u"first\\secret.txt"), "error 75");
}

TEST_F(PathMapWithLinks, RefusesAVolumeThatIsALinkOutside) {
    Root.Link("/", "c");
    EXPECT_EQ(Mapped(Root, u"c:\\etc\\passwd"), "error 75");
}

TEST_F(PathMapWithLinks, RefusesALinkToNothing) {
    Root.Link(Elsewhere.Path("not yet there"), "Card/dangling");
    Root.Link("nowhere", "Card/inside");
    EXPECT_EQ(Mapped(Root, u"Card:\\dangling"), "error 75");
    EXPECT_EQ(Mapped(Root, u"Card:\\inside"), "error 75");
}

TEST_F(PathMapWithLinks, RefusesALinkToItself) {
    Root.Link("round", "Card/round");
    EXPECT_EQ(Mapped(Root, u"Card:\\round"), "error 75");
}

TEST_F(PathMapWithLinks, RefusesAFolderWhoseNameOnlyBeginsLikeTheRoot) {
    const std::string beside = Root.Path() + "-beside";
    std::filesystem::create_directory(beside);
    Root.Link(beside, "Card/beside");
    EXPECT_EQ(Mapped(Root, u"Card:\\beside\\x"), "error 75");
    std::filesystem::remove(beside);
}

TEST_F(PathMapWithLinks, GivesTheLinkItselfAsAnEntry) {
    Root.Link("real/x.txt", "Card/link.txt");
    std::string entry;
    ASSERT_EQ(PathMap(Root.Path()).EntryPath(u"Card:\\link.txt", entry), NoError);
    EXPECT_EQ(entry, Root.Path("Card/link.txt"));
}

TEST(PathMapRoot, MayBeReachedOverALink) {
    const TemporaryRoot root;
    root.Put("real/x.txt", "x");
    root.Link("real", "link");
    std::string path;
    ASSERT_EQ(PathMap(root.Path("link")).HostPath(u"x.txt", path), NoError);
    EXPECT_EQ(path, root.Path("real/x.txt"));
}

TEST(PathMapRoot, IsMadeWithTheFoldersAboveIt) {
    const TemporaryRoot root;
    const PathMap paths(root.Path("a/b/c"));
    EXPECT_TRUE(std::filesystem::is_directory(root.Path("a/b/c")));
}

TEST(PathMapRoot, ThatCannotBeMadeFailsEveryPath) {
    const TemporaryRoot root;
    root.Put("file", "no folder");
    std::string path;
    EXPECT_EQ(PathMap(root.Path("file/below")).HostPath(u"x.txt", path), platform::FileNotFound);
}

} // namespace
