// SPDX-License-Identifier: MIT
// The suite of a canvas (src/view/platform/canvas.h): what is drawn on a cell is visible, at the place that the
// measuring of text returns. A canvas joins by a file that derives from CellUnderTest and instantiates the suite, as
// canvases.cpp does.
#pragma once

#include "src/view/platform/canvas.h"
#include "src/view/platform/controls.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <ostream>

namespace conformance {

using namespace platform;

/// A cell of 240 by 120 pixels at 0, 0, and what is visible of it. Colours are 0xBBGGRR.
class CellUnderTest {
public:
    static constexpr std::int32_t Width = 240;
    static constexpr std::int32_t Height = 120;

    virtual ~CellUnderTest() = default;
    /// Raises one draw-cell event, in which `draw` paints the whole cell.
    virtual void Paint(const std::function<void(CellCanvas& canvas)>& draw) = 0;
    virtual FontServer& Fonts() = 0;
    virtual FontHandle Font() = 0; ///< of the cell

    virtual std::int32_t Ground() = 0; ///< colour of the background
    /// Returns the colour of its frame; nothing without one.
    virtual std::optional<std::int32_t> Frame() = 0;
    /// Returns the box around all text of a colour; nothing without such a text.
    virtual std::optional<Box> Ink(std::int32_t colour) = 0;
};

struct CanvasFactory {
    const char* Name;
    std::unique_ptr<CellUnderTest> (*Make)();
};

inline void PrintTo(const CanvasFactory& factory, std::ostream* out) {
    *out << factory.Name;
}

class CanvasSuite : public testing::TestWithParam<CanvasFactory> {
protected:
    static constexpr std::int32_t White = 0xFFFFFF;
    static constexpr std::int32_t Grey = 0xD0D0D0;
    static constexpr std::int32_t Red = 0x0000FF;
    static constexpr std::int32_t Green = 0x00FF00;
    static constexpr std::int32_t Blue = 0xFF0000;

    /// Paints a text on a white cell, in red, and returns the box around its visible part.
    Box InkOf(const std::function<void(CellCanvas& canvas)>& draw) {
        Cell->Paint([&](CellCanvas& canvas) {
            canvas.SetBackColor(White);
            canvas.ClearCell();
            canvas.SetForeColor(Red);
            draw(canvas);
        });
        const auto ink = Cell->Ink(Red);
        EXPECT_TRUE(ink) << "nothing is seen";
        return ink.value_or(Box());
    }
    Box InkOfBox(AlignX horizontal, AlignY vertical, const Text& text) {
        return InkOf([&](CellCanvas& canvas) { canvas.DrawBox(20, 10, 200, 100, horizontal, vertical, text); });
    }

    const std::unique_ptr<CellUnderTest> Cell = GetParam().Make();
};

} // namespace conformance
