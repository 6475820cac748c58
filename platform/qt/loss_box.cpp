// SPDX-License-Identifier: MIT
#include "platform/qt/loss_box.h"

namespace platform::qt {

void LossBox::Say(const QString& text) {
    if (IsOpen) {
        if (Box->text() != text)
            Box->setText(text);
        return;
    }
    Box = std::make_unique<QMessageBox>(QMessageBox::Warning, QStringLiteral("Quorin"), text, QMessageBox::Ok, &Window);
    Box->setObjectName(QStringLiteral("lossBox"));
    Box->setTextFormat(Qt::PlainText);
    Box->setWindowModality(Qt::ApplicationModal);
    QObject::connect(Box.get(), &QMessageBox::finished, [this] {
        IsOpen = false;
        Seen();
    });
    IsOpen = true;
    Box->show();
}

} // namespace platform::qt
