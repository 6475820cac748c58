// SPDX-License-Identifier: MIT
#include "src/drivers/inf_tables.h"

#include "src/view/inf_fields.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using support::PrintTo;
using testing::IsEmpty;

const std::string InfHeader = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";

class InfTable : public support::Program {
protected:
    /// Returns the only row of a driver's inf table as the opening of a download reads it.
    InfField Loaded(const std::string& row) {
        InstallMeter(row + "\n");
        OpenDownload("");
        return Inf.InfFields.at(0);
    }
};

TEST_F(InfTable, NewOneShowsOneOfOneWithEightEmptyValues) {
    Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    OpenInfEditor(u"Meter");
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(TitleCell(0), u"Inf Editor");
    EXPECT_EQ(TitleCell(1), u"1/1");
    EXPECT_EQ(Column(1), std::vector<Text>(8));
    EXPECT_EQ(File("meter.txt"), InfHeader + "|||||||\n");
    EXPECT_EQ(Screens.RecordReturnScreen, ScrInstalledDrivers);
}

/// The inf table of a package that has only a driver's row and a header, and what a program that was stopped may have
/// left.
class InfTableWithoutRows : public InfTable, public testing::WithParamInterface<const char*> {
protected:
    InfTableWithoutRows() {
        InstallMeter();
        Put("meter.txt", GetParam());
    }
};

TEST_P(InfTableWithoutRows, GetsABlankRowWhenADownloadIsOpened) {
    OpenDownload("");
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_EQ(TitleCell(1), u"1/1");
    EXPECT_EQ(File("meter.txt"), InfHeader + "|||||||\n");
    EXPECT_EQ(Inf.InfFields.size(), 1U);
}

TEST_P(InfTableWithoutRows, GetsABlankRowWhenItIsEdited) {
    OpenInfEditor(u"Meter");
    EXPECT_EQ(TitleCell(1), u"1/1");
    EXPECT_EQ(Column(1), std::vector<Text>(8));
    EXPECT_EQ(File("meter.txt"), InfHeader + "|||||||\n");
}

TEST_P(InfTableWithoutRows, GetsABlankRowWhenItsColumnsAreShown) {
    Selection.SelectedDriver = u"Meter";
    MenuEvent(u"Show/Hide Columns...");
    EXPECT_EQ(Device.Main().Rows(), 1);
    GoBack();
    EXPECT_EQ(File("meter.txt"), InfHeader + "|0||||||\n");
}

INSTANTIATE_TEST_SUITE_P(Rows, InfTableWithoutRows,
                         testing::Values("", "\n", "\xEF\xBB\xBF",
                                         "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n",
                                         "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA"));

TEST_F(InfTable, ThatAnotherToolIsJustWritingIsLookedAtASecondTime) {
    InstallMeter();
    Put("meter.txt", "");
    Device.WhileItPauses([this] { Put("meter.txt", InfHeader + "Place|1||||||\n"); });
    OpenDownload("");
    EXPECT_EQ(File("meter.txt"), InfHeader + "Place|1||||||\n");
    EXPECT_EQ(Cell(0), u"Place");
}

TEST_F(InfTable, ThatIsMissingIsNotMadeByOpeningADownload) {
    InstallMeter();
    std::filesystem::remove(Device.Folder.Path() / "Quorin/meter.txt");
    OpenDownload("");
    EXPECT_EQ(Screen(), ScrDownloads);
    EXPECT_FALSE(Device.Folder.Has("Quorin/meter.txt"));
    EXPECT_THAT(Device.Pauses, IsEmpty());
}

TEST_F(InfTable, EditorHidesNothing) {
    InstallMeter("a|0||||||\n");
    OpenDownload("");
    OpenInfEditor(u"Meter");
    EXPECT_THAT(Inf.InfFields, IsEmpty());
    EXPECT_GT(Device.Main().RowHeight(0), 0);
}

TEST_F(InfTable, OfNobodyOpensNothing) {
    OpenInfEditor(u"");
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(InfTable, OfADriverThatIsNotThereIsTheLastOnes) {
    InstallMeter();
    OpenInfEditor(u"Nobody");
    EXPECT_EQ(Cell(0, 1), u"Place");
}

TEST_F(InfTable, WithoutAnyDriverThereIsNoTable) {
    Put("drivers.txt", "NAME|INFFILE\n");
    OpenInfEditor(u"Nobody");
    EXPECT_FALSE(modFileSystem::Table.TableFile.valid);
    EXPECT_EQ(TitleCell(1), u"0/0");
}

TEST_F(InfTable, NewRecordInTheEditorCopiesNothing) {
    InstallMeter("a|1|1|x||||\n");
    OpenInfEditor(u"Meter");
    Choose(u"New Record");
    EXPECT_EQ(TitleCell(1), u"2/2");
    EXPECT_EQ(Column(1), std::vector<Text>(8));
}

TEST_F(InfTable, NamesForOtherToolsSurviveEditing) {
    InstallMeter("a|1||||csv name||\n");
    OpenInfEditor(u"Meter");
    Tap(0, 1);
    Type(u"b");
    GoBack();
    EXPECT_EQ(File("meter.txt"), InfHeader + "b|1||||csv name||\n");
}

TEST_F(InfTable, RowIsTakenFieldByField) {
    const InfField field = Loaded("Moisture|1|1|RT|255|csv|TIME|EndTime");
    EXPECT_EQ(field.FieldName, u"Moisture");
    EXPECT_TRUE(field.Visible);
    EXPECT_TRUE(field.Copy);
    EXPECT_EQ(field.Blob, u"RT");
    EXPECT_EQ(field.Display, 255);
    EXPECT_EQ(field.DataType, FieldType::Time);
    EXPECT_EQ(field.Formula, u"EndTime");
}

TEST_F(InfTable, EmptyColourIsWhite) {
    EXPECT_EQ(Loaded("a|1||||||").Display, 0xFFFFFF);
}

class VisibleValue : public InfTable, public testing::WithParamInterface<const char*> {};

TEST_P(VisibleValue, HidesTheField) {
    EXPECT_FALSE(Loaded(std::string("a|") + GetParam() + "||||||").Visible);
}

INSTANTIATE_TEST_SUITE_P(AnythingButOne, VisibleValue, testing::Values("-1", "true", "0", "", "01", "1 "));

struct TypeRow {
    const char* Text;
    FieldType Type;
};

class DataTypeValue : public InfTable, public testing::WithParamInterface<TypeRow> {};

TEST_P(DataTypeValue, IsTakenInAnyCase) {
    EXPECT_EQ(Loaded(std::string("a|1|||||") + GetParam().Text + "|").DataType, GetParam().Type);
}

INSTANTIATE_TEST_SUITE_P(Values, DataTypeValue,
                         testing::Values(TypeRow{"DATE", FieldType::Date}, TypeRow{"date", FieldType::Date},
                                         TypeRow{"Time", FieldType::Time}, TypeRow{"", FieldType::Text},
                                         TypeRow{"NUMBER", FieldType::Text}, TypeRow{"DATE ", FieldType::Text}));

TEST_F(InfTable, ColourThatIsNoNumberStopsTheProgram) {
    InstallMeter("a|1|||green|||\n");
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|x|\n");
    MenuEvent(u"Start...");
    MenuEvent(u"Ok");
    support::FailureOf([] { MenuEvent(u"Open"); });
}

} // namespace
} // namespace modQuorin
