// SPDX-License-Identifier: MIT
// Runs the suite of a canvas on the pixels of a grid in a window.
#include "tests/conformance/canvas_suites.h"
#include "tests/conformance/raised_events.h"
#include "tests/support/in_a_window.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <map>

namespace conformance {

namespace {

/// The grid has one cell.
class WindowCell final : public CellUnderTest {
public:
    WindowCell() {
        Device_.Platform.StartProgram();
        Grid().SetFontName(u"Tahoma");
        Grid().SetFontSize(9);
        Grid().SetBounds({0, 0, Width, Height});
        Grid().SetGridMode(GridStyle::OneCell);
        Grid().SetDefaultRowHeight(Height);
        Grid().SetRows(1);
        Grid().SetCols(1);
        Grid().SetColWidth(0, Width);
    }
    WindowCell(const WindowCell&) = delete;
    WindowCell& operator=(const WindowCell&) = delete;
    ~WindowCell() override { Raised = {}; }

    void Paint(const std::function<void(CellCanvas& canvas)>& draw) override {
        Raised.Draw = [&draw](CellCanvas& canvas, const DrawnCell& cell) {
            if (!cell.OfTitle)
                draw(canvas);
        };
        Grid().WantPainting();
        Grid().PaintNow();
        Raised.Draw = nullptr;
        Seen_ = Grid().Widget().grab().toImage().copy(0, 0, Width, Height);
    }
    FontServer& Fonts() override { return Device_.Platform.fonts; }
    FontHandle Font() override { return Fonts().GetFont(Grid().FontName(), Grid().FontSize(), 0); }

    /// Returns the colour of most pixels.
    std::int32_t Ground() override {
        std::map<std::int32_t, int> counts;
        for (int y = 0; y < Height; ++y) {
            for (int x = 0; x < Width; ++x)
                ++counts[ColourAt(x, y)];
        }
        return std::max_element(counts.begin(), counts.end(),
                                [](const auto& a, const auto& b) { return a.second < b.second; })
            ->first;
    }
    std::optional<std::int32_t> Frame() override {
        const std::int32_t corner = ColourAt(0, 0);
        for (int x = 0; x < Width; ++x) {
            if (ColourAt(x, 0) != corner || ColourAt(x, Height - 1) != corner)
                return {};
        }
        return corner != Ground() ? std::optional(corner) : std::nullopt;
    }
    std::optional<Box> Ink(std::int32_t colour) override {
        int left = Width;
        int top = Height;
        int right = -1;
        int foot = -1;
        for (int y = 0; y < Height; ++y) {
            for (int x = 0; x < Width; ++x) {
                if (!IsLike(ColourAt(x, y), colour))
                    continue;
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                foot = std::max(foot, y);
            }
        }
        if (right < 0)
            return {};
        return Box{static_cast<float>(left), static_cast<float>(top), static_cast<float>(right + 1 - left),
                   static_cast<float>(foot + 1 - top)};
    }

private:
    backends::qt::QtGrid& Grid() { return Device_.Platform.grdMain; }
    std::int32_t ColourAt(int x, int y) const {
        const QRgb pixel = Seen_.pixel(x, y);
        return qBlue(pixel) << 16 | qGreen(pixel) << 8 | qRed(pixel);
    }
    /// The edges of letters are paler than the letters.
    static bool IsLike(std::int32_t seen, std::int32_t colour) {
        constexpr int Paler = 128;
        for (const int shift : {0, 8, 16}) {
            if (std::abs((seen >> shift & 0xFF) - (colour >> shift & 0xFF)) > Paler)
                return false;
        }
        return true;
    }

    windowtest::WindowDevice Device_{windowtest::OfType(0), {.RealFonts = true}};
    QImage Seen_;
};

std::unique_ptr<CellUnderTest> MadeWindowCell() {
    return std::make_unique<WindowCell>();
}

const CanvasFactory Pixels = {"pixels of a window", MadeWindowCell};

} // namespace

INSTANTIATE_TEST_SUITE_P(InAWindow, CanvasSuite, testing::Values(Pixels));

} // namespace conformance
