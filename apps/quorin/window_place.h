// SPDX-License-Identifier: MIT
// Where the window was at the end of the last run.
#pragma once

#include "apps/quorin/window_settings.h"
#include "backends/qt/window.h"

#include <QObject>
#include <QTimer>

namespace quorin {

/// Keeps place and size of the window in its settings.
class WindowPlace final : public QObject {
public:
    WindowPlace(backends::qt::Window& window, WindowSettings& settings);

    /// Puts the window where it was, as far as a screen has room for it. Must be called once the form is shown. From
    /// then on each change is remembered when it is half a second old.
    void Restore();
    /// Remembers the place at once: the program ends.
    void Remember();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    backends::qt::Window& Window_;
    WindowSettings& Settings_;
    QTimer Rest_;
    bool IsRestored_ = false;
};

} // namespace quorin
