// SPDX-License-Identifier: MIT
// A box of the window's own. It runs no loop: the form is not aware of it and continues below it.
#pragma once

#include "backends/qt/boxes.h"

#include <QMessageBox>
#include <QWidget>

#include <functional>
#include <memory>

namespace backends::qt {

/// What a box shows.
struct BoxLook {
    const char* Name = "windowBox"; ///< of the widget
    QMessageBox::Icon Icon = QMessageBox::Warning;
    QMessageBox::StandardButtons Buttons = QMessageBox::Ok;
    QMessageBox::StandardButton Safe = QMessageBox::Ok; ///< what Enter, Esc and the end of the program choose
};

class WindowBox {
public:
    /// `boxes`: the form's message boxes. This box opens as they do.
    WindowBox(QtBoxes& boxes, QWidget& window) : Boxes_(boxes), Window_(window) {}
    WindowBox(const WindowBox&) = delete;
    WindowBox& operator=(const WindowBox&) = delete;
    ~WindowBox();

    /// Opens the box, and calls `closed` with the chosen button. REQUIRES: it is not open, and `closed` of its last box
    /// has returned.
    void Open(const QString& text, const BoxLook& look, std::function<void(QMessageBox::StandardButton)> closed);
    bool IsOpen() const { return IsOpen_; }
    /// Returns the box while it is open; null otherwise.
    QMessageBox* Dialog() const { return IsOpen_ ? Box_.get() : nullptr; }

private:
    void Left();

    QtBoxes& Boxes_;
    QWidget& Window_;
    bool IsOpen_ = false;
    /// Kept after it was closed, because it is still handling that event. The next box replaces it.
    std::unique_ptr<QMessageBox> Box_;
};

} // namespace backends::qt
