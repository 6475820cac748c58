// SPDX-License-Identifier: MIT
// Message boxes as dialogs. They wait in the application's own loop, in which everything else goes on.
#pragma once

#include "platform/device/services.h"

#include <QMessageBox>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace platform::qt {

class QtBoxes final : public device::DeviceBoxes {
public:
    QtBoxes(device::EventLoop& loop, device::Watcher& watcher, QWidget& window)
        : DeviceBoxes(loop, watcher), Window(window) {}

    /// Presses a button of the innermost box.
    void Press(BoxAnswer answer);
    QMessageBox* Dialog() const { return Dialogs.empty() ? nullptr : Dialogs.back(); }

protected:
    void Opened(OpenBox& box) override;

private:
    QWidget& Window;
    std::vector<QMessageBox*> Dialogs;
};

} // namespace platform::qt
