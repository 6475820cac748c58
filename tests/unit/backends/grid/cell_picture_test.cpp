// SPDX-License-Identifier: MIT
#include "backends/grid/cell_picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace backends {
namespace {

using testing::ElementsAre;

constexpr std::int32_t Red = 0x0000FF;
constexpr std::int32_t Green = 0x00FF00;
constexpr std::int32_t Grey = 0xD0D0D0;

class PictureOfACell : public testing::Test {
protected:
    CellPicture Seen() { return Canvas.Picture().value_or(CellPicture{}); }
    RecordingCanvas Canvas;
};

TEST_F(PictureOfACell, IsNoneWhenItsPainterLeftItAlone) {
    Canvas.SetBackColor(Red);
    Canvas.SetForeColor(Green);
    EXPECT_FALSE(Canvas.Picture());
}

TEST_F(PictureOfACell, HasTheGroundThatItWasClearedWith) {
    Canvas.SetBackColor(Red);
    Canvas.ClearCell();
    Canvas.SetBackColor(Green);
    EXPECT_EQ(Seen(), (CellPicture{Red, std::nullopt, {}}));
}

TEST_F(PictureOfACell, IsWhiteWhenNoColourWasSet) {
    Canvas.ClearCell();
    EXPECT_EQ(Seen().Background, 0xFFFFFF);
}

TEST_F(PictureOfACell, KeepsNothingOfWhatWasDrawnBeforeItWasCleared) {
    Canvas.SetBackColor(Red);
    Canvas.ClearCell();
    Canvas.FrameRect(0, 0, 10, 10);
    Canvas.DrawLine(1, 1, u"gone");
    Canvas.DrawBox(1, 1, 9, 9, AlignX::Start, AlignY::Top, u"gone too");
    Canvas.SetBackColor(Grey);
    Canvas.ClearCell();
    EXPECT_EQ(Seen(), (CellPicture{Grey, std::nullopt, {}}));
}

TEST_F(PictureOfACell, HasAFrameOfTheTextColourOfThatMoment) {
    Canvas.ClearCell();
    Canvas.SetForeColor(Green);
    Canvas.FrameRect(3, 4, 100, 20);
    Canvas.SetForeColor(Red);
    EXPECT_EQ(Seen().Frame, Green);
}

TEST_F(PictureOfACell, KeepsTextsInTheOrderOfDrawingWithTheirColours) {
    Canvas.ClearCell();
    Canvas.SetForeColor(Green);
    Canvas.DrawLine(1, 2, u"line");
    Canvas.SetForeColor(Red);
    Canvas.DrawBox(3, 4, 50, 60, AlignX::Centre, AlignY::Foot, u"box");
    EXPECT_THAT(Seen().Texts, ElementsAre(PaintedText{1, 2, 0, 0, AlignX::Start, AlignY::Top, Green, u"line"},
                                          PaintedText{3, 4, 50, 60, AlignX::Centre, AlignY::Foot, Red, u"box"}));
}

TEST_F(PictureOfACell, IsThereAlsoWhenItWasDrawnOnWithoutBeingCleared) {
    Canvas.DrawLine(1, 2, u"line");
    EXPECT_EQ(Seen().Texts.size(), 1U);
}

} // namespace
} // namespace backends
