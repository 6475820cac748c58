// SPDX-License-Identifier: MIT
#include "backends/loop/form_events.h"
#include "tests/support/printed_rows.h"
#include "tests/unit/src/view/layout_fixture.h"

#include <limits>

namespace modPDAUI {
namespace {

using support::PrintTo;

constexpr float Twips = 15; // of the test device, a pixel

Box InTwips(const Box& pixels) {
    return {pixels.Left * Twips, pixels.Top * Twips, pixels.Width * Twips, pixels.Height * Twips};
}

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

TEST_F(Layout, AKeyboardAsTallAsTheScreenIsTakenAsNone) {
    const Box whole = FormBox();
    for (const std::int32_t height : {320, 1000}) {
        backends::RaiseKeyboard(Device.Platform.system, {.State = -1, .Width = 240, .Height = height});
        EXPECT_EQ(FormBox(), whole) << height;
    }
    backends::RaiseKeyboard(Device.Platform.system, {.State = -1, .Top = 120, .Width = 240, .Height = 200});
    EXPECT_EQ(FormBox(), InTwips({0, 0, 240, 120}));
}

TEST_F(Layout, AKeyboardOfAnySizeLeavesACellThatHasAHeight) {
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
    std::int32_t ColumnPixels; ///< of a column of 50 percent; half a pixel is rounded to the even number
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
    static backends::DeviceOptions FinePalm() {
        backends::DeviceOptions options = support::OfType(1);
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
