// SPDX-License-Identifier: MIT
#include "backends/qt/qt_grid.h"

#include "backends/qt/conversions.h"
#include "backends/qt/fonts.h"
#include "src/view/platform/keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointingDevice>
#include <QStyleHints>

#include <algorithm>

namespace backends::qt {

namespace {

constexpr QRgb LineColour = 0xFFC8C8C8;
constexpr std::int64_t NewScreen = 300; // milliseconds in which a finger that comes down was meant for the one before
constexpr int FingerRest = 150;         // milliseconds after which a finger that has not moved means the cell
constexpr int RowsOfAWheelStep = 3;
constexpr int WheelStep = 120; // eighths of a degree

bool IsFinger(const QMouseEvent& event) {
    return event.pointingDevice() != nullptr && event.pointingDevice()->type() == QInputDevice::DeviceType::TouchScreen;
}

/// A text of a cell: on a line from its place on, or wrapped and aligned inside a box.
void PaintText(QPainter& painter, const PaintedText& text, const QRect& visible) {
    const QFontMetrics metrics = painter.fontMetrics();
    painter.setPen(ColourOf(text.Colour));
    if (text.Height == 0 && text.Width == 0) {
        painter.drawText(text.X, text.Y + metrics.ascent(), OneLine(text.Words));
        return;
    }
    const QStringList lines = LinesOf(painter.font(), text.Words, text.Width);
    const int height = metrics.height() * static_cast<int>(lines.size());
    int y = text.Y;
    if (text.Vertical == AlignY::Foot)
        y = text.Y + text.Height - height - metrics.height() / 2;
    else if (text.Vertical == AlignY::Middle)
        y = text.Y + (text.Height - height) / 2;
    for (const QString& line : lines) {
        if (y > visible.bottom())
            return; // a long text has thousands of lines, and the page a few
        const bool isSeen = y + metrics.height() >= visible.top();
        y += metrics.height();
        if (!isSeen)
            continue;
        const int room = text.Width - metrics.horizontalAdvance(line);
        const int x = text.X + (text.Horizontal == AlignX::Centre ? room / 2 : 0);
        painter.drawText(x, y - metrics.height() + metrics.ascent(), line);
    }
}

} // namespace

GridWidget::GridWidget(QWidget& form, QtGrid& grid) : QWidget(&form), Of(grid), Bar(*new QScrollBar(this)) {
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    Bar.hide();
    Bar.setFocusPolicy(Qt::NoFocus);
    QObject::connect(&Bar, &QScrollBar::valueChanged, [this](int value) {
        if (!Following)
            TurnTo(value);
    });
}

void GridWidget::Follow() {
    setGeometry(RectOf(Of.Bounds()));
    FollowScrollBar();
    update();
}

void GridWidget::FollowScrollBar() {
    const std::int32_t last = Of.LastTop();
    const bool wanted = Of.BarWidth > 0 && (last > 0 || Of.TopRow() > 0);
    Following = true;
    Bar.setRange(0, std::max(last, Of.TopRow()));
    Bar.setPageStep(std::max(1, Of.Rows() - last));
    Bar.setValue(Of.TopRow());
    Bar.setGeometry(width() - Of.BarWidth, 0, Of.BarWidth, height());
    Bar.setVisible(wanted);
    Following = false;
}

QRect GridWidget::CellRect(std::int32_t row, std::int32_t col) const {
    if (!Of.Offers(row, col) || row < Of.TopRow())
        return {};
    int x = 0;
    for (std::int32_t c = 0; c < col; ++c)
        x += Of.ColWidth(c);
    int y = 0;
    for (std::int32_t r = Of.TopRow(); r < row && y < height(); ++r)
        y += Of.RowHeight(r);
    return {x, y, Of.ColWidth(col), Of.RowHeight(row)};
}

void GridWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setFont(FontOf(Of.FontName(), Of.FontSize()));
    int y = 0;
    for (std::int32_t row = Of.TopRow(); row < Of.Rows() && y < height(); ++row) {
        int x = 0;
        for (std::int32_t col = 0; col < Of.Cols() && Of.RowHeight(row) > 0; ++col) {
            PaintCell(painter, row, col, {x, y, Of.ColWidth(col), Of.RowHeight(row)});
            x += Of.ColWidth(col);
        }
        y += Of.RowHeight(row);
    }
}

void GridWidget::PaintCell(QPainter& painter, std::int32_t row, std::int32_t col, const QRect& rect) const {
    const CellPicture* const picture = Of.Picture(row, col);
    if (picture == nullptr)
        return;
    painter.save();
    painter.setClipRect(rect);
    painter.fillRect(rect, ColourOf(picture->Background));
    if (Of.Style() == GridStyle::Table) {
        painter.setPen(QColor(LineColour));
        painter.drawLine(rect.bottomLeft(), rect.bottomRight());
        painter.drawLine(rect.topRight(), rect.bottomRight());
    }
    if (picture->Frame) {
        painter.setPen(ColourOf(*picture->Frame));
        painter.drawRect(rect.adjusted(0, 0, -1, -1));
    }
    for (const PaintedText& text : picture->Texts)
        PaintText(painter, text, rect.intersected(this->rect()));
    painter.restore();
}

// --- the pointer -----------------------------------------------------------------------------------------------------

void GridWidget::PointerDown(std::int32_t row, std::int32_t col) {
    Of.BringOnPage(row);
    const QPoint place = CellRect(row, col).intersected(rect()).center();
    QMouseEvent event(QEvent::MouseButtonPress, place, mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(this, &event);
}

void GridWidget::PointerUp() {
    QMouseEvent event(QEvent::MouseButtonRelease, {}, mapToGlobal(QPoint()), Qt::LeftButton, Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(this, &event);
}

void GridWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !Of.Enabled())
        return;
    if (!IsFinger(*event))
        return Press(event->pos());
    Finger = event->pos();
    Of.HandIsDown = true;
    FingerTaps = !Of.ScreenAge || Of.ScreenAge() >= NewScreen;
    FingerTop = Of.TopRow();
    Dragging = false;
    Rest = startTimer(FingerRest);
}

/// Two quick taps on two rows are two taps. A double click is one: the second half of it would act on what the first
/// has brought up.
void GridWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (IsFinger(*event) || !IsSecondOfOne(event->pos()))
        mousePressEvent(event);
}

bool GridWidget::IsSecondOfOne(QPoint place) const {
    const int interval = QApplication::doubleClickInterval();
    const bool isNewScreen = Of.ScreenAge && Of.ScreenAge() < interval;
    return isNewScreen || (LastPress.isValid() && LastPress.elapsed() < interval && LastCell.contains(place));
}

void GridWidget::SetPressed(bool pressed) {
    IsPressed = pressed;
    Of.HandIsDown = pressed;
}

/// A field that is open over a cell closes: the cell moves away under it.
void GridWidget::TurnTo(std::int32_t top) {
    const std::int32_t before = Of.TopRow();
    Of.SetTopRow(top);
    if (Of.TopRow() != before && !Of.PressesNothing)
        Of.SetFocus();
}

bool GridWidget::Withdraw() {
    const bool was = IsPressed;
    SetPressed(false);
    Finger.reset();
    Dragging = false;
    return was;
}

/// A finger that was waited for may find the grid off or gone.
void GridWidget::Press(QPoint place) {
    if (!Of.Enabled() || !Of.Visible())
        return;
    if (Of.PressesNothing) {
        Of.SetFocus();
        if (Of.Pressed)
            Of.Pressed();
        return;
    }
    const auto cell = Of.CellAt(place.x(), place.y());
    Of.SetFocus();
    if (!cell)
        return;
    LastCell = CellRect(cell->Row, cell->Col);
    LastPress.start();
    Of.SetCurrentCell(cell->Row, cell->Col);
    SetPressed(true);
    if (Of.Pressed)
        Of.Pressed();
}

void GridWidget::timerEvent(QTimerEvent*) {
    killTimer(Rest);
    Rest = 0;
    if (Finger && !Dragging) {
        const QPoint place = *Finger;
        Finger.reset();
        Of.HandIsDown = false;
        if (FingerTaps)
            Press(place);
    }
}

void GridWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!Finger)
        return;
    const int moved = event->pos().y() - Finger->y();
    if (!Dragging && std::abs(moved) < QGuiApplication::styleHints()->startDragDistance())
        return;
    Dragging = true;
    const int height = std::max(Of.RowHeight(Of.TopRow()), 1);
    TurnTo(Of.ScrolledTop(FingerTop, -moved / height));
}

void GridWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (Rest != 0)
        killTimer(Rest);
    Rest = 0;
    if (Finger && !Dragging && FingerTaps)
        Press(*Finger);
    Finger.reset();
    Dragging = false;
    const bool pressed = IsPressed || Of.PressesNothing;
    SetPressed(false);
    if (pressed && Of.Released)
        Of.Released();
}

void GridWidget::wheelEvent(QWheelEvent* event) {
    if (!Of.Enabled())
        return;
    WheelLeft += event->angleDelta().y();
    const int steps = WheelLeft / WheelStep;
    WheelLeft -= steps * WheelStep;
    TurnTo(Of.ScrolledTop(Of.TopRow(), -steps * RowsOfAWheelStep));
    event->accept();
}

/// The form has had the key and left it to the control.
void GridWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Up:
        return Of.TakeKey(CodeOf(Key::Up));
    case Qt::Key_Down:
        return Of.TakeKey(CodeOf(Key::Down));
    case Qt::Key_Left:
        return Of.TakeKey(CodeOf(Key::Left));
    case Qt::Key_Right:
        return Of.TakeKey(CodeOf(Key::Right));
    default:
        QWidget::keyPressEvent(event);
    }
}

// --- the grid --------------------------------------------------------------------------------------------------------

QtGrid::QtGrid(QWidget& form, Focus& focus, NativeFocus& native, const char* name)
    : FocusOfForm(focus), Native(native), Shown(*new GridWidget(form, *this)) {
    Name = name;
    Shown.setObjectName(QString::fromLatin1(name));
    native.Add(*this, Shown);
}

void QtGrid::SetCell(std::int32_t row, std::int32_t col, const Text& text) {
    DrawnGrid::SetCell(row, col, text);
    if (CellSet)
        CellSet(row, col);
}

void QtGrid::SetBounds(const Box& box) {
    DrawnGrid::SetBounds(box);
    Shown.Follow();
}

void QtGrid::SetVisible(bool visible) {
    DrawnGrid::SetVisible(visible);
    if (!visible)
        FocusOfForm.TakeFrom(*this);
    const NativeFocus::Quiet quiet(Native);
    Shown.setVisible(Visible());
}

/// The widget itself stays enabled: Qt would take its focus away, and grey what the application has drawn.
void QtGrid::SetEnabled(bool enabled) {
    DrawnGrid::SetEnabled(enabled);
    Shown.setFocusPolicy(enabled && !PressesNothing ? Qt::StrongFocus : Qt::NoFocus);
}

void QtGrid::SetFocus() {
    if (Visible() && Enabled())
        FocusOfForm.MoveTo(*this);
}

void QtGrid::ActOnKey(std::int32_t keyCode) {
    TakeKey(keyCode);
}

bool QtGrid::RaiseWhatIsPending() {
    const bool any = RaisePainting();
    if (EventsHandled)
        EventsHandled();
    return any;
}

void QtGrid::Repainted() {
    Shown.Follow();
    if (Follower != nullptr)
        Follower->WantPainting();
}

} // namespace backends::qt
