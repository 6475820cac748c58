// SPDX-License-Identifier: MIT
#include "backends/qt/report_dialog.h"

#include "backends/qt/beside_form.h"

#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace backends::qt {

namespace {

constexpr QSize DialogSize(720, 560); // pixels of the screen

const QString WhatGoesIn = QStringLiteral("One text file, for those who look after the program. Below is all that goes "
                                          "in: versions, settings, and what was done "
                                          "and received on one day. What was typed, values, names and paths are masked "
                                          "(x for a letter, 0 for a digit); result "
                                          "types and units stay. Nothing is sent: you choose where the file is saved.");

} // namespace

ReportDialog::ReportDialog(ReportSource source, QWidget& form) : Source_(std::move(source)), Form_(form) {
    setObjectName(QStringLiteral("report"));
    setWindowTitle(QStringLiteral("Report a problem"));
    auto* const column = new QVBoxLayout(this);
    auto* const words = new QLabel(WhatGoesIn, this);
    words->setWordWrap(true);
    column->addWidget(words);
    MakeChoices(*column);
    Preview_ = new QPlainTextEdit(this);
    Preview_->setReadOnly(true);
    Preview_->setLineWrapMode(QPlainTextEdit::NoWrap);
    Preview_->setAccessibleName(QStringLiteral("The file as it will be saved"));
    column->addWidget(Preview_, 1);
    MakeFoot(*column);
    addActions(form.actions());
    resize(DialogSize);
}

void ReportDialog::MakeChoices(QBoxLayout& column) {
    auto* const row = new QHBoxLayout;
    auto* const title = new QLabel(QStringLiteral("&Day:"), this);
    Days_ = new QComboBox(this);
    title->setBuddy(Days_);
    row->addWidget(title);
    row->addWidget(Days_);
    row->addStretch();
    column.addLayout(row);
    Whole_ = new QCheckBox(QStringLiteral("&With all texts, values, names and paths"), this);
    Whole_->setToolTip(QStringLiteral("Everything is as it was: whoever gets the file can read it."));
    column.addWidget(Whole_);
    QObject::connect(Days_, &QComboBox::currentIndexChanged, this, [this] { MakeText(); });
    QObject::connect(Whole_, &QCheckBox::toggled, this, [this] { MakeText(); });
}

void ReportDialog::MakeFoot(QBoxLayout& column) {
    auto* const place = new QHBoxLayout;
    Path_ = new QLineEdit(this);
    Path_->setAccessibleName(QStringLiteral("File to save"));
    auto* const choose = new QPushButton(QStringLiteral("&Choose…"), this);
    Save_ = new QPushButton(QStringLiteral("&Save"), this);
    place->addWidget(Path_, 1);
    place->addWidget(choose);
    place->addWidget(Save_);
    column.addLayout(place);
    auto* const row = new QHBoxLayout;
    State_ = new QLabel(this);
    State_->setObjectName(QStringLiteral("reportState"));
    State_->setTextFormat(Qt::PlainText);
    State_->setWordWrap(true);
    Replace_ = new QPushButton(QStringLiteral("&Replace it"), this);
    Replace_->hide();
    auto* const done = new QPushButton(QStringLiteral("Close"), this);
    row->addWidget(State_, 1);
    row->addWidget(Replace_);
    row->addWidget(done);
    column.addLayout(row);
    QObject::connect(Path_, &QLineEdit::textChanged, this, [this] { Tell({}); });
    QObject::connect(Path_, &QLineEdit::returnPressed, this, [this] { Save(false); });
    QObject::connect(choose, &QPushButton::clicked, this, [this] { ChoosePath(); });
    QObject::connect(Save_, &QPushButton::clicked, this, [this] { Save(false); });
    QObject::connect(Replace_, &QPushButton::clicked, this, [this] { Save(true); });
    QObject::connect(done, &QPushButton::clicked, this, [this] { close(); });
}

/// Each time it is opened, nothing is unmasked until a person asks for it.
void ReportDialog::Open() {
    if (!isVisible()) {
        const QSignalBlocker quiet(Whole_);
        Whole_->setChecked(false);
        Path_->setText(QFile::decodeName(QByteArray::fromStdString(Source_.Path())));
    }
    {
        const QSignalBlocker quiet(Days_);
        Days_->clear();
        for (const std::string& day : Source_.Days())
            Days_->addItem(QString::fromStdString(day));
    }
    MakeText();
    if (!std::exchange(WasPlaced_, true))
        PutBeside(*this, Form_);
    BringForward(*this);
    Save_->setFocus();
}

void ReportDialog::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    GiveKeyboardBack(Form_);
}

void ReportDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void ReportDialog::MakeText() {
    Report_ = Source_.Text(Days_->currentText().toStdString(), Whole_->isChecked());
    Preview_->setPlainText(QString::fromStdString(Report_));
    Tell({});
}

/// This dialog asks itself whether a file is to be replaced.
void ReportDialog::ChoosePath() {
    auto* const dialog = new QFileDialog(this, QStringLiteral("Save the report"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->selectFile(Path_->text());
    QObject::connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& file) { Path_->setText(file); });
    dialog->open();
}

void ReportDialog::Save(bool replaces) {
    const QString path = Path_->text().trimmed();
    if (path.isEmpty())
        return Tell(QStringLiteral("Say where the file is to be saved."));
    const ReportSource::Outcome outcome = Source_.Save(QFile::encodeName(path).toStdString(), Report_, replaces);
    if (outcome.Result == ReportSource::Step::Exists)
        Tell(QStringLiteral("There is a file of this name already."), true);
    else if (outcome.Result == ReportSource::Step::Failed)
        Tell(QStringLiteral("Not saved: %1. Choose another place.").arg(QString::fromStdString(outcome.Why)));
    else
        Tell(QStringLiteral("Saved: %1").arg(path));
}

void ReportDialog::Tell(const QString& what, bool asksToReplace) {
    State_->setText(what);
    Replace_->setVisible(asksToReplace);
}

} // namespace backends::qt
