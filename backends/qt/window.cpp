// SPDX-License-Identifier: MIT
#include "backends/qt/window.h"

#include "backends/loop/form_controls.h"
#include "backends/qt/accessible_window.h"
#include "backends/qt/conversions.h"
#include "backends/qt/elided.h"
#include "backends/qt/to_screen_reader.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace backends::qt {

namespace {

constexpr int MostKeysInARow = 4;
constexpr int LinesOfHeldLink = 2;      // on a device of fixed size: room for most states
constexpr double KeyText = 10.0 / 12.0; // of the desktop's font
const QString ListHint = QStringLiteral("\n(Shift+F4 lists all notices)");
// Not the desktop's colour of links, which is that of the form's headline.
const QString FolderLook = QStringLiteral("color: #1a5fb4; text-decoration: underline;");
const QString FolderLookInTheDark = QStringLiteral("color: #99c1f1; text-decoration: underline;");
const QString AlarmLook = QStringLiteral("background: #b00020; color: white;");
// Another colour than the notices': the two lines are one above the other, and say different things.
const QString LinkAlarmLook = QStringLiteral("background: #b34700; color: white;");

// Two seconds, at two flashes a second: more than three a second may harm people.
constexpr int FlashInterval = 250; // milliseconds
constexpr int HalfFlashes = 8;     // the first is inverted, the last is not

constexpr int TimeOfWords = 5000; // milliseconds

} // namespace

QLabel* Window::StatusLabel(const char* name) {
    auto* const label = new QLabel(this);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMargin(3);
    return label;
}

Window::Window(double scale, double usual) {
    InstallAccessibleWindows();
    setWindowTitle(QStringLiteral("Quorin"));
    setObjectName(QStringLiteral("frmQuorin"));
    Halves_ = new QBoxLayout(QBoxLayout::TopToBottom, this);
    Column_ = new QVBoxLayout;
    Rest_ = new QVBoxLayout;
    for (QBoxLayout* const box : {Halves_, Column_, Rest_}) {
        box->setContentsMargins(0, 0, 0, 0);
        box->setSpacing(0);
    }
    Halves_->addLayout(Column_, 1);
    Halves_->addLayout(Rest_);
    Breadth_ = new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed);
    Rest_->addItem(Breadth_);
    HeadRow_ = new QHBoxLayout;
    Column_->addLayout(HeadRow_);
    Ground_ = new Surface(this, scale);
    FormWidget_ = new FormCanvas(Ground_, scale, usual);
    Column_->addWidget(Ground_, 1);
    FootRow_ = new QHBoxLayout;
    FootRow_->setSpacing(2);
    Column_->addLayout(FootRow_);
    Strip_ = new QWidget(this);
    Strip_->setObjectName(QStringLiteral("keyStrip"));
    Strip_->hide();
    Rest_->addWidget(Strip_);
    MakeNoticeLine(*Rest_);
    MakeLinkLine(*Rest_);
    Readings_ = MakeAction("&Readings", QKeySequence(Qt::Key_F4), &Window::WantReadings);
    addAction(Readings_); // message boxes take over the window's actions
    AllNotices_ = MakeAction("All &notices", QKeySequence(Qt::SHIFT | Qt::Key_F4), &Window::OpenNotices);
    Link_->addAction(AllNotices_);
    Help_ = MakeAction("H&elp", QKeySequence(Qt::CTRL | Qt::Key_F1), &Window::WantHelp);
    addAction(Help_);
    Saying_ = new QTimer(this);
    Saying_->setSingleShot(true);
    Saying_->setInterval(TimeOfWords);
    QObject::connect(Saying_, &QTimer::timeout, this, [this] {
        Said_.clear();
        ShowState();
    });
    Flashing_ = new QTimer(this);
    Flashing_->setInterval(FlashInterval);
    QObject::connect(Flashing_, &QTimer::timeout, this, [this] {
        if (--FlashesLeft_ == 0)
            Flashing_->stop();
        ShowState();
    });
}

void Window::MakeLinkLine(QBoxLayout& column) {
    auto* const line = new QHBoxLayout;
    line->setSpacing(0);
    Link_ = StatusLabel("linkState");
    Link_->setAccessibleDescription(QStringLiteral("F4 lists the readings"));
    Link_->installEventFilter(this);
    QSizePolicy rest = Link_->sizePolicy(); // the width that the menu leaves: the form alone decides on the window's
    rest.setHorizontalPolicy(QSizePolicy::Ignored);
    Link_->setSizePolicy(rest);
    line->addWidget(Link_, 1);
    Ports_ = new QToolButton(this);
    Ports_->setObjectName(QStringLiteral("ports"));
    Ports_->setText(QStringLiteral("Ports…"));
    Ports_->setFocusPolicy(Qt::NoFocus);
    Ports_->hide();
    QObject::connect(Ports_, &QToolButton::clicked, this, [this] {
        if (PortsWanted)
            PortsWanted();
    });
    line->addWidget(Ports_, 0, Qt::AlignBottom);
    Menu_ = new WindowMenu(this);
    line->addWidget(Menu_, 0, Qt::AlignBottom);
    column.addLayout(line);
    HoldLineHeights();
}

/// The buttons beside a line are as high as its text.
void Window::HoldLineHeights() {
    const int height = Link_->fontMetrics().height() + 2 * Link_->margin();
    Ports_->setFixedHeight(height);
    Menu_->setFixedSize(std::max(Menu_->sizeHint().width(), 2 * height), height);
    for (QLabel* const label : {Link_, Alarm_})
        if (IsOneLine_)
            label->setFixedHeight(height);
    if (IsHeld_)
        Link_->setFixedHeight(LinesOfHeldLink * Link_->fontMetrics().lineSpacing() + 2 * Link_->margin());
}

QAction* Window::MakeAction(const char* name, const QKeySequence& keys, void (Window::*act)()) {
    auto* const action = new QAction(QString::fromLatin1(name), this);
    action->setShortcut(keys);
    action->setAutoRepeat(false);
    QObject::connect(action, &QAction::triggered, this, [this, act] { (this->*act)(); });
    return action;
}

void Window::WantReadings() {
    if (ReadingsWanted)
        ReadingsWanted();
}

void Window::MakeNoticeLine(QBoxLayout& column) {
    auto* const line = new QHBoxLayout;
    line->setSpacing(0);
    Alarm_ = StatusLabel("warning");
    Alarm_->setAccessibleDescription(QStringLiteral("Shift+F4 lists all notices"));
    Alarm_->hide();
    Alarm_->installEventFilter(this);
    line->addWidget(Alarm_, 1);
    Offers_ = new QHBoxLayout;
    Offers_->setSpacing(0);
    line->addLayout(Offers_);
    More_ = new QToolButton(this);
    More_->setObjectName(QStringLiteral("moreNotices"));
    More_->setFocusPolicy(Qt::NoFocus);
    More_->setToolTip(QStringLiteral("All notices (Shift+F4)"));
    More_->hide();
    line->addWidget(More_);
    column.addLayout(line);
    List_ = new NoticeList(this);
    List_->Chosen = [this](const Text& about) { TapNotice(about); };
    List_->OfferChosen = [this](const Text& offer) { TakeOffer(offer); };
    QObject::connect(More_, &QToolButton::clicked, this, [this] { OpenNotices(); });
}

/// Returns how many keys fit in a row if each has room for the longest name.
int Window::KeysInARow(const std::vector<DeviceKey>& keys, const QFontMetrics& metrics) const {
    int widest = 1;
    for (const DeviceKey& key : keys)
        widest = std::max(widest, metrics.horizontalAdvance(QString::fromLatin1(key.Name)) + metrics.height());
    return std::clamp(WidthBelow() / widest, 1, MostKeysInARow);
}

void Window::ShowKeys(const std::vector<DeviceKey>& keys) {
    Keys_ = keys;
    for (const DeviceKey& key : Keys_) {
        auto* const button = new QToolButton(Strip_);
        button->setObjectName(QStringLiteral("key%1").arg(key.Code));
        button->setText(QString::fromLatin1(key.Name));
        button->setToolTip(QStringLiteral("Key %1").arg(key.Code));
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        const std::int32_t code = key.Code;
        QObject::connect(button, &QToolButton::pressed, [this, code] {
            if (KeyPressed)
                KeyPressed(code);
        });
        QObject::connect(button, &QToolButton::released, [this, code] {
            if (KeyReleased)
                KeyReleased(code);
        });
    }
    LayKeys();
}

/// The buttons stay the same: one may be held down while the scale or the font changes.
void Window::LayKeys() {
    delete Strip_->layout();
    auto* const grid = new QGridLayout(Strip_);
    grid->setContentsMargins(2, 2, 2, 2);
    grid->setSpacing(2);
    int place = 0;
    const QFont font = KeyFont();
    const int inARow = KeysInARow(Keys_, QFontMetrics(font));
    for (QToolButton* const button : Strip_->findChildren<QToolButton*>()) {
        button->setFont(font);
        grid->addWidget(button, place / inARow, place % inARow);
        ++place;
    }
    Strip_->setVisible(!Keys_.empty());
}

void Window::PutBelow(QWidget& bar) {
    Rest_->insertWidget(Rest_->indexOf(Strip_) + 1, &bar);
    bar.show();
    if (IsResizable())
        Fit();
    else
        SetScale(Scale()); // as far as there is still room
}

/// Returns a text of the status area as its label has room for it.
QString Window::Fitted(const QLabel& label, const QString& text) const {
    const bool isNotice = &label == Alarm_;
    const int room = WidthOfRest() - 2 * label.margin() - (isNotice ? WidthBesideNotice() : WidthBesideLink());
    if (!IsOneLine_)
        return isNotice || !IsHeld_ ? text : ElidedToLines(label.font(), text, room, LinesOfHeldLink);
    const QString remedy = isNotice && !Standing_.empty() ? ToQt(Standing_.front().Remedy) : QString();
    return ElidedBefore(label.font(), text, remedy, room);
}

void Window::Put(QLabel& label, const QString& text) {
    const QString fitted = Fitted(label, text);
    const bool isWhole = fitted.simplified() == text.simplified(); // but for line feeds
    label.setText(fitted);
    label.setToolTip(isWhole ? QString() : text + (&label == Alarm_ ? ListHint : QString()));
    label.setAccessibleName(text);
}

void Window::resizeEvent(QResizeEvent*) {
    ShowState();
    ShowAlarm();
}

/// The desktop's font or its colours have changed.
void Window::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    const bool isFont = event->type() == QEvent::FontChange;
    if (List_ == nullptr || (!isFont && event->type() != QEvent::PaletteChange))
        return; // the window is being made
    if (isFont) {
        Offered_.clear(); // their buttons are made again
        HoldLineHeights();
        SetScale(Scale());
    }
    ShowState();
    ShowAlarm();
}

QFont Window::KeyFont() const {
    QFont font = Strip_->font();
    font.setPixelSize(std::max(1, qRound(QFontInfo(font).pixelSize() * KeyText)));
    return font;
}

void Window::SetLinkLine(const companion::LinkLine& line) {
    const bool isNews = line.News != LinkLine_.News;
    LinkLine_ = line;
    ShowState();
    if (isNews)
        Announce(*Link_);
}

void Window::Say(const QString& words) {
    Said_ = words;
    Saying_->start();
    ShowState();
    Announce(*Link_, words);
}

void Window::FlashLink() {
    FlashesLeft_ = HalfFlashes;
    Flashing_->start();
    ShowState();
}

bool Window::IsDark() const {
    return palette().color(QPalette::Window).lightness() < 128;
}

QString Window::LinkLook() const {
    if (IsWorking_)
        return QStringLiteral("background: #ffd54f; color: black;");
    if (FlashesLeft_ > 0 && FlashesLeft_ % 2 == 0)
        return QStringLiteral("background: palette(window-text); color: palette(window);");
    switch (LinkLine_.Look) {
    case companion::LineLook::Plain:
        break;
    case companion::LineLook::Alive:
        return IsDark() ? QStringLiteral("color: #80e080;") : QStringLiteral("color: #006400;");
    case companion::LineLook::Alarm:
        return LinkAlarmLook;
    }
    return {};
}

void Window::ShowState() {
    const auto work = !IsWorking_  ? companion::Work::None
                      : IsWaiting_ ? companion::Work::Waiting
                                   : companion::Work::Long;
    Ports_->setVisible(LinkLine_.OffersPorts && !IsWorking_);
    const bool isAlarm = LinkLine_.Look == companion::LineLook::Alarm; // some of these last a few seconds only
    const QString words = Said_.isEmpty() || isAlarm ? LinkLine() : Said_;
    Put(*Link_, IsWorking_ ? QString::fromUtf8(companion::WorkText(work)) : words);
    if (const QString look = LinkLook(); look != Link_->styleSheet())
        Link_->setStyleSheet(look);
}

void Window::SetNotices(const companion::Notices& notices) {
    const std::vector<companion::Notice> before = std::exchange(Standing_, notices.Sorted());
    Behind_ = static_cast<int>(notices.Behind());
    ShowAlarm();
    Announce(*Alarm_, NewsSince(before));
    if (List_->isVisible())
        List_->Fill(Listed());
}

/// Returns what the list shows. A touch screen shows no tooltip: the list has a state of the link that is cut, too.
std::vector<companion::Notice> Window::Listed() const {
    std::vector<companion::Notice> listed = Standing_;
    if (IsHeld_ && !Link_->toolTip().isEmpty())
        listed.push_back({.Weight = companion::Severity::Note, .Words = FromQt(LinkLine())});
    return listed;
}

/// Returns what a screen reader says of the notices that are new, also of those that are in the list alone.
QString Window::NewsSince(const std::vector<companion::Notice>& before) const {
    QStringList news;
    for (const companion::Notice& notice : Standing_) {
        if (std::find(before.begin(), before.end(), notice) != before.end())
            continue;
        news.push_back(ToQt(notice.Words));
        QStringList offers;
        for (const companion::Offer& offer : notice.Offers)
            offers.push_back(ToQt(offer.Words));
        if (!offers.empty())
            news.push_back(QStringLiteral("Shift+F4 offers: %1.").arg(offers.join(QStringLiteral(", "))));
    }
    return news.join(QLatin1Char(' '));
}

void Window::ShowAlarm() {
    const bool warns = !Standing_.empty() && Standing_.front().Weight >= companion::Severity::Warning;
    const bool isShown = warns || (IsOneLine_ && !Standing_.empty());
    const bool isLink = isShown && Standing_.front().Action == companion::NoticeAction::Open;
    const QString text = isShown ? ToQt(Standing_.front().Words) : QString();
    Alarm_->setStyleSheet(warns ? AlarmLook : isLink ? (IsDark() ? FolderLookInTheDark : FolderLook) : QString());
    Alarm_->setCursor(isLink ? Qt::PointingHandCursor : Qt::ArrowCursor);
    More_->setStyleSheet(warns ? AlarmLook : QString());
    const int room = WidthOfRest() - 2 * Alarm_->margin() - ShowOffers();
    const bool hidesOffers = !Offered_.empty() && Offers_->itemAt(0)->widget()->isHidden();
    ShowMore(IsOneLine_ && (hidesOffers || Alarm_->fontMetrics().horizontalAdvance(text) > room));
    Put(*Alarm_, text);
    Alarm_->setVisible(warns || IsOneLine_);
}

/// Makes a button for each offer of the notice in the line, if there is room for them and for some of its words.
/// Returns their width.
int Window::ShowOffers() {
    const bool isShown = IsOneLine_ && !Standing_.empty();
    const std::vector<companion::Offer> offers = isShown ? Standing_.front().Offers : std::vector<companion::Offer>();
    if (offers != Offered_) {
        while (QLayoutItem* const item = Offers_->takeAt(0)) {
            item->widget()->deleteLater(); // it may be the one that was clicked
            item->widget()->hide();
            delete item;
        }
        for (const companion::Offer& offer : offers)
            Offers_->addWidget(OfferButton(offer));
        Offered_ = offers;
    }
    int needed = 0;
    for (int at = 0; at < Offers_->count(); ++at)
        needed += Offers_->itemAt(at)->widget()->sizeHint().width();
    const bool fits = needed <= WidthOfRest() * 2 / 3;
    for (int at = 0; at < Offers_->count(); ++at)
        Offers_->itemAt(at)->widget()->setVisible(fits);
    return fits ? needed : 0;
}

QToolButton* Window::OfferButton(const companion::Offer& offer) {
    auto* const button = new QToolButton(this);
    button->setObjectName(QStringLiteral("offer_") + ToQt(offer.Name));
    button->setText(ToQt(offer.Words));
    button->setAccessibleDescription(ToQt(Standing_.front().Words));
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedHeight(Alarm_->fontMetrics().height() + 2 * Alarm_->margin());
    QObject::connect(button, &QToolButton::clicked, this, [this, name = offer.Name] { TakeOffer(name); });
    return button;
}

void Window::TakeOffer(const Text& offer) {
    if (OfferTaken)
        OfferTaken(offer);
}

int Window::WidthBesideLink() const {
    return (Menu_->isHidden() ? 0 : Menu_->width()) + (Ports_->isHidden() ? 0 : Ports_->sizeHint().width());
}

/// Returns the width of what is shown in the notice's line besides its text.
int Window::WidthBesideNotice() const {
    int taken = More_->isHidden() ? 0 : More_->width();
    for (int at = 0; at < Offers_->count(); ++at)
        if (!Offers_->itemAt(at)->widget()->isHidden())
            taken += Offers_->itemAt(at)->widget()->sizeHint().width();
    return taken;
}

/// A touch screen shows no tooltip, so that the list is the only place where text that was cut can be read.
void Window::ShowMore(bool isCut) {
    More_->setText(Behind_ > 0 ? QStringLiteral("+%1").arg(Behind_) : QStringLiteral("…"));
    More_->setAccessibleName(Behind_ > 1    ? QStringLiteral("%1 more notices").arg(Behind_)
                             : Behind_ == 1 ? QStringLiteral("1 more notice")
                                            : QStringLiteral("The whole notice"));
    More_->setVisible(Behind_ > 0 || isCut);
    More_->setFixedSize(More_->sizeHint().width(), Alarm_->fontMetrics().height() + 2 * Alarm_->margin());
}

/// A notice is named by its subject: it may be gone by now, or another one may have its place.
void Window::TapNotice(const Text& about) {
    if (NoticeTapped)
        NoticeTapped(about);
}

/// A tap confirms a notice that waits for it. On any other one that is cut, it opens the list.
void Window::TapLine() {
    if (Standing_.front().Action == companion::NoticeAction::None && !Alarm_->toolTip().isEmpty())
        OpenNotices();
    else
        TapNotice(Text(Standing_.front().About));
}

/// Opens the list above the line, as wide as the window.
void Window::OpenNotices() {
    if (Listed().empty())
        return;
    List_->Fill(Listed());
    List_->Open(Alarm_->mapToGlobal(QPoint(0, 0)), width());
}

void Window::SetWorking(bool working) {
    IsWorking_ = working;
    ShowState();
    if (working)
        Link_->repaint();
}

void Window::SetWaiting(bool waiting) {
    IsWaiting_ = waiting;
    ShowState();
}

bool Window::eventFilter(QObject* object, QEvent* event) {
    if (object == Alarm_ && event->type() == QEvent::MouseButtonPress && !Standing_.empty())
        TapLine();
    if (object == Link_ && event->type() == QEvent::MouseButtonRelease)
        WantReadings();
    return false;
}

/// Closing the window is a Back: the program itself decides when it ends.
void Window::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (CloseRequested)
        CloseRequested();
}

void QtForm::SetBounds(const Box& twips) {
    Twips_ = twips;
    FormWidget_.Place(PixelsOf(*this));
}

Box QtForm::ClientArea() const {
    const Box form = PixelsOf(*this);
    return {0, 0, form.Width, form.Height};
}

} // namespace backends::qt
