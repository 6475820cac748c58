// SPDX-License-Identifier: MIT
// The window's own box that reports losses. It has no loop: the form is not aware of it and goes on beneath it.
#pragma once

#include "backends/qt/boxes.h"

#include <QMessageBox>
#include <QWidget>

#include <functional>
#include <memory>

namespace backends::qt {

class LossBox {
public:
    /// `boxes` are the form's: this one comes up as they do.
    LossBox(QtBoxes& boxes, QWidget& window, std::function<void()> seen)
        : Boxes_(boxes), Window_(window), Seen_(std::move(seen)) {}

    /// Opens the box, or puts this text into the one that stands.
    void Say(const QString& text);
    /// Returns the box while it is open; null otherwise.
    QMessageBox* Dialog() const { return Boxes_.OfWindowStands ? Box_.get() : nullptr; }

private:
    QtBoxes& Boxes_;
    QWidget& Window_;
    std::function<void()> Seen_;
    std::unique_ptr<QMessageBox>
        Box_; ///< one that was closed is in the middle of its own event: it stays until the next
};

} // namespace backends::qt
