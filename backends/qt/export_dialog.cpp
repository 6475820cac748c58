// SPDX-License-Identifier: MIT
#include "backends/qt/export_dialog.h"

#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPointer>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace backends::qt {

namespace {

constexpr QSize DialogSize(720, 480); // pixels of the screen
constexpr int ListShare = 1;          // of the width, beside the preview
constexpr int PreviewShare = 3;

const QString NoDownload = QStringLiteral("No download is open: open one, or go to the list of a driver's downloads.");

} // namespace

ExportDialog::ExportDialog(ExportSource source, QWidget& form)
    : BesideForm(form, "export", QStringLiteral("Export"), DialogSize), Source_(std::move(source)),
      Place_(*this, QStringLiteral("Export"), "exportState") {
    auto* const column = new QVBoxLayout(this);
    Title_ = new QLabel(this);
    Title_->setObjectName(QStringLiteral("exportTitle"));
    Title_->setTextFormat(Qt::PlainText);
    Title_->setWordWrap(true);
    column->addWidget(Title_);
    MakeChoices(*column);
    MakeTables(*column);
    MakeFoot(*column);
}

void ExportDialog::MakeChoices(QBoxLayout& column) {
    auto* const row = new QHBoxLayout;
    auto* const title = new QLabel(QStringLiteral("&Format:"), this);
    Formats_ = new QComboBox(this);
    title->setBuddy(Formats_);
    for (const ExportSource::Format& format : Source_.Formats)
        Formats_->addItem(QString::fromStdString(format.Words), QString::fromStdString(format.Name));
    row->addWidget(title);
    row->addWidget(Formats_);
    row->addStretch();
    column.addLayout(row);
    QObject::connect(Formats_, &QComboBox::currentIndexChanged, this, [this] { ProposePath(); });
}

void ExportDialog::MakeTables(QBoxLayout& column) {
    auto* const row = new QHBoxLayout;
    Columns_ = new QListWidget(this);
    Columns_->setAccessibleName(QStringLiteral("Columns"));
    Preview_ = new QTableWidget(this);
    Preview_->setAccessibleName(QStringLiteral("The first records"));
    Preview_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    Preview_->verticalHeader()->hide();
    row->addWidget(Columns_, ListShare);
    row->addWidget(Preview_, PreviewShare);
    column.addLayout(row, 1);
    QObject::connect(Columns_, &QListWidget::itemChanged, this, [this] { ShowColumns(); });
}

void ExportDialog::MakeFoot(QBoxLayout& column) {
    column.addLayout(Place_.Row());
    column.addWidget(&Place_.State());
    auto* const row = new QHBoxLayout;
    Copy_ = new QPushButton(QStringLiteral("&Copy as table"), this);
    Copy_->setToolTip(QStringLiteral("All records with the chosen columns, for a spreadsheet that is open."));
    OpenIn_ = new QPushButton(QStringLiteral("&Open in…"), this);
    OpenIn_->setToolTip(QStringLiteral("Opens a copy in the program that the desktop has for the format."));
    auto* const done = new QPushButton(QStringLiteral("Close"), this);
    for (QPushButton* const button : {Copy_, OpenIn_})
        row->addWidget(button);
    row->addStretch();
    row->addWidget(&Place_.Replace());
    row->addWidget(done);
    column.addLayout(row);
    Place_.Wanted = [this](const QString& path, bool replaces) { Save(path, replaces); };
    QObject::connect(Copy_, &QPushButton::clicked, this, [this] {
        Run(QStringLiteral("Copying…"), Source_.Copy, QStringLiteral("The table is in the clipboard."));
    });
    QObject::connect(OpenIn_, &QPushButton::clicked, this,
                     [this] { Run(QStringLiteral("Opening…"), Source_.OpenIn, QStringLiteral("Opened a copy.")); });
    QObject::connect(done, &QPushButton::clicked, this, [this] { close(); });
}

void ExportDialog::Open() {
    const std::string download = Source_.Download();
    Title_->setText(download.empty() ? NoDownload : QString::fromStdString(download));
    const int format = Formats_->findData(QString::fromStdString(Source_.Last().Format));
    Formats_->setCurrentIndex(std::max(format, 0));
    ProposePath();
    Show({});
    if (!download.empty()) {
        Place_.Tell(QStringLiteral("Reading…"));
        const int asked = ++Asked_;
        Source_.Preview([dialog = QPointer<ExportDialog>(this), asked](const ExportPreview& preview) {
            if (dialog != nullptr && dialog->Asked_ == asked)
                dialog->Show(preview);
        });
    }
    ComeForward();
    Place_.Save().setFocus();
}

/// A column that was left out the last time is left out again, also of another driver.
void ExportDialog::Show(const ExportPreview& preview) {
    const QSignalBlocker quiet(Columns_);
    const std::vector<std::string> leftOut = Source_.Last().LeftOut;
    Columns_->clear();
    Preview_->setColumnCount(static_cast<int>(preview.Columns.size()));
    Preview_->setRowCount(static_cast<int>(preview.Rows.size()));
    for (std::size_t column = 0; column < preview.Columns.size(); ++column) {
        const std::string& name = preview.Columns[column];
        auto* const item = new QListWidgetItem(QString::fromStdString(name), Columns_);
        const bool isChosen = std::find(leftOut.begin(), leftOut.end(), name) == leftOut.end();
        item->setCheckState(isChosen ? Qt::Checked : Qt::Unchecked);
        Preview_->setHorizontalHeaderItem(static_cast<int>(column), new QTableWidgetItem(item->text()));
        for (std::size_t row = 0; row < preview.Rows.size(); ++row)
            Preview_->setItem(static_cast<int>(row), static_cast<int>(column),
                              new QTableWidgetItem(QString::fromStdString(preview.Rows[row][column])));
    }
    Preview_->resizeColumnsToContents();
    Place_.Tell(QString::fromStdString(preview.Why));
    ShowColumns();
}

void ExportDialog::ShowColumns() {
    for (int column = 0; column < Columns_->count(); ++column)
        Preview_->setColumnHidden(column, Columns_->item(column)->checkState() != Qt::Checked);
    SetWorking(IsWorking_);
}

ExportChoice ExportDialog::Choice() const {
    ExportChoice choice{Formats_->currentData().toString().toStdString(), {}, {}};
    for (int column = 0; column < Columns_->count(); ++column) {
        const QListWidgetItem& item = *Columns_->item(column);
        auto& names = item.checkState() == Qt::Checked ? choice.Columns : choice.LeftOut;
        names.push_back(item.text().toStdString());
    }
    return choice;
}

void ExportDialog::ProposePath() {
    const auto format = static_cast<std::size_t>(std::max(Formats_->currentIndex(), 0));
    if (format < Source_.Formats.size())
        Place_.SetPath(QFile::decodeName(QByteArray::fromStdString(Source_.Path(Source_.Formats[format].Ending))));
}

void ExportDialog::Save(const QString& path, bool replaces) {
    if (!replaces && QFile::exists(path))
        return Place_.AskToReplace();
    const std::string file = QFile::encodeName(path).toStdString();
    Run(
        QStringLiteral("Saving…"),
        [this, &file](const ExportChoice& choice, const ExportSource::Done& done) { Source_.Save(choice, file, done); },
        QStringLiteral("Saved: %1").arg(path));
}

void ExportDialog::Run(const QString& what, const std::function<void(const ExportChoice&, ExportSource::Done)>& act,
                       const QString& done) {
    const ExportChoice choice = Choice();
    Source_.Remember(choice);
    Place_.Tell(what);
    SetWorking(true);
    act(choice, [dialog = QPointer<ExportDialog>(this), done](const std::string& why, const std::string& odd) {
        if (dialog == nullptr)
            return;
        dialog->SetWorking(false);
        if (!why.empty())
            dialog->Place_.Tell(QString::fromStdString(why));
        else
            dialog->Place_.Tell(odd.empty() ? done : done + QStringLiteral("\n") + QString::fromStdString(odd));
    });
}

void ExportDialog::SetWorking(bool working) {
    IsWorking_ = working;
    const bool isPossible = !working && !Choice().Columns.empty();
    for (QPushButton* const button : {&Place_.Save(), Copy_, OpenIn_, &Place_.Replace()})
        button->setEnabled(isPossible);
}

} // namespace backends::qt
