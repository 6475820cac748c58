// SPDX-License-Identifier: MIT
#include "companion/download_search.h"

#include "tests/support/program.h"

namespace companion {
namespace {

class SearchedDownload : public support::Program {
protected:
    SearchedDownload() {
        InstallMeter();
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|North wall\nMeter|qrn0002.txt|20070301|"
                           "twice\nGone|qrn0003.txt|20070301|\nMeter|qrn0004.txt|20070301|twice\nshort row\n"
                           "Meter|qrn0005.txt|20070301|qrn0001.txt\n");
    }
};

TEST_F(SearchedDownload, IsFoundByItsFileOrItsAlias) {
    for (const Text& name : {Text(u"qrn0001.txt"), Text(u"North wall")}) {
        const DownloadFound found = FindDownload(name);
        EXPECT_EQ(found.Driver, u"Meter");
        EXPECT_EQ(found.File, u"qrn0001.txt") << "a file's own name comes first";
        EXPECT_EQ(found.WhyNot, u"");
    }
    EXPECT_FALSE(modFileSystem::Table.TableFile.valid);
}

TEST_F(SearchedDownload, IsNotGuessed) {
    EXPECT_EQ(FindDownload(u"twice").WhyNot,
              u"More than one download is called twice: qrn0002.txt, qrn0004.txt. Name the file.");
    EXPECT_EQ(FindDownload(u"north wall").WhyNot, u"There is no download north wall.");
    EXPECT_EQ(FindDownload(u"").File, u"");
}

TEST_F(SearchedDownload, NeedsItsDriver) {
    EXPECT_EQ(FindDownload(u"qrn0003.txt").WhyNot, u"qrn0003.txt can't be opened: its driver Gone is not installed.");
}

TEST_F(SearchedDownload, IsNoneWhereNothingIsInstalled) {
    std::filesystem::remove_all(Device.Folder.Path() / "Quorin");
    EXPECT_EQ(FindDownload(u"qrn0001.txt").WhyNot, u"There is no download qrn0001.txt.");
    EXPECT_FALSE(Device.Folder.Has("Quorin/drivers.txt")) << "a search makes nothing";
    EXPECT_FALSE(Device.Folder.Has("Quorin/qrnctrl.txt"));
}

} // namespace
} // namespace companion
