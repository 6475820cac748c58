// SPDX-License-Identifier: MIT
#include "src/drivers/installation.h"

#include "src/drivers/registry.h"
#include "src/storage/volumes.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string InfHeaderLine = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";

class Package : public support::Program {
protected:
    Package() { Put("drivers.txt", "NAME|INFFILE\nOld|old.txt\n"); }
    void Install(const std::string& content) {
        Put("new.qvd", content);
        MenuEvent(u"Add Driver...");
        MenuEvent(u"Install...");
    }
    std::string Drivers() { return File("drivers.txt"); }
    std::vector<Text> Told() { return Device.Did.Messages(); }
};

TEST_F(Package, BringsARowAndAnInfFile) {
    Install("# a comment\nMeter|meter.txt\n# another\n" + InfHeaderLine + "a|1||||||\n\n#skipped\nb|1||||||\n");
    EXPECT_THAT(Told(), ElementsAre(u"Driver installed"));
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\nMeter|meter.txt\n");
    EXPECT_EQ(File("meter.txt"), InfHeaderLine + "a|1||||||\n\nb|1||||||\n");
    EXPECT_EQ(Screen(), ScrAddDriver);
}

/// Some editors add one at the end. It would become a row of the inf table that can't be opened.
TEST_F(Package, EmptyLinesAtItsEndsAreNone) {
    Install("\n# a comment\n\nMeter|meter.txt\n" + InfHeaderLine + "a|1||||||\n\nb|1||||||\n\n#end\n\n");
    EXPECT_THAT(Told(), ElementsAre(u"Driver installed"));
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\nMeter|meter.txt\n");
    EXPECT_EQ(File("meter.txt"), InfHeaderLine + "a|1||||||\n\nb|1||||||\n");
}

TEST_F(Package, EmptyLineBehindItsDriversRowIsItsHeader) {
    Install("Meter|meter.txt\n\n" + InfHeaderLine);
    EXPECT_EQ(File("meter.txt"), "\n" + InfHeaderLine);
}

TEST_F(Package, ByteOrderMarkIsNoPartOfTheFirstName) {
    Install("\xEF\xBB\xBF"
            "Meter|meter.txt\r\n" +
            InfHeaderLine + "a|1||||||\r\n");
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\nMeter|meter.txt\n");
    Install("\xEF\xBB\xBF# a comment\nOther|other.txt\n" + InfHeaderLine);
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\nMeter|meter.txt\nOther|other.txt\n");
}

TEST_F(Package, OfLinesThatAreNoFileIsInstalledWithoutAMessage) {
    EXPECT_TRUE(InstallLines({u"# a comment", u"", u"Meter|meter.txt",
                              modStringTools::FromBytes(InfHeaderLine.substr(0, InfHeaderLine.size() - 1)),
                              u"a|1||||||", u""}));
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\nMeter|meter.txt\n");
    EXPECT_EQ(File("meter.txt"), InfHeaderLine + "a|1||||||\n");
}

TEST_F(Package, OfLinesAddsNoDriverThatIsThereAndNoneWithoutATable) {
    EXPECT_FALSE(InstallLines({u"old|other.txt", u"FIELDNAME"}));
    EXPECT_FALSE(InstallLines({u"Meter|no\\such\\folder.txt", u"FIELDNAME"}));
    EXPECT_FALSE(InstallLines({}));
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\n");
}

/// The file is as in the package; what it lacks is added when it is opened.
TEST_F(Package, OfAHeaderAloneIsCopiedAsItIs) {
    Install("Meter|meter.txt\n" + InfHeaderLine);
    EXPECT_EQ(File("meter.txt"), InfHeaderLine);
}

/// Empty lines at the end do not count: the last line is the one before them.
TEST_F(Package, FailureOnItsLastLineIsFollowedByInstalledAsWell) {
    const Text noInfFile = u"Error creating driver inf file";
    Install("A|no\\way.txt\n" + InfHeaderLine);
    Install("B|no\\way.txt\n" + InfHeaderLine + "\n\n");
    EXPECT_THAT(Told(), ElementsAre(noInfFile, u"Driver installed", noInfFile, u"Driver installed"));
    Device.Did.Boxes.clear();
    Install("C|no\\way.txt\n" + InfHeaderLine + "\na|1||||||\n");
    Install("D|no\\way.txt\n\n" + InfHeaderLine); // the empty line is the header, which can't be written
    EXPECT_THAT(Told(), ElementsAre(noInfFile, noInfFile));
}

TEST_F(Package, InstalledTwiceIsRefusedAndTouchesNothing) {
    Install("Meter|meter.txt\n" + InfHeaderLine);
    Put("meter.txt", "mine");
    MenuEvent(u"Install...");
    EXPECT_THAT(Told(), ElementsAre(u"Driver installed", u"Driver already exists"));
    EXPECT_EQ(File("meter.txt"), "mine");
}

TEST_F(Package, NameThatDiffersOnlyInCaseIsRefused) {
    Install("OLD|x.txt\n" + InfHeaderLine);
    EXPECT_THAT(Told(), ElementsAre(u"Driver already exists"));
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\n");
}

TEST_F(Package, OfCommentsAloneInstallsNothingAndSaysItDid) {
    Install("# one\n# two\n");
    EXPECT_THAT(Told(), ElementsAre(u"Driver installed"));
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\n");
}

TEST_F(Package, WithoutABarAddsNoRowAndCantMakeTheInfFile) {
    Install("Meter\n" + InfHeaderLine + "a|1||||||\n");
    EXPECT_THAT(Told(), ElementsAre(u"Error creating driver inf file"));
    EXPECT_EQ(Drivers(), "NAME|INFFILE\nOld|old.txt\n");
}

TEST_F(Package, FailureOnItsLastLineIsFollowedByTheGoodNewsAsWell) {
    Install("Meter\n" + InfHeaderLine);
    EXPECT_THAT(Told(), ElementsAre(u"Error creating driver inf file", u"Driver installed"));
}

TEST_F(Package, SecondBarBelongsToTheFileName) {
    Install("Meter|a|b.txt\n" + InfHeaderLine);
    EXPECT_EQ(File("a|b.txt"), InfHeaderLine);
}

TEST_F(Package, ThatIsGoneIsAnError) {
    Put("new.qvd", "x");
    MenuEvent(u"Add Driver...");
    std::filesystem::remove(Device.Folder.Path() / "Quorin/new.qvd");
    MenuEvent(u"Install...");
    EXPECT_THAT(Told(), ElementsAre(u"Error installing driver."));
}

TEST_F(Package, OnADesktopIsLookedForInTheDataFolderAlone) {
    Put("inside.qvd", "x");
    Device.Folder.Put("outside.qvd", "x");
    MenuEvent(u"Add Driver...");
    EXPECT_THAT(Column(0), ElementsAre(u".\\Quorin\\inside.qvd"));
}

TEST_F(Package, NoneInHandDoesNothing) {
    MenuEvent(u"Install...");
    EXPECT_THAT(Told(), IsEmpty());
}

class InfNameOfAPackage : public Package, public testing::WithParamInterface<const char*> {};

TEST_P(InfNameOfAPackage, NeverLeadsOutOfTheDataFolder) {
    Device.Folder.Put("outside.txt", "keep");
    Install(std::string("Meter|") + GetParam() + "\n" + InfHeaderLine + "a|1||||||\n");
    EXPECT_THAT(Told(), ElementsAre(u"Error creating driver inf file"));
    EXPECT_EQ(Device.Folder.Bytes("outside.txt"), "keep");
    EXPECT_EQ(Drivers(), std::string("NAME|INFFILE\nOld|old.txt\nMeter|") + GetParam() + "\n");
}

INSTANTIATE_TEST_SUITE_P(Tricks, InfNameOfAPackage,
                         testing::Values("..\\outside.txt", "../outside.txt", "/etc/x", "C:\\x.txt", "C:x",
                                         "sub\\x.txt", "..", ".", "\\x.txt", ""));

class PackageList : public support::Program {
protected:
    PackageList() : Program(Options()) {}
    static backends::DeviceOptions Options() {
        backends::DeviceOptions options = support::OfType(3);
        options.Volumes = {{u"\\", 1000}, {u"A:\\", 50}, {u"B:\\", 50}, {u"C:\\", 50}};
        return options;
    }
};

TEST_F(PackageList, NamesThoseOfTheDataFolderAndOfThreeVolumes) {
    Device.Folder.Put("My Documents/Quorin/own.qvd", "");
    Device.Folder.Put("A/card.QVD", "");
    Device.Folder.Put("B/card.QVD", "");
    Device.Folder.Put("B/readme.txt", "");
    Device.Folder.Put("C/fourth.qvd", "");
    MenuEvent(u"Add Driver...");
    EXPECT_EQ(TitleCell(), u"Add Driver");
    EXPECT_THAT(Column(0), ElementsAre(u"\\My Documents\\Quorin\\own.qvd", u"A:\\card.QVD", u"B:\\card.QVD"));
    EXPECT_EQ(Selection.SelectedPackage, u"\\My Documents\\Quorin\\own.qvd");
    Device.Main().SetRow(1);
    EXPECT_EQ(Selection.SelectedPackage, u"A:\\card.QVD");
}

/// The package is also selected as the driver. The commands of drivers find no driver of that name.
TEST_F(PackageList, PutsItsFirstPackageInHandAsTheDriverToo) {
    Selection.SelectedDriver = u"Meter";
    MenuEvent(u"Add Driver...");
    EXPECT_EQ(Selection.SelectedDriver, u"");
    GoBack();
    Device.Folder.Put("A/card.qvd", "");
    MenuEvent(u"Add Driver...");
    EXPECT_EQ(Selection.SelectedDriver, u"A:\\card.qvd");
}

TEST_F(PackageList, SecondCopyOnAnotherCardIsADriverThatExists) {
    for (const char* card : {"A/card.qvd", "B/card.qvd"})
        Device.Folder.Put(card, "Meter|meter.txt\n" + InfHeaderLine);
    MenuEvent(u"Add Driver...");
    Repaint();
    Tap(1);
    MenuEvent(u"Install...");
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"Driver installed"));
    Tap(0);
    MenuEvent(u"Install...");
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"Driver installed", u"Driver already exists"));
}

TEST_F(PackageList, InfoFileIsBroughtUpToDateWhenThePreferencesAreLeft) {
    Device.Folder.Put("QVRN.info", "first\nold\nthird\n");
    MenuEvent(u"Preferences...");
    GoBack();
    EXPECT_EQ(Device.Folder.Bytes("QVRN.info"), "first\npath=\\My Documents\\Quorin\\\nthird\n");
}

TEST_F(PackageList, ShortInfoFileGetsTheLine) {
    Device.Folder.Put("QVRN.info", "first");
    WriteInfoFile();
    EXPECT_EQ(Device.Folder.Bytes("QVRN.info"), "first\npath=\\My Documents\\Quorin\\\n");
}

TEST_F(PackageList, InfoFileIsFoundOnAVolumeWithoutABackslash) {
    Device.Folder.Put("A/QVRN.info", "first\nold\n");
    modFileSystem::Storage.VolumeList = {u"A:"};
    WriteInfoFile();
    EXPECT_EQ(Device.Folder.Bytes("A/QVRN.info").substr(0, 11), "first\npath=");
}

TEST_F(PackageList, InfoFileIsNeverMade) {
    WriteInfoFile();
    EXPECT_FALSE(Device.Folder.Has("QVRN.info"));
}

// Its name in the data folder.

TEST(NameOfAPackage, IsOneThatTheDeviceCanHave) {
    const support::TestDevice device;
    const Text folder = u".\\Quorin\\";
    EXPECT_EQ(PackageName(u"climate.qvd", folder), u"climate.qvd");
    EXPECT_EQ(PackageName(u"a\\b:c\n|..QVD", folder), u"a_b_c_|..QVD");
    EXPECT_EQ(PackageName(u".qvd", folder), u"_qvd") << "no list shows a hidden file";
}

TEST(NameOfAPackage, HasNoFullStopInAMemory) {
    const support::TestDevice device(support::OfType(1));
    EXPECT_EQ(PackageName(u"climate.v2.qvd", u"Device:\\"), u"climatev2qvd");
    EXPECT_EQ(PackageName(u"climate.qvd", u"Card:\\PALM\\Programs\\Quorin\\"), u"climate.qvd");
}

// A package that arrives while the list is on the screen.

class ListOfPackages : public Package {
protected:
    ListOfPackages() {
        Put("b.qvd", "B|b.txt\n");
        Put("c.qvd", "C|c.txt\n");
        MenuEvent(u"Add Driver...");
        Repaint();
        Tap(1);
        EXPECT_EQ(Selection.SelectedPackage, u".\\Quorin\\c.qvd");
    }
    bool Follow() {
        const bool filled = FollowDriverPackages();
        Repaint();
        return filled;
    }
};

TEST_F(ListOfPackages, IsNotFilledAgainWhileItIsTrue) {
    EXPECT_FALSE(Follow());
    Choose(u"Install...");
    EXPECT_FALSE(Follow());
}

TEST_F(ListOfPackages, ShowsANewOneAndKeepsTheSelectedOne) {
    Put("a.qvd", "A|a.txt\n");
    EXPECT_TRUE(Follow());
    EXPECT_THAT(Column(0), ElementsAre(u".\\Quorin\\a.qvd", u".\\Quorin\\b.qvd", u".\\Quorin\\c.qvd"));
    EXPECT_EQ(Device.Main().Row(), 2);
    EXPECT_EQ(Selection.SelectedPackage, u".\\Quorin\\c.qvd");
    MenuEvent(u"Back");
    EXPECT_EQ(Screen(), ScrMain) << "Back leads where it did";
}

TEST_F(ListOfPackages, SelectsTheFirstOnceTheSelectedOneIsGone) {
    std::filesystem::remove(Device.Folder.Path() / "Quorin/c.qvd");
    EXPECT_TRUE(Follow());
    EXPECT_THAT(Column(0), ElementsAre(u".\\Quorin\\b.qvd"));
    EXPECT_EQ(Selection.SelectedPackage, u".\\Quorin\\b.qvd");
}

} // namespace
} // namespace modQuorin
