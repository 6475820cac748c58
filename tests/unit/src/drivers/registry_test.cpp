// SPDX-License-Identifier: MIT
#include "src/drivers/registry.h"

#include "src/storage/settings.h"
#include "src/view/inf_fields.h"
#include "tests/support/program.h"

#include <filesystem>

namespace modQuorin {
namespace {

using platform::BoxAnswer;
using testing::ElementsAre;
using testing::IsEmpty;

class DriverRegistry : public support::Program {
protected:
    void InstallTwo() {
        Put("drivers.txt", "NAME|INFFILE\nZulu|z.txt\nAlpha|a.txt\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nZulu|qrn0001.txt|20070301|\n");
        Put("z.txt", "inf");
        Put("a.txt", "inf");
    }
    void ShowInstalled() { MenuEvent(u"inf editor..."); }
};

TEST_F(DriverRegistry, FirstRunMakesBothTablesAndShowsNothing) {
    MenuEvent(u"Start...");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\n");
    EXPECT_EQ(File("qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\n");
    EXPECT_EQ(Device.Main().Rows(), 0);
    EXPECT_EQ(TitleCell(), u"Drivers");
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

TEST_F(DriverRegistry, LostDriversTableTakesTheRegisterWithIt) {
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nZulu|qrn0001.txt|20070301|\n");
    MenuEvent(u"Start...");
    EXPECT_EQ(File("qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\n");
}

/// A drivers table that can't be read is not a missing one: it is not created again.
TEST_F(DriverRegistry, FailingDiskCostsNoDriverAndNoDownload) {
    InstallTwo();
    const std::string drivers = File("drivers.txt");
    const std::string downloads = File("qrnctrl.txt");
    for (std::int32_t good = 0; good < 6; ++good) {
        Device.Host.faults.FailNextReads(1, good);
        EXPECT_NE(support::FailureOf([] { MenuEvent(u"Start..."); }), u"");
        EXPECT_EQ(File("drivers.txt"), drivers);
        EXPECT_EQ(File("qrnctrl.txt"), downloads);
        modFileSystem::ResetSlots();
        modFileSystem::Table = {};
    }
}

TEST_F(DriverRegistry, ListsDriversInTheOrderOfTheirRows) {
    InstallTwo();
    ShowInstalled();
    EXPECT_EQ(TitleCell(), u"Installed Drivers");
    EXPECT_THAT(Column(0), ElementsAre(u"Zulu", u"Alpha"));
    EXPECT_EQ(Selection.SelectedDriver, u"Zulu");
}

/// A full disk has left an empty table. Without a header the first driver would become the header.
TEST_F(DriverRegistry, EmptyFileIsAnEmptyListAndGetsItsHeader) {
    const std::string downloads = "DRIVER|FILE|DATE|ALIAS\nZulu|qrn0001.txt|20070301|\n";
    Put("drivers.txt", "");
    Put("qrnctrl.txt", downloads);
    MenuEvent(u"Start...");
    EXPECT_EQ(Device.Main().Rows(), 0);
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\n");
    EXPECT_EQ(File("qrnctrl.txt"), downloads);
}

TEST_F(DriverRegistry, FileThatAnotherToolIsWritingIsReadAgain) {
    InstallTwo();
    const std::string drivers = File("drivers.txt");
    Put("drivers.txt", "");
    Device.WhileItPauses([&] { Put("drivers.txt", drivers); });
    MenuEvent(u"Start...");
    EXPECT_THAT(Column(0), ElementsAre(u"Zulu", u"Alpha"));
    EXPECT_EQ(File("drivers.txt"), drivers);
    EXPECT_THAT(Device.Pauses, ElementsAre(1000));
}

TEST_F(DriverRegistry, TableOfAHeaderAloneIsUsable) {
    Put("drivers.txt", "INFFILE|NAME\n");
    MenuEvent(u"Start...");
    EXPECT_EQ(Device.Main().Rows(), 0);
    EXPECT_EQ(File("drivers.txt"), "INFFILE|NAME\n");
    EXPECT_THAT(Device.Pauses, IsEmpty());
}

/// What an editor leaves of a table whose rows were all deleted.
TEST_F(DriverRegistry, FileOfAnEmptyLineGetsItsHeader) {
    for (const char* const nothing : {"\n", "\r\n", "\xEF\xBB\xBF", "\xEF\xBB\xBF\n"}) {
        Put("drivers.txt", nothing);
        MenuEvent(u"Start...");
        EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\n");
    }
}

TEST_F(DriverRegistry, ByteOrderMarkIsNoPartOfTheFirstName) {
    const std::string marked = "\xEF\xBB\xBFNAME|INFFILE\nZulu|z.txt\n";
    Put("drivers.txt", marked);
    ShowInstalled();
    EXPECT_THAT(Column(0), ElementsAre(u"Zulu"));
    Choose(u"Edit");
    EXPECT_THAT(Column(0), ElementsAre(u"NAME", u"INFFILE"));
    EXPECT_EQ(File("drivers.txt"), marked);
    Choose(u"Back");
    Choose(u"New");
    EXPECT_EQ(File("drivers.txt"), marked + "Untitled Driver|untitled.txt\n");
}

TEST_F(DriverRegistry, DiskThatFillsWhileTablesAreMadeLeavesNoHalfOfThem) {
    for (std::int32_t good = 0; good < 8; ++good) {
        SCOPED_TRACE(good);
        Device.Host.faults.FailNext(-1, good);
        support::EndsProgram([] { MenuEvent(u"Start..."); });
        Device.Host.faults.FailNext(0);
        modFileSystem::ResetSlots();
        modFileSystem::Table = {};
        EXPECT_THAT(File("drivers.txt"), testing::AnyOf("", "NAME|INFFILE\n"));
        EXPECT_THAT(File("qrnctrl.txt"), testing::AnyOf("", "DRIVER|FILE|DATE|ALIAS\n"));
        MenuEvent(u"Start...");
        EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\n");
        std::filesystem::remove(Device.Folder.Path() / "Quorin/drivers.txt");
        std::filesystem::remove(Device.Folder.Path() / "Quorin/qrnctrl.txt");
    }
}

TEST_F(DriverRegistry, TablesThatCantBeMadeLeaveTheScreenEmpty) {
    Device.Host.faults.FailNext(-1);
    MenuEvent(u"Start...");
    EXPECT_EQ(Screen(), ScrDrivers);
    EXPECT_EQ(Device.Main().Rows(), 0);
}

TEST_F(DriverRegistry, OneOfAnotherDeviceComesLast) {
    Put("drivers.txt", "NAME|INFFILE\nZulu|zulu.txt\n");
    EXPECT_TRUE(TakeUpDriver(u"Alpha", u"alpha.txt"));
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nZulu|zulu.txt\nAlpha|alpha.txt\n");
}

TEST_F(DriverRegistry, OneOfAnotherDeviceCostsNoRegister) {
    std::filesystem::remove(Device.Folder.Path() / "Quorin/drivers.txt");
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nA|qrn0001.txt|20070301|\n");
    EXPECT_TRUE(TakeUpDriver(u"Alpha", u"alpha.txt"));
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nAlpha|alpha.txt\n");
    EXPECT_EQ(File("qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\nA|qrn0001.txt|20070301|\n");
}

TEST_F(DriverRegistry, EditShowsTheRowByColumnName) {
    InstallTwo();
    ShowInstalled();
    Device.Main().SetRow(1);
    Choose(u"Edit");
    EXPECT_EQ(Screen(), ScrDriverProperties);
    EXPECT_EQ(TitleCell(), u"Edit Driver");
    EXPECT_THAT(Column(0), ElementsAre(u"NAME", u"INFFILE"));
    EXPECT_THAT(Column(1), ElementsAre(u"Alpha", u"a.txt"));
}

TEST_F(DriverRegistry, EditOfNothingDoesNothing) {
    ShowInstalled();
    Choose(u"Edit");
    EXPECT_EQ(Screen(), ScrInstalledDrivers);
}

TEST_F(DriverRegistry, NewAddsAnUntitledRowEachTime) {
    ShowInstalled();
    Choose(u"New");
    EXPECT_EQ(Screen(), ScrDriverProperties);
    EXPECT_THAT(Column(1), ElementsAre(u"Untitled Driver", u"untitled.txt"));
    ShowInstalled();
    Choose(u"New");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nUntitled Driver|untitled.txt\nUntitled Driver|untitled.txt\n");
}

/// A full disk prevents the new driver and changes nothing else.
TEST_F(DriverRegistry, NewOneThatCantBeAddedTakesNobodysPlace) {
    InstallTwo();
    const std::string before = File("drivers.txt");
    ShowInstalled();
    Device.Host.faults.FailNext(1);
    Choose(u"New");
    EXPECT_EQ(Screen(), ScrInstalledDrivers);
    EXPECT_EQ(File("drivers.txt"), before);
    EXPECT_THAT(Device.Did.Unsaved, ElementsAre(testing::Pair(u"drivers.txt", u"the disk is full")));
}

TEST_F(DriverRegistry, DeleteAsksTwiceAndTakesRowAndInfFile) {
    InstallTwo();
    ShowInstalled();
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete");
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"Delete Driver?", u"Are you sure?"));
    EXPECT_EQ(Device.Did.Boxes[0].Icon, platform::BoxIcon::Question);
    EXPECT_EQ(Device.Did.Boxes[0].Buttons, platform::BoxButtons::YesNo);
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nAlpha|a.txt\n");
    EXPECT_FALSE(Device.Folder.Has("Quorin/z.txt"));
    EXPECT_TRUE(Device.Folder.Has("Quorin/a.txt"));
    EXPECT_EQ(File("qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\nZulu|qrn0001.txt|20070301|\n");
    EXPECT_THAT(Column(0), ElementsAre(u"Alpha"));
}

TEST_F(DriverRegistry, DeletingTheLastLeavesTheHeader) {
    Put("drivers.txt", "NAME|INFFILE\nOnly|o.txt\n");
    ShowInstalled();
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\n");
    EXPECT_EQ(Device.Main().Rows(), 0);
}

TEST_F(DriverRegistry, NoToEitherQuestionChangesNothing) {
    InstallTwo();
    ShowInstalled();
    Device.WillAnswer(BoxAnswer::No);
    Choose(u"Delete");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::No);
    Choose(u"Delete");
    EXPECT_EQ(Device.Did.Boxes.size(), 3U);
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nZulu|z.txt\nAlpha|a.txt\n");
    EXPECT_TRUE(Device.Folder.Has("Quorin/z.txt"));
}

TEST_F(DriverRegistry, DeleteOfNothingAsksNothing) {
    ShowInstalled();
    Choose(u"Delete");
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

TEST_F(DriverRegistry, DriverWhoseRowIsGoneDeletesNothing) {
    InstallTwo();
    ShowInstalled();
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    DeleteDriver(u"Nobody");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nZulu|z.txt\nAlpha|a.txt\n");
    EXPECT_TRUE(Device.Folder.Has("Quorin/a.txt"));
}

TEST_F(DriverRegistry, SaveOfARenamedDriverFindsTheLastOneOfTheOldName) {
    InstallTwo();
    Put("a.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nlast driver's|1||||||\n");
    ShowInstalled();
    Choose(u"Edit");
    Tap(0, 1);
    Type(u"Yankee");
    Choose(u"Save");
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nYankee|z.txt\nAlpha|a.txt\n");
    EXPECT_EQ(Selection.SelectedDriver, u"Zulu");
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(Cell(0, 1), u"last driver's");
}

TEST_F(DriverRegistry, PropertiesHideRowsByTheFieldsThatWereLoadedLast) {
    InstallMeter("a|0||||||\nb|1||||||\n");
    OpenDownload("a|b\n1|2\n");
    ShowInstalled();
    Choose(u"Edit");
    EXPECT_EQ(Device.Main().RowHeight(0), 0); // the first field of the download is hidden, and so is NAME
    EXPECT_GT(Device.Main().RowHeight(1), 0);
}

/// The types of the fields are those of the download, too.
TEST_F(DriverRegistry, NameThatIsTakenForADateEndsTheProgramWithTheWayOut) {
    InstallMeter("Day|1|||||DATE|\nb|1||||||\n");
    OpenDownload("Day|b\n01/03/2007|2\n");
    ShowInstalled();
    Choose(u"Edit");
    const Text failure = support::FailureOf([this] { Tap(0, 1); });
    EXPECT_NE(failure.find(u"open a download of another driver first"), Text::npos) << modStringTools::ToBytes(failure);
}

struct Damage {
    const char* What;
    std::string (*Of)(const std::string& bytes);
};

void PrintTo(const Damage& row, std::ostream* out) {
    *out << row.What;
}

/// The drivers and the register are in the memory of a Palm OS device. The drivers table is damaged.
class DamagedDrivers : public support::Program, public testing::WithParamInterface<Damage> {
protected:
    DamagedDrivers() : Program(support::OfType(1)) {
        SaveSetting(u"StorageVolume", u"Device:\\");
        SetFilePaths();
        PutTable(Paths.DriversFile, u"NAME|INFFILE", u"Zulu|z.txt");
        PutTable(Paths.ControlFile, u"DRIVER|FILE|DATE|ALIAS", u"Zulu|qrn0001.txt|20070301|");
    }
    static void PutTable(const Text& name, const Text& header, const Text& row) {
        modFileSystem::FileHandle file;
        modFileSystem::OpenFile(file, name, u"w", DataType, DataCreator);
        modFileSystem::WriteFileLine(file, header);
        modFileSystem::WriteFileLine(file, row);
        modFileSystem::CloseFile(file);
    }
    std::string Database(const std::string& name) { return Device.Folder.Bytes("Databases/" + name + ".sqlite"); }
};

/// The drivers are not missing: what can still be read of them is kept, and so are the downloads.
TEST_P(DamagedDrivers, AreNotMadeAnewAndStopTheProgram) {
    const std::string damaged = GetParam().Of(Database("drivers"));
    const std::string downloads = Database("qrnctrl");
    Device.Folder.Put("Databases/drivers.sqlite", damaged);
    EXPECT_NE(support::FailureOf([] { MenuEvent(u"Start..."); }), u"");
    modFileSystem::ResetSlots();
    EXPECT_EQ(Database("drivers"), damaged);
    EXPECT_EQ(Database("qrnctrl"), downloads);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, DamagedDrivers,
    testing::Values(Damage{"another file's head", [](const std::string& b) { return "no database" + b.substr(11); }},
                    Damage{"the head alone is left", [](const std::string& b) { return b.substr(0, 100); }},
                    Damage{"half is left", [](const std::string& b) { return b.substr(0, b.size() / 2); }},
                    Damage{"the page of the lines is empty",
                           [](const std::string& b) {
                               const std::size_t page = 4096;
                               return b.substr(0, b.size() - 2 * page) + std::string(page, '\0') +
                                      b.substr(b.size() - page);
                           }},
                    Damage{"zeros", [](const std::string& b) { return std::string(b.size(), '\0'); }},
                    Damage{"a text", [](const std::string&) { return std::string("NAME|INFFILE\nZulu|z.txt\n"); }}));

} // namespace
} // namespace modQuorin
