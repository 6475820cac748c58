// SPDX-License-Identifier: MIT
#include "backends/qt/report_dialog.h"

#include <QFile>
#include <QHBoxLayout>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace backends::qt {

namespace {

constexpr QSize DialogSize(720, 560); // pixels of the screen
constexpr int LeastPreview = 40;      // likewise
constexpr QSize Frame(8, 48);         // at most, of a window

const QString WhatGoesIn =
    QStringLiteral("One text file, for those who look after the program. Below is all that goes "
                   "in: versions, settings, and what was done "
                   "and received on one day. What was typed, values, names and paths are masked "
                   "(x for a letter, 0 for a digit); result "
                   "types and units stay. Take out what else you do not wish to give away: the text is "
                   "saved as you see it. Nothing is sent: you choose where the file is saved.");

} // namespace

ReportDialog::ReportDialog(ReportSource source, QWidget& form)
    : BesideForm(form, "report", QStringLiteral("Report a problem"), DialogSize), Source_(std::move(source)),
      Place_(*this, QStringLiteral("Save the report"), "reportState") {
    auto* const column = new QVBoxLayout(this);
    Words_ = new QLabel(WhatGoesIn, this);
    Words_->setWordWrap(true);
    column->addWidget(Words_);
    MakeChoices(*column);
    Preview_ = new QPlainTextEdit(this);
    Preview_->setMinimumHeight(LeastPreview);
    Preview_->setLineWrapMode(QPlainTextEdit::NoWrap);
    Preview_->setAccessibleName(QStringLiteral("The file as it will be saved"));
    column->addWidget(Preview_, 1);
    QObject::connect(Preview_, &QPlainTextEdit::modificationChanged, this, [this](bool is) { TakeChange(is); });
    QObject::connect(Preview_, &QPlainTextEdit::textChanged, this, [this] { Place_.Tell({}); });
    MakeFoot(*column);
}

void ReportDialog::MakeChoices(QBoxLayout& column) {
    auto* const row = new QHBoxLayout;
    auto* const title = new QLabel(QStringLiteral("&Day:"), this);
    Days_ = new QComboBox(this);
    title->setBuddy(Days_);
    row->addWidget(title);
    row->addWidget(Days_);
    row->addStretch();
    Undo_ = new QPushButton(QStringLiteral("&Undo my changes"), this);
    Undo_->hide();
    row->addWidget(Undo_);
    column.addLayout(row);
    Whole_ = new QCheckBox(QStringLiteral("&With all texts, values, names and paths"), this);
    Whole_->setToolTip(QStringLiteral("Everything is as it was: whoever gets the file can read it."));
    column.addWidget(Whole_);
    QObject::connect(Days_, &QComboBox::currentIndexChanged, this, [this] { MakeText(); });
    QObject::connect(Whole_, &QCheckBox::toggled, this, [this] { MakeText(); });
    QObject::connect(Undo_, &QPushButton::clicked, this, [this] { MakeText(); });
}

void ReportDialog::MakeFoot(QBoxLayout& column) {
    column.addLayout(Place_.Row());
    auto* const row = new QHBoxLayout;
    auto* const done = new QPushButton(QStringLiteral("Close"), this);
    row->addWidget(&Place_.State(), 1);
    row->addWidget(&Place_.Replace());
    row->addWidget(done);
    column.addLayout(row);
    Place_.Wanted = [this](const QString& path, bool replaces) { Save(path, replaces); };
    QObject::connect(done, &QPushButton::clicked, this, [this] { close(); });
}

void ReportDialog::FitInto(const QSize& room) {
    Words_->show();
    Words_->setVisible(layout()->totalMinimumHeightForWidth(std::min(width(), room.width())) <= room.height());
}

/// Each time it is opened, nothing is unmasked until a person asks for it. A text that a person has changed is kept.
void ReportDialog::Open() {
    if (Preview_->document()->isModified())
        return ComeForward();
    if (!isVisible()) {
        const QSignalBlocker quiet(Whole_);
        Whole_->setChecked(false);
        Place_.SetPath(QFile::decodeName(QByteArray::fromStdString(Source_.Path())));
    }
    {
        const QSignalBlocker quiet(Days_);
        Days_->clear();
        for (const std::string& day : Source_.Days())
            Days_->addItem(QString::fromStdString(day));
    }
    MakeText();
    FitInto(screen()->availableGeometry().size() - Frame);
    ComeForward();
    Place_.Save().setFocus();
}

void ReportDialog::MakeText() {
    Report_ = Source_.Text(Days_->currentText().toStdString(), Whole_->isChecked());
    Preview_->setPlainText(QString::fromStdString(Report_));
    Place_.Tell({});
}

/// Another day, or the whole text, would be another text, without what the person has changed.
void ReportDialog::TakeChange(bool isChanged) {
    Undo_->setVisible(isChanged);
    Days_->setEnabled(!isChanged);
    Whole_->setEnabled(!isChanged);
}

/// The widget shows some characters as others (a no-break space), which stay as long as nothing was changed.
std::string ReportDialog::Shown() const {
    return Preview_->document()->isModified() ? Preview_->toPlainText().toStdString() : Report_;
}

void ReportDialog::Save(const QString& path, bool replaces) {
    const ReportSource::Outcome outcome = Source_.Save(QFile::encodeName(path).toStdString(), Shown(), replaces);
    if (outcome.Result == ReportSource::Step::Exists)
        Place_.AskToReplace();
    else if (outcome.Result == ReportSource::Step::Failed)
        Place_.Tell(QStringLiteral("Not saved: %1. Choose another place.").arg(QString::fromStdString(outcome.Why)));
    else
        Place_.Tell(QStringLiteral("Saved: %1").arg(path));
}

} // namespace backends::qt
