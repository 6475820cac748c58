// SPDX-License-Identifier: MIT
// Packages on a device whose memory holds only databases.
#include "tests/unit/src/drivers/faulty_package.h"

namespace modQuorin {
namespace {

using Lines = std::vector<Text>;

class PalmPackage : public FaultyPackage {
protected:
    explicit PalmPackage(const Text& dataVolume = u"Device:\\") : FaultyPackage(WithCard()) {
        SaveSetting(u"StorageVolume", dataVolume);
    }
    static backends::DeviceOptions WithCard() {
        backends::DeviceOptions options = support::OfType(1);
        options.Volumes = {{u"Device:\\", 1000}, {u"Card:\\", 500}};
        return options;
    }
    static void PutDatabase(const Text& name, const Lines& lines) {
        modFileSystem::FileHandle file;
        modFileSystem::OpenFile(file, u"Device:\\" + name, u"w", DataType, DataCreator);
        for (const Text& line : lines)
            modFileSystem::WriteFileLine(file, line);
        modFileSystem::CloseFile(file);
    }
    static Lines Database(const Text& name) {
        modFileSystem::FileHandle file;
        modFileSystem::OpenFile(file, u"Device:\\" + name, u"r", DataType, DataCreator);
        EXPECT_TRUE(file.valid);
        Lines lines;
        for (std::int32_t line = 1; line <= modFileSystem::FileLineCount(file); ++line)
            lines.push_back(modFileSystem::ReadFileLine(file, line));
        modFileSystem::CloseFile(file);
        return lines;
    }
    /// Installs the only package.
    void Install(const Text& listedAs) {
        MenuEvent(u"Add Driver...");
        EXPECT_THAT(Column(0), ElementsAre(listedAs));
        Before = Everything();
        Choose(u"Install...");
    }
};

TEST_F(PalmPackage, InMemoryBringsItsDatabases) {
    PutDatabase(u"meterqvd", {u"# a comment", u"Meter|meter.txt", u"H|J", u"a|", u"b|"});
    Install(u"Device:\\meterqvd");
    EXPECT_THAT(Told(), ElementsAre(Installed));
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|meter.txt"));
    EXPECT_THAT(Database(u"meter"), ElementsAre(u"H|J", u"a|", u"b|"));
    ExpectUsableAgain();
}

TEST_F(PalmPackage, InMemoryIsAskedForByTheEndOfItsNameAlone) {
    PutDatabase(u"QVD", {u"Meter|meter.txt", u"H"});
    PutDatabase(u"qvd2", {u"Other|other.txt", u"H"});
    Install(u"Device:\\QVD");
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|meter.txt"));
}

TEST_F(PalmPackage, InMemoryOfNoLinesInstallsNothingAndSaysItDid) {
    PutDatabase(u"meterqvd", {});
    Install(u"Device:\\meterqvd");
    EXPECT_THAT(Told(), ElementsAre(Installed));
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE"));
}

/// "meter.qvd" is opened as the database "meter", as with every name that has a full stop.
TEST_F(PalmPackage, InMemoryWithAFullStopInItsNameCantBeOpened) {
    PutDatabase(u"xqvd", {u"Meter|meter.txt", u"H"});
    fs::rename(Device.Folder.Path() / "Databases/xqvd.sqlite", Device.Folder.Path() / "Databases/meter.qvd.sqlite");
    Install(u"Device:\\meter.qvd");
    EXPECT_THAT(Told(), ElementsAre(u"Error installing driver."));
    EXPECT_THAT(Differences(Before, Everything()), IsEmpty());
}

class ShortInfNameOnAPalm : public PalmPackage, public testing::WithParamInterface<const char16_t*> {};

TEST_P(ShortInfNameOnAPalm, WithAFullStopCantLoseItsEndingWhichStopsTheProgram) {
    const Text name = GetParam();
    PutDatabase(u"meterqvd", {u"Meter|" + name, u"H"});
    MenuEvent(u"Add Driver...");
    EXPECT_EQ(support::FailureOf([] { MenuEvent(u"Install..."); }),
              u"The file name \"" + name + u"\" is too short to lose its ending");
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|" + name));
}

INSTANTIATE_TEST_SUITE_P(Names, ShortInfNameOnAPalm, testing::Values(u"a.b", u"..", u"."));

class InfNameOnAPalm : public PalmPackage, public testing::WithParamInterface<const char16_t*> {};

TEST_P(InfNameOnAPalm, NeverLeadsOutOfTheDatabases) {
    PutDatabase(u"drivers", {u"NAME|INFFILE"});
    PutDatabase(u"meterqvd", {u"Meter|" + Text(GetParam()), u"H", u"a"});
    Install(u"Device:\\meterqvd");
    EXPECT_THAT(Told(), ElementsAre(NoInfFile));
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|" + Text(GetParam())));
    Contents expected = Before;
    expected["Databases/drivers.sqlite"] = Everything()["Databases/drivers.sqlite"];
    EXPECT_THAT(Differences(expected, Everything()), IsEmpty());
    ExpectUsableAgain();
}

INSTANTIATE_TEST_SUITE_P(Names, InfNameOnAPalm,
                         testing::Values(u"", u"..\\..", u"../../x.txt", u"/x.txt", u"sub\\x.txt", u"\\x.txt",
                                         u"C:\\x.txt", u".txt", u"....txt"));

TEST_F(PalmPackage, OnACardIsInstalledIntoTheMemory) {
    Device.Folder.Put("Card/new.qvd", "Meter|meter.txt\nH\xFF\na\n");
    Install(u"Card:\\new.qvd");
    EXPECT_THAT(Told(), ElementsAre(Installed));
    EXPECT_THAT(Database(u"drivers"), ElementsAre(u"NAME|INFFILE", u"Meter|meter.txt"));
    EXPECT_THAT(Database(u"meter"), ElementsAre(modStringTools::FromBytes("H\xFF"), u"a"));
    ExpectUsableAgain();
}

class PalmWithItsDataOnACard : public PalmPackage {
protected:
    PalmWithItsDataOnACard() : PalmPackage(u"Card:\\") { SetFilePaths(); }
    std::string OnCard(const std::string& name) { return Device.Folder.Bytes("Card/PALM/Programs/Quorin/" + name); }
};

TEST_F(PalmWithItsDataOnACard, PackageInMemoryIsInstalledOntoTheCard) {
    PutDatabase(u"meterqvd", {u"Meter|meter.txt", u"H", u"a"});
    Install(u"Device:\\meterqvd");
    EXPECT_THAT(Told(), ElementsAre(Installed));
    EXPECT_EQ(OnCard("drivers.txt"), "NAME|INFFILE\nMeter|meter.txt\n");
    EXPECT_EQ(OnCard("meter.txt"), "H\na\n");
}

TEST_F(PalmWithItsDataOnACard, InfFileThatWouldBeADatabaseIsATextFile) {
    PutDatabase(u"meterqvd", {u"Meter|meter.PDB", u"H", u"a"});
    Install(u"Device:\\meterqvd");
    EXPECT_EQ(OnCard("drivers.txt"), "NAME|INFFILE\nMeter|meter.PDB\n");
    EXPECT_EQ(OnCard("meter.txt"), "H\na\n");
}

} // namespace
} // namespace modQuorin
