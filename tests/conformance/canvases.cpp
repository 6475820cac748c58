// SPDX-License-Identifier: MIT
// Runs the suite of a canvas on the picture of a cell, which every back-end paints, and on the recording canvas of the
// tests of src/view. The recorded calls are played on such a picture, so that an error in the recording is found.
#include "backends/grid/cell_picture.h"
#include "backends/headless/font_server.h"
#include "tests/conformance/canvas_suites.h"
#include "tests/unit/src/view/recording_canvas.h"

#include <algorithm>
#include <sstream>

namespace conformance {

namespace {

class PictureCell : public CellUnderTest {
public:
    void Paint(const std::function<void(CellCanvas& canvas)>& draw) override {
        backends::RecordingCanvas canvas;
        draw(canvas);
        Picture_ = canvas.Picture().value_or(backends::CellPicture{});
    }
    FontServer& Fonts() override { return Fonts_; }
    FontHandle Font() override { return Fonts_.GetFont(u"Tahoma", 9, 0); }

    std::int32_t Ground() override { return Picture_.Background; }
    std::optional<std::int32_t> Frame() override { return Picture_.Frame; }
    std::optional<Box> Ink(std::int32_t colour) override {
        std::optional<Box> ink;
        for (const backends::PaintedText& text : Picture_.Texts) {
            if (text.Colour == colour)
                ink = BoxOf(text); // no test draws two texts of one colour
        }
        return ink;
    }

private:
    Box BoxOf(const backends::PaintedText& text) {
        const bool isLine = text.Width == 0 && text.Height == 0;
        const TextSize size = isLine ? Fonts_.MeasureLine(Font(), text.Words, 0, 1000)
                                     : Fonts_.MeasureWrapped(Font(), text.Words, text.Width);
        const std::int32_t left = text.Horizontal == AlignX::Centre ? (text.Width - size.Width) / 2 : 0;
        const std::int32_t above = text.Height - size.Height;
        const std::int32_t top = text.Vertical == AlignY::Foot     ? above
                                 : text.Vertical == AlignY::Middle ? above / 2
                                                                   : 0;
        return {static_cast<float>(text.X + left), static_cast<float>(text.Y + top), static_cast<float>(size.Width),
                static_cast<float>(size.Height)};
    }

    backends::headless::HeadlessFonts Fonts_;
    backends::CellPicture Picture_;
};

/// Plays a recorded call, such as "line 1 2 words".
void Play(const std::string& call, CellCanvas& canvas) {
    std::istringstream words(call);
    std::string what;
    words >> what;
    const auto number = [&words] {
        std::int32_t value = 0;
        words >> value;
        return value;
    };
    const auto colour = [&words] {
        std::int32_t value = 0;
        words >> std::hex >> value;
        return value;
    };
    const auto rest = [&words] {
        words.get(); // the blank before it
        return modStringTools::FromBytes(std::string(std::istreambuf_iterator<char>(words), {}));
    };
    std::int32_t at[6] = {};
    const int count = what == "frame" ? 4 : what == "line" ? 2 : what == "box" ? 6 : 0;
    for (int i = 0; i < count; ++i)
        at[i] = number();
    if (what == "fore")
        canvas.SetForeColor(colour());
    else if (what == "back")
        canvas.SetBackColor(colour());
    else if (what == "clear")
        canvas.ClearCell();
    else if (what == "frame")
        canvas.FrameRect(at[0], at[1], at[2], at[3]);
    else if (what == "line")
        canvas.DrawLine(at[0], at[1], rest());
    else if (what == "box")
        canvas.DrawBox(at[0], at[1], at[2], at[3], AlignX{at[4]}, AlignY{at[5]}, rest());
    else
        ADD_FAILURE() << "no call: " << call;
}

class RecordedCell final : public PictureCell {
public:
    void Paint(const std::function<void(CellCanvas& canvas)>& draw) override {
        support::RecordingCanvas recording;
        draw(recording);
        PictureCell::Paint([&recording](CellCanvas& canvas) {
            for (const std::string& call : recording.Calls)
                Play(call, canvas);
        });
    }
};

template <class Canvas>
std::unique_ptr<CellUnderTest> MadeCanvas() {
    return std::make_unique<Canvas>();
}

const CanvasFactory Picture = {"cell picture", MadeCanvas<PictureCell>};
const CanvasFactory Recorded = {"recording canvas", MadeCanvas<RecordedCell>};

} // namespace

INSTANTIATE_TEST_SUITE_P(OnAPicture, CanvasSuite, testing::Values(Picture));
INSTANTIATE_TEST_SUITE_P(OnARecording, CanvasSuite, testing::Values(Recorded));

} // namespace conformance
