// SPDX-License-Identifier: MIT
#include "backends/qt/offer_bar.h"

#include "backends/qt/to_screen_reader.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace backends::qt {

OfferBar::OfferBar(QWidget* parent) : QFrame(parent), Words_(new QLabel(this)) {
    setObjectName(QStringLiteral("offer"));
    setAutoFillBackground(true);
    setStyleSheet(QStringLiteral("#offer { background: #ffd54f; } #offer QLabel { color: black; }"));
    Words_->setTextFormat(Qt::PlainText);
    Words_->setWordWrap(true);
    QSizePolicy rest = Words_->sizePolicy(); // the form alone decides on the window's width
    rest.setHorizontalPolicy(QSizePolicy::Ignored);
    Words_->setSizePolicy(rest);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(6, 2, 6, 2);
    row->addWidget(Words_, 1);
    auto* const button = new QPushButton(QStringLiteral("&Not now"), this);
    button->setFocusPolicy(Qt::NoFocus); // the form keeps the keys; Alt+N works all the same
    QObject::connect(button, &QPushButton::clicked, [this] {
        if (NotNow)
            NotNow();
    });
    row->addWidget(button);
    hide();
}

void OfferBar::Show(const QString& words) {
    if (words == Words_->text())
        return;
    Words_->setText(words);
    Words_->setAccessibleName(words);
    setVisible(!words.isEmpty());
    if (!words.isEmpty())
        Announce(*Words_);
}

} // namespace backends::qt
