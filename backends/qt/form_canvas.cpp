// SPDX-License-Identifier: MIT
#include "backends/qt/form_canvas.h"

#include "backends/qt/conversions.h"

#include <QApplication>
#include <QEvent>
#include <QFontInfo>

#include <algorithm>
#include <cmath>

namespace backends::qt {

namespace {

/// The form draws black on white, so that what lies on it is light on a dark desktop too. Each pair of text and ground
/// has a contrast of 4.5 to 1 or more, disabled text included: it is still read.
QPalette Paper() {
    QPalette paper(QColor(0xEF, 0xEF, 0xEF), Qt::white);
    const QColor grey(0x5E, 0x5E, 0x5E);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor text = group == QPalette::Disabled ? grey : QColor(Qt::black);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            paper.setColor(group, role, text);
        for (const auto role : {QPalette::Window, QPalette::Base})
            paper.setColor(group, role, Qt::white);
        paper.setColor(group, QPalette::AlternateBase, QColor(0xF5, 0xF5, 0xF5));
        paper.setColor(group, QPalette::PlaceholderText, grey);
        paper.setColor(group, QPalette::Highlight, QColor(0x1A, 0x5F, 0xB4));
        paper.setColor(group, QPalette::HighlightedText, Qt::white);
    }
    return paper;
}

} // namespace

FormCanvas::FormCanvas(QWidget* ground, double scale, double usual)
    : QWidget(ground), Ground_(*ground), Scale_(scale), Usual_(usual) {
    setObjectName(QStringLiteral("form"));
    setAutoFillBackground(true);
    setPalette(Paper());
    ground->installEventFilter(this);
}

void FormCanvas::SetScale(double scale) {
    Scale_ = scale;
    PutInTheMiddle();
    for (const std::function<void()>& follow : Followers_)
        follow();
}

void FormCanvas::Place(const Box& pixels) {
    Pixels_ = pixels;
    PutInTheMiddle();
}

void FormCanvas::PutInTheMiddle() {
    QRect place = Shown(Pixels_);
    place.moveLeft(place.left() + std::max(0, (Ground_.width() - place.width()) / 2));
    setGeometry(place);
}

QSize FormCanvas::Room() const {
    return {static_cast<int>(Ground_.width() / Scale_), static_cast<int>(Ground_.height() / Scale_)};
}

int FormCanvas::Shown(double pixels) const {
    return static_cast<int>(std::lround(pixels * Scale_));
}

QRect FormCanvas::Shown(const Box& box) const {
    const auto scale = static_cast<float>(Scale_);
    return RectOf({box.Left * scale, box.Top * scale, box.Width * scale, box.Height * scale});
}

QFont FormCanvas::Shown(QFont font) const {
    font.setPixelSize(std::max(1, Shown(font.pixelSize())));
    return font;
}

QFont FormCanvas::DesktopFont() const {
    QFont font = QApplication::font();
    if (Scale_ > Usual_)
        font.setPixelSize(static_cast<int>(std::lround(QFontInfo(font).pixelSize() * Scale_ / Usual_)));
    return font;
}

QPoint FormCanvas::OfForm(QPoint place) const {
    return {static_cast<int>(std::floor(place.x() / Scale_)), static_cast<int>(std::floor(place.y() / Scale_))};
}

bool FormCanvas::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Resize)
        PutInTheMiddle();
    return false;
}

} // namespace backends::qt
