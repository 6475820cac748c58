// SPDX-License-Identifier: MIT
#include "apps/quorin/window_place.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <optional>
#include <sstream>

namespace quorin {

namespace {

constexpr int Rest = 500;         // milliseconds
const std::string Name = "Place"; ///< "X Y WIDTH HEIGHT" without the frame, then "maximized" if it is

/// Returns the window moved into the screen that it is on, and made smaller if it does not fit with its frame; nothing
/// if no screen is there.
std::optional<QRect> OnItsScreen(QRect window) {
    const QScreen* const screen = QGuiApplication::screenAt(window.center());
    if (screen == nullptr)
        return std::nullopt;
    constexpr QSize Frame(8, 40); // at most
    constexpr int Title = 20;     // at least
    const QRect room = screen->availableGeometry();
    window.setSize(window.size().boundedTo(room.size() - Frame));
    window.moveLeft(std::clamp(window.x(), room.x(), room.right() - window.width() + 1));
    window.moveTop(std::clamp(window.y(), room.y() + Title, room.bottom() - window.height() + 1));
    return window;
}

} // namespace

WindowPlace::WindowPlace(backends::qt::Window& window, WindowSettings& settings)
    : Window_(window), Settings_(settings) {
    Rest_.setSingleShot(true);
    Rest_.setInterval(Rest);
    QObject::connect(&Rest_, &QTimer::timeout, this, [this] { Remember(); });
}

/// A device of fixed size is a tool of developers: its place is not remembered, and would replace that of the desktop.
void WindowPlace::Restore() {
    if (!Window_.IsResizable())
        return;
    std::istringstream in(Settings_.Get(Name));
    int x = 0, y = 0, width = 0, height = 0;
    std::string state;
    if (in >> x >> y >> width >> height && width > 0 && height > 0) {
        if (const auto place = OnItsScreen({x, y, width, height})) {
            Window_.setGeometry(*place);
        }
        if (in >> state && state == "maximized")
            Window_.showMaximized();
    }
    Window_.installEventFilter(this);
    IsRestored_ = true;
}

void WindowPlace::Remember() {
    Rest_.stop();
    if (!IsRestored_)
        return;
    const QRect normal = Window_.isMaximized() ? Window_.normalGeometry() : Window_.geometry();
    std::ostringstream out;
    out << normal.x() << " " << normal.y() << " " << normal.width() << " " << normal.height()
        << (Window_.isMaximized() ? " maximized" : "");
    Settings_.Save(Name, out.str());
}

bool WindowPlace::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        Rest_.start();
    return false;
}

} // namespace quorin
