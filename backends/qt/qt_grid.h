// SPDX-License-Identifier: MIT
// An owner-drawn grid in a window. The application paints when events are handled, into pictures; the widget shows the
// pictures whenever Qt asks for them, and nothing of the application runs then.
#pragma once

#include "backends/grid/drawn_grid.h"
#include "backends/loop/event_loop.h"
#include "backends/qt/native_focus.h"

#include <QElapsedTimer>
#include <QPoint>
#include <QScrollBar>
#include <QWidget>

#include <functional>
#include <optional>

namespace backends::qt {

class QtGrid;

/// What is seen of a grid and what a pointer does to it.
class GridWidget final : public QWidget {
public:
    GridWidget(QWidget& form, QtGrid& grid);

    /// Applies the grid's position, page and look.
    void Follow();
    /// Returns the rectangle of a cell, in pixels of the widget.
    QRect CellRect(std::int32_t row, std::int32_t col) const;
    QtGrid& Grid() const { return Grid_; }
    /// As a pointer does it: down on a cell, which is brought on the page for that, and up again.
    void PointerDown(std::int32_t row, std::int32_t col);
    void PointerUp();
    /// The pointer that is down, if it is, presses nothing any more. Whether a cell was pressed.
    bool Withdraw();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void PaintCell(QPainter& painter, std::int32_t row, std::int32_t col, const QRect& rect) const;
    void Press(QPoint place);
    bool IsSecondOfOne(QPoint place) const;
    void SetPressed(bool pressed);
    void FollowScrollBar();
    void TurnTo(std::int32_t top);

    QtGrid& Grid_;
    QScrollBar& Bar_;
    bool Following_ = false;
    // A finger may mean the cell or the page: it presses once it is lifted, or has rested, and drags until then.
    std::optional<QPoint> Finger_;
    std::int32_t FingerTop_ = 0; ///< the first row on the page when the finger came
    bool FingerTaps_ = false;    ///< and may press a cell
    bool Dragging_ = false;
    int Rest_ = 0;           ///< the timer of a resting finger
    bool IsPressed_ = false; ///< a cell
    QRect LastCell_;         ///< that was pressed, where it stood then
    QElapsedTimer LastPress_;
    int WheelLeft_ = 0; ///< of a turn that was less than a step
};

class QtGrid final : public DrawnGrid, public FocusTarget, public EventSource {
public:
    QtGrid(QWidget& form, Focus& focus, NativeFocus& native, const char* name);

    void SetCell(std::int32_t row, std::int32_t col, const Text& text) override;
    void SetBounds(const Box& box) override;
    void SetVisible(bool visible) override;
    void SetEnabled(bool enabled) override;
    void SetFocus() override;
    void ActOnKey(std::int32_t keyCode) override;

    bool RaiseWhatIsPending() override;

    GridWidget& Widget() const { return Widget_; }

    QtGrid* Follower = nullptr;    ///< takes its columns from this grid: it is painted again whenever this one is
    std::function<void()> Pressed; ///< on a cell, which is the current one by then
    std::function<void()> Released;
    std::function<void(std::int32_t row, std::int32_t col)> CellSet;
    std::function<void()> EventsHandled;     ///< and what was painted for them is to be seen
    std::function<std::int64_t()> ScreenAge; ///< milliseconds since another screen came up
    bool PressesNothing = false;             ///< the title: a pointer moves no selection there
    int BarWidth = 0;                        ///< pixels; what is drawn of a scroll bar

private:
    void Repainted() override;

    Focus& Focus_;
    NativeFocus& Native_;
    GridWidget& Widget_;
};

} // namespace backends::qt
