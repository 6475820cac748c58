// SPDX-License-Identifier: MIT
// What the grids of all back-ends have in common: the cells, the current one, scrolling, and the resulting events. A
// back-end derives from it, raises the events and paints: of a hidden grid each row that the selection passes, of a
// visible one the page when its look has changed.
#pragma once

#include "src/view/platform/canvas.h"
#include "src/view/platform/grid.h"

#include <utility>
#include <vector>

namespace backends {

using namespace platform;

class GridStore : public OwnerDrawGrid {
public:
    Text Cell(std::int32_t row, std::int32_t col) const override;
    void SetCell(std::int32_t row, std::int32_t col, const Text& text) override;

    std::int32_t Rows() const override { return static_cast<std::int32_t>(Lines_.size()); }
    void SetRows(std::int32_t rows) override;
    std::int32_t Cols() const override { return static_cast<std::int32_t>(Widths_.size()); }
    void SetCols(std::int32_t cols) override;

    std::int32_t Row() const override { return CurrentRow_; }
    void SetRow(std::int32_t row) override;
    std::int32_t Col() const override { return CurrentCol_; }
    void SetCol(std::int32_t col) override;
    /// Sets row and column in one step, with one event: a tap.
    void SetCurrentCell(std::int32_t row, std::int32_t col);

    std::int32_t TopRow() const override { return FirstOnPage_; }
    void SetTopRow(std::int32_t row) override;

    std::int32_t RowHeight(std::int32_t row) const override;
    void SetRowHeight(std::int32_t row, std::int32_t height) override;
    std::int32_t ColWidth(std::int32_t col) const override;
    void SetColWidth(std::int32_t col, std::int32_t width) override;
    std::int32_t DefaultRowHeight() const override { return NewRowHeight_; }
    void SetDefaultRowHeight(std::int32_t height) override { NewRowHeight_ = height; }

    bool RowOnScreen(std::int32_t row) const override;
    GridStyle Style() const { return StyleSet_; }
    void SetGridMode(GridStyle style) override { StyleSet_ = style; }
    void Recalc() override {}

    Box Bounds() const override { return Bounds_; }
    void SetBounds(const Box& box) override;
    bool Visible() const override { return Visible_; }
    void SetVisible(bool visible) override;
    bool Enabled() const override { return Enabled_; }
    void SetEnabled(bool enabled) override { Enabled_ = enabled; }

    Text FontName() const override { return Font_; }
    void SetFontName(const Text& name) override;
    std::int32_t FontSize() const override { return Size_; }
    void SetFontSize(std::int32_t size) override;
    /// Restricts the font to these sizes; any other size is refused. An empty list allows every size.
    void OfferFontSizes(std::vector<std::int32_t> sizes) { FontSizes_ = std::move(sizes); }

    /// True if a cell can be tapped: it exists and its row has a height.
    bool Offers(std::int32_t row, std::int32_t col) const;

protected:
    virtual void RowColChanged() = 0;
    /// Paints one cell. It may set widths and heights.
    virtual void PaintCell(const PaintedCell& cell) = 0;
    /// Called when the look of the grid has changed: the back-end must call PaintPage when it can.
    virtual void LooksChanged() = 0;

    /// Paints the rows on the page, and once more if painting has changed a size or the selection. There is no third
    /// time, because two columns that wrap in one row could change its height alternately without end. If painting has
    /// pushed the current row off the page to which it was moved, the page follows and is painted again.
    void PaintPage();
    /// Makes a row the first one on the page, and keeps the current row on the page if it is there.
    void PullPageTo(std::int32_t row);

private:
    struct Line {
        std::vector<Text> Cells;
        std::int32_t Height = 0;
    };

    bool HasRow(std::int32_t row) const { return row >= 0 && row < Rows(); }
    bool HasCol(std::int32_t col) const { return col >= 0 && col < Cols(); }
    Line& At(std::int32_t row) { return Lines_[static_cast<std::size_t>(row)]; }
    const Line& At(std::int32_t row) const { return Lines_[static_cast<std::size_t>(row)]; }
    void PullBack();
    void Announce();
    void LeaveHiddenRow();
    std::int32_t NearestShownRow() const;
    void ScrollTo(std::int32_t row);
    void BeginPageWith(std::int32_t row);
    bool StandsOnPage(std::int32_t row) const;
    bool BringsRowBack();
    std::int32_t HeightBetween(std::int32_t from, std::int32_t to) const;
    std::int32_t TopOf(std::int32_t row) const;
    void PaintRows(std::int32_t from, std::int32_t to);
    void PaintRowsOfPage();
    void PaintRow(std::int32_t row, std::int32_t y);
    void Changed();

    std::vector<Line> Lines_;
    std::vector<std::int32_t> Widths_;
    std::int32_t CurrentRow_ = 0;
    std::int32_t CurrentCol_ = 0;
    std::int32_t FirstOnPage_ = 0;
    std::int32_t NewRowHeight_ = 0;
    GridStyle StyleSet_ = GridStyle::OneCell;
    Box Bounds_;
    bool Visible_ = true;
    bool Enabled_ = true;
    Text Font_;
    std::int32_t Size_ = 0;
    std::vector<std::int32_t> FontSizes_;
    int Announcing_ = 0; ///< number of handlers of a move that have not returned yet
    bool Painting_ = false;
    bool ChangedByPainting_ = false;
    bool KeepsRow_ = false; ///< the current row was scrolled onto the page and has not been painted there yet
};

} // namespace backends
