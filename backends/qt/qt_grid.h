// SPDX-License-Identifier: MIT
// An owner-drawn grid in a window. The application paints into pictures when events are handled. The widget shows the
// pictures whenever Qt asks for them, without running any code of the application.
#pragma once

#include "backends/grid/drawn_grid.h"
#include "backends/loop/event_loop.h"
#include "backends/qt/form_canvas.h"
#include "backends/qt/native_focus.h"

#include <QElapsedTimer>
#include <QPoint>
#include <QScrollBar>
#include <QWidget>

#include <functional>
#include <optional>

namespace backends::qt {

class QtGrid;

/// Shows a grid and handles the pointer on it.
class GridWidget final : public QWidget {
public:
    GridWidget(FormCanvas& form, QtGrid& grid);

    /// Applies the grid's position, page and look.
    void Follow();
    /// Returns the rectangle of a cell, in pixels of the widget.
    QRect CellRect(std::int32_t row, std::int32_t col) const;
    /// Returns the cell at a place, in pixels of the widget; nothing if there is none.
    std::optional<DrawnGrid::CellPlace> CellAt(QPoint place) const;
    QtGrid& Grid() const { return Grid_; }
    /// Sends a press on a cell, which is scrolled onto the page first. PointerUp sends the release.
    void PointerDown(std::int32_t row, std::int32_t col);
    void PointerUp();
    /// Cancels the press of a pointer that is down. Returns true if a cell was pressed.
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

    FormCanvas& Form_;
    QtGrid& Grid_;
    QScrollBar& Bar_;
    bool Following_ = false;
    // A finger may press a cell or drag the page: it presses when it is lifted or has rested, and drags if it moves
    // before.
    std::optional<QPoint> Finger_;
    std::int32_t FingerTop_ = 0; ///< the first row on the page when the finger came down
    bool FingerTaps_ = false;    ///< the finger may press a cell
    bool Dragging_ = false;
    int Rest_ = 0;           ///< the timer of a resting finger; 0 if none runs
    bool IsPressed_ = false; ///< a cell is pressed
    QRect LastCell_;         ///< the rectangle of the last pressed cell at that time
    QElapsedTimer LastPress_;
    int WheelLeft_ = 0; ///< what is left of a turn of less than a step
};

class QtGrid final : public DrawnGrid, public FocusTarget, public EventSource {
public:
    QtGrid(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name);

    void SetCell(std::int32_t row, std::int32_t col, const Text& text) override;
    void SetBounds(const Box& box) override;
    void SetVisible(bool visible) override;
    void SetEnabled(bool enabled) override;
    void SetFocus() override;
    void ActOnKey(std::int32_t keyCode) override;

    bool RaiseWhatIsPending() override;

    GridWidget& Widget() const { return Widget_; }

    QtGrid* Follower = nullptr;    ///< takes its columns from this grid: it is painted again whenever this one is
    std::function<void()> Pressed; ///< called after a press on a cell has made it the current one
    std::function<void()> Released;
    std::function<void(std::int32_t row, std::int32_t col)> CellSet;
    std::function<void()> EventsHandled;     ///< called after a round of events and its painting
    std::function<std::int64_t()> ScreenAge; ///< returns the milliseconds since the screen appeared
    bool PressesNothing = false;             ///< true for the title: a press moves no selection
    int BarWidth = 0;                        ///< width of the scroll bar that is drawn, in pixels of the form

private:
    void Repainted() override;

    Focus& Focus_;
    NativeFocus& Native_;
    GridWidget& Widget_;
};

} // namespace backends::qt
