// SPDX-License-Identifier: MIT
#include "backends/qt/save_place.h"

#include <QFileDialog>

#include <utility>

namespace backends::qt {

SavePlace::SavePlace(QWidget& window, QString title, const char* state)
    : Window_(window), Title_(std::move(title)), Row_(new QHBoxLayout), Path_(new QLineEdit(&window)),
      Save_(new QPushButton(QStringLiteral("&Save"), &window)),
      Replace_(new QPushButton(QStringLiteral("&Replace it"), &window)), State_(new QLabel(&window)) {
    Path_->setAccessibleName(QStringLiteral("File to save"));
    auto* const choose = new QPushButton(QStringLiteral("C&hoose…"), &window);
    Row_->addWidget(Path_, 1);
    Row_->addWidget(choose);
    Row_->addWidget(Save_);
    State_->setObjectName(QString::fromLatin1(state));
    State_->setTextFormat(Qt::PlainText);
    State_->setWordWrap(true);
    Replace_->hide();
    QObject::connect(Path_, &QLineEdit::textChanged, &window, [this] { Tell({}); });
    QObject::connect(Path_, &QLineEdit::returnPressed, &window, [this] { Want(false); });
    QObject::connect(choose, &QPushButton::clicked, &window, [this] { Choose(); });
    QObject::connect(Save_, &QPushButton::clicked, &window, [this] { Want(false); });
    QObject::connect(Replace_, &QPushButton::clicked, &window, [this] { Want(true); });
}

void SavePlace::Choose() {
    auto* const dialog = new QFileDialog(&Window_, Title_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->selectFile(Path_->text());
    QObject::connect(dialog, &QFileDialog::fileSelected, &Window_,
                     [this](const QString& file) { Path_->setText(file); });
    dialog->open();
}

void SavePlace::Want(bool replaces) {
    const QString path = Path_->text().trimmed();
    if (path.isEmpty())
        return Tell(QStringLiteral("Say where the file is to be saved."));
    Wanted(path, replaces);
}

void SavePlace::Tell(const QString& what) {
    State_->setText(what);
    Replace_->hide();
}

bool SavePlace::TakeQuestionBack() {
    if (Replace_->isHidden())
        return false;
    Tell({});
    Path_->setFocus();
    return true;
}

void SavePlace::AskToReplace() {
    State_->setText(QStringLiteral("There is a file of this name already."));
    Replace_->show();
}

} // namespace backends::qt
