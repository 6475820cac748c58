// SPDX-License-Identifier: MIT
#include "src/drivers/downloads.h"

#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using platform::BoxAnswer;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string RegisterHeader = "DRIVER|FILE|DATE|ALIAS\n";

class DownloadList : public support::Program {
protected:
    DownloadList() { InstallMeter(); }
    /// Shows the downloads of the one driver, with these rows in the register.
    void Show(const std::string& rows) {
        Put("qrnctrl.txt", RegisterHeader + rows);
        MenuEvent(u"Start...");
        MenuEvent(u"Ok");
    }
    std::string Register() { return File("qrnctrl.txt").substr(RegisterHeader.size()); }
    void Rename(std::function<void()> step) {
        Device.WillDo(std::move(step));
        Choose(u"Rename");
    }
};

TEST_F(DownloadList, FirstOfAllIsNumberOneOfToday) {
    Show("");
    Choose(u"New");
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|20070305|\n");
    EXPECT_FALSE(Device.Folder.Has("Quorin/qrn0001.txt"));
    EXPECT_THAT(Column(0), ElementsAre(u"qrn0001.txt"));
    EXPECT_EQ(TitleCell(), u"Downloads");
}

/// If the program was stopped when it first showed the drivers, there is no register, or one without a header.
TEST_F(DownloadList, RegisterThatIsMissingIsMadeByNew) {
    for (const char* const left : {"-", "", "\n", "\xEF\xBB\xBF"}) {
        SCOPED_TRACE(left);
        std::filesystem::remove(Device.Folder.Path() / "Quorin/qrnctrl.txt");
        if (std::string(left) != "-")
            Put("qrnctrl.txt", left);
        MenuEvent(u"Start...");
        MenuEvent(u"Ok");
        EXPECT_EQ(File("qrnctrl.txt"), std::string(left) == "-" ? "" : left); // showing the list creates nothing
        Choose(u"New");
        EXPECT_EQ(File("qrnctrl.txt"), RegisterHeader + "Meter|qrn0001.txt|20070305|\n");
        EXPECT_THAT(Column(0), ElementsAre(u"qrn0001.txt"));
    }
}

TEST_F(DownloadList, RegisterThatAnotherToolIsWritingIsReadAgain) {
    Put("qrnctrl.txt", "");
    Device.WhileItPauses([this] { Put("qrnctrl.txt", RegisterHeader + "Meter|qrn0007.txt|20070301|\n"); });
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    EXPECT_THAT(Column(0), ElementsAre(u"qrn0007.txt"));
}

TEST_F(DownloadList, NumberFollowsTheLastRowWhoseverItIs) {
    Show("Meter|qrn0002.txt|x|\nOther|qrn0007.txt|x|\n");
    Choose(u"New");
    EXPECT_EQ(Register(), "Meter|qrn0002.txt|x|\nOther|qrn0007.txt|x|\nMeter|qrn0008.txt|20070305|\n");
    EXPECT_THAT(Column(0), ElementsAre(u"qrn0002.txt", u"qrn0008.txt"));
}

struct NumberRow {
    const char* Last;
    const char* Next;
};

class FileNumber : public DownloadList, public testing::WithParamInterface<NumberRow> {};

TEST_P(FileNumber, IsFollowedBy) {
    Show(std::string("Meter|") + GetParam().Last + "|x|\n");
    Choose(u"New");
    EXPECT_EQ(Register(), std::string("Meter|") + GetParam().Last + "|x|\nMeter|" + GetParam().Next + "|20070305|\n");
}

INSTANTIATE_TEST_SUITE_P(Rows, FileNumber,
                         testing::Values(NumberRow{"qrn0009.txt", "qrn0010.txt"},
                                         NumberRow{"qrn9999.txt", "qrn10000.txt"},
                                         NumberRow{"qrn10000.txt", "qrn1001.txt"},
                                         NumberRow{"qrn0004.csv", "qrn0005.csv"}));

class ForeignName : public DownloadList, public testing::WithParamInterface<const char*> {};

TEST_P(ForeignName, StopsTheNumberingSilently) {
    Show(std::string("Meter|") + GetParam() + "|x|\n");
    Choose(u"New");
    EXPECT_EQ(Register(), std::string("Meter|") + GetParam() + "|x|\n");
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
    EXPECT_FALSE(modFileSystem::Table.TableFile.valid);
}

INSTANTIATE_TEST_SUITE_P(Names, ForeignName, testing::Values("other.txt", "QRN0001.txt", "qr", ""));

TEST_F(DownloadList, NameWithoutANumberStopsTheProgram) {
    Show("Meter|qrn12.txt|x|\n");
    support::FailureOf([] { MenuEvent(u"New"); });
    EXPECT_EQ(Register(), "Meter|qrn12.txt|x|\n");
}

TEST_F(DownloadList, NumberAndFileOfADeletedLastOneAreUsedAgain) {
    Show("Meter|qrn0001.txt|x|\nMeter|qrn0002.txt|x|\n");
    Device.Main().SetRow(1);
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete");
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|\n");
    Put("qrn0002.txt", "Place|Moisture|Remark\nleft|behind|\n");
    Choose(u"New");
    Device.Main().SetRow(1);
    Choose(u"Open");
    EXPECT_EQ(Cell(0, 1), u"left");
}

TEST_F(DownloadList, DeleteAsksTwiceAndTakesRowAndFile) {
    Show("Meter|qrn0001.txt|x|\n");
    Put("qrn0001.txt", "x");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete");
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"Delete Download File?", u"Are you sure?"));
    EXPECT_EQ(Register(), "");
    EXPECT_FALSE(Device.Folder.Has("Quorin/qrn0001.txt"));
}

/// A full disk prevents the new download and changes nothing else.
TEST_F(DownloadList, NewOneThatCantBeAddedTakesNobodysPlace) {
    const std::string control = "DRIVER|FILE|DATE|ALIAS\nOther|qrn0003.txt|20070102|My name\n";
    Put("qrnctrl.txt", control);
    Device.Host.faults.FailNext(1);
    NewDownload(u"Meter");
    EXPECT_EQ(File("qrnctrl.txt"), control);
    NewDownload(u"Meter");
    EXPECT_EQ(File("qrnctrl.txt"), control + "Meter|qrn0004.txt|20070305|\n");
}

TEST_F(DownloadList, NextOneIsKnownBeforeItIsMade) {
    std::filesystem::remove(Device.Folder.Path() / "Quorin/qrnctrl.txt");
    EXPECT_EQ(NextDownload(), u"qrn0001.txt");
    EXPECT_FALSE(Device.Folder.Has("Quorin/qrnctrl.txt"));
    Put("qrnctrl.txt", RegisterHeader + "Other|qrn0007.txt|20070301|\n");
    EXPECT_EQ(NextDownload(), u"qrn0008.txt");
    Put("qrnctrl.txt", RegisterHeader + "Other|other.txt|20070301|\n");
    EXPECT_EQ(NextDownload(), u"");
}

TEST_F(DownloadList, OneFromOutsideIsRegisteredWithItsAlias) {
    Put("qrnctrl.txt", RegisterHeader + "Other|qrn0007.txt|20070301|\n");
    EXPECT_TRUE(RegisterDownload(u"Meter", u"qrn0008.txt", u"Loft"));
    EXPECT_EQ(Register(), "Other|qrn0007.txt|20070301|\nMeter|qrn0008.txt|20070305|Loft\n");
    Put("qrn0008.txt", "Site\n");
    EraseDownload(u"Meter", u"qrn0008.txt");
    EXPECT_EQ(Register(), "Other|qrn0007.txt|20070301|\n");
    EXPECT_FALSE(Device.Folder.Has("Quorin/qrn0008.txt"));
}

TEST_F(DownloadList, OneOfAnotherDeviceKeepsItsDateAndItsPlace) {
    Put("qrnctrl.txt", RegisterHeader + "Meter|qrn0001.txt|20070301|\nMeter|qrn0005.txt|20070302|\n");
    EXPECT_TRUE(TakeUpDownload({u"Other", u"qrn0003.txt", u"Loft", u"20061224"}));
    EXPECT_EQ(Register(),
              "Meter|qrn0001.txt|20070301|\nOther|qrn0003.txt|20061224|Loft\nMeter|qrn0005.txt|20070302|\n");
    EXPECT_EQ(NextDownload(), u"qrn0006.txt") << "no number is given twice";
    EXPECT_TRUE(TakeUpDownload({u"Other", u"qrn0009.txt", u"", u"20061224"}));
    EXPECT_TRUE(TakeUpDownload({u"Other", u"site.txt", u"", u"20061224"}));
    EXPECT_EQ(NextDownload(), u"qrn0010.txt");
}

TEST_F(DownloadList, OneOfAnotherDeviceMakesTheRegister) {
    std::filesystem::remove(Device.Folder.Path() / "Quorin/qrnctrl.txt");
    EXPECT_TRUE(TakeUpDownload({u"Other", u"qrn0003.txt", u"", u"20061224"}));
    EXPECT_EQ(Register(), "Other|qrn0003.txt|20061224|\n");
    Device.Host.faults.FailNext(1);
    EXPECT_FALSE(TakeUpDownload({u"Other", u"qrn0004.txt", u"", u"20061224"}));
}

TEST_F(DownloadList, OneFromOutsideThatCantBeAddedIsTold) {
    Put("qrnctrl.txt", RegisterHeader);
    Device.Host.faults.FailNext(1);
    EXPECT_FALSE(RegisterDownload(u"Meter", u"qrn0001.txt", u""));
}

TEST_F(DownloadList, FileThatIsGoneAlreadyIsNoFailure) {
    Show("Meter|qrn0001.txt|x|\n");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete");
    EXPECT_EQ(Register(), "");
}

TEST_F(DownloadList, NoKeepsItAll) {
    Show("Meter|qrn0001.txt|x|\n");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::No);
    Choose(u"Delete");
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|\n");
}

TEST_F(DownloadList, DownloadOfAnotherDriverIsNotDeleted) {
    Show("Other|qrn0001.txt|x|\n");
    Selection.SelectedDownload = u"qrn0001.txt";
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete");
    EXPECT_EQ(Register(), "Other|qrn0001.txt|x|\n");
}

TEST_F(DownloadList, EmptyListKeepsWhatWasInHand) {
    Selection.SelectedDownload = u"qrn0009.txt";
    Show("Other|qrn0001.txt|x|\n");
    EXPECT_EQ(Selection.SelectedDownload, u"qrn0009.txt");
}

TEST_F(DownloadList, RenamedShowsItsAliasAndKeepsItsFile) {
    Show("Meter|qrn0001.txt|x|\n");
    Rename([this] {
        EXPECT_EQ(TitleCell(), u"Rename");
        EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"qrn0001.txt");
        Type(u"First visit");
        MenuEvent(u"Ok");
    });
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|First visit\n");
    EXPECT_THAT(Column(0), ElementsAre(u"First visit"));
    EXPECT_EQ(Selection.SelectedDownload, u"qrn0001.txt");
    EXPECT_EQ(Screen(), ScrDownloads);
}

TEST_F(DownloadList, SecondOneIsRenamedThoughThePromptTookTheFirst) {
    Show("Meter|qrn0001.txt|x|\nMeter|qrn0002.txt|x|\n");
    Device.Main().SetRow(1);
    Rename([this] {
        Type(u"Second");
        MenuEvent(u"Ok");
    });
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|\nMeter|qrn0002.txt|x|Second\n");
}

TEST_F(DownloadList, SameNameOrNoneStoresNothing) {
    Show("Meter|qrn0001.txt|x|\n");
    Rename([] { MenuEvent(u"Ok"); });
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|\n");
    Rename([this] {
        Type(u"");
        MenuEvent(u"Ok");
    });
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|\n");
}

TEST_F(DownloadList, AliasCantBeCleared) {
    Show("Meter|qrn0001.txt|x|Alias\n");
    Rename([this] {
        EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"Alias");
        Type(u"");
        MenuEvent(u"Ok");
    });
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|Alias\n");
}

TEST_F(DownloadList, CancelledRenameTakesTheLastAnswerThatWasGiven) {
    Show("Meter|qrn0001.txt|x|\n");
    Rename([] { MenuEvent(u"Back"); });
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|\n"); // there was none before
    Rename([this] {
        Type(u"abc");
        MenuEvent(u"Ok");
    });
    Rename([this] {
        Type(u"xyz");
        MenuEvent(u"Back");
    });
    EXPECT_EQ(Register(), "Meter|qrn0001.txt|x|abc\n");
}

TEST_F(DownloadList, RenameOfWhatIsNotThereAsksNothing) {
    Show("Other|qrn0001.txt|x|\n");
    Selection.SelectedDownload = u"qrn0001.txt";
    Choose(u"Rename");
    EXPECT_EQ(Screen(), ScrDownloads);
    EXPECT_EQ(Register(), "Other|qrn0001.txt|x|\n");
}

TEST(PadNumber, PutsZerosInFront) {
    EXPECT_EQ(PadNumber(7, 4), u"0007");
    EXPECT_EQ(PadNumber(2007, 4), u"2007");
    EXPECT_EQ(PadNumber(10000, 4), u"10000");
    EXPECT_EQ(PadNumber(0, 2), u"00");
}

} // namespace
} // namespace modQuorin
