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
        : OfForm(boxes), Window(window), Seen(std::move(seen)) {}

    /// Opens the box, or puts this text into the one that stands.
    void Say(const QString& text);
    /// Returns the box while it is open; null otherwise.
    QMessageBox* Dialog() const { return OfForm.OfWindowStands ? Box.get() : nullptr; }

private:
    QtBoxes& OfForm;
    QWidget& Window;
    std::function<void()> Seen;
    std::unique_ptr<QMessageBox>
        Box; ///< one that was closed is in the middle of its own event: it stays until the next
};

} // namespace backends::qt
