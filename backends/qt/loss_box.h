// SPDX-License-Identifier: MIT
// The window's own box that reports losses. It runs no loop: the form is not aware of it and continues below it.
#pragma once

#include "backends/qt/boxes.h"

#include <QMessageBox>
#include <QWidget>

#include <functional>
#include <memory>

namespace backends::qt {

class LossBox {
public:
    /// `boxes`: the form's message boxes. This box opens as they do.
    LossBox(QtBoxes& boxes, QWidget& window, std::function<void()> seen)
        : Boxes_(boxes), Window_(window), Seen_(std::move(seen)) {}

    /// Opens the box, or replaces the text of the open one.
    void Say(const QString& text);
    /// Returns the box while it is open; null otherwise.
    QMessageBox* Dialog() const { return Boxes_.OfWindowIsOpen ? Box_.get() : nullptr; }

private:
    QtBoxes& Boxes_;
    QWidget& Window_;
    std::function<void()> Seen_;
    /// Kept after it was closed, because it is still handling that event. The next box replaces it.
    std::unique_ptr<QMessageBox> Box_;
};

} // namespace backends::qt
