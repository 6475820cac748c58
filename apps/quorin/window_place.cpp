// SPDX-License-Identifier: MIT
#include "apps/quorin/window_place.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

#include <sstream>

namespace quorin {

namespace {

constexpr int Rest = 500;         // milliseconds
const std::string Name = "Place"; ///< "X Y WIDTH HEIGHT" without the frame, "maximized" after it

/// The title can be reached with the pointer.
bool IsReachable(const QRect& window) {
    const QRect title(window.x(), window.y(), window.width(), 1);
    for (const QScreen* const screen : QGuiApplication::screens())
        if (screen->availableGeometry().intersects(title))
            return true;
    return false;
}

} // namespace

WindowPlace::WindowPlace(backends::qt::Window& window, WindowSettings& settings)
    : Window_(window), Settings_(settings) {
    Rest_.setSingleShot(true);
    Rest_.setInterval(Rest);
    QObject::connect(&Rest_, &QTimer::timeout, this, [this] { Remember(); });
}

void WindowPlace::Restore() {
    std::istringstream in(Settings_.Get(Name));
    int x = 0, y = 0, width = 0, height = 0;
    std::string state;
    if (in >> x >> y >> width >> height && width > 0 && height > 0 && IsReachable({x, y, width, height})) {
        if (Window_.IsResizable())
            Window_.resize(QSize(width, height).boundedTo(Window_.screen()->availableGeometry().size()));
        Window_.move(x, y);
        if (in >> state && state == "maximized" && Window_.IsResizable())
            Window_.showMaximized();
    }
    Window_.installEventFilter(this);
}

void WindowPlace::Remember() {
    Rest_.stop();
    const QRect size = Window_.isMaximized() ? Window_.normalGeometry() : Window_.geometry();
    std::ostringstream out;
    out << Window_.pos().x() << " " << Window_.pos().y() << " " << size.width() << " " << size.height()
        << (Window_.isMaximized() ? " maximized" : "");
    Settings_.Save(Name, out.str());
}

bool WindowPlace::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        Rest_.start();
    return false;
}

} // namespace quorin
