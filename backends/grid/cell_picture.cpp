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
    Cell() = {Back_, std::nullopt, {}};
}

void RecordingCanvas::DrawLine(std::int32_t x, std::int32_t y, const Text& text) {
    Cell().Texts.push_back({x, y, 0, 0, AlignX::Start, AlignY::Top, Fore_, text});
}

void RecordingCanvas::DrawBox(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                              AlignX horizontal, AlignY vertical, const Text& text) {
    Cell().Texts.push_back({x, y, width, height, horizontal, vertical, Fore_, text});
}

} // namespace backends
