// SPDX-License-Identifier: MIT
// The window's own box of what was lost. The form knows nothing of it, and goes on beneath it: it has no loop of its
// own.
#pragma once

#include <QMessageBox>
#include <QWidget>

#include <functional>
#include <memory>

namespace platform::qt {

class LossBox {
public:
    LossBox(QWidget& window, std::function<void()> seen) : Window(window), Seen(std::move(seen)) {}

    /// Opens the box, or puts this text into the one that stands.
    void Say(const QString& text);
    /// The box, while it stands.
    QMessageBox* Dialog() const { return IsOpen ? Box.get() : nullptr; }

private:
    QWidget& Window;
    std::function<void()> Seen;
    std::unique_ptr<QMessageBox>
        Box; ///< one that was closed is in the middle of its own event, and stays until the next
    bool IsOpen = false;
};

} // namespace platform::qt
