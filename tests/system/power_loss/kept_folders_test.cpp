// SPDX-License-Identifier: MIT
// A data folder that exists but can't be opened at the moment: the program does not search or make its files elsewhere.
#include "tests/system/power_loss/machine.h"

#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "tests/system/power_loss/disk_calls.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace disk {
namespace {

constexpr int FromThereOn = 1'000'000;
const std::string TableBytes = "NAME|VALUE\na|1\nb|2\n";

class KeptFolder : public testing::TestWithParam<int> {
protected:
    KeptFolder() {
        WriteTree(Folder.Path(), Before);
        Device.emplace(Folder.Path(), Keeping::TextFiles);
        Before = ReadTree(Folder.Path());
    }
    Plan From(int look) const { return {Blow::Fail, look, GetParam(), Counted::Names, FromThereOn}; }
    Text Words() const { return platform::ErrorText(backends::FromErrno(GetParam())); }

    /// Also checks that new files are in the data folder alone.
    void RemoveScratchFiles() const {
        for (const auto& [path, bytes] : ReadTree(Folder.Path()).Files) {
            if (Before.Files.count(path) != 0)
                continue;
            EXPECT_EQ(FolderOf(path), "Quorin") << path;
            std::filesystem::remove(Folder.Path() + "/" + path);
        }
    }

    const FreshFolder Folder;
    Tree Before = Furnished({{"drivers.txt", "NAME|INFFILE\n"}, {"table.txt", TableBytes}}, Keeping::TextFiles);
    std::optional<Machine> Device;
};

TEST_P(KeptFolder, StopsTheProgramWhereItsStandingPathsAreMade) {
    Text failure;
    {
        const Watch watch(Folder.Path(), From(1));
        failure = support::FailureOf(modQuorin::SetFilePaths);
    }
    EXPECT_EQ(failure, u"Can't open the folder .\\Quorin\\: " + Words());
    EXPECT_EQ(ReadTree(Folder.Path()), Before);
    EXPECT_EQ(modFileSystem::GetDataPath(u""), u".\\Quorin\\");
}

/// Any look on the way fails, and all after it.
TEST_P(KeptFolder, IsNeverTakenForAMissingOne) {
    bool struck = true;
    for (int look = 1; struck; ++look) {
        Text path;
        const Watch watch(Folder.Path(), From(look));
        const auto error = modFileSystem::FindDataPath(u"", path);
        EXPECT_EQ(path, u".\\Quorin\\") << look;
        EXPECT_FALSE(platform::IsMissing(error)) << look;
        struck = Watch::Struck();
    }
    EXPECT_THAT(Device->Did.Warnings, testing::IsEmpty());
}

TEST_P(KeptFolder, CostsASaveWhichIsToldAndTheProgramGoesOn) {
    modFileSystem::OpenTable(FullName("table.txt"), u"r", modQuorin::DataType, modQuorin::DataCreator);
    modFileSystem::FirstRow();
    modFileSystem::SetField(u"VALUE", u"new");
    {
        const Watch watch(Folder.Path(), From(1));
        modFileSystem::SaveRow();
    }
    EXPECT_THAT(Device->Did.Unsaved, testing::ElementsAre(testing::Pair(u"table.txt", Words())));
    EXPECT_EQ(ReadTree(Folder.Path()), Before);
    modFileSystem::SetField(u"VALUE", u"again");
    modFileSystem::SaveRow();
    EXPECT_EQ(ReadTree(Folder.Path()).Files["Quorin/table.txt"], "NAME|VALUE\na|again\nb|2\n");
}

/// Here the look fails for the scratch file's name, after the table itself was found.
TEST_P(KeptFolder, LeavesAScratchFileUnmadeAndItsSaveTold) {
    modFileSystem::FileHandle file;
    modFileSystem::OpenFile(file, FullName("table.txt"), u"a", modQuorin::DataType, modQuorin::DataCreator);
    int wentOn = 0;
    bool struck = true;
    for (int look = 1; struck; ++look) {
        SCOPED_TRACE("from look " + std::to_string(look) + " on");
        bool saved = false;
        try {
            const Watch watch(Folder.Path(), From(look));
            saved = modFileSystem::ChangeFileLine(file, 2, u"a|new");
            struck = Watch::Struck();
        } catch (const support::ProgramOver& over) {
            EXPECT_NE(over.Failure.substr(0, 11), u"Can't open "); // it would be about the scratch file
            break;                                                 // from here on the scratch file exists
        }
        RemoveScratchFiles();
        EXPECT_EQ(saved, !struck);
        wentOn += struck ? 1 : 0;
        EXPECT_EQ(file.error, saved ? platform::NoError : backends::FromErrno(GetParam()));
    }
    EXPECT_GT(wentOn, 3);
}

INSTANTIATE_TEST_SUITE_P(Errors, KeptFolder, testing::Values(EIO, ENOMEM, ENFILE, EMFILE, ESTALE));

/// A link that can't be read at the moment must not count as a missing file, which would be created again.
TEST(ALinkedTable, ThatCantBeLookedAtKeepsItsLines) {
    const FreshFolder folder;
    WriteTree(folder.Path(), Furnished({{"table.txt", TableBytes}}, Keeping::TextFiles));
    std::filesystem::create_symlink("table.txt", folder.Path() + "/Quorin/link.txt");
    const Machine machine(folder.Path(), Keeping::TextFiles);
    const Text name = FullName("link.txt");
    bool struck = true;
    for (int look = 1; struck; ++look) {
        modFileSystem::FileHandle file;
        {
            const Watch watch(folder.Path(), {Blow::Fail, look, EIO, Counted::Names});
            modFileSystem::OpenFile(file, name, u"a", modQuorin::DataType, modQuorin::DataCreator);
            struck = Watch::Struck();
        }
        EXPECT_TRUE(file.valid || file.kept) << look;
        EXPECT_TRUE(file.valid || file.error == platform::DeviceFailed) << look;
        modFileSystem::CloseFile(file);
        EXPECT_EQ(ReadTree(folder.Path()).Files["Quorin/table.txt"], TableBytes) << look;
    }
}

} // namespace
} // namespace disk
