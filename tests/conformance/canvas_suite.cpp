// SPDX-License-Identifier: MIT
#include "tests/conformance/canvas_suites.h"

namespace conformance {

namespace {

constexpr float NearBy = 3; // pixels: the space at the edge of a letter

} // namespace

TEST_P(CanvasSuite, ShowsTheGroundThatItWasClearedWith) {
    Cell->Paint([](CellCanvas& canvas) {
        canvas.SetBackColor(Grey);
        canvas.ClearCell();
        canvas.SetBackColor(Red);
    });
    EXPECT_EQ(Cell->Ground(), Grey);
    EXPECT_FALSE(Cell->Frame());
    EXPECT_FALSE(Cell->Ink(Red));
}

TEST_P(CanvasSuite, ShowsNothingOfWhatWasDrawnBeforeItWasCleared) {
    Cell->Paint([](CellCanvas& canvas) {
        canvas.SetBackColor(Green);
        canvas.ClearCell();
        canvas.SetForeColor(Red);
        canvas.FrameRect(0, 0, CellUnderTest::Width, CellUnderTest::Height);
        canvas.DrawLine(10, 10, u"gone");
        canvas.DrawBox(10, 40, 200, 60, AlignX::Start, AlignY::Top, u"gone too");
        canvas.SetBackColor(White);
        canvas.ClearCell();
    });
    EXPECT_EQ(Cell->Ground(), White);
    EXPECT_FALSE(Cell->Frame());
    EXPECT_FALSE(Cell->Ink(Red));
}

TEST_P(CanvasSuite, ShowsAFrameInTheColourOfThatMoment) {
    Cell->Paint([](CellCanvas& canvas) {
        canvas.SetBackColor(White);
        canvas.ClearCell();
        canvas.SetForeColor(Green);
        canvas.FrameRect(0, 0, CellUnderTest::Width, CellUnderTest::Height);
        canvas.SetForeColor(Red);
    });
    EXPECT_EQ(Cell->Frame(), Green);
    EXPECT_EQ(Cell->Ground(), White);
}

TEST_P(CanvasSuite, ShowsEachTextInTheColourOfItsMoment) {
    Cell->Paint([](CellCanvas& canvas) {
        canvas.SetBackColor(White);
        canvas.ClearCell();
        canvas.SetForeColor(Red);
        canvas.DrawLine(10, 5, u"EHE");
        canvas.SetForeColor(Blue);
        canvas.DrawBox(10, 60, 200, 50, AlignX::Start, AlignY::Top, u"HEH");
    });
    const auto red = Cell->Ink(Red);
    const auto blue = Cell->Ink(Blue);
    ASSERT_TRUE(red && blue);
    EXPECT_LE(red->Top + red->Height, 60);
    EXPECT_GE(blue->Top, 60);
    EXPECT_FALSE(Cell->Ink(Green));
}

TEST_P(CanvasSuite, DrawsALineWhereItIsMeasured) {
    const Text text = u"EHE nemo";
    const TextSize size = Cell->Fonts().MeasureLine(Cell->Font(), text, 0, 100);
    const Box ink = InkOf([&](CellCanvas& canvas) { canvas.DrawLine(30, 20, text); });
    EXPECT_GE(ink.Left, 30);
    EXPECT_LE(ink.Left, 30 + NearBy);
    EXPECT_NEAR(ink.Left + ink.Width, 30 + size.Width, NearBy);
    EXPECT_GE(ink.Top, 20);
    EXPECT_LE(ink.Top + ink.Height, 20 + size.Height);
}

TEST_P(CanvasSuite, DrawsNoLineEndOnALine) {
    const Box whole = InkOf([](CellCanvas& canvas) { canvas.DrawLine(10, 10, u"EHEH"); });
    const Box parted = InkOf([](CellCanvas& canvas) { canvas.DrawLine(10, 10, u"EH\r\nEH"); });
    EXPECT_NEAR(parted.Width, whole.Width, NearBy);
    EXPECT_EQ(parted.Height, whole.Height);
}

TEST_P(CanvasSuite, DrawsATextAtTheStartOrInTheMiddleOfItsBox) {
    const Box start = InkOfBox(AlignX::Start, AlignY::Top, u"EHE");
    EXPECT_GE(start.Left, 20);
    EXPECT_LE(start.Left, 20 + NearBy);
    EXPECT_GE(start.Top, 10);
    const Box centre = InkOfBox(AlignX::Centre, AlignY::Middle, u"EHE");
    EXPECT_NEAR(centre.Left + centre.Width / 2, 20 + 200 / 2, NearBy);
    EXPECT_NEAR(centre.Top + centre.Height / 2, 10 + 100 / 2, 2 * NearBy);
}

TEST_P(CanvasSuite, DrawsATextFromTheTopToTheFootOfItsBox) {
    const Box top = InkOfBox(AlignX::Centre, AlignY::Top, u"EHE");
    const Box middle = InkOfBox(AlignX::Centre, AlignY::Middle, u"EHE");
    const Box foot = InkOfBox(AlignX::Centre, AlignY::Foot, u"EHE");
    EXPECT_LT(top.Top + top.Height, middle.Top);
    EXPECT_LT(middle.Top + middle.Height, foot.Top);
    EXPECT_LE(foot.Top + foot.Height, 10 + 100);
}

TEST_P(CanvasSuite, WrapsATextInItsBoxAsItIsMeasured) {
    const Text text = u"EHE nemo EHE nemo EHE nemo";
    for (const std::int32_t width : {90, 150, 230}) {
        const TextSize size = Cell->Fonts().MeasureWrapped(Cell->Font(), text, width);
        const Box ink =
            InkOf([&](CellCanvas& canvas) { canvas.DrawBox(5, 0, width, 120, AlignX::Start, AlignY::Top, text); });
        const std::int32_t line = Cell->Fonts().FontHeight(Cell->Font());
        EXPECT_LE(ink.Left + ink.Width, static_cast<float>(5 + size.Width) + NearBy) << width;
        EXPECT_LE(ink.Top + ink.Height, size.Height) << width;
        EXPECT_GT(ink.Top + ink.Height, size.Height - line) << width << ": in its last line is something";
    }
}

} // namespace conformance
