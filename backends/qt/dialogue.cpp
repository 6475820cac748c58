// SPDX-License-Identifier: MIT
#include "backends/qt/dialogue.h"

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QScreen>
#include <QSpacerItem>

#include <algorithm>

namespace backends::qt {

Dialogue::Dialogue(QWidget* parent, bool underHands) : QMessageBox(parent) {
    // A question that is minimised would block the window with nothing to be seen.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    if (parent != nullptr)
        addActions(parent->actions());
    if (!underHands)
        return;
    Rest_.start();
    qApp->installEventFilter(this);
}

/// Returns the form in the window below; null if there is none.
const QWidget* Dialogue::FormBelow() const {
    return parentWidget() == nullptr ? nullptr : parentWidget()->findChild<QWidget*>(QStringLiteral("form"));
}

/// The box makes its layout anew with each text, so that the width is set last. On a small device it is the form's.
void Dialogue::showEvent(QShowEvent* event) {
    constexpr int TitleWidth = 30; // characters
    const int wished = TitleWidth * fontMetrics().averageCharWidth();
    const int room = FormBelow() == nullptr ? wished : FormBelow()->width();
    if (auto* const grid = qobject_cast<QGridLayout*>(layout())) {
        const QMargins edges = grid->contentsMargins();
        const int width = std::min(wished, room - edges.left() - edges.right());
        grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
    }
    QMessageBox::showEvent(event);
    FitTheForm();
    PutOverForm();
}

/// Each layout of the box gives it the width of its longest line again.
bool Dialogue::event(QEvent* event) {
    const bool done = QMessageBox::event(event);
    if (event->type() == QEvent::LayoutRequest && isVisible())
        FitTheForm();
    return done;
}

/// The box itself wraps no line of less than half a screen, and a device is smaller than that.
void Dialogue::FitTheForm() {
    if (FormBelow() == nullptr || width() <= FormBelow()->width() || layout() == nullptr)
        return;
    for (QLabel* const text : findChildren<QLabel*>())
        if (text->pixmap().isNull())
            text->setWordWrap(true);
    layout()->activate();
    const int needed = std::max(FormBelow()->width(), layout()->totalMinimumSize().width());
    setFixedSize(needed, layout()->hasHeightForWidth() ? layout()->totalMinimumHeightForWidth(needed)
                                                       : layout()->totalMinimumSize().height());
    QCoreApplication::removePostedEvents(this, QEvent::LayoutRequest);
}

/// A question is about what the form shows; below it a device has its keys.
void Dialogue::PutOverForm() {
    const QWidget* const form = FormBelow();
    if (form == nullptr)
        return;
    QRect place = rect();
    place.moveCenter(form->mapToGlobal(form->rect().center()));
    const QRect room = screen()->availableGeometry();
    move(std::clamp(place.x(), room.x(), std::max(room.x(), room.right() - width())),
         std::clamp(place.y(), room.y(), std::max(room.y(), room.bottom() - height())));
}

bool Dialogue::eventFilter(QObject* object, QEvent* event) {
    constexpr qint64 Rested = 500; // milliseconds
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
                       event->type() == QEvent::ShortcutOverride;
    const bool isMine = object->isWidgetType() && static_cast<QWidget*>(object)->window() == this;
    if (!isKey || !isMine || !Rest_.isValid())
        return QMessageBox::eventFilter(object, event);
    if (Rest_.elapsed() >= Rested) {
        Rest_.invalidate();
        return false;
    }
    Rest_.start();
    return true;
}

} // namespace backends::qt
