// SPDX-License-Identifier: MIT
#include "src/storage/volumes.h"

#include "src/drivers/registry.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/other_tool.h"
#include "tests/support/printed_rows.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace modFileSystem {
namespace {

using backends::HostVolume;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

backends::DeviceOptions DeviceWith(std::int32_t type, std::vector<HostVolume> volumes) {
    backends::DeviceOptions options;
    options.DeviceType = type;
    options.Volumes = std::move(volumes);
    return options;
}

Text StoredVolume() {
    return platform::Device().settings.Get(u"Quorin", u"Settings", u"StorageVolume", u"(none)");
}

void StoreVolume(const Text& root) {
    platform::Device().settings.Save(u"Quorin", u"Settings", u"StorageVolume", root);
}

TEST(Volumes, DesktopHasTheOneVolumeThatIsTheRoot) {
    support::TestDevice device(DeviceWith(0, {{u"C:\\", 1000}}));
    EnumVolumes(true);
    EXPECT_THAT(Storage.VolumeList, ElementsAre(u".\\"));
    EXPECT_EQ(Storage.BestVolume, u".\\");
}

TEST(Volumes, FirstOfTwoEqualVolumesIsTheBest) {
    support::TestDevice device(DeviceWith(3, {{u"A:\\", 100}, {u"B:\\", 200}, {u"C:\\", 200}}));
    EnumVolumes(true);
    EXPECT_THAT(Storage.VolumeList, ElementsAre(u"A:\\", u"B:\\", u"C:\\"));
    EXPECT_EQ(Storage.BestVolume, u"B:\\");
    EXPECT_EQ(Storage.BestVolumeKB, 200);
}

/// A volume that answers in bytes, for values between two kilobytes.
class ByteVolume final : public platform::Volumes {
public:
    explicit ByteVolume(std::int32_t bytes) : Bytes_(bytes) {}
    Text First() override { return u"Card:\\"; }
    Text Next() override { return {}; }
    platform::ErrorNumber Space(const Text&, std::int32_t& bytes) override {
        bytes = Bytes_;
        return platform::NoError;
    }

private:
    std::int32_t Bytes_;
};

/// Returns the device's platform with other volumes and another file system.
platform::Platform With(platform::Volumes& volumes, platform::FileSystem& files) {
    platform::Platform& old = platform::Device();
    return {old.form,
            old.grdTitle,
            old.grdMain,
            old.txtInputField,
            old.cboInputField,
            old.cbotxtInputField,
            old.dteInputField,
            old.lstHoldMenu,
            old.lblStatus,
            old.AFVScrollBar1,
            old.tmrBlue,
            old.tmrHoldEvent,
            old.tmrMenus,
            old.mnuButton1,
            old.mnuButton2,
            old.mnuButtonO1,
            old.mnuButtonO2,
            old.colours,
            old.fontServer,
            old.myCsys,
            old.hardwareKeys,
            old.serConnection,
            old.connectionService,
            old.toneMaker,
            old.messageBox,
            old.settings,
            old.clock,
            old.random,
            old.runTime,
            volumes,
            files,
            old.recordDatabase,
            old.saveWatcher,
            old.onlooker,
            old.readingLog};
}

struct VolumeSize {
    std::int32_t Bytes;
    bool Accepted;
};

class SizeOfAVolume : public testing::TestWithParam<VolumeSize> {};

TEST_P(SizeOfAVolume, DecidesWhetherItCounts) {
    support::TestDevice device(DeviceWith(3, {}));
    ByteVolume volume(GetParam().Bytes);
    platform::Platform& old = platform::Device();
    platform::Platform with = With(volume, old.fileSystem);
    platform::Install(&with);
    EnumVolumes(true);
    EXPECT_EQ(!Storage.VolumeList.empty(), GetParam().Accepted);
    platform::Install(&old);
}

INSTANTIATE_TEST_SUITE_P(Bytes, SizeOfAVolume,
                         testing::Values(VolumeSize{10 * 1024, false}, VolumeSize{11 * 1024, true},
                                         VolumeSize{10752, false}, VolumeSize{10753, true}, VolumeSize{0, false},
                                         VolumeSize{-10752, false}, VolumeSize{-2147483647, true}),
                         [](const auto& each) {
                             const std::string number = std::to_string(each.param.Bytes);
                             return number[0] == '-' ? "Minus" + number.substr(1) : number;
                         });

TEST(Volumes, OneThatCantBeReadIsPassedOver) {
    support::TestDevice device(DeviceWith(3, {{u"A:\\", std::nullopt}, {u"B:\\", 20}}));
    EnumVolumes(true);
    EXPECT_THAT(Storage.VolumeList, ElementsAre(u"B:\\"));
}

TEST(Volumes, AreLookedAtWhereNoneIsKnownAlsoWithoutForce) {
    support::TestDevice device(DeviceWith(3, {{u"A:\\", 20}}));
    Storage.VolumeList.clear();
    EnumVolumes(false);
    EXPECT_THAT(Storage.VolumeList, ElementsAre(u"A:\\"));
    EXPECT_EQ(Storage.BestVolume, u"A:\\");
}

TEST(Volumes, AreLookedAtAgainOnlyWhenForced) {
    support::TestDevice device(DeviceWith(3, {{u"A:\\", 20}}));
    EnumVolumes(true);
    Storage.BestVolume = u"kept";
    EnumVolumes(false);
    EXPECT_EQ(Storage.BestVolume, u"kept");
    EnumVolumes(true);
    EXPECT_EQ(Storage.BestVolume, u"A:\\");
}

TEST(DataPath, FirstUseStoresTheLargestVolumeAndKeepsIt) {
    support::TestDevice device(DeviceWith(3, {{u"A:\\", 20}, {u"B:\\", 90}}));
    EXPECT_EQ(GetDataPath(u"Quorin"), u"B:\\My Documents\\Quorin\\");
    EXPECT_EQ(StoredVolume(), u"B:\\");
    Storage.BestVolume = u"A:\\"; // another volume has more space now
    EXPECT_EQ(GetDataPath(u""), u"B:\\My Documents\\Quorin\\");
}

TEST(DataPath, MissingCardIsReplacedUntilItIsBack) {
    support::TestDevice device(DeviceWith(3, {{u"A:\\", 20}, {u"Card:\\", 10}}));
    StoreVolume(u"Card:\\");
    EXPECT_EQ(GetDataPath(u"Quorin"), u"A:\\My Documents\\Quorin\\");
    EXPECT_EQ(StoredVolume(), u"Card:\\");
    Storage.VolumeList.push_back(u"Card:\\");
    EXPECT_EQ(GetDataPath(u""), u"Card:\\My Documents\\Quorin\\");
}

TEST(DataPath, StoredVolumeMatchesWithRegardToCase) {
    support::TestDevice device(DeviceWith(3, {{u"A:\\", 20}, {u"Card:\\", 15}}));
    StoreVolume(u"card:\\");
    EXPECT_EQ(GetDataPath(u"Quorin"), u"A:\\My Documents\\Quorin\\");
}

TEST(DataPath, EmptyStoredVolumeIsReplacedByTheChosenOne) {
    support::TestDevice device(DeviceWith(3, {{u"A:\\", 20}}));
    StoreVolume(u"");
    GetDataPath(u"Quorin");
    EXPECT_EQ(StoredVolume(), u"A:\\");
}

struct FolderRow {
    std::int32_t DeviceType;
    const char16_t* Volume;
    const char16_t* Path;
};

class DataFolder : public testing::TestWithParam<FolderRow> {};

TEST_P(DataFolder, LiesWhereTheDeviceHasIt) {
    support::TestDevice device(DeviceWith(GetParam().DeviceType, {{GetParam().Volume, 100}}));
    EXPECT_EQ(GetDataPath(u"Quorin"), GetParam().Path);
    EXPECT_EQ(GetDataPath(u""), GetParam().Path);
}

INSTANTIATE_TEST_SUITE_P(
    Devices, DataFolder,
    testing::Values(FolderRow{0, u"C:\\", u".\\Quorin\\"}, FolderRow{1, u"Card:\\", u"Card:\\PALM\\Programs\\Quorin\\"},
                    FolderRow{1, u"Device:\\", u"Device:\\"},
                    FolderRow{1, u"device:\\", u"device:\\PALM\\Programs\\Quorin\\"},
                    FolderRow{2, u"C:\\", u"C:\\Quorin\\"}, FolderRow{3, u"\\", u"\\My Documents\\Quorin\\"},
                    FolderRow{5, u"C:\\", u"C:\\Quorin\\"}, FolderRow{6, u"C:\\", u"C:\\documents\\Quorin\\"},
                    FolderRow{6, u"D:\\", u"D:\\Media Files\\Quorin\\"},
                    FolderRow{7, u"\\", u"\\My Documents\\Quorin\\"}, FolderRow{9, u"C:\\", u"C:\\Data\\Quorin\\"},
                    FolderRow{12, u"C:\\", u"C:\\Quorin\\"}));

TEST(DataPath, FolderIsMadeOnFirstUse) {
    support::TestDevice device(DeviceWith(0, {}));
    GetDataPath(u"Quorin");
    EXPECT_TRUE(device.Folder.Has("Quorin"));
}

TEST(DataPath, FolderThatCantBeMadeIsReplacedByTheVolume) {
    support::TestDevice device(DeviceWith(0, {}));
    device.Folder.Put("Quorin", "a file stands where the folder should be");
    EXPECT_EQ(GetDataPath(u"Quorin"), u".\\");
}

std::vector<Text> ToldOfFolders(const support::TestDevice& device) {
    std::vector<Text> texts;
    for (const auto& [about, text] : device.Did.Warnings) {
        if (about == u"folder")
            texts.push_back(text);
    }
    return texts;
}

/// It is reported once for each folder and run, because the folder is asked for at each step.
TEST(DataPath, FolderThatIsReplacedIsToldOnce) {
    support::TestDevice device(DeviceWith(0, {}));
    device.Folder.Put("Quorin", "a file stands where the folder should be");
    device.Folder.Put("Other", "and another one");
    for (const char16_t* name : {u"Quorin", u"", u"Other", u"Quorin", u"Other"})
        EXPECT_EQ(GetDataPath(name), u".\\");
    device.Platform.onlooker.notices.Act(u"folder");
    GetDataPath(u"Quorin");
    EXPECT_THAT(ToldOfFolders(device),
                ElementsAre(u"Can't use the folder .\\Quorin\\: it does not exist. Its files are read and created in "
                            u".\\. Tap here when you have read it.",
                            u"Can't use the folder .\\Other\\: it does not exist. Its files are read and created in "
                            u".\\. Tap here when you have read it."));
}

TEST(DataPath, FolderWhoseNameIsRefusedIsTold) {
    support::TestDevice device(DeviceWith(3, {{u"Card:\\", 2048}}));
    const support::TemporaryFolder elsewhere;
    std::filesystem::create_symlink(elsewhere.Path(), device.Folder.Path() / "Card/My Documents");
    EXPECT_EQ(GetDataPath(u"Quorin"), u"Card:\\");
    EXPECT_THAT(
        ToldOfFolders(device),
        ElementsAre(u"Can't use the folder Card:\\My Documents\\Quorin\\: the name is not allowed. Its files are "
                    u"read and created in Card:\\. Tap here when you have read it."));
    EXPECT_EQ(device.Platform.onlooker.notices.Sorted().at(0).About, u"folder");
}

TEST(DataPath, FolderThatAFullDiskHasNoRoomForIsTold) {
    support::TestDevice device(DeviceWith(0, {}));
    GetDataPath(u"Quorin"); // stores the volume
    device.Host.faults.FailNext(1);
    EXPECT_EQ(GetDataPath(u"Other"), u".\\");
    ASSERT_EQ(ToldOfFolders(device).size(), 1U);
    EXPECT_NE(ToldOfFolders(device).front().find(u"the disk is full"), Text::npos);
}

TEST(DataPath, OnACardThatIsOutIsToldOfByItself) {
    support::TestDevice device(DeviceWith(3, {{u"Card:\\", 2048}}));
    GetDataPath(u"Quorin");
    std::filesystem::remove_all(device.Folder.Path() / "Card");
    GetDataPath(u"");
    EXPECT_THAT(
        ToldOfFolders(device),
        ElementsAre(u"Can't use the folder Card:\\My Documents\\Quorin\\: it does not exist. No file is opened or "
                    u"created there. Tap here when you have read it."));
}

/// No file is created, neither in the root folder, which is no volume here, nor anywhere else.
TEST(DataPath, WithoutAnyVolumeNamesNoFileThatCouldBeMade) {
    for (const std::int32_t type : {1, 3, 6, 9, 12}) {
        support::TestDevice device(DeviceWith(type, {{u"A:\\", std::nullopt}}));
        modQuorin::SetFilePaths();
        modQuorin::LoadDriverList();
        EXPECT_FALSE(device.Folder.Has("drivers.txt")) << type;
        EXPECT_FALSE(device.Folder.Has("qrnctrl.txt")) << type;
        EXPECT_FALSE(device.Folder.Has("My Documents")) << type;
        EXPECT_FALSE(device.Folder.Has("Quorin")) << type;
        EXPECT_THAT(device.Did.Unsaved, testing::Contains(testing::Pair(u"drivers.txt", testing::_)));
    }
}

/// While it exists, no file or folder can be opened.
class [[maybe_unused]] NoMoreFiles {
public:
    NoMoreFiles() {
        ::getrlimit(RLIMIT_NOFILE, &Before_);
        const rlimit none{0, Before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreFiles() { ::setrlimit(RLIMIT_NOFILE, &Before_); }

private:
    rlimit Before_{};
};

#ifndef __SANITIZE_ADDRESS__ // the sanitizers read an object's memory through a pipe, which can't be opened here

/// A folder that can't be opened for a moment would be treated as missing, and its files created in another one.
TEST(DataPath, FolderThatCantBeOpenedJustNowStopsTheProgram) {
    support::TestDevice device(DeviceWith(0, {}));
    ASSERT_EQ(GetDataPath(u"Quorin"), u".\\Quorin\\");
    Text failure;
    {
        const NoMoreFiles now;
        failure = support::FailureOf([] { GetDataPath(u""); });
    }
    EXPECT_EQ(failure, u"Can't open the folder .\\Quorin\\: the device failed");
    EXPECT_EQ(GetDataPath(u""), u".\\Quorin\\");
}

/// The form stays open with the record on the screen.
TEST(DataPath, ThatCantBeOpenedJustNowCostsASaveAndIsTold) {
    support::TestDevice device(DeviceWith(0, {}));
    device.Folder.Put("Quorin/x.txt", "A|B\na|b\n");
    OpenTable(GetDataPath(u"Quorin") + u"x.txt", u"r", u"TEXT", u"QVRN");
    FirstRow();
    SetField(u"A", u"new");
    {
        const NoMoreFiles now;
        SaveRow();
    }
    EXPECT_THAT(device.Did.Unsaved, ElementsAre(testing::Pair(u"x.txt", u"the device failed")));
    SetField(u"A", u"again");
    SaveRow();
    EXPECT_THAT(device.Did.Unsaved, testing::SizeIs(1));
    EXPECT_EQ(device.Folder.Bytes("Quorin/x.txt"), "A|B\nagain|b\n");
    EXPECT_EQ(device.Folder.Bytes("x.txt"), "");
}

#endif

TEST(DataPath, OnACardThatIsOutMakesNothing) {
    support::TestDevice device(DeviceWith(3, {{u"Card:\\", 2048}}));
    EXPECT_EQ(GetDataPath(u"Quorin"), u"Card:\\My Documents\\Quorin\\");
    std::filesystem::rename(device.Folder.Path() / "Card", device.Folder.Path() / "away");
    EXPECT_EQ(GetDataPath(u""), u"Card:\\"); // no file beneath it can be opened
    EnumVolumes(true);
    EXPECT_THAT(Storage.VolumeList, IsEmpty());
    EXPECT_EQ(Storage.BestVolume, u"");
    EXPECT_EQ(Storage.BestVolumeKB, 0);
    EXPECT_FALSE(device.Folder.Has("Card"));
    std::filesystem::rename(device.Folder.Path() / "away", device.Folder.Path() / "Card");
    EXPECT_EQ(GetDataPath(u""), u"Card:\\My Documents\\Quorin\\");
}

TEST(ListFiles, GivesFullNamesOfAFolder) {
    support::TestDevice device(DeviceWith(0, {}));
    device.Folder.Put("Quorin/b.qvd", "x");
    device.Folder.Put("Quorin/a.txt", "x");
    ListFiles(u".\\Quorin\\", u"TEXT", u"QVRN");
    EXPECT_THAT(Storage.FileList, ElementsAre(u".\\Quorin\\a.txt", u".\\Quorin\\b.qvd"));
}

TEST(ListFiles, MissingFolderIsEmpty) {
    support::TestDevice device(DeviceWith(0, {}));
    Storage.FileList = {u"old"};
    ListFiles(u".\\nowhere\\", u"", u"");
    EXPECT_THAT(Storage.FileList, IsEmpty());
    EXPECT_THAT(device.Did.Warnings, IsEmpty());
}

/// A file system that must not be asked for a folder.
class NoFolders final : public platform::FileSystem {
public:
    platform::ErrorNumber OpenFolder(const Text&, bool, std::unique_ptr<platform::Folder>&) override {
        ADD_FAILURE() << "a folder is asked for";
        return platform::FileNotFound;
    }
    platform::ErrorNumber OpenStream(const Text&, platform::StreamMode,
                                     std::unique_ptr<platform::TextStream>&) override {
        return platform::FileNotFound;
    }
    platform::ErrorNumber MoveFile(const Text&, const Text&) override { return platform::FileNotFound; }
    platform::ErrorNumber DeleteFile(const Text&) override { return platform::FileNotFound; }
};

TEST(ListFiles, EmptyFolderOnPalmIsEmptyWithoutAsking) {
    support::TestDevice device(DeviceWith(1, {{u"Device:\\", 100}}));
    Storage.FileList = {u"old"};
    NoFolders files;
    platform::Platform& old = platform::Device();
    platform::Platform with = With(old.volumes, files);
    platform::Install(&with);
    ListFiles(u"", u"TEXT", u"QVRN");
    platform::Install(&old);
    EXPECT_THAT(Storage.FileList, IsEmpty());
}

TEST(ListFiles, PalmMemoryListsDatabasesOfTheTypeAndCreator) {
    support::TestDevice device(DeviceWith(1, {{u"Device:\\", 100}}));
    auto& databases = platform::Device().recordDatabase;
    databases.Close(databases.Create(u"ours", PackCode(u"TEXT"), PackCode(u"QVRN")).Id);
    databases.Close(databases.Create(u"theirs", PackCode(u"TEXT"), PackCode(u"abcd")).Id);
    databases.Close(databases.Create(u"other", PackCode(u"DATA"), PackCode(u"QVRN")).Id);
    ListFiles(u"DEVICE:\\", u"", u"QVRN");
    EXPECT_THAT(Storage.FileList, ElementsAre(u"Device:\\ours"));
    ListFiles(u"device:\\", u"TEXT", u"");
    EXPECT_THAT(Storage.FileList, ElementsAre(u"Device:\\ours", u"Device:\\theirs"));
}

TEST(ListFiles, ThatCantReadAFolderIsTold) {
    support::TestDevice device(DeviceWith(0, {}));
    device.Folder.Put("Quorin/a.txt", "x");
    ::chmod(device.Folder.Path().c_str(), 0711);
    for (const mode_t rights : {0111U, 0000U}) { // with 0111 its names can't be read, with 0 the folder can't be opened
        ::chmod((device.Folder.Path() / "Quorin").c_str(), rights);
        device.Did.Warnings.clear();
        device.Platform.onlooker.notices.Act(u"list");
        const OrdinaryUser user;
        ListFiles(u".\\Quorin\\", u"TEXT", u"QVRN");
        EXPECT_THAT(Storage.FileList, IsEmpty());
        EXPECT_THAT(device.Did.Warnings,
                    ElementsAre(testing::Pair(u"list", u"Can't read .\\Quorin\\ for the list: permission denied. Tap "
                                                       u"here when you have read it.")))
            << rights;
    }
    ::chmod((device.Folder.Path() / "Quorin").c_str(), 0700);
    ::chmod(device.Folder.Path().c_str(), 0700);
    device.Did.Warnings.clear();
    ListFiles(u".\\Quorin\\", u"TEXT", u"QVRN");
    EXPECT_THAT(Storage.FileList, ElementsAre(u".\\Quorin\\a.txt"));
    EXPECT_THAT(device.Did.Warnings, IsEmpty());
}

TEST(ListFiles, ThatCantReadADatabaseIsTold) {
    support::TestDevice device(DeviceWith(1, {{u"Device:\\", 100}}));
    auto& databases = platform::Device().recordDatabase;
    for (const char16_t* name : {u"held", u"ours"})
        databases.Close(databases.Create(name, PackCode(u"TEXT"), PackCode(u"QVRN")).Id);
    device.Folder.Put("Databases/text.sqlite", "a text that is long enough to be looked at as the head of a database");
    device.Host.hostDatabases.Patience.Longest = {};
    support::OtherTool tool(device.Folder.Path() / "Databases" / "held.sqlite");
    tool.Lock();
    ListFiles(u"Device:\\", u"TEXT", u"QVRN");
    EXPECT_THAT(Storage.FileList, ElementsAre(u"Device:\\ours"));
    EXPECT_THAT(
        device.Did.Warnings,
        ElementsAre(testing::Pair(u"list", u"Can't read Device:\\held for the list: another program is using it. "
                                           u"Can't read Device:\\text for the list: it is damaged, or a file of "
                                           u"another kind. Tap here when you have read it.")));
}

TEST(PackCode, PutsTheFirstCharacterIntoTheTopByte) {
    EXPECT_EQ(PackCode(u"TEXT"), 0x54455854);
    EXPECT_EQ(PackCode(u"rfcn"), 1919312750);
}

TEST(PackCode, OfAnyOtherLengthIsZero) {
    EXPECT_EQ(PackCode(u"abc"), 0);
    EXPECT_EQ(PackCode(u"abcde"), 0);
    EXPECT_EQ(PackCode(u""), 0);
}

TEST(PackCode, ThatOverflowsStopsTheProgram) {
    support::TestDevice device;
    EXPECT_NE(support::FailureOf([] { PackCode(u"\u00FFabc"); }), u"");
}

} // namespace
} // namespace modFileSystem
