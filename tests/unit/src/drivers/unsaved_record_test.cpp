// SPDX-License-Identifier: MIT
#include "src/drivers/unsaved_record.h"

#include "src/view/prompt.h"
#include "tests/support/heard_readings.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using testing::HasSubstr;

const std::string Header = "Place|Dug|Remark\n";

/// A record of a text, an invalid date and a text. The link is armed.
class UnsavedRecord : public support::Program {
protected:
    UnsavedRecord() {
        InstallMeter("Place|1||Moisture||||\nDug|1|||||DATE|\nRemark|1||||||\n");
        OpenDownload(Header + "a|2007-04-01|c\n1|2|3\n");
        Repaint();
    }
    void Edit(std::int32_t row, const Text& text) {
        Tap(row, 1);
        Type(text);
    }
    std::string FailureAtTheDate() {
        return modStringTools::ToBytes(support::FailureOf([this] { Tap(1, 1); }));
    }
    std::string Download() { return File("qrn0001.txt"); }
};

TEST_F(UnsavedRecord, IsSavedBeforeADateThatIsNoneEndsTheProgram) {
    Edit(0, u"new");
    Edit(2, u"typed");
    EXPECT_THAT(FailureAtTheDate(), HasSubstr("\"2007-04-01\" is not a date"));
    EXPECT_EQ(Download(), Header + "new|2007-04-01|typed\n1|2|3\n");
}

TEST_F(UnsavedRecord, IsSavedBeforeAPortThatIsNoNumberEndsTheProgram) {
    Device.Folder.Put("settings.ini", "[Settings]\nComPort=printer\n");
    Device.Platform.settings.Save(u"Quorin", u"Settings", u"ComPort", u"printer");
    Edit(2, u"typed");
    EXPECT_THAT(modStringTools::ToBytes(support::FailureOf([this] { Device.Tick(500); })), HasSubstr("printer"));
    EXPECT_EQ(Download(), Header + "a|2007-04-01|typed\n1|2|3\n");
}

/// The grid then belongs to the prompt and is one empty cell.
TEST_F(UnsavedRecord, IsSavedFromUnderACalendar) {
    Device.Main().SetCell(1, 1, u"01/04/2007");
    Edit(2, u"typed");
    Tap(1, 1);
    ASSERT_EQ(Screen(), ScrInput);
    Device.Platform.settings.Save(u"Quorin", u"Settings", u"ComPort", u"printer");
    EXPECT_NE(support::FailureOf([this] { Device.Tick(500); }), u"");
    EXPECT_EQ(Download(), Header + "a|01/04/2007|typed\n1|2|3\n");
}

/// The fields that the row has are saved, and the missing ones are reported.
TEST_F(UnsavedRecord, OfARowShorterThanItsHeaderIsSavedAsFarAsItGoes) {
    OpenDownload(Header + "a\n1|2|3\n");
    Repaint();
    Edit(0, u"new");
    Edit(2, u"typed");
    Device.Platform.settings.Save(u"Quorin", u"Settings", u"ComPort", u"printer");
    EXPECT_THAT(modStringTools::ToBytes(support::FailureOf([this] { Device.Tick(500); })), HasSubstr("printer"));
    EXPECT_EQ(Download(), Header + "new\n1|2|3\n");
    EXPECT_THAT(Device.Did.Unsaved,
                testing::ElementsAre(testing::Pair(u"qrn0001.txt", u"the record in the file has no field Remark")));
}

/// The saved copy of the grid is used then.
TEST_F(UnsavedRecord, OfAShortRowUnderACalendarIsToldTheSameWay) {
    OpenDownload(Header + "a|01/04/2007\n1|2|3\n");
    Repaint();
    Edit(2, u"typed");
    Tap(1, 1);
    ASSERT_EQ(Screen(), ScrInput);
    Device.Platform.settings.Save(u"Quorin", u"Settings", u"ComPort", u"printer");
    EXPECT_NE(support::FailureOf([this] { Device.Tick(500); }), u"");
    EXPECT_EQ(Download(), Header + "a|01/04/2007\n1|2|3\n");
    EXPECT_THAT(Device.Did.Unsaved,
                testing::ElementsAre(testing::Pair(u"qrn0001.txt", u"the record in the file has no field Remark")));
}

TEST_F(UnsavedRecord, OfADownloadWithoutAFileIsToldAndMakesNone) {
    GoBack();
    std::filesystem::remove(Device.Folder.Path() / "Quorin/qrn0001.txt");
    std::filesystem::create_directory(Device.Folder.Path() / "Quorin/qrn0001.txt");
    OpenDownload("");
    Device.Did.Unsaved.clear(); // the reports of the opening
    Device.Platform.settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com1");
    Device.Tick(500);
    Device.Platform.serial.Arrive(u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n"
                                  u"[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
    Device.Tick(1500);
    ASSERT_EQ(Cell(0, 1), u"23.4 %");
    Device.Did.Unsaved.clear(); // the report of the reading
    const support::HeardReadings heard(Device);
    EXPECT_NE(support::FailureOf([] { platform::RuntimeFailure(u"no reason"); }), u"");
    EXPECT_THAT(Device.Did.Unsaved,
                testing::ElementsAre(testing::Pair(u"qrn0001.txt", u"the file could not be created")));
    EXPECT_THAT(heard.RowLines(),
                testing::ElementsAre("saved qrn0001.txt 0:  -> 23.4 % failed: the file could not be created"));
    EXPECT_TRUE(std::filesystem::is_empty(Device.Folder.Path() / "Quorin/qrn0001.txt"));
}

TEST_F(UnsavedRecord, ThatNobodyHasTouchedIsNotWritten) {
    Device.Host.faults.FailNext(-1);
    FailureAtTheDate();
    EXPECT_THAT(Device.Did.Unsaved, testing::IsEmpty());
}

/// Typing into a prompt marks the record as changed even if there is none: here the open table is the register.
TEST_F(UnsavedRecord, IsNotMadeUpFromAPromptOffTheRecordScreens) {
    GoBack();
    const std::string registered = File("qrnctrl.txt");
    Device.WillDo([this] {
        Type(u"other");
        platform::RuntimeFailure(u"no reason");
    });
    EXPECT_EQ(support::FailureOf([] { MenuEvent(u"Rename"); }), u"no reason");
    EXPECT_EQ(File("qrnctrl.txt"), registered);
    EXPECT_EQ(Download(), Header + "a|2007-04-01|c\n1|2|3\n");
}

TEST_F(UnsavedRecord, IsNotMadeUpFromAListWhereTheRegisterCantBeSaved) {
    GoBack();
    const std::string registered = File("qrnctrl.txt");
    for (std::int32_t good = 1; good < 8; ++good) {
        SCOPED_TRACE(good);
        Device.Host.faults.FailNext(-1, good);
        try {
            MenuEvent(u"New");
        } catch (const support::ProgramOver&) {
        }
        Device.Host.faults.FailNext(0);
        modFileSystem::ResetSlots();
        modFileSystem::Table = {};
        EXPECT_EQ(Download(), Header + "a|2007-04-01|c\n1|2|3\n");
        EXPECT_EQ(File("qrnctrl.txt").substr(0, registered.size()), registered);
    }
}

TEST_F(UnsavedRecord, ThatTheDiskHasNoRoomForIsToldBehindTheFirstMessage) {
    const std::string old = Header + "a|2007-04-01|c\n1|2|3\n";
    bool bothTold = false;
    bool saved = false;
    for (std::int32_t good = 0; !saved && good < 20; ++good) {
        SCOPED_TRACE(good);
        modFileSystem::ResetSlots();
        modFileSystem::Table = {};
        Rescue = {};
        Device.Did.Unsaved.clear();
        OpenDownload(old);
        Repaint();
        Edit(2, u"typed");
        Device.Host.faults.FailNext(-1, good);
        const std::string told = FailureAtTheDate();
        Device.Host.faults.FailNext(0);
        EXPECT_THAT(told, testing::StartsWith("\"2007-04-01\" is not a date"));
        const bool both = told.find("The record on the screen could not be saved: Can't write") != std::string::npos;
        saved = Download() == Header + "a|2007-04-01|typed\n1|2|3\n";
        EXPECT_TRUE(saved || both || !Device.Did.Unsaved.empty());
        EXPECT_TRUE(saved || Download() == old);
        bothTold = bothTold || both;
    }
    EXPECT_TRUE(saved);
    EXPECT_TRUE(bothTold);
}

/// A save that fails does not save again.
TEST_F(UnsavedRecord, WhoseOwnSaveFailsIsNotSavedOnceMore) {
    Edit(2, u"typed");
    Device.Host.faults.FailNext(1, 1);
    EXPECT_THAT(modStringTools::ToBytes(support::FailureOf([] { MenuEvent(u"Next Record"); })),
                testing::Not(HasSubstr("The record on the screen")));
    EXPECT_EQ(Download(), Header + "a|2007-04-01|c\n1|2|3\n");
}

/// If the current row is too short for a field that is asked for, it may not be the row on the screen.
TEST_F(UnsavedRecord, StaysWhereTheTableItselfIsTheFailure) {
    modFileSystem::Table.RecordDirty = true;
    modFileSystem::Table.TableValues.resize(1);
    EXPECT_NE(support::FailureOf([] { modFileSystem::GetField(u"Remark"); }), u"");
    EXPECT_EQ(Download(), Header + "a|2007-04-01|c\n1|2|3\n");
}

/// As after the deletion of the last record on a full disk: no blank one could be added, and the header is the current
/// line.
TEST_F(UnsavedRecord, WithoutARowOfItsOwnIsNotWrittenOverTheHeader) {
    Edit(2, u"typed");
    const std::string before = Download();
    modFileSystem::GotoRow(0);
    modFileSystem::Table.RecordDirty = true;
    EXPECT_EQ(modFileSystem::Table.TableRowIndex, 0);
    RescueRecord();
    EXPECT_EQ(Download(), before);
    EXPECT_TRUE(RecordIsUnsaved());
    EXPECT_THAT(Device.Did.Unsaved, testing::SizeIs(1));
}

TEST_F(UnsavedRecord, IsSavedOnceARun) {
    Edit(0, u"first");
    FailureAtTheDate();
    Screens.CurrentScreen = ScrInfRecord;
    modFileSystem::Table.RecordDirty = true;
    RescueRecord();
    EXPECT_EQ(Download(), Header + "first|2007-04-01|c\n1|2|3\n");
    EXPECT_TRUE(modFileSystem::Table.RecordDirty);
}

} // namespace
} // namespace modQuorin
