// SPDX-License-Identifier: MIT
// The window's own box that reports losses.
#pragma once

#include "backends/qt/window_box.h"

namespace backends::qt {

class LossBox {
public:
    /// `boxes`: the form's message boxes. `seen` is called when the box was closed.
    LossBox(QtBoxes& boxes, QWidget& window, std::function<void()> seen)
        : Box_(boxes, window), Seen_(std::move(seen)) {}

    /// Opens the box, or replaces the text of the open one.
    void Say(const QString& text);
    /// Returns the box while it is open; null otherwise.
    QMessageBox* Dialog() const { return Box_.Dialog(); }

private:
    WindowBox Box_;
    std::function<void()> Seen_;
};

} // namespace backends::qt
