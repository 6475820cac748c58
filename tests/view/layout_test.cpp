// SPDX-License-Identifier: MIT
#include "view/layout.h"

#include "tests/support/program.h"
#include "view/display_state.h"
#include "view/grids.h"
#include "view/input_fields.h"
#include "view/prompt.h"

#include <limits>
#include <ostream>

namespace platform {
/// For the messages of failed tests.
void PrintTo(const Box& box, std::ostream* out) {
    *out << box.Left << ", " << box.Top << ", " << box.Width << ", " << box.Height;
}
} // namespace platform

namespace modPDAUI {
namespace {

using namespace modQuorin;
using platform::Box;

constexpr float Twips = 15; // of the test device, a pixel

Box InTwips(const Box& pixels) {
    return {pixels.Left * Twips, pixels.Top * Twips, pixels.Width * Twips, pixels.Height * Twips};
}

/// A device of 240 by 320 pixels, whose grids tell nobody that they want to be painted.
class Layout : public support::Program {
protected:
    explicit Layout(const platform::device::DeviceOptions& options = support::OfType(7)) : Program(options) {
        Device.Platform.grdMain.DrawCell = nullptr;
        Device.Platform.grdTitle.DrawCell = nullptr;
    }
    void Keyboard(bool shown, std::int32_t top, std::int32_t height) {
        frmQuorin::mykb_statechanged(shown ? -1 : 0, 0, top, 240, height);
    }
    Box FormBox() { return Device.Platform.form.Bounds(); }
    std::vector<std::int32_t> Widths(platform::OwnerDrawGrid& grid) {
        std::vector<std::int32_t> widths;
        for (std::int32_t col = 0; col < grid.Cols(); ++col)
            widths.push_back(grid.ColWidth(col));
        return widths;
    }
    void ShowRows(std::int32_t count) {
        GotoScreen(ScrTextFile);
        ShowList(std::vector<Text>(static_cast<std::size_t>(count), u"x"));
    }
};

TEST_F(Layout, FormFillsTheWorkingArea) {
    EXPECT_EQ(FormBox(), InTwips({0, 0, 240, 320}));
}

TEST_F(Layout, KeyboardAtTheFootMakesTheFormLower) {
    Keyboard(true, 240, 80);
    EXPECT_EQ(FormBox(), InTwips({0, 0, 240, 240}));
    EXPECT_EQ(Device.Main().Bounds(), (Box{0, 0, 240, 240}));
}

TEST_F(Layout, KeyboardAtTheHeadMovesTheFormDown) {
    Keyboard(true, 0, 80);
    EXPECT_EQ(FormBox(), InTwips({0, 80, 240, 240}));
}

TEST_F(Layout, FormGrowsBackWhenTheKeyboardGoes) {
    Keyboard(true, 0, 80);
    Keyboard(false, 0, 80);
    EXPECT_EQ(FormBox(), InTwips({0, 0, 240, 320}));
}

TEST_F(Layout, AKeyboardBeyondAllNumbersOfPixelsLeavesACellThatHasAHeight) {
    constexpr auto Least = std::numeric_limits<std::int32_t>::min();
    Keyboard(true, 240, Least);
    EXPECT_GT(Device.Main().RowHeight(0), 320);
    Keyboard(false, 0, 0);
    EXPECT_EQ(Device.Main().RowHeight(0), 320 - 2);
}

TEST_F(Layout, KeyboardEventIsKept) {
    frmQuorin::mykb_statechanged(-1, 1, 2, 3, 4);
    const KeyboardState& kept = Display.KeyboardRect;
    EXPECT_EQ(kept.State, -1);
    EXPECT_EQ((std::vector{kept.Left, kept.Top, kept.Width, kept.Height}), (std::vector{1, 2, 3, 4}));
}

class DesktopLayout : public Layout {
protected:
    DesktopLayout() : Layout(support::OfType(0)) {}
};

TEST_F(DesktopLayout, FormHasItsOwnSizeAndKeepsItsPlace) {
    EXPECT_EQ(FormBox(), InTwips({0, 0, 640, 480}));
    Device.Platform.form.SetBounds(InTwips({30, 40, 100, 100}));
    LayoutForm(true);
    EXPECT_EQ(FormBox(), InTwips({30, 40, 640, 480}));
}

struct ScreenShape {
    const char* Name;
    const ScreenId* Screen;
    Box Title; ///< all 0 where there is none
    std::vector<std::int32_t> TitleWidths;
    Box Main;
    std::vector<std::int32_t> MainWidths;
    std::int32_t RowHeight;
};

class ShapeOf : public Layout, public testing::WithParamInterface<ScreenShape> {};

TEST_P(ShapeOf, FollowsFromItsRowOfTheTable) {
    const ScreenShape& expected = GetParam();
    Screens.CurrentScreen = *expected.Screen;
    LayoutScreen(true);
    EXPECT_EQ(Device.Title().Visible(), expected.Title.Width > 0);
    if (Device.Title().Visible()) {
        EXPECT_EQ(Device.Title().Bounds(), expected.Title);
        EXPECT_EQ(Widths(Device.Title()), expected.TitleWidths);
    }
    EXPECT_TRUE(Device.Main().Visible());
    EXPECT_EQ(Device.Main().Bounds(), expected.Main);
    EXPECT_EQ(Widths(Device.Main()), expected.MainWidths);
    EXPECT_EQ(Device.Main().RowHeight(0), expected.RowHeight);
    EXPECT_EQ(Device.Main().Rows(), 1);
    EXPECT_EQ(Device.Main().Row(), 0);
}

// Lines are 15 pixels high, so that rows are 17; the columns share 238 pixels.
INSTANTIATE_TEST_SUITE_P(
    Screen, ShapeOf,
    testing::Values(
        ScreenShape{"ScrMain", &ScrMain, {}, {}, {0, 0, 240, 320}, {238}, 318},
        ScreenShape{"ScrList", &ScrList, {0, 0, 240, 17}, {238}, {0, 16, 240, 304}, {238}, 17},
        ScreenShape{"ScrFileSelect", &ScrFileSelect, {0, 0, 240, 34}, {238}, {0, 33, 240, 287}, {238}, 17},
        ScreenShape{"ScrInfRecord", &ScrInfRecord, {0, 0, 240, 17}, {119, 119}, {0, 16, 240, 304}, {119, 119}, 17},
        ScreenShape{"ScrDownload", &ScrDownload, {0, 0, 240, 34}, {119, 119}, {0, 33, 240, 287}, {119, 119}, 17},
        ScreenShape{"ScrColumns", &ScrColumns, {0, 0, 240, 17}, {190}, {0, 16, 240, 304}, {190, 48}, 17}),
    [](const auto& each) { return each.param.Name; });

TEST_F(Layout, KeepsTheComputedWidthInTheTable) {
    GotoScreen(ScrColumns);
    EXPECT_EQ(ScreenRow(ScrColumns).ColumnPixels, 190);
    GotoScreen(ScrList);
    EXPECT_EQ(ScreenRow(ScrList).ColumnPixels, 238);
}

struct HalfWidth {
    std::int32_t GridWidth;
    std::int32_t ColumnPixels; ///< of a column of 50 percent; half a pixel goes to the even number
};

class ColumnOfAnOddGrid : public Layout, public testing::WithParamInterface<HalfWidth> {};

TEST_P(ColumnOfAnOddGrid, IsRoundedToTheEvenNumber) {
    Screens.CurrentScreen = ScrInfRecord;
    Device.Main().SetBounds({0, 0, static_cast<float>(GetParam().GridWidth), 100});
    LayoutScreen(false);
    EXPECT_EQ(ScreenRow(ScrInfRecord).ColumnPixels, GetParam().ColumnPixels);
}

INSTANTIATE_TEST_SUITE_P(Widths, ColumnOfAnOddGrid,
                         testing::Values(HalfWidth{239, 118}, HalfWidth{241, 120}, HalfWidth{321, 160},
                                         HalfWidth{401, 200}, HalfWidth{403, 200}, HalfWidth{477, 238},
                                         HalfWidth{479, 238}, HalfWidth{481, 240}, HalfWidth{177, 88},
                                         HalfWidth{201, 100}, HalfWidth{131, 64}, HalfWidth{133, 66}));

TEST_F(Layout, ScreenWithoutRowsHidesTheGrid) {
    for (std::int32_t ScreenDef::*count : {&ScreenDef::GridRows, &ScreenDef::GridCols}) {
        GotoScreen(ScrList);
        ScreenRow(ScrTextFile).*count = 0;
        Screens.CurrentScreen = ScrTextFile;
        LayoutScreen(true);
        EXPECT_FALSE(Device.Main().Visible());
        ScreenRow(ScrTextFile).*count = 1;
    }
}

TEST_F(Layout, TitleNeedsRowsAndColumns) {
    ScreenRow(ScrTextFile).TitleCols = 0;
    GotoScreen(ScrTextFile);
    EXPECT_FALSE(Device.Title().Visible());
    EXPECT_EQ(Device.Main().Bounds(), (Box{0, 0, 240, 320}));
}

class FineLayout : public Layout {
protected:
    static platform::device::DeviceOptions FinePalm() {
        platform::device::DeviceOptions options = support::OfType(1);
        options.Screen = {320, 320};
        return options;
    }
    FineLayout() : Layout(FinePalm()) {}
};

TEST_F(FineLayout, HasMarginsTwiceAsWide) {
    EXPECT_EQ(Device.Main().ColWidth(0), 316);
    EXPECT_EQ(Device.Main().RowHeight(0), 316);
    GotoScreen(ScrInfRecord);
    EXPECT_EQ(Widths(Device.Main()), (std::vector{158, 158}));
    EXPECT_EQ(Device.Main().Bounds(), (Box{0, 15, 320, 305}));
}

class Relayout : public Layout {
protected:
    void Again() { Keyboard(true, 240, 80); }
};

TEST_F(Relayout, PutsSelectionAndPageBack) {
    ShowRows(60);
    Device.Main().SetRow(40);
    Device.Main().SetTopRow(35);
    Again();
    EXPECT_EQ(Device.Main().Row(), 40);
    EXPECT_EQ(Device.Main().TopRow(), 35);
}

TEST_F(Relayout, KeepsTextsAndHeightsThatANewShowingResets) {
    ShowRows(3);
    Device.Main().SetRowHeight(1, 64);
    Device.Title().SetRowHeight(0, 30);
    Again();
    EXPECT_EQ(Device.Main().RowHeight(1), 64);
    EXPECT_EQ(Device.Title().Bounds(), (Box{0, 0, 240, 30}));
    EXPECT_EQ(Device.Main().Bounds().Top, 29);
    EXPECT_EQ(Cell(2), u"x");
    GotoScreen(ScrTextFile);
    Device.Main().SetRows(3);
    for (const std::int32_t row : {0, 1, 2})
        EXPECT_EQ(Device.Main().RowHeight(row), 17);
    EXPECT_EQ(Cell(2), u"");
}

TEST_F(Relayout, GivesTheGridTheFocusUnlessAFieldIsOpen) {
    ShowRows(3);
    Device.Platform.focus.TakeFrom(Device.Platform.grdMain);
    Again();
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
    BeginCellEdit(0, 0);
    Again();
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.txtInputField);
}

TEST_F(Relayout, LaysTheOpenFieldOverItsRowAtTheHeadOfThePage) {
    GotoScreen(ScrDriverProperties);
    Device.Main().SetRows(60);
    Device.Platform.grdMain.SetCurrentCell(50, 1);
    BeginCellEdit(50, 1);
    Again();
    EXPECT_EQ(Device.Main().TopRow(), 50);
    const Box field = Device.Platform.txtInputField.Bounds();
    EXPECT_EQ(field.Left, 119);
    EXPECT_EQ(field.Width, 119);
    EXPECT_EQ(field.Top, Device.Main().Bounds().Top);
}

TEST_F(Relayout, LaysTheComboFieldLikewise) {
    GotoScreen(ScrDriverProperties);
    Device.Main().SetRows(5);
    Device.Main().SetRow(3);
    Input.EditRow = 1;
    Device.Platform.cboInputField.SetVisible(true);
    Again();
    EXPECT_EQ(Device.Main().TopRow(), 1);
    EXPECT_EQ(Device.Platform.cboInputField.Bounds().Left, 119);
    EXPECT_EQ(Device.Platform.cboInputField.Bounds().Top, 16 + 2 * 17); // two rows under the head of the page
}

TEST_F(Relayout, PutsTheFileNameUnderTheGrid) {
    GotoScreen(ScrFileSelect);
    Device.Platform.txtInputField.SetBounds({1, 2, 3, 20});
    Device.Platform.txtInputField.SetVisible(true);
    Again();
    EXPECT_EQ(Device.Main().Bounds(), (Box{0, 33, 240, 187}));
    EXPECT_EQ(Device.Platform.txtInputField.Bounds(), (Box{0, 220, 240, 20}));
}

TEST_F(Relayout, LeavesAHiddenFileNameAlone) {
    GotoScreen(ScrFileSelect);
    Again();
    EXPECT_EQ(Device.Main().Bounds(), (Box{0, 33, 240, 207}));
}

class RelayoutOfAPrompt : public Relayout {
protected:
    void Ask(std::int32_t kind) {
        Text value = u"a";
        InputPrompt(u"Title", kind, value, u"a,b", false, false);
        Again();
    }
};

TEST_F(RelayoutOfAPrompt, KeepsTheHeightOfOneLine) {
    Ask(PromptLine);
    EXPECT_EQ(Device.Platform.txtInputField.Bounds(), (Box{0, 16, 240, 19}));
}

TEST_F(RelayoutOfAPrompt, FitsALongTextToTheGrid) {
    Ask(PromptText);
    EXPECT_EQ(Device.Platform.txtInputField.Bounds(), (Box{0, 16, 240, 224}));
}

TEST_F(RelayoutOfAPrompt, FitsTheComboFieldToTheWidth) {
    Ask(PromptList);
    const Box box = Device.Platform.cboInputField.Bounds();
    EXPECT_EQ(Box({box.Left, box.Top, box.Width, 0}), (Box{0, 16, 240, 0}));
}

class LayoutOfTypeNine : public Layout {
protected:
    LayoutOfTypeNine() : Layout(support::OfType(9)) {}
};

TEST_F(LayoutOfTypeNine, TakesTheTextBoxForTheComboField) {
    GotoScreen(ScrInput);
    for (platform::Control* field : {static_cast<platform::Control*>(&Device.Platform.cboInputField),
                                     static_cast<platform::Control*>(&Device.Platform.cbotxtInputField)}) {
        field->SetBounds({1, 2, 3, 4});
        field->SetVisible(true);
    }
    Keyboard(true, 240, 80);
    EXPECT_EQ(Device.Platform.cbotxtInputField.Bounds(), (Box{0, 16, 240, 4}));
    EXPECT_EQ(Device.Platform.cboInputField.Bounds(), (Box{1, 2, 3, 4}));
}

} // namespace
} // namespace modPDAUI
