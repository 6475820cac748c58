// SPDX-License-Identifier: MIT
#include "backends/grid/cell_picture.h"

namespace backends {

CellPicture& RecordingCanvas::Cell() {
    if (!Drawn_)
        Drawn_.emplace();
    return *Drawn_;
}

void RecordingCanvas::FrameRect(std::int32_t, std::int32_t, std::int32_t, std::int32_t) {
    Cell().Frame = Fore_;
}

void RecordingCanvas::ClearCell() {
    Cell() = CellPicture();
    Cell().Background = Back_;
}

void RecordingCanvas::DrawLine(std::int32_t x, std::int32_t y, const Text& text) {
    Cell().Texts.push_back({.X = x, .Y = y, .Colour = Fore_, .Words = text});
}

void RecordingCanvas::DrawBox(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                              AlignX horizontal, AlignY vertical, const Text& text) {
    Cell().Texts.push_back({.X = x,
                            .Y = y,
                            .Width = width,
                            .Height = height,
                            .Horizontal = horizontal,
                            .Vertical = vertical,
                            .Colour = Fore_,
                            .Words = text});
}

} // namespace backends
