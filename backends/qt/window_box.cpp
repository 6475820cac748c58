// SPDX-License-Identifier: MIT
#include "backends/qt/window_box.h"

#include "backends/qt/dialogue.h"

#include <utility>

namespace backends::qt {

WindowBox::~WindowBox() {
    if (Box_)
        Box_->disconnect();
    if (IsOpen_)
        Left();
}

void WindowBox::Open(const QString& text, const BoxLook& look,
                     std::function<void(QMessageBox::StandardButton)> closed) {
    Boxes_.OfWindowOpens();
    Box_ = std::make_unique<Dialogue>(&Window_, Boxes_.PersonIsTyping && Boxes_.PersonIsTyping());
    Box_->setObjectName(QString::fromLatin1(look.Name));
    Box_->setWindowTitle(QStringLiteral("Quorin"));
    Box_->setTextFormat(Qt::PlainText);
    Box_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Box_->setText(text);
    Box_->setIcon(look.Icon);
    Box_->setStandardButtons(look.Buttons);
    Box_->setDefaultButton(look.Safe);
    Box_->setEscapeButton(look.Safe);
    Box_->setWindowModality(Qt::WindowModal);
    QObject::connect(Box_.get(), &QMessageBox::finished, [this, tell = std::move(closed)](int button) {
        Left();
        tell(static_cast<QMessageBox::StandardButton>(button));
    });
    IsOpen_ = true;
    Box_->show();
}

void WindowBox::Left() {
    IsOpen_ = false;
    Boxes_.OfWindowClosed();
}

} // namespace backends::qt
