// SPDX-License-Identifier: MIT
#include "platform/qt/boxes.h"

#include "platform/qt/conversions.h"

#include <QAbstractButton>
#include <QPushButton>

#include <algorithm>

namespace platform::qt {

namespace {

QMessageBox::StandardButton ButtonOf(BoxAnswer answer) {
    switch (answer) {
    case BoxAnswer::Yes:
        return QMessageBox::Yes;
    case BoxAnswer::No:
        return QMessageBox::No;
    case BoxAnswer::Ok:
        break;
    }
    return QMessageBox::Ok;
}

BoxAnswer AnswerOf(const QMessageBox& dialog) {
    if (dialog.standardButtons() == QMessageBox::Ok)
        return BoxAnswer::Ok;
    const bool yes = dialog.clickedButton() != nullptr && dialog.clickedButton() == dialog.button(QMessageBox::Yes);
    return yes ? BoxAnswer::Yes : BoxAnswer::No; // closed by Esc or by its frame: the safe side
}

} // namespace

void QtBoxes::Opened(OpenBox& box) {
    auto* const dialog = new QMessageBox(&Window);
    dialog->setObjectName(QStringLiteral("messageBox"));
    dialog->setWindowTitle(box.Title.empty() ? QStringLiteral("Quorin") : ToQt(box.Title));
    dialog->setTextFormat(Qt::PlainText);
    dialog->setText(ToQt(box.Message));
    dialog->setIcon(box.Icon == BoxIcon::Question ? QMessageBox::Question : QMessageBox::NoIcon);
    const bool isQuestion = box.Buttons == BoxButtons::YesNo;
    dialog->setStandardButtons(isQuestion ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    // Enter and Esc do no harm.
    dialog->setDefaultButton(isQuestion ? QMessageBox::No : QMessageBox::Ok);
    dialog->setEscapeButton(isQuestion ? QMessageBox::No : QMessageBox::Ok);
    dialog->setWindowModality(Qt::ApplicationModal);
    QObject::connect(dialog, &QMessageBox::finished, [this, dialog, &box] {
        box.Answer = AnswerOf(*dialog);
        box.Answered = true;
        Dialogs.erase(std::remove(Dialogs.begin(), Dialogs.end(), dialog), Dialogs.end());
        dialog->deleteLater();
    });
    Dialogs.push_back(dialog);
    dialog->show();
}

void QtBoxes::Press(BoxAnswer answer) {
    Dialog()->button(ButtonOf(answer))->click();
}

} // namespace platform::qt
