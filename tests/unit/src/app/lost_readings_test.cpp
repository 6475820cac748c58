// SPDX-License-Identifier: MIT
// Each reading with the high tone is in the file after the next save, or its loss is reported.
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "src/view/inf_fields.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using platform::BoxAnswer;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;

const Text Reading = u"[BLob]\r\n[DESCRIPTIVE_VAR \"Site=North\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n"
                     u"[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
const std::string Plain = "Place|1||||||\nMoisture|1||Moisture||||\nRemark|1||||||\n";

class LostReadings : public support::Program {
protected:
    explicit LostReadings(std::int32_t deviceType = 0) : Program(support::OfType(deviceType)) {
        SaveSetting(u"ComPort", u"Com1");
    }
    void Open(const std::string& infRows, const std::string& download) {
        InstallMeter(infRows);
        OpenDownload(download);
        Device.Tick(500);
    }
    /// Receives a reading and expects the tone of a reading that was taken.
    void Measure() {
        Device.Platform.serial.Arrive(Reading);
        Device.Tick(1000);
        ASSERT_THAT(Device.Did.Tones, Not(IsEmpty()));
        EXPECT_EQ(Device.Did.Tones.back().first, 1046);
    }
    std::vector<std::string> Told() {
        std::vector<std::string> texts;
        for (const auto& [file, why] : Device.Did.Unsaved)
            texts.push_back(modStringTools::ToBytes(file + u": " + why));
        return texts;
    }
    std::string Worst() {
        const auto standing = Device.Platform.onlooker.notices.Sorted();
        return standing.empty() ? std::string() : modStringTools::ToBytes(standing.front().Words);
    }
    /// Expects that the reading is reported as lost, because the file has only a header.
    void ExpectNoRowForIt() {
        EXPECT_THAT(Told(), Contains("qrn0001.txt: the reading 23.4 % is not stored: the file has no such record"));
        Choose(u"Close");
        EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\n");
    }
    std::string InTheBox() { return modStringTools::ToBytes(Device.Platform.onlooker.losses.Words()); }
};

TEST_F(LostReadings, NothingIsToldOfOneThatIsSaved) {
    Open(Plain, "Place|Moisture|Remark\na||c\n");
    Measure();
    Choose(u"Close");
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na|23.4 %|c\n");
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Worst(), "");
    EXPECT_EQ(InTheBox(), "");
}

TEST_F(LostReadings, OfADownloadThatCouldNotBeMadeAreReportedEach) {
    InstallMeter();
    Device.Host.faults.FailNext(-1);
    OpenDownload("");
    Device.Host.faults.FailNext(0);
    Device.Tick(500);
    EXPECT_THAT(Told(), testing::ElementsAre("qrn0001.txt: the disk is full"));
    EXPECT_EQ(Worst(), "qrn0001.txt could not be created: the disk is full. Readings are not stored.");
    EXPECT_EQ(InTheBox(), Worst());
    Measure();
    EXPECT_THAT(Told(), Contains("qrn0001.txt: the reading 23.4 % is not stored: the file could not be created"));
    EXPECT_THAT(Worst(), HasSubstr("the reading 23.4 % is not stored"));
    EXPECT_THAT(InTheBox(), HasSubstr("1 reading is not stored."));
    Measure();
    EXPECT_THAT(InTheBox(), HasSubstr("2 readings are not stored."));
    Choose(u"Close");
    EXPECT_FALSE(Device.Folder.Has("Quorin/qrn0001.txt"));
    EXPECT_THAT(Told(), SizeIs(4)); // the save is reported, too
}

TEST_F(LostReadings, ThoseOfADownloadWhoseNameIsAFoldersAreTold) {
    std::filesystem::create_directories(Device.Folder.Path() / "Quorin/qrn0001.txt");
    Open(Plain, "");
    EXPECT_EQ(Worst(), "qrn0001.txt could not be created: the name is not allowed. Readings are not stored.");
    Measure();
    EXPECT_THAT(Told(), Contains("qrn0001.txt: the reading 23.4 % is not stored: the file could not be created"));
}

TEST_F(LostReadings, ThoseOfADownloadWithoutItsFirstRecordAreTold) {
    InstallMeter();
    Device.Host.faults.FailNext(1);
    OpenDownload("Place|Moisture|Remark\n");
    Device.Tick(500);
    EXPECT_EQ(TitleCell(1), u"1/0");
    EXPECT_EQ(Worst(), "No record could be added to qrn0001.txt: the disk is full. Readings are not stored.");
    EXPECT_EQ(InTheBox(), Worst());
    Measure();
    ExpectNoRowForIt();
}

/// After the last record was deleted, the new one could not be added: the grid shows the header and keeps it.
TEST_F(LostReadings, ThoseBehindTheLastRecordThatWasDeletedAreTold) {
    Open(Plain, "Place|Moisture|Remark\n||\n");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Device.Host.faults.FailNext(1, 4); // the deletion's scratch file, its line, its closing and its move succeed
    Choose(u"Delete Record");
    ASSERT_EQ(TitleCell(1), u"0/0");
    Device.WillAnswer(BoxAnswer::Yes); // the name in the grid is replaced
    Measure();
    ExpectNoRowForIt();
}

TEST_F(LostReadings, ThoseOfAColumnThatTheDownloadLacksAreTold) {
    Open(Plain, "Place\na\n");
    Measure();
    EXPECT_THAT(Told(),
                testing::ElementsAre(
                    "qrn0001.txt: the reading 23.4 % is not stored: the record in the file has no field Moisture"));
    EXPECT_THAT(InTheBox(), HasSubstr("1 reading is not stored."));
    Choose(u"Close");
    EXPECT_EQ(File("qrn0001.txt"), "Place\na\n");
}

TEST_F(LostReadings, ThoseOfARowShorterThanItsHeaderAreTold) {
    Open(Plain, "Place|Moisture|Remark\na\n");
    Measure();
    EXPECT_EQ(Cell(1, 1), u"23.4 %");
    EXPECT_THAT(Told(),
                testing::ElementsAre(
                    "qrn0001.txt: the reading 23.4 % is not stored: the record in the file has no field Moisture"));
    Choose(u"Close");
    EXPECT_EQ(File("qrn0001.txt"), "Place|Moisture|Remark\na\n");
}

TEST_F(LostReadings, ThoseThatGoIntoAnOpenFieldOfSuchARowAreTold) {
    Open(Plain, "Place|Moisture|Remark\na\n");
    Repaint();
    Tap(1, 1);
    ASSERT_TRUE(Device.Platform.txtInputField.Visible());
    Measure();
    EXPECT_THAT(Told(), Contains(HasSubstr("the reading 23.4 % is not stored")));
}

TEST_F(LostReadings, WhatComesWithOneAndHasNoColumnIsTold) {
    Open("Moisture|1||Moisture||||\nSite|1||dv: Site||||\nDay|1||||||enddate\n", "Moisture\n\n");
    Measure();
    EXPECT_THAT(Told(),
                testing::ElementsAre("qrn0001.txt: what came with the reading 23.4 % is not stored: the record in "
                                     "the file has no field Site, Day"));
    Choose(u"Close");
    EXPECT_EQ(File("qrn0001.txt"), "Moisture\n23.4 %\n");
}

/// Formulas that replace the reading in their row.
class ReadingsUnderAFormula : public LostReadings, public testing::WithParamInterface<const char*> {};

TEST_P(ReadingsUnderAFormula, AreTold) {
    Open(std::string("Moisture|1||Moisture||||") + GetParam() + "\n", "Moisture\n\n");
    Measure();
    EXPECT_THAT(Told(),
                testing::ElementsAre("qrn0001.txt: the reading 23.4 % is not stored: the formula or the variable "
                                     "of its row Moisture has replaced it"));
    Choose(u"Close");
    EXPECT_THAT(File("qrn0001.txt"), Not(HasSubstr("23.4")));
}

TEST_P(ReadingsUnderAFormula, AreToldAlsoWhereAnOpenFieldShowsThem) {
    Open(std::string("Moisture|1||Moisture||||") + GetParam() + "\n", "Moisture\n\n");
    Repaint();
    Tap(0, 1);
    ASSERT_TRUE(Device.Platform.txtInputField.Visible());
    Measure();
    EXPECT_THAT(Told(), testing::SizeIs(1));
    Choose(u"Close");
    EXPECT_THAT(File("qrn0001.txt"), Not(HasSubstr("23.4")));
}

INSTANTIATE_TEST_SUITE_P(Formulas, ReadingsUnderAFormula, testing::Values("mean", "enddate", "endtime"));

TEST_F(LostReadings, ThoseInWhoseRowAVariableIsPutAreTold) {
    Open("Moisture|1||Moisture||||\n", "Moisture\n\n");
    Device.Platform.serial.Arrive(u"[BLob]\r\n[DESCRIPTIVE_VAR \"Site=North\"]\r\n[RESULT_TYPE \"dv: Site\"]\r\n"
                                  u"[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
    Device.Tick(1000);
    EXPECT_THAT(Told(), IsEmpty()); // the low tone: no row takes it
    Inf.InfFields[0].Blob = u"dv: Site";
    Device.Platform.serial.Arrive(u"[BLob]\r\n[DESCRIPTIVE_VAR \"Site=North\"]\r\n[RESULT_TYPE \"dv: Site\"]\r\n"
                                  u"[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
    Device.Tick(1000);
    EXPECT_EQ(Cell(0, 1), u"North");
    EXPECT_THAT(Told(), Contains(HasSubstr("the reading 1 % is not stored: the formula or the variable of its row")));
}

TEST_F(LostReadings, OneWhoseSaveFailsIsTold) {
    Open(Plain, "Place|Moisture|Remark\na||c\n");
    Measure();
    Device.Host.faults.FailNext(-1);
    Choose(u"Close");
    EXPECT_THAT(Told(), testing::ElementsAre("qrn0001.txt: the disk is full"));
    EXPECT_THAT(Worst(), HasSubstr("Not saved: qrn0001.txt, the disk is full"));
}

TEST_F(LostReadings, TextInAFieldThatTheRowLacksIsReportedBySaving) {
    Open(Plain, "Place|Moisture|Remark\na\n");
    Repaint();
    Tap(2, 1);
    Type(u"typed");
    Choose(u"Next Record");
    EXPECT_THAT(Told(), testing::ElementsAre("qrn0001.txt: the record in the file has no field Remark"));
}

TEST_F(LostReadings, TextInADriverTableThatCouldNotBeMadeIsReported) {
    InstallMeter();
    std::filesystem::remove(Device.Folder.Path() / "Quorin/meter.txt");
    std::filesystem::create_directories(Device.Folder.Path() / "Quorin/meter.txt");
    MenuEvent(u"inf editor...");
    MenuEvent(u"Edit");
    MenuEvent(u"Save");
    ASSERT_EQ(Screen(), ScrInfRecord);
    EXPECT_THAT(Told(), Contains("meter.txt: the name is not allowed"));
    Device.Did.Unsaved.clear();
    Repaint();
    Tap(0, 1);
    Type(u"typed");
    Choose(u"Close");
    EXPECT_THAT(Told(), testing::ElementsAre("meter.txt: the file could not be created"));
}

class LostReadingsOfAPalm : public LostReadings {
protected:
    LostReadingsOfAPalm() : LostReadings(1) {}
};

TEST_F(LostReadingsOfAPalm, ThoseOfADatabaseThatCouldNotBeMadeAreTold) {
    MenuEvent(u"inf editor...");
    MenuEvent(u"New");
    Device.Main().SetCell(0, 1, u"Meter");
    Device.Main().SetCell(1, 1, u"meter.txt");
    MenuEvent(u"Save");
    Device.Main().SetCell(0, 1, u"Moisture");
    Device.Main().SetCell(3, 1, u"Moisture");
    modFileSystem::Table.RecordDirty = true;
    GoBack();
    GoBack();
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    MenuEvent(u"New");
    Settle();
    Device.Host.faults.FailNext(-1);
    MenuEvent(u"Open");
    Device.Host.faults.FailNext(0);
    Device.Tick(500);
    ASSERT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(Worst(), "qrn0001.txt could not be created: the disk is full. Readings are not stored.");
    Measure();
    EXPECT_THAT(Told(), Contains("qrn0001.txt: the reading 23.4 % is not stored: the file could not be created"));
}

} // namespace
} // namespace modQuorin
