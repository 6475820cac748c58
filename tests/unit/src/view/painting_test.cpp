// SPDX-License-Identifier: MIT
#include "src/view/painting.h"

#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/inf_fields.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"
#include "tests/unit/src/view/recording_canvas.h"

namespace modPDAUI {
namespace {

using namespace modQuorin;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

/// A form whose colours differ from black and white, and from every colour that the program sets.
class Painting : public support::Program {
protected:
    Painting() { Device.Platform.record.colours = {0x112233, 0x445566}; }

    /// Returns the calls that the painting of a cell makes. Its box is 10, 20, 300, 17.
    std::vector<std::string> Paint(std::int32_t row, std::int32_t col = 0, bool selected = false) {
        support::RecordingCanvas canvas;
        DrawMainCell(canvas, {.Row = row,
                              .Col = col,
                              .X = 10,
                              .Y = 20,
                              .Width = 300,
                              .Height = Device.Main().RowHeight(row),
                              .Current = selected});
        return canvas.Calls;
    }
    std::vector<std::string> PaintTitle(std::int32_t col = 0, bool selected = false) {
        support::RecordingCanvas canvas;
        PaintTitleCell(canvas, {.Col = col, .X = 10, .Y = 20, .Width = 300, .Height = 17, .Current = selected});
        return canvas.Calls;
    }
    /// Shows a list of so many rows, "1" and on, each 17 pixels high.
    void ShowRows(std::int32_t count) {
        GotoScreen(ScrTextFile);
        std::vector<Text> texts;
        for (std::int32_t i = 1; i <= count; ++i)
            texts.push_back(modStringTools::NumberText(i));
        ShowList(texts);
    }
    /// Shows a record screen with one row a field.
    void ShowFields(const std::vector<InfField>& fields, std::int32_t rows) {
        GotoScreen(ScrInfRecord);
        Inf.InfFields = fields;
        Device.Main().SetRows(rows);
    }
    static InfField Field(bool visible, std::int32_t colour) {
        InfField field;
        field.Visible = visible;
        field.Display = colour;
        return field;
    }
};

TEST_F(Painting, OfTheStartScreenShowsNameAndVersion) {
    support::RecordingCanvas canvas;
    DrawMainCell(canvas, {.X = 1, .Y = 2, .Width = 638, .Height = 478, .Current = true});
    EXPECT_THAT(canvas.Calls,
                ElementsAre("clear", "box 1 2 638 478 2 2 Velmor \r\nTallybook", "box 1 2 638 478 2 1 V 0.27"));
}

TEST(VersionLineText, HasAtLeastTwoDigitsBehindThePoint) {
    EXPECT_EQ(VersionLine(1, 3), u"V 1.03");
    EXPECT_EQ(VersionLine(0, 27), u"V 0.27");
    EXPECT_EQ(VersionLine(2, 0), u"V 2.00");
    EXPECT_EQ(VersionLine(1, 100), u"V 1.100");
}

TEST_F(Painting, OfAListCellTakesTheFormsColours) {
    ShowRows(2);
    EXPECT_THAT(Paint(1),
                ElementsAre("back 112233", "fore 445566", "back 112233", "clear", "fore 445566", "line 11 21 2"));
}

TEST_F(Painting, OfTheCurrentCellIsGreyWithAGreenFrame) {
    ShowRows(2);
    EXPECT_THAT(Paint(1, 0, true),
                ElementsAre("back 112233", "fore 445566", "back 112233", "clear", "back D0D0D0", "clear", "fore 00FF00",
                            "frame 10 20 300 17", "fore 000000", "line 11 21 2"));
}

TEST_F(Painting, GivesTheFormsColoursBackWhenNoneWereGiven) {
    ShowRows(1);
    support::RecordingCanvas canvas;
    std::int32_t back = 0;
    std::int32_t fore = 0;
    PaintListCell(canvas, {}, back, fore);
    EXPECT_EQ(back, 0x112233);
    EXPECT_EQ(fore, 0x445566);
}

TEST_F(Painting, TakesColoursOfWhichOneIsGiven) {
    ShowRows(1);
    support::RecordingCanvas canvas;
    std::int32_t back = 0;
    std::int32_t fore = 0x0000FF;
    PaintListCell(canvas, {}, back, fore);
    EXPECT_EQ(back, 0);
    EXPECT_EQ(canvas.Calls.front(), "back 000000");
}

TEST_F(Painting, OfALockedGridDoesNothingAtAll) {
    ShowRows(1);
    Grids.GridLocked = true;
    Device.Main().SetColWidth(0, 5);
    EXPECT_THAT(Paint(0), IsEmpty());
    EXPECT_EQ(Device.Main().ColWidth(0), 5);
}

TEST_F(Painting, OfAnUnknownStyleLeavesTheCell) {
    ShowRows(1);
    ScreenRow(ScrTextFile).DrawStyle = CellDrawing{3};
    EXPECT_THAT(Paint(0), IsEmpty());
}

TEST_F(Painting, MakesARowFourPixelsHigherThanItsWrappedText) {
    ShowRows(2);
    const Text words(u"aaaa bbbb");
    Device.Main().SetCell(1, 0, words);
    Device.Main().SetColWidth(0, 30);                             // five characters of 6 pixels: two lines of 15
    EXPECT_EQ(Paint(1).back(), "box 11 21 638 34 0 0 aaaa bbbb"); // the column has its width again
    EXPECT_EQ(Device.Main().RowHeight(1), 34);
}

TEST_F(Painting, KeepsARowTallThatNoLongerWrapsUntilARebuild) {
    ShowRows(1);
    Device.Main().SetCell(0, 0, Text(200, u'x'));
    Paint(0);
    EXPECT_EQ(Device.Main().RowHeight(0), 34);
    Device.Main().SetCell(0, 0, u"x");
    EXPECT_EQ(Paint(0).back(), "line 11 21 x");
    EXPECT_EQ(Device.Main().RowHeight(0), 34);
    GotoScreen(ScrTextFile);
    EXPECT_EQ(Device.Main().RowHeight(0), 17);
}

TEST_F(Painting, MakesATallRowLowerWhoseTextWrapsToFewerLines) {
    ShowRows(1);
    Device.Main().SetCell(0, 0, Text(300, u'x'));
    Paint(0);
    EXPECT_EQ(Device.Main().RowHeight(0), 49);
    Device.Main().SetCell(0, 0, Text(200, u'x'));
    Paint(0);
    EXPECT_EQ(Device.Main().RowHeight(0), 34);
}

struct ScrollBarRow {
    const char* Name;
    std::int32_t Type;
    std::int32_t Rows;
    std::int32_t FirstColumn; ///< on a screen of 240 by 320
};

/// Lists that fill their page of 304 pixels, and lists that don't.
class FirstColumn : public testing::TestWithParam<ScrollBarRow> {};

TEST_P(FirstColumn, MakesRoomForAScrollBarOnceARowFallsOffThePage) {
    support::TestDevice device(support::OfType(GetParam().Type));
    device.Platform.StartProgram();
    GotoScreen(ScrTextFile);
    ShowList(std::vector<Text>(static_cast<std::size_t>(GetParam().Rows), u"x"));
    support::RecordingCanvas canvas;
    DrawMainCell(canvas, {.Width = 238, .Height = 17});
    EXPECT_EQ(device.Main().ColWidth(0), GetParam().FirstColumn);
}

INSTANTIATE_TEST_SUITE_P(Lists, FirstColumn,
                         testing::Values(ScrollBarRow{"OneRow", 7, 1, 238}, ScrollBarRow{"AllFit", 7, 17, 238},
                                         ScrollBarRow{"OneTooMany", 7, 18, 225},
                                         ScrollBarRow{"OneTooManyWhereTheBarTakesNoRoom", 9, 18, 238}),
                         [](const auto& each) { return each.param.Name; });

TEST_F(Painting, MakesRoomForAScrollBarWhenThePageHasMovedOn) {
    ShowRows(4);
    Device.Main().SetTopRow(1);
    Paint(3);
    EXPECT_EQ(Device.Main().ColWidth(0), 625);
}

TEST_F(Painting, GivesColumnZeroItsWidthWhateverColumnIsPainted) {
    GotoScreen(ScrDriverProperties);
    Device.Main().SetColWidth(0, 5);
    Paint(0, 1);
    EXPECT_EQ(Device.Main().ColWidth(0), 319);
}

TEST_F(Painting, OfARecordTakesTheColourOfTheField) {
    ShowFields({Field(true, 0x00FFFF)}, 1);
    const auto calls = Paint(0);
    EXPECT_EQ(calls[0], "back 00FFFF");
    EXPECT_EQ(calls[1], "fore 000000");
}

TEST_F(Painting, OfARowBeyondTheFieldsIsWhite) {
    ShowFields({Field(true, 0x00FFFF)}, 2);
    EXPECT_EQ(Paint(1).front(), "back FFFFFF");
}

TEST_F(Painting, OfABlackFieldTakesTheFormsColours) {
    ShowFields({Field(true, 0)}, 1);
    EXPECT_EQ(Paint(0).front(), "back 112233");
}

TEST_F(Painting, WithoutColourTakesTheFormsColoursYetHidesFields) {
    ShowFields({Field(true, 0x00FFFF), Field(false, 0x00FFFF)}, 3);
    Display.ColourOn = false;
    EXPECT_EQ(Paint(0).front(), "back 112233");
    EXPECT_EQ(Paint(2).front(), "back 112233");
    EXPECT_THAT(Paint(1), IsEmpty());
    EXPECT_EQ(Device.Main().RowHeight(1), 0);
}

TEST_F(Painting, CollapsesTheRowOfAHiddenField) {
    ShowFields({Field(true, platform::White), Field(false, platform::White)}, 2);
    EXPECT_THAT(Paint(1), IsEmpty());
    EXPECT_EQ(Device.Main().RowHeight(1), 0);
}

TEST_F(Painting, OfOtherRecordsKnowsNoFields) {
    GotoScreen(ScrDriverProperties);
    Inf.InfFields = {Field(false, 0x00FFFF)};
    EXPECT_EQ(Paint(0).front(), "back 112233");
    EXPECT_EQ(Device.Main().RowHeight(0), 17);
}

TEST_F(Painting, SelectedRecordRowIsGreyWhateverItsColour) {
    ShowFields({Field(true, 0x00FFFF)}, 1);
    const auto calls = Paint(0, 0, true);
    EXPECT_EQ(calls[4], "back D0D0D0");
    EXPECT_EQ(calls[8], "fore 000000");
}

TEST_F(Painting, OfATitleIsWhiteOnBlueAlsoWhereItIsCurrent) {
    GotoScreen(ScrTextFile);
    EXPECT_THAT(PaintTitle(), ElementsAre("back FF0000", "fore FFFFFF", "clear", "line 11 21 View Text File"));
    EXPECT_EQ(PaintTitle(0, true), PaintTitle());
}

TEST_F(Painting, OfALongTitleWrapsInARowThatDoesNotGrow) {
    GotoScreen(ScrTextFile);
    const Text title(200, u'x');
    Device.Title().SetCell(0, 0, title);
    EXPECT_EQ(PaintTitle().back(), "box 11 21 640 17 0 0 " + modStringTools::ToBytes(title));
    EXPECT_EQ(Device.Title().RowHeight(0), 17);
}

TEST_F(Painting, GivesASingleTitleColumnTheWholeWidth) {
    ShowRows(100);
    Device.Title().SetColWidth(0, 5);
    PaintTitle();
    EXPECT_EQ(Device.Title().ColWidth(0), 640);
}

TEST_F(Painting, FitsTwoTitleColumnsToTheGrids) {
    GotoScreen(ScrDriverProperties);
    Device.Title().SetColWidth(1, 77);
    PaintTitle();
    EXPECT_EQ(Device.Title().ColWidth(0), 319);
    EXPECT_EQ(Device.Title().ColWidth(1), 77);
    Device.Main().SetRows(100);
    PaintTitle();
    EXPECT_EQ(Device.Title().ColWidth(0), 306);
    EXPECT_EQ(Device.Title().ColWidth(1), 334);
}

/// Painted by the grid itself, as on a device.
class PaintedRecord : public support::Program {};

TEST_F(PaintedRecord, KeepsAHiddenFieldHiddenWhoseTextIsLong) {
    InstallMeter("a|1||||||\nb|0||||||\n");
    OpenDownload("a|b\n1|" + std::string(400, 'x') + "\n");
    Repaint();
    EXPECT_EQ(Device.Main().RowHeight(1), 0);
    Repaint();
    Device.Main().SetRow(1);
    EXPECT_EQ(Device.Main().RowHeight(1), 0);
    EXPECT_EQ(Device.Main().Row(), 0);
}

TEST_F(PaintedRecord, GrowsARowWhoseValueIsLong) {
    InstallMeter("a|1||||||\n");
    OpenDownload("a\n" + std::string(60, 'x') + "\n");
    Repaint();
    EXPECT_EQ(Device.Main().RowHeight(0), 34); // 319 pixels hold 53 characters
}

} // namespace
} // namespace modPDAUI
