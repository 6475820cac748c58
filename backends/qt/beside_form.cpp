// SPDX-License-Identifier: MIT
#include "backends/qt/beside_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace backends::qt {

namespace {

constexpr int FrameHeight = 48; // at most, of a window's frame
constexpr int FrameWidth = 8;   // likewise, its right edge

/// A window that grew after it was shown would push its title out of the screen.
QSize SizeOn(const QSize& room, QWidget& window) {
    window.ensurePolished();
    QSize size = window.size().boundedTo(room).expandedTo(window.minimumSizeHint());
    if (window.layout() != nullptr && window.layout()->hasHeightForWidth())
        size.setHeight(std::max(size.height(), window.layout()->totalMinimumHeightForWidth(size.width())));
    return size;
}

} // namespace

void PutBeside(QWidget& window, const QWidget& form) {
    if (form.screen() == nullptr)
        return;
    const QRect screen = form.screen()->availableGeometry();
    const QRect place = form.frameGeometry();
    window.resize(SizeOn(screen.size() - QSize(FrameWidth, FrameHeight), window));
    const int width = window.width();
    const int height = window.height();
    if (place.right() + width < screen.right())
        window.move(place.right() + 1, place.top());
    else if (place.left() - width >= screen.left())
        window.move(place.left() - width, place.top());
    else if (place.bottom() + height < screen.bottom())
        window.move(place.left(), place.bottom() + 1);
    else // over the foot of the form: its title and its first rows can be seen
        window.move(std::max(screen.left(), screen.right() - width - FrameWidth),
                    std::max(screen.top(), screen.bottom() - height - FrameHeight));
}

void BringForward(QWidget& window) {
    window.isMinimized() ? window.showNormal() : window.show();
    window.raise();
    window.activateWindow();
}

void GiveKeyboardBack(QWidget& form) {
    QWidget* const box = QApplication::activeModalWidget();
    (box != nullptr ? box : &form)->activateWindow();
}

BesideForm::BesideForm(QWidget& form, const char* name, const QString& title, const QSize& size) : Form_(form) {
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(title);
    addActions(form.actions());
    resize(size);
}

void BesideForm::ComeForward() {
    if (!std::exchange(WasPlaced_, true))
        PutBeside(*this, Form_);
    BringForward(*this);
}

void BesideForm::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    GiveKeyboardBack(Form_);
}

/// Not a shortcut: a list that is open in the window is closed first.
void BesideForm::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape)
        QWidget::keyPressEvent(event);
    else if (!TakesEscape())
        close();
}

} // namespace backends::qt
