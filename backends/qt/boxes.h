// SPDX-License-Identifier: MIT
// Message boxes as dialogs. They wait in the application's own loop, in which timers, the port and the form continue.
#pragma once

#include "backends/loop/services.h"

#include <QMessageBox>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace backends::qt {

class QtBoxes final : public DeviceBoxes {
public:
    QtBoxes(EventLoop& loop, Watcher& watcher, QWidget& window) : DeviceBoxes(loop, watcher), Window_(window) {}

    /// Returns the innermost box; null if none is open.
    QMessageBox* Dialog() const { return Dialogs_.empty() ? nullptr : Dialogs_.back().get(); }

    std::function<void()> Leaving; ///< called after a box was closed; others may be open
    bool AnyIsOpen() const { return !Dialogs_.empty() || OfWindow_ > 0; }
    /// Call these when a box of the window's own opens or has closed, which the form does not know of.
    void OfWindowOpens();
    void OfWindowClosed();
    /// True if a question with this text should offer to pause the link; asked once for each.
    std::function<bool(const Text& message)> OffersPause;
    std::function<bool()> LinkIsPaused;
    std::function<void(bool isPaused)> PauseLink; ///< called when a person ticks the offer, or takes it back
    /// True if the user is typing at this moment; those keys are not meant for the box.
    std::function<bool()> PersonIsTyping;

protected:
    void Opened(OpenBox& box) override;
    void Closed(OpenBox& box) override;

private:
    void OfferPause(QMessageBox& dialog) const;

    QWidget& Window_;
    int OfWindow_ = 0; ///< open boxes of the window's own
    std::vector<std::unique_ptr<QMessageBox>> Dialogs_;
};

} // namespace backends::qt
