// SPDX-License-Identifier: MIT
#include "backends/qt/loss_box.h"

#include "backends/qt/dialogue.h"

namespace backends::qt {

void LossBox::Say(const QString& text) {
    if (Boxes_.OfWindowIsOpen) {
        if (Box_->text() != text)
            Box_->setText(text);
        return;
    }
    if (Boxes_.Opening)
        Boxes_.Opening();
    Box_ = std::make_unique<Dialogue>(&Window_, Boxes_.PersonIsTyping && Boxes_.PersonIsTyping());
    Box_->setObjectName(QStringLiteral("lossBox"));
    Box_->setWindowTitle(QStringLiteral("Quorin"));
    Box_->setTextFormat(Qt::PlainText);
    Box_->setText(text);
    Box_->setIcon(QMessageBox::Warning);
    Box_->setStandardButtons(QMessageBox::Ok);
    Box_->setWindowModality(Qt::WindowModal);
    QObject::connect(Box_.get(), &QMessageBox::finished, [this] {
        Boxes_.OfWindowIsOpen = false;
        if (Boxes_.Leaving)
            Boxes_.Leaving();
        Seen_();
    });
    Boxes_.OfWindowIsOpen = true;
    Box_->show();
}

} // namespace backends::qt
