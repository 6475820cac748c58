// SPDX-License-Identifier: MIT
#include "platform/qt/boxes.h"

#include "platform/qt/conversions.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
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

/// A text that has room on a screen: long lines and many of them lose their middles.
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

/// A box that may have come up under a person's hands: keys come to nothing until they have rested for half a second.
class Dialogue final : public QMessageBox {
public:
    Dialogue(QWidget* parent, bool underHands) : QMessageBox(parent) {
        if (!underHands)
            return;
        Rest.start();
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        constexpr qint64 Rested = 500; // milliseconds
        const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
                           event->type() == QEvent::ShortcutOverride;
        const bool isMine = object->isWidgetType() && static_cast<QWidget*>(object)->window() == this;
        if (!isKey || !isMine || !Rest.isValid())
            return QMessageBox::eventFilter(object, event);
        if (Rest.elapsed() >= Rested) {
            Rest.invalidate();
            return false;
        }
        Rest.start();
        return true;
    }

private:
    QElapsedTimer Rest;
};

} // namespace

void QtBoxes::Opened(OpenBox& box) {
    if (Opening)
        Opening();
    auto dialog = std::make_unique<Dialogue>(&Window, PersonIsTyping && PersonIsTyping());
    dialog->setObjectName(QStringLiteral("messageBox"));
    dialog->setWindowTitle(box.Title.empty() ? QStringLiteral("Quorin") : ToQt(box.Title));
    dialog->setTextFormat(Qt::PlainText);
    dialog->setText(Shortened(ToQt(box.Message)));
    if (dialog->text() != ToQt(box.Message))
        dialog->setDetailedText(ToQt(box.Message));
    dialog->setIcon(box.Icon == BoxIcon::Question ? QMessageBox::Question : QMessageBox::NoIcon);
    const bool isQuestion = box.Buttons == BoxButtons::YesNo;
    dialog->setStandardButtons(isQuestion ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    // Enter and Esc do no harm.
    dialog->setDefaultButton(isQuestion ? QMessageBox::No : QMessageBox::Ok);
    dialog->setEscapeButton(isQuestion ? QMessageBox::No : QMessageBox::Ok);
    dialog->setWindowModality(Qt::ApplicationModal);
    QObject::connect(dialog.get(), &QMessageBox::finished, [raw = dialog.get(), &box] {
        box.Answer = AnswerOf(*raw);
        box.Answered = true;
    });
    Dialogs.push_back(std::move(dialog));
    Dialogs.back()->show();
}

/// Boxes close in the order in which they wait: the innermost first.
void QtBoxes::Closed(OpenBox&) {
    Dialogs.pop_back();
}

void QtBoxes::Press(BoxAnswer answer) {
    Dialog()->button(ButtonOf(answer))->click();
}

} // namespace platform::qt
