// SPDX-License-Identifier: MIT
#include "backends/qt/window.h"

#include "backends/loop/form_controls.h"
#include "backends/qt/conversions.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace backends::qt {

namespace {

constexpr QSize SmallestForm(240, 160);
constexpr int MostKeysInARow = 4;
constexpr int StatusTextPixels = 12; // of the screen
constexpr int KeyTextPixels = 10;
const QString AlarmLook = QStringLiteral("background: #b00020; color: white;");

} // namespace

Surface::Surface(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("surface"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Surface::SetWish(QSize size) {
    Wish = size;
    updateGeometry();
}

void Surface::resizeEvent(QResizeEvent*) {
    if (Resized)
        Resized();
}

QLabel* Window::StatusLabel(const char* name) {
    auto* const label = new QLabel(this);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMargin(Pixels(3));
    QFont font = label->font();
    font.setPixelSize(Pixels(StatusTextPixels));
    label->setFont(font);
    return label;
}

Window::Window(double scale) : Scale(scale) {
    setWindowTitle(QStringLiteral("Quorin"));
    setObjectName(QStringLiteral("frmQuorin"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    HeadRow = new QHBoxLayout;
    column->addLayout(HeadRow);
    Ground = new Surface(this);
    FormGround = new QWidget(Ground);
    FormGround->setObjectName(QStringLiteral("form"));
    FormGround->setAutoFillBackground(true);
    QPalette white = FormGround->palette();
    white.setColor(QPalette::Window, Qt::white);
    FormGround->setPalette(white);
    column->addWidget(Ground, 1);
    FootRow = new QHBoxLayout;
    FootRow->setSpacing(2);
    column->addLayout(FootRow);
    Strip = new QWidget(this);
    Strip->setObjectName(QStringLiteral("keyStrip"));
    Strip->hide();
    column->addWidget(Strip);
    MakeNoticeLine(*column);
    Link = StatusLabel("linkState");
    column->addWidget(Link);
}

void Window::MakeNoticeLine(QBoxLayout& column) {
    auto* const line = new QHBoxLayout;
    line->setSpacing(0);
    Alarm = StatusLabel("warning");
    Alarm->hide();
    Alarm->installEventFilter(this);
    line->addWidget(Alarm, 1);
    More = new QToolButton(this);
    More->setObjectName(QStringLiteral("moreNotices"));
    More->setFocusPolicy(Qt::NoFocus);
    More->setFont(Alarm->font());
    More->setStyleSheet(AlarmLook);
    More->setToolTip(QStringLiteral("All notices (F4)"));
    More->hide();
    line->addWidget(More);
    column.addLayout(line);
    List = new NoticeList(this);
    List->Chosen = [this](const Text& about) { TapNotice(about); };
    QObject::connect(More, &QToolButton::clicked, this, [this] { OpenNotices(); });
    auto* const shortcut = new QShortcut(QKeySequence(Qt::Key_F4), this);
    QObject::connect(shortcut, &QShortcut::activated, this, [this] { OpenNotices(); });
}

/// As many as have room for the longest name.
int Window::KeysInARow(const std::vector<DeviceKey>& keys, const QFontMetrics& metrics) const {
    int widest = 1;
    for (const DeviceKey& key : keys)
        widest = std::max(widest, metrics.horizontalAdvance(QString::fromLatin1(key.Name)) + Pixels(KeyTextPixels));
    return std::clamp(Ground->sizeHint().width() / widest, 1, MostKeysInARow);
}

void Window::ShowKeys(const std::vector<DeviceKey>& keys) {
    auto* const grid = new QGridLayout(Strip);
    grid->setContentsMargins(2, 2, 2, 2);
    grid->setSpacing(2);
    int place = 0;
    QFont font = Strip->font();
    font.setPixelSize(Pixels(KeyTextPixels));
    const int inARow = KeysInARow(keys, QFontMetrics(font));
    for (const DeviceKey& key : keys) {
        auto* const button = new QToolButton(Strip);
        button->setObjectName(QStringLiteral("key%1").arg(key.Code));
        button->setText(QString::fromLatin1(key.Name));
        button->setToolTip(QStringLiteral("Key %1").arg(key.Code));
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        button->setFont(font);
        const std::int32_t code = key.Code;
        QObject::connect(button, &QToolButton::pressed, [this, code] {
            if (KeyPressed)
                KeyPressed(code);
        });
        QObject::connect(button, &QToolButton::released, [this, code] {
            if (KeyReleased)
                KeyReleased(code);
        });
        grid->addWidget(button, place / inARow, place % inARow);
        ++place;
    }
    Strip->setVisible(!keys.empty());
}

void Window::HoldSize() {
    Ground->setFixedSize(Ground->sizeHint());
    layout()->setAlignment(Ground, Qt::AlignHCenter);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void Window::LetSize() {
    Ground->setMinimumSize(SmallestForm.boundedTo(Ground->sizeHint()));
    IsOneLine = true;
    for (QLabel* const label : {Link, Alarm}) {
        label->setWordWrap(false);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        label->setFixedHeight(label->fontMetrics().height() + 2 * label->margin());
    }
    ShowAlarm();
    resize(layout()->totalSizeHint());
    ShowState();
}

void Window::Put(QLabel& label, const QString& text) {
    const int room = width() - 2 * label.margin() - (&label == Alarm && !More->isHidden() ? More->width() : 0);
    label.setText(IsOneLine ? label.fontMetrics().elidedText(text, Qt::ElideRight, room) : text);
    label.setToolTip(label.text() == text ? QString() : text);
    label.setAccessibleName(text);
}

void Window::resizeEvent(QResizeEvent*) {
    ShowState();
    ShowAlarm();
}

void Window::SetLinkLine(const QString& text, bool alive) {
    LinkText = text;
    IsAlive = alive;
    ShowState();
}

void Window::ShowState() {
    const auto work = !IsWorking ? companion::Work::None : IsWaiting ? companion::Work::Waiting : companion::Work::Long;
    Put(*Link, IsWorking ? QString::fromUtf8(companion::WorkText(work)) : LinkText);
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    const QString alive = isDark ? QStringLiteral("color: #80e080;") : QStringLiteral("color: #006400;");
    if (IsWorking)
        Link->setStyleSheet(QStringLiteral("background: #ffd54f; color: black;"));
    else
        Link->setStyleSheet(IsAlive ? alive : QString());
}

void Window::SetNotices(const companion::Notices& notices) {
    Standing = notices.Sorted();
    const auto behind = static_cast<int>(notices.Behind());
    More->setText(QStringLiteral("+%1").arg(behind));
    More->setAccessibleName(QStringLiteral("%1 more notices").arg(behind));
    More->setVisible(behind > 0);
    More->setFixedSize(More->sizeHint().width(), Alarm->fontMetrics().height() + 2 * Alarm->margin());
    ShowAlarm();
    if (List->isVisible())
        List->Fill(Standing);
}

void Window::ShowAlarm() {
    const bool warns = !Standing.empty() && Standing.front().Weight != companion::Severity::Note;
    Alarm->setStyleSheet(warns ? AlarmLook : QString());
    Put(*Alarm, warns || (IsOneLine && !Standing.empty()) ? ToQt(Standing.front().Words) : QString());
    Alarm->setVisible(warns || IsOneLine);
}

/// It may be gone by now, or another one may stand there.
void Window::TapNotice(const Text& about) {
    if (NoticeTapped)
        NoticeTapped(about);
}

/// Over the line, as wide as the window.
void Window::OpenNotices() {
    if (Standing.empty())
        return;
    List->Fill(Standing);
    List->Open(Alarm->mapToGlobal(QPoint(0, 0)), width());
}

void Window::SetWorking(bool working) {
    IsWorking = working;
    ShowState();
    if (working)
        Link->repaint();
}

void Window::SetWaiting(bool waiting) {
    IsWaiting = waiting;
    ShowState();
}

bool Window::eventFilter(QObject* object, QEvent* event) {
    if (object == Alarm && event->type() == QEvent::MouseButtonPress && !Standing.empty())
        TapNotice(Text(Standing.front().About));
    return false;
}

/// The title bar's close is a Back, and the program itself says when it ends.
void Window::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (CloseRequested)
        CloseRequested();
}

void QtForm::SetBounds(const Box& twips) {
    Twips = twips;
    FormGround.setGeometry(RectOf(PixelsOf(*this)));
}

Box QtForm::ClientArea() const {
    const Box form = PixelsOf(*this);
    return {0, 0, form.Width, form.Height};
}

} // namespace backends::qt
