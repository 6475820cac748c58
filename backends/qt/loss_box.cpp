// SPDX-License-Identifier: MIT
#include "backends/qt/loss_box.h"

#include "backends/qt/dialogue.h"

namespace backends::qt {

void LossBox::Say(const QString& text) {
    if (OfForm.OfWindowStands) {
        if (Box->text() != text)
            Box->setText(text);
        return;
    }
    if (OfForm.Opening)
        OfForm.Opening();
    Box = std::make_unique<Dialogue>(&Window, OfForm.PersonIsTyping && OfForm.PersonIsTyping());
    Box->setObjectName(QStringLiteral("lossBox"));
    Box->setWindowTitle(QStringLiteral("Quorin"));
    Box->setTextFormat(Qt::PlainText);
    Box->setText(text);
    Box->setIcon(QMessageBox::Warning);
    Box->setStandardButtons(QMessageBox::Ok);
    Box->setWindowModality(Qt::ApplicationModal);
    QObject::connect(Box.get(), &QMessageBox::finished, [this] {
        OfForm.OfWindowStands = false;
        if (OfForm.Leaving)
            OfForm.Leaving();
        Seen();
    });
    OfForm.OfWindowStands = true;
    Box->show();
}

} // namespace backends::qt
