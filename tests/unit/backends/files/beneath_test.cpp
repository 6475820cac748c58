// SPDX-License-Identifier: MIT
#include "backends/files/beneath.h"

#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/exchanger.h"
#include "tests/unit/backends/files/path_of.h"

#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace platform;
using namespace backends;

namespace {

using OpenFolder = ErrorNumber (*)(int folder, const std::string& relative, Descriptor& found);

/// A root with folders and links in it, and a folder beside it that must not be reached.
class Planted {
public:
    Planted() {
        Root.Put("Card/real/x.txt", "x");
        Elsewhere.Put("secret.txt", "secret");
        Start = Descriptor(::open(Root.Path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    }

    /// Returns where a path leads to, beneath the root, or why it can't be opened.
    std::string Reached(OpenFolder open, const std::string& relative) const {
        Descriptor found;
        if (const ErrorNumber error = open(Start.Number(), relative, found); error != NoError)
            return "error " + std::to_string(NumberOf(error));
        return Place(found);
    }

    std::string Place(const Descriptor& folder) const {
        const std::string path = PathOf(folder);
        return path.compare(0, Root.Path().size(), Root.Path()) == 0 ? path.substr(Root.Path().size()) : "outside";
    }

    TemporaryRoot Root;
    TemporaryRoot Elsewhere;
    Descriptor Start;
};

struct Way {
    /// What `Card/link` leads to; `*` at its start is the root's own path, `+` that of the folder beside.
    const char* Link;
    const char* Relative; ///< the path that is opened
    const char* Reached;
};

void PrintTo(const Way& way, std::ostream* out) {
    *out << way.Relative << " where Card/link is " << way.Link;
}

class Beneath : public testing::TestWithParam<std::tuple<OpenFolder, Way>> {};

TEST_P(Beneath, AFolderIsReachedOrRefused) {
    const auto& [open, way] = GetParam();
    const Planted planted;
    const std::string link = way.Link;
    const std::string base = link[0] == '*' ? planted.Root.Path() : link[0] == '+' ? planted.Elsewhere.Path() : "";
    planted.Root.Link(base + (base.empty() ? link : link.substr(1)), "Card/link");
    EXPECT_EQ(planted.Reached(open, way.Relative), way.Reached);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, Beneath,
    testing::Combine(testing::Values(&OpenFolderBeneath, &WalkBeneath),
                     testing::Values(Way{"real", "", ""}, Way{"real", ".", ""}, Way{"real", "Card", "/Card"},
                                     Way{"real", "Card/real", "/Card/real"}, Way{"real", "Card/link", "/Card/real"},
                                     Way{"./real/", "Card/link", "/Card/real"}, Way{"..", "Card/link", ""},
                                     Way{"..", "Card/link/Card/real", "/Card/real"},
                                     Way{"../Card/real", "Card/link", "/Card/real"},
                                     Way{"real/../../Card", "Card/link/real", "/Card/real"},
                                     // paths that lead out of the root, even if they lead back
                                     Way{"../..", "Card/link", "error 75"}, Way{"../../..", "Card/link", "error 75"},
                                     Way{"../../x/y", "Card/link", "error 75"}, Way{"+", "Card/link", "error 75"},
                                     Way{"/", "Card/link", "error 75"}, Way{"*/Card/real", "Card/link", "error 75"},
                                     Way{"/proc/self/root", "Card/link", "error 75"}, Way{"real", "..", "error 75"},
                                     Way{"real", "Card/../..", "error 75"}, Way{"real", "/", "error 75"},
                                     Way{"real", "/tmp", "error 75"},
                                     // paths that lead to nothing
                                     Way{"link", "Card/link", "error 75"}, Way{"nothing", "Card/link", "error 53"},
                                     Way{"real", "Card/none", "error 53"}, Way{"real", "Card/none/x", "error 53"},
                                     Way{"real", "Card/real/x.txt", "error 53"},
                                     Way{"real/x.txt", "Card/link", "error 53"})));

TEST(BeneathAFolder, NoPathIsTooLongToBeRefused) {
    const Planted planted;
    std::string path = "Card";
    while (path.size() < 5000)
        path += "/real";
    EXPECT_EQ(planted.Reached(&OpenFolderBeneath, path), "error 75");
    EXPECT_EQ(planted.Reached(&WalkBeneath, path), "error 75");
    EXPECT_EQ(planted.Reached(&OpenFolderBeneath, std::string(5000, 'x')), "error 75");
    EXPECT_EQ(planted.Reached(&WalkBeneath, std::string(5000, 'x')), "error 75");
}

std::string Found(const Planted& planted, const std::string& relative, LastLink lastLink) {
    FileEntry entry;
    if (const ErrorNumber error = FindBeneath(planted.Start.Number(), relative, lastLink, entry); error != NoError)
        return "error " + std::to_string(NumberOf(error));
    return planted.Place(entry.Folder) + "/" + entry.Name;
}

TEST(AnEntryBeneath, IsWhatItsLastLinkLeadsTo) {
    const Planted planted;
    planted.Root.Link("real/x.txt", "Card/link.txt");
    planted.Root.Link("Card/link.txt", "over.txt");
    EXPECT_EQ(Found(planted, "over.txt", LastLink::Follow), "/Card/real/x.txt");
    EXPECT_EQ(Found(planted, "over.txt", LastLink::Keep), "/over.txt");
    EXPECT_EQ(Found(planted, "Card/new.txt", LastLink::Follow), "/Card/new.txt");
}

TEST(AnEntryBeneath, IsRefusedWhereItsLinkLeadsOutsideOrToNothing) {
    const Planted planted;
    planted.Root.Link(planted.Elsewhere.Path("secret.txt"), "absolute.txt");
    planted.Root.Link("../" + planted.Elsewhere.Path().substr(planted.Elsewhere.Path().rfind('/') + 1) + "/secret.txt",
                      "up.txt");
    planted.Root.Link("absolute.txt", "second.txt");
    planted.Root.Link("nothing.txt", "nowhere.txt");
    planted.Root.Link("round.txt", "round.txt");
    planted.Root.Link("Card/..", "folder.txt");
    for (const char* name : {"absolute.txt", "up.txt", "second.txt", "nowhere.txt", "round.txt", "folder.txt", "", "."})
        EXPECT_EQ(Found(planted, name, LastLink::Follow), "error 75") << name;
}

TEST(FoldersBeneath, AreMadeForTheirOwnerAlone) {
    const Planted planted;
    const mode_t old = ::umask(0);
    EXPECT_EQ(MakeFoldersBeneath(planted.Start.Number(), "Card/a/b"), NoError);
    ::umask(old);
    for (const char* made : {"Card/a", "Card/a/b"}) {
        struct stat found {};
        ASSERT_EQ(::stat(planted.Root.Path(made).c_str(), &found), 0);
        EXPECT_EQ(found.st_mode & 07777U, 0700U) << made;
    }
    EXPECT_EQ(MakeFoldersBeneath(planted.Start.Number(), "Card/a/b"), NoError); // they exist already
    EXPECT_EQ(MakeFoldersBeneath(planted.Start.Number(), ""), NoError);
}

TEST(FoldersBeneath, AreNeitherMadeInAFileNorOverALinkOutside) {
    const Planted planted;
    planted.Root.Link(planted.Elsewhere.Path(), "out");
    planted.Root.Link(planted.Elsewhere.Path("new"), "dangling");
    EXPECT_EQ(MakeFoldersBeneath(planted.Start.Number(), "Card/real/x.txt/a"), FileNotFound);
    EXPECT_EQ(MakeFoldersBeneath(planted.Start.Number(), "out/a"), PathRefused);
    EXPECT_EQ(MakeFoldersBeneath(planted.Start.Number(), "dangling"), PathRefused);
    EXPECT_EQ(MakeFoldersBeneath(planted.Start.Number(), "dangling/a"), PathRefused);
    EXPECT_EQ(planted.Elsewhere.Entries(), 1);
}

/// On a busy machine very many tries in a row may find the same state of the name.
constexpr int FewestTries = 3000;
constexpr int MostTries = 10000000;

class WhileFoldersAreExchanged : public testing::TestWithParam<OpenFolder> {};

TEST_P(WhileFoldersAreExchanged, NoneOutsideIsEverReached) {
    const Planted planted;
    planted.Root.Link(planted.Elsewhere.Path(), "Card/trap");
    const Exchanger exchanger(planted.Root.Path("Card/real"), planted.Root.Path("Card/trap"));
    int reached = 0;
    for (int i = 0; (i < FewestTries || exchanger.Turns < FewestTries || reached == 0) && i < MostTries; ++i) {
        Descriptor folder;
        if (GetParam()(planted.Start.Number(), "Card/real", folder) != NoError)
            continue;
        ++reached;
        ASSERT_NE(::faccessat(folder.Number(), "secret.txt", F_OK, 0), 0) << "after " << i << " tries";
    }
    EXPECT_GT(reached, 0);
}

TEST(WhileFilesAreExchanged, NoneOutsideIsEverOpened) {
    const Planted planted;
    planted.Root.Link(planted.Elsewhere.Path("secret.txt"), "Card/real/trap.txt");
    const Exchanger exchanger(planted.Root.Path("Card/real/x.txt"), planted.Root.Path("Card/real/trap.txt"));
    int opened = 0;
    for (int i = 0; (i < FewestTries || exchanger.Turns < FewestTries || opened == 0) && i < MostTries; ++i) {
        FileEntry entry;
        ASSERT_EQ(FindBeneath(planted.Start.Number(), "Card/real/x.txt", LastLink::Keep, entry), NoError);
        Descriptor file;
        if (OpenRegular(entry, O_RDONLY, file) != NoError)
            continue;
        ++opened;
        char byte = 0;
        ASSERT_EQ(::read(file.Number(), &byte, 1), 1);
        ASSERT_EQ(byte, 'x') << "the first letter of the secret, after " << i << " tries";
    }
    EXPECT_GT(opened, 0);
}

INSTANTIATE_TEST_SUITE_P(BothWays, WhileFoldersAreExchanged, testing::Values(&OpenFolderBeneath, &WalkBeneath));

} // namespace
