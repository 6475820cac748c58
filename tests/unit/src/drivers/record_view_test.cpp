// SPDX-License-Identifier: MIT
#include "src/drivers/record_view.h"

#include "src/link/receive.h"
#include "src/view/inf_fields.h"
#include "tests/support/program.h"

#include <sys/stat.h>

namespace modQuorin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Download : public support::Program {
protected:
    /// Goes to the list of the only driver's only download.
    void GoToDownloads() {
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|x|\n");
        MenuEvent(u"Start...");
        MenuEvent(u"Ok");
    }
};

TEST_F(Download, OpenedForTheFirstTimeIsMadeWithOneBlankRecord) {
    InstallMeter();
    OpenDownload("");
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\n||\n");
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(TitleCell(0), u"Download");
    EXPECT_EQ(TitleCell(1), u"1/1");
    EXPECT_THAT(Column(0), ElementsAre(u"Place", u"Moisture", u"Remark"));
    EXPECT_EQ(Screens.RecordReturnScreen, ScrDownloads);
    EXPECT_TRUE(Screens.GridEditMode);
}

/// The file of a program that was killed while it created a database. Without columns no reading would be stored.
TEST_F(Download, WithoutAnyLineIsMadeAsOneThatIsMissing) {
    InstallMeter();
    Put("qrn0001.txt", "");
    GoToDownloads();
    MenuEvent(u"Open");
    EXPECT_EQ(TitleCell(1), u"1/1");
    MenuEvent(u"Close");
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\n||\n");
}

TEST_F(Download, TakesItsFullPathInHandAndItsBareNameOnTheWayBack) {
    InstallMeter();
    OpenDownload("");
    EXPECT_EQ(Selection.SelectedDownload, u".\\Quorin\\qrn0001.txt");
    GoBack();
    EXPECT_EQ(Selection.SelectedDownload, u"qrn0001.txt");
}

TEST_F(Download, OfADriverThatListensArmsTheLink) {
    InstallMeter();
    OpenDownload("");
    EXPECT_TRUE(modBluetooth::Receive.LinkWanted);
    EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Open);
}

TEST_F(Download, WithoutAnInfFileStaysClosed) {
    InstallMeter();
    std::filesystem::remove(Device.Folder.Path() / "Quorin/meter.txt");
    GoToDownloads();
    MenuEvent(u"Open");
    EXPECT_EQ(Screen(), ScrDownloads);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
    EXPECT_THAT(Device.Did.Status, ElementsAre(u"Busy", u""));
    EXPECT_EQ(Selection.SelectedDownload, u"qrn0001.txt");
}

TEST_F(Download, OfNothingDoesNothing) {
    InstallMeter();
    Text none;
    modQuorin::OpenDownload(u"Meter", none);
    Text file = u"qrn0001.txt";
    modQuorin::OpenDownload(u"", file);
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_EQ(file, u"qrn0001.txt");
}

TEST_F(Download, KeepsItsOwnHeaderWhenTheDriverHasChanged) {
    InstallMeter("New|1||||||\nNames|1||||||\n");
    OpenDownload("Place|Moisture|Remark\n1|2|3\n");
    EXPECT_THAT(Column(0), ElementsAre(u"Place", u"Moisture", u"Remark"));
}

TEST_F(Download, ThatCantBeMadeComesUpEmpty) {
    InstallMeter();
    GoToDownloads();
    Device.Host.faults.FailNext(-1);
    MenuEvent(u"Open");
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(TitleCell(1), u"0/0");
}

class ColumnChoices : public support::Program {
protected:
    ColumnChoices() {
        InstallMeter("Place|1||||||\nMoisture|0||||||\nRemark|-1||||||\n");
        MenuEvent(u"Start...");
        MenuEvent(u"Show/Hide Columns...");
    }
};

TEST_F(ColumnChoices, MarkWhatIsShown) {
    EXPECT_EQ(TitleCell(), u"Show/Hide Columns");
    EXPECT_THAT(Column(0), ElementsAre(u"Place", u"Moisture", u"Remark"));
    EXPECT_THAT(Column(1), ElementsAre(u"X", u"", u""));
}

TEST_F(ColumnChoices, BackWritesTheRowsThatDiffer) {
    Tap(1);
    GoBack();
    EXPECT_EQ(File("meter.txt"), "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                 "Place|1||||||\nMoisture|1||||||\nRemark|0||||||\n");
    EXPECT_FALSE(modFileSystem::Table.TableFile.valid);
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(ColumnChoices, ReachARecordOnlyWhenItIsOpenedAgain) {
    Tap(1);
    GoBack();
    EXPECT_THAT(Inf.InfFields, IsEmpty()); // only the opening of a download reads the fields from the file
    OpenDownload("Place|Moisture|Remark\n1|2|3\n");
    Repaint();
    EXPECT_GT(Device.Main().RowHeight(1), 0);
    EXPECT_EQ(Device.Main().RowHeight(2), 0);
}

/// On the next screen neither the columns' table nor the record that was open before is in use.
class ColumnsOfAnyScreen : public support::Program {
protected:
    ColumnsOfAnyScreen() { InstallMeter("Place|0||||||\nMoisture|1||Moisture||||\nRemark|1||||||\n"); }
    void ShowAndLeaveColumns() {
        MenuEvent(u"Show/Hide Columns...");
        ASSERT_EQ(Screen(), ScrColumns);
        ASSERT_TRUE(modFileSystem::Table.TableFile.valid);
        GoBack();
    }
    /// Returns the file's number, which is another one after each rewrite.
    ino_t InfFile() {
        struct stat found {};
        ::stat((Device.Folder.Path() / "Quorin/meter.txt").c_str(), &found);
        return found.st_ino;
    }
};

TEST_F(ColumnsOfAnyScreen, LeaveNoTableOpen) {
    MenuEvent(u"Start...");
    GotoScreen(ScrMain);
    ShowAndLeaveColumns();
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_FALSE(modFileSystem::Table.TableFile.valid);
}

TEST_F(ColumnsOfAnyScreen, LeaveNoFieldOfADownload) {
    OpenDownload("");
    ASSERT_FALSE(Inf.InfFields.empty());
    GoBack();
    ShowAndLeaveColumns();
    EXPECT_THAT(Inf.InfFields, IsEmpty());
    MenuEvent(u"inf editor...");
    MenuEvent(u"Edit");
    EXPECT_GT(Device.Main().RowHeight(0), 0) << "the name of the driver is not hidden";
}

TEST_F(ColumnsOfAnyScreen, WriteNothingWhereNothingWasChanged) {
    MenuEvent(u"Start...");
    const ino_t before = InfFile();
    ShowAndLeaveColumns();
    EXPECT_EQ(InfFile(), before);
}

class NoColumnChoices : public support::Program {};

TEST_F(NoColumnChoices, WithoutADriverThereIsATitleAlone) {
    MenuEvent(u"Show/Hide Columns...");
    EXPECT_EQ(TitleCell(), u"Show/Hide Columns");
    EXPECT_EQ(Cell(0), u"");
}

TEST_F(NoColumnChoices, WithoutAnInfFileThereIsATitleAlone) {
    InstallMeter();
    std::filesystem::remove(Device.Folder.Path() / "Quorin/meter.txt");
    MenuEvent(u"Start...");
    MenuEvent(u"Show/Hide Columns...");
    EXPECT_EQ(TitleCell(), u"Show/Hide Columns");
    EXPECT_EQ(Cell(0), u"");
    GoBack();
    EXPECT_FALSE(Device.Folder.Has("Quorin/meter.txt"));
}

} // namespace
} // namespace modQuorin
