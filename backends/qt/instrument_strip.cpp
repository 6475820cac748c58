// SPDX-License-Identifier: MIT
#include "backends/qt/instrument_strip.h"

#include <QBoxLayout>

#include <utility>

namespace backends::qt {

namespace {

constexpr int Gap = 2;

} // namespace

InstrumentStrip::InstrumentStrip(QWidget* parent, const std::vector<QString>& kinds, const QFont& font, int width)
    : QWidget(parent) {
    setObjectName(QStringLiteral("instrumentStrip"));
    setAccessibleName(QStringLiteral("Simulated instrument"));
    setFont(font);
    Words_ = new QLabel(this);
    Words_->setObjectName(QStringLiteral("instrumentState"));
    Words_->setTextFormat(Qt::PlainText);
    QSizePolicy rest = Words_->sizePolicy(); // the form alone decides on the window's width
    rest.setHorizontalPolicy(QSizePolicy::Ignored);
    Words_->setSizePolicy(rest);
    for (std::size_t kind = 0; kind < kinds.size(); ++kind)
        Senders_.push_back(Button("sendKind", kinds[kind], [this, kind] { KindWanted(kind); }));
    Senders_.push_back(Button("sendAll", QStringLiteral("All"), [this] { AllWanted(); }));
    Senders_.push_back(Button("sendStranger", QStringLiteral("A stranger's reading"), [this] { StrangerWanted(); }));
    Cable_ = Button("cable", QString(), [this] { CableWanted(); });
    SetPlugged(true);
    Every_ = new QCheckBox(QStringLiteral("every 10 s"), this);
    Every_->setObjectName(QStringLiteral("sendAlways"));
    Buttons_.push_back(Every_);
    Afresh_ = Button("startAfresh", QStringLiteral("Start afresh"), [this] { AfreshWanted(); });
    Afresh_->hide();
    NumberButtons();
    Lay(RowsFor(width));
}

QToolButton* InstrumentStrip::Button(const char* name, const QString& words, std::function<void()> pressed) {
    auto* const button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(words);
    QObject::connect(button, &QToolButton::clicked, this, [run = std::move(pressed)] { run(); });
    Buttons_.push_back(button);
    return button;
}

void InstrumentStrip::NumberButtons() {
    for (std::size_t place = 0; place < Buttons_.size(); ++place) {
        QAbstractButton* const button = Buttons_[place];
        button->setFocusPolicy(Qt::NoFocus);
        button->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(place))));
        button->setToolTip(QStringLiteral("Alt+%1").arg(place + 1));
        button->setAccessibleDescription(button->toolTip());
        if (button != Afresh_)
            button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }
}

/// Returns the row of each button, so that no text is cut. "Start afresh" stands in the line above.
std::vector<std::size_t> InstrumentStrip::RowsFor(int width) const {
    std::vector<std::size_t> rows;
    int left = width - 2 * Gap;
    std::size_t row = 0;
    for (const QAbstractButton* const button : Buttons_) {
        if (button == Afresh_)
            continue;
        const int needed = button->sizeHint().width() + Gap;
        if (needed > left && !rows.empty()) {
            ++row;
            left = width - 2 * Gap;
        }
        left -= needed;
        rows.push_back(row);
    }
    return rows;
}

/// The buttons stay the same: one may be held down while the window changes its width.
void InstrumentStrip::Lay(const std::vector<std::size_t>& rows) {
    delete layout();
    Rows_ = rows;
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(Gap, 1, Gap, 1);
    column->setSpacing(1);
    auto* const top = new QHBoxLayout;
    top->addWidget(Words_, 1);
    top->addWidget(Afresh_);
    column->addLayout(top);
    std::vector<QHBoxLayout*> lines(rows.empty() ? 0 : rows.back() + 1);
    for (QHBoxLayout*& line : lines) {
        line = new QHBoxLayout;
        line->setSpacing(Gap);
        column->addLayout(line);
    }
    for (std::size_t place = 0; place < rows.size(); ++place) {
        const int needed = Buttons_[place]->sizeHint().width() + Gap;
        Buttons_[place]->setMaximumWidth(2 * needed);
        lines[rows[place]]->addWidget(Buttons_[place], needed);
    }
}

void InstrumentStrip::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (const auto rows = RowsFor(width()); rows != Rows_)
        Lay(rows);
}

void InstrumentStrip::SetWords(const QString& words) {
    if (words == Words_->text())
        return;
    Words_->setText(words);
    Words_->setAccessibleName(words);
    Words_->setToolTip(words);
}

void InstrumentStrip::SetHeard(bool isHeard) {
    for (QToolButton* const button : Senders_)
        button->setEnabled(isHeard);
}

void InstrumentStrip::SetPlugged(bool isPlugged) {
    const QKeySequence keys = Cable_->shortcut(); // a new text removes them
    Cable_->setText(isPlugged ? QStringLiteral("Unplug") : QStringLiteral("Plug in"));
    Cable_->setShortcut(keys);
}

void InstrumentStrip::OfferAfresh(bool isEnabled) {
    Afresh_->show();
    Afresh_->setEnabled(isEnabled);
}

} // namespace backends::qt
