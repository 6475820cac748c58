// SPDX-License-Identifier: MIT
#include "backends/qt/boxes.h"

#include "backends/qt/conversions.h"
#include "backends/qt/dialogue.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QPushButton>

#include <algorithm>

namespace backends::qt {

namespace {

BoxAnswer AnswerOf(const QMessageBox& dialog) {
    if (dialog.standardButtons() == QMessageBox::Ok)
        return BoxAnswer::Ok;
    const bool yes = dialog.clickedButton() != nullptr && dialog.clickedButton() == dialog.button(QMessageBox::Yes);
    return yes ? BoxAnswer::Yes : BoxAnswer::No; // closed by Esc or by its frame: the safe answer
}

/// Shortens a text until it fits on a screen: leaves out the middle of a long line, and of a long list of lines.
QString Shortened(const QString& text) {
    constexpr qsizetype LongestLine = 300;
    constexpr qsizetype MostLines = 20;
    const QString sign = QStringLiteral("…");
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.size() > LongestLine)
            line = line.left(LongestLine / 2) + sign + line.right(LongestLine / 2);
    }
    if (lines.size() > MostLines)
        lines = lines.mid(0, MostLines / 2) + QStringList(sign) + lines.mid(lines.size() - MostLines / 2);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

void QtBoxes::Opened(OpenBox& box) {
    auto dialog = std::make_unique<Dialogue>(&Window_, PersonIsTyping && PersonIsTyping());
    dialog->setObjectName(QStringLiteral("messageBox"));
    dialog->setWindowTitle(box.Title.empty() ? QStringLiteral("Quorin") : ToQt(box.Title));
    dialog->setTextFormat(Qt::PlainText);
    dialog->setText(Shortened(ToQt(box.Message)));
    if (dialog->text() != ToQt(box.Message))
        dialog->setDetailedText(ToQt(box.Message));
    if (Piled())
        dialog->setInformativeText(QStringLiteral("The newer of two questions: the other one is behind it."));
    dialog->setIcon(box.Icon == BoxIcon::Question ? QMessageBox::Question : QMessageBox::NoIcon);
    const bool isQuestion = box.Buttons == BoxButtons::YesNo;
    if (isQuestion && OffersPause && OffersPause(box.Message))
        OfferPause(*dialog);
    dialog->setStandardButtons(isQuestion ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    // Enter and Esc give the harmless answer.
    dialog->setDefaultButton(isQuestion ? QMessageBox::No : QMessageBox::Ok);
    dialog->setEscapeButton(isQuestion ? QMessageBox::No : QMessageBox::Ok);
    dialog->setWindowModality(Qt::WindowModal); // the panel of readings can be read meanwhile
    QObject::connect(dialog.get(), &QMessageBox::finished, [raw = dialog.get(), &box] {
        box.Answer = AnswerOf(*raw);
        box.Answered = true;
    });
    Dialogs_.push_back(std::move(dialog));
    Dialogs_.back()->show();
}

/// Nothing of the window itself can be reached while the box is open.
void QtBoxes::OfferPause(QMessageBox& dialog) const {
    auto* const pause = new QCheckBox(QStringLiteral("&Pause the link"), &dialog);
    pause->setObjectName(QStringLiteral("pauseLink"));
    pause->setToolTip(QStringLiteral("What the instrument sends waits until you go on, or leave the record."));
    pause->setAccessibleDescription(pause->toolTip());
    pause->setChecked(LinkIsPaused());
    QObject::connect(pause, &QCheckBox::toggled, [this](bool isTicked) { PauseLink(isTicked); });
    dialog.setCheckBox(pause);
}

void QtBoxes::OfWindowOpens() {
    if (Opening)
        Opening();
    ++OfWindow_;
}

void QtBoxes::OfWindowClosed() {
    --OfWindow_;
    if (Leaving)
        Leaving();
}

/// Boxes close in the order in which they wait: the innermost first.
void QtBoxes::Closed(OpenBox&) {
    Dialogs_.pop_back();
    if (Leaving)
        Leaving();
}

} // namespace backends::qt
