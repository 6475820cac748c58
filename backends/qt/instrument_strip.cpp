// SPDX-License-Identifier: MIT
#include "backends/qt/instrument_strip.h"

#include "backends/qt/conversions.h"
#include "companion/instrument_words.h"

#include <QBoxLayout>

#include <algorithm>
#include <utility>

namespace backends::qt {

namespace {

constexpr int Gap = 2;
const QString LongWords = QStringLiteral("Simulated instrument: it sends what you press");

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
    Senders_.push_back(Button("sendAll", ToQt(companion::ButtonOfAll), [this] { AllWanted(); }));
    Senders_.push_back(Button("sendStranger", ToQt(companion::ButtonOfStranger), [this] { StrangerWanted(); }));
    Cable_ = Button("cable", QString(), [this] { CableWanted(); });
    SetPlugged(true);
    Every_ = new QCheckBox(ToQt(companion::ButtonOfTick), this);
    Every_->setObjectName(QStringLiteral("sendAlways"));
    Buttons_.push_back(Every_);
    Afresh_ = Button("startAfresh", ToQt(companion::ButtonOfAfresh), [this] { AfreshWanted(); });
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
    }
}

/// "Start afresh" stands beside the words where there is room for both.
bool InstrumentStrip::IsNarrow(int width) const {
    return width < fontMetrics().horizontalAdvance(LongWords) + Afresh_->sizeHint().width() + 4 * Gap;
}

/// Returns the row of each button, so that no text is cut: 0 is the line of the words.
std::vector<std::size_t> InstrumentStrip::RowsFor(int width) const {
    std::vector<std::size_t> rows;
    int left = width - 2 * Gap;
    std::size_t row = 1;
    for (const QAbstractButton* const button : Buttons_) {
        if (button == Afresh_ && !IsNarrow(width)) {
            rows.push_back(0);
            continue;
        }
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
    std::vector<QHBoxLayout*> lines(*std::max_element(rows.begin(), rows.end()) + 1);
    for (QHBoxLayout*& line : lines) {
        line = new QHBoxLayout;
        line->setSpacing(Gap);
        column->addLayout(line);
    }
    lines.front()->addWidget(Words_, 1);
    for (std::size_t place = 0; place < rows.size(); ++place) {
        const int needed = Buttons_[place]->sizeHint().width() + Gap;
        Buttons_[place]->setMaximumWidth(rows[place] == 0 ? needed : 2 * needed);
        Buttons_[place]->setSizePolicy(rows[place] == 0 ? QSizePolicy::Fixed : QSizePolicy::Ignored,
                                       QSizePolicy::Fixed);
        lines[rows[place]]->addWidget(Buttons_[place], rows[place] == 0 ? 0 : needed);
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
    Cable_->setText(ToQt(companion::ButtonOfCable(isPlugged)));
    Cable_->setShortcut(keys);
}

void InstrumentStrip::OfferAfresh(bool isEnabled) {
    Afresh_->show();
    Afresh_->setEnabled(isEnabled);
}

} // namespace backends::qt
