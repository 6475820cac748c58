// SPDX-License-Identifier: MIT
// What is visible of a painted cell.
#pragma once

#include "src/view/platform/canvas.h"

#include <optional>
#include <vector>

namespace backends {

using namespace platform;

/// A text on a cell. Its box is in pixels of the grid; a text that was drawn on a line has no width and no height.
struct PaintedText {
    std::int32_t X = 0, Y = 0, Width = 0, Height = 0;
    AlignX Horizontal = AlignX::Start;
    AlignY Vertical = AlignY::Top;
    std::int32_t Colour = 0; ///< 0xBBGGRR
    Text Words;
    bool operator==(const PaintedText&) const = default;
};

/// What was drawn on a cell since it was last cleared. Colours are 0xBBGGRR.
struct CellPicture {
    std::int32_t Background = 0;
    std::optional<std::int32_t> Frame; ///< colour of its frame, if there is one
    std::vector<PaintedText> Texts;    ///< in the order of drawing
    bool operator==(const CellPicture&) const = default;
};

/// The canvas of one draw-cell event, which records what is drawn.
class RecordingCanvas final : public CellCanvas {
public:
    void SetForeColor(std::int32_t colour) override { Fore_ = colour; }
    void SetBackColor(std::int32_t colour) override { Back_ = colour; }
    void FrameRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override;
    void ClearCell() override;
    void DrawLine(std::int32_t x, std::int32_t y, const Text& text) override;
    void DrawBox(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, AlignX horizontal,
                 AlignY vertical, const Text& text) override;

    /// Returns the picture; nothing if nothing was drawn.
    const std::optional<CellPicture>& Picture() const { return Drawn_; }

private:
    CellPicture& Cell();

    std::int32_t Fore_ = 0;
    std::int32_t Back_ = 0xFFFFFF;
    std::optional<CellPicture> Drawn_;
};

} // namespace backends
