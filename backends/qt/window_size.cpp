// SPDX-License-Identifier: MIT
// The sizes of the window and of the form in it.
#include "backends/qt/window.h"

#include "companion/zoom.h"

#include <QScreen>

#include <algorithm>

namespace backends::qt {

namespace {

constexpr QSize SmallestForm(200, 160); // in pixels of the form: more than the smallest device has
constexpr int LeastHeight = 90;         // of the form on a screen that has no room for more
constexpr QSize Frame(8, 40);           // at most
constexpr int CharactersBeside = 44;    // of the width of what stands beside the form

} // namespace

Surface::Surface(QWidget* parent, double scale) : QWidget(parent), Scale_(scale) {
    setObjectName(QStringLiteral("surface"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Surface::SetWish(QSize size) {
    Wish_ = size;
    updateGeometry();
}

void Surface::SetScale(double scale) {
    Scale_ = scale;
    updateGeometry();
}

void Surface::resizeEvent(QResizeEvent*) {
    if (Resized)
        Resized();
}

void Window::HoldSize() {
    Ground_->setFixedSize(Ground_->sizeHint());
    Column_->setAlignment(Ground_, Qt::AlignHCenter);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    IsHeld_ = true;
    Link_->setWordWrap(false);
    HoldLineHeights();
    Arrange();
    ShowState();
}

/// What stands below the form is beside it on a screen that is too low for both.
void Window::Arrange() {
    if (!IsHeld_)
        return;
    Lay(QBoxLayout::TopToBottom);
    if (!FitsTheScreen())
        Lay(QBoxLayout::LeftToRight);
    if (!FitsTheScreen()) // nor so: a window that is only too high can be moved
        Lay(QBoxLayout::TopToBottom);
}

void Window::Lay(QBoxLayout::Direction direction) {
    Halves_->setDirection(direction);
    Breadth_->changeSize(IsSideBySide() ? Link_->fontMetrics().averageCharWidth() * CharactersBeside : 0, 0,
                         QSizePolicy::Minimum, QSizePolicy::Fixed);
    Halves_->setAlignment(Rest_, IsSideBySide() ? Qt::AlignTop : Qt::Alignment());
    TakeScale(Scale());
}

bool Window::IsSideBySide() const {
    return Halves_->direction() == QBoxLayout::LeftToRight;
}

int Window::WidthBelow() const {
    return IsSideBySide() ? Breadth_->sizeHint().width() : Ground_->sizeHint().width();
}

int Window::WidthOfRest() const {
    return IsSideBySide() ? Breadth_->sizeHint().width() : width();
}

void Window::LetSize() {
    IsOneLine_ = true;
    TakeScale(Scale());
    for (QLabel* const label : {Link_, Alarm_}) {
        label->setWordWrap(false);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }
    HoldLineHeights();
    ShowAlarm();
    Fit();
    ShowState();
}

void Window::Fit() {
    layout()->activate();
    const QSize room = screen()->availableGeometry().size() - Frame;
    // What stands below the form of a low screen would otherwise be below the screen.
    if (const int over = layout()->totalMinimumSize().height() - room.height(); IsOneLine_ && over > 0)
        Ground_->setMinimumHeight(std::max(LeastHeight, Ground_->minimumHeight() - over));
    layout()->activate();
    resize(layout()->totalSizeHint().boundedTo(room));
}

void Window::SetScale(double scale) {
    const QSize before = size(); // a scale that is tried and does not fit enlarges the window
    TakeScale(scale);
    Arrange();
    while (!FitsTheScreen() && Scale() > 1) { // a smaller form could not be read
        TakeScale(companion::SmallerScale(Scale()));
        Arrange();
    }
    if (IsOneLine_) // its size stays if it can: as in other programs, there is less to be seen then
        resize(before.expandedTo(layout()->totalMinimumSize()));
    StayOnTheScreen();
}

/// A window that grows keeps its upper left corner, so that its foot may leave the screen.
void Window::StayOnTheScreen() {
    const QRect room = screen()->availableGeometry();
    const QRect now = frameGeometry();
    const int x = std::max(room.left(), std::min(now.left(), room.right() + 1 - now.width()));
    const int y = std::max(room.top(), std::min(now.top(), room.bottom() + 1 - now.height()));
    if (isVisible() && QPoint(x, y) != now.topLeft())
        move(x, y);
}

void Window::TakeScale(double scale) {
    FormWidget_->SetScale(scale);
    Ground_->SetScale(scale);
    LayKeys();
    if (Rescaled)
        Rescaled();
    if (IsOneLine_)
        Ground_->setMinimumSize((SmallestForm * scale).boundedTo(Ground_->sizeHint()));
    else if (layout()->sizeConstraint() == QLayout::SetFixedSize)
        Ground_->setFixedSize(Ground_->sizeHint());
    layout()->activate();
}

bool Window::FitsTheScreen() const {
    const QSize needed = IsOneLine_ ? layout()->totalMinimumSize() : layout()->totalSizeHint();
    const QSize room = screen()->availableGeometry().size() - Frame;
    return needed.width() <= room.width() && needed.height() <= room.height();
}

} // namespace backends::qt
