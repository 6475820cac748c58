// SPDX-License-Identifier: MIT
#include "backends/qt/qt_grid.h"

#include "backends/loop/acts.h"
#include "backends/loop/form_events.h"
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
constexpr std::int64_t NewScreen = 300; // milliseconds; a finger that comes down earlier was meant for the last screen
constexpr int FingerRest = 150;         // milliseconds; a finger that has not moved by then presses the cell
constexpr int RowsOfAWheelStep = 3;
constexpr int WheelStep = 120; // eighths of a degree

bool IsFinger(const QMouseEvent& event) {
    return event.pointingDevice() != nullptr && event.pointingDevice()->type() == QInputDevice::DeviceType::TouchScreen;
}

/// Paints a text of a cell: on one line from its position, or wrapped and aligned inside a box.
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
            return; // a long text has thousands of lines, of which the page shows a few
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

GridWidget::GridWidget(FormCanvas& form, QtGrid& grid)
    : QWidget(&form), Form_(form), Grid_(grid), Bar_(*new QScrollBar(this)) {
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    Bar_.hide();
    Bar_.setFocusPolicy(Qt::NoFocus);
    QObject::connect(&Bar_, &QScrollBar::valueChanged, [this](int value) {
        if (!Following_)
            TurnTo(value);
    });
}

void GridWidget::Follow() {
    setGeometry(Form_.Shown(Grid_.Bounds()));
    FollowScrollBar();
    update();
}

void GridWidget::FollowScrollBar() {
    const std::int32_t last = Grid_.LastTop();
    const bool wanted = Grid_.BarWidth > 0 && (last > 0 || Grid_.TopRow() > 0);
    Following_ = true;
    Bar_.setRange(0, std::max(last, Grid_.TopRow()));
    Bar_.setPageStep(std::max(1, Grid_.Rows() - last));
    Bar_.setValue(Grid_.TopRow());
    const int barWidth = Form_.Shown(Grid_.BarWidth);
    Bar_.setGeometry(width() - barWidth, 0, barWidth, height());
    Bar_.setVisible(wanted);
    Following_ = false;
}

QRect GridWidget::CellRect(std::int32_t row, std::int32_t col) const {
    if (!Grid_.Offers(row, col) || row < Grid_.TopRow())
        return {};
    int x = 0;
    for (std::int32_t c = 0; c < col; ++c)
        x += Grid_.ColWidth(c);
    float y = 0;
    for (std::int32_t r = Grid_.TopRow(); r < row && y < Grid_.Bounds().Height; ++r)
        y += static_cast<float>(Grid_.RowHeight(r));
    return Form_.Shown(Box{static_cast<float>(x), y, static_cast<float>(Grid_.ColWidth(col)),
                           static_cast<float>(Grid_.RowHeight(row))});
}

std::optional<DrawnGrid::CellPlace> GridWidget::CellAt(QPoint place) const {
    const QPoint pixel = Form_.OfForm(place);
    return Grid_.CellAt(pixel.x(), pixel.y());
}

/// Text is drawn as wide as the form has measured it, times the scale.
void GridWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.scale(Form_.Scale(), Form_.Scale());
    painter.setFont(FontOf(Grid_.FontName(), Grid_.FontSize()));
    int y = 0;
    for (std::int32_t row = Grid_.TopRow(); row < Grid_.Rows() && static_cast<float>(y) < Grid_.Bounds().Height;
         ++row) {
        int x = 0;
        for (std::int32_t col = 0; col < Grid_.Cols() && Grid_.RowHeight(row) > 0; ++col) {
            PaintCell(painter, row, col, {x, y, Grid_.ColWidth(col), Grid_.RowHeight(row)});
            x += Grid_.ColWidth(col);
        }
        y += Grid_.RowHeight(row);
    }
}

void GridWidget::PaintCell(QPainter& painter, std::int32_t row, std::int32_t col, const QRect& rect) const {
    const CellPicture* const picture = Grid_.Picture(row, col);
    if (picture == nullptr)
        return;
    painter.save();
    painter.setClipRect(rect);
    painter.fillRect(rect, ColourOf(picture->Background));
    if (Grid_.Style() == GridStyle::Table) {
        painter.setPen(QColor(LineColour));
        painter.drawLine(rect.bottomLeft(), rect.bottomRight());
        painter.drawLine(rect.topRight(), rect.bottomRight());
    }
    if (picture->Frame) {
        painter.setPen(ColourOf(*picture->Frame));
        painter.drawRect(rect.adjusted(0, 0, -1, -1));
    }
    const QRect page(QPoint(0, 0), RectOf(Grid_.Bounds()).size());
    for (const PaintedText& text : picture->Texts)
        PaintText(painter, text, rect.intersected(page));
    painter.restore();
}

// --- the pointer -----------------------------------------------------------------------------------------------------

void GridWidget::PointerDown(std::int32_t row, std::int32_t col) {
    Grid_.BringOnPage(row);
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
    if (event->button() != Qt::LeftButton || !Grid_.Enabled())
        return;
    if (!IsFinger(*event))
        return Press(event->pos());
    Finger_ = event->pos();
    Grid_.HandIsDown = true;
    FingerTaps_ = !Grid_.ScreenAge || Grid_.ScreenAge() >= NewScreen;
    FingerTop_ = Grid_.TopRow();
    Dragging_ = false;
    Rest_ = startTimer(FingerRest);
}

/// Two quick taps on two rows are two taps. A double click is one tap: its second press would act on what the first one
/// has opened.
void GridWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (IsFinger(*event) || !IsSecondOfOne(event->pos()))
        mousePressEvent(event);
}

bool GridWidget::IsSecondOfOne(QPoint place) const {
    const int interval = QApplication::doubleClickInterval();
    const bool isNewScreen = Grid_.ScreenAge && Grid_.ScreenAge() < interval;
    return isNewScreen || (LastPress_.isValid() && LastPress_.elapsed() < interval && LastCell_.contains(place));
}

void GridWidget::SetPressed(bool pressed) {
    IsPressed_ = pressed;
    Grid_.HandIsDown = pressed;
}

/// Scrolls the page. A field that is open over a cell closes, because its cell moves.
void GridWidget::TurnTo(std::int32_t top) {
    const std::int32_t before = Grid_.TopRow();
    if (Grid_.FieldIsOpen && Grid_.FieldIsOpen() && !Grid_.PressesNothing)
        ReportAct({.Word = "scroll", .Arguments = ArgumentsOf({top})});
    Grid_.SetTopRow(top);
    if (Grid_.TopRow() != before && !Grid_.PressesNothing)
        Grid_.SetFocus();
}

bool GridWidget::Withdraw() {
    const bool was = IsPressed_;
    SetPressed(false);
    Finger_.reset();
    Dragging_ = false;
    return was;
}

/// The grid may have been disabled or hidden while the program waited for the finger to rest or be lifted.
void GridWidget::Press(QPoint place) {
    if (!Grid_.Enabled() || !Grid_.Visible())
        return;
    if (Grid_.PressesNothing) {
        ReportHeading();
        Grid_.SetFocus();
        if (Grid_.Pressed)
            Grid_.Pressed();
        return;
    }
    const auto cell = CellAt(place);
    if (cell)
        ReportPress(Grid_, cell->Row, cell->Col);
    else
        ReportPressBesideCells();
    Grid_.SetFocus();
    if (!cell)
        return;
    LastCell_ = CellRect(cell->Row, cell->Col);
    LastPress_.start();
    Grid_.SetCurrentCell(cell->Row, cell->Col);
    SetPressed(true);
    if (Grid_.Pressed)
        Grid_.Pressed();
}

void GridWidget::timerEvent(QTimerEvent*) {
    killTimer(Rest_);
    Rest_ = 0;
    if (Finger_ && !Dragging_) {
        const QPoint place = *Finger_;
        Finger_.reset();
        Grid_.HandIsDown = false;
        if (FingerTaps_)
            Press(place);
    }
}

void GridWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!Finger_)
        return;
    const int moved = event->pos().y() - Finger_->y();
    if (!Dragging_ && std::abs(moved) < QGuiApplication::styleHints()->startDragDistance())
        return;
    Dragging_ = true;
    const int height = std::max(Form_.Shown(Grid_.RowHeight(Grid_.TopRow())), 1);
    TurnTo(Grid_.ScrolledTop(FingerTop_, -moved / height));
}

void GridWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (Rest_ != 0)
        killTimer(Rest_);
    Rest_ = 0;
    if (Finger_ && !Dragging_ && FingerTaps_)
        Press(*Finger_);
    Finger_.reset();
    Dragging_ = false;
    const bool pressed = IsPressed_ || Grid_.PressesNothing;
    SetPressed(false);
    if (pressed && !Grid_.PressesNothing)
        ReportRelease();
    if (pressed && Grid_.Released)
        Grid_.Released();
}

void GridWidget::wheelEvent(QWheelEvent* event) {
    if (!Grid_.Enabled())
        return;
    WheelLeft_ += event->angleDelta().y();
    const int steps = WheelLeft_ / WheelStep;
    WheelLeft_ -= steps * WheelStep;
    TurnTo(Grid_.ScrolledTop(Grid_.TopRow(), -steps * RowsOfAWheelStep));
    event->accept();
}

/// The form has had the key and left it to the control.
void GridWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Up:
        return Grid_.TakeKey(CodeOf(Key::Up));
    case Qt::Key_Down:
        return Grid_.TakeKey(CodeOf(Key::Down));
    case Qt::Key_Left:
        return Grid_.TakeKey(CodeOf(Key::Left));
    case Qt::Key_Right:
        return Grid_.TakeKey(CodeOf(Key::Right));
    default:
        QWidget::keyPressEvent(event);
    }
}

// --- the grid --------------------------------------------------------------------------------------------------------

QtGrid::QtGrid(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name)
    : Focus_(focus), Native_(native), Widget_(*new GridWidget(form, *this)) {
    Name = name;
    Widget_.setObjectName(QString::fromLatin1(name));
    native.Add(*this, Widget_);
    form.Follow([this] { Widget_.Follow(); });
}

void QtGrid::SetCell(std::int32_t row, std::int32_t col, const Text& text) {
    DrawnGrid::SetCell(row, col, text);
    if (CellSet)
        CellSet(row, col);
}

void QtGrid::SetBounds(const Box& box) {
    DrawnGrid::SetBounds(box);
    Widget_.Follow();
}

void QtGrid::SetVisible(bool visible) {
    DrawnGrid::SetVisible(visible);
    if (!visible)
        Focus_.TakeFrom(*this);
    const NativeFocus::Quiet quiet(Native_);
    Widget_.setVisible(Visible());
}

/// The widget itself stays enabled: Qt takes the focus from a disabled widget and greys what the application has drawn.
void QtGrid::SetEnabled(bool enabled) {
    DrawnGrid::SetEnabled(enabled);
    Widget_.setFocusPolicy(enabled && !PressesNothing ? Qt::StrongFocus : Qt::NoFocus);
}

void QtGrid::SetFocus() {
    if (Visible() && Enabled())
        Focus_.MoveTo(*this);
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
    Widget_.Follow();
    if (Follower != nullptr)
        Follower->WantPainting();
}

} // namespace backends::qt
