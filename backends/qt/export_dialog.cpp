// SPDX-License-Identifier: MIT
#include "backends/qt/export_dialog.h"

#include "backends/qt/beside_form.h"

#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
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

ExportDialog::ExportDialog(ExportSource source, QWidget& form) : Source_(std::move(source)), Form_(form) {
    setObjectName(QStringLiteral("export"));
    setWindowTitle(QStringLiteral("Export"));
    auto* const column = new QVBoxLayout(this);
    Title_ = new QLabel(this);
    Title_->setTextFormat(Qt::PlainText);
    Title_->setWordWrap(true);
    column->addWidget(Title_);
    MakeChoices(*column);
    MakeTables(*column);
    MakeFoot(*column);
    addActions(form.actions());
    resize(DialogSize);
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
    auto* const place = new QHBoxLayout;
    Path_ = new QLineEdit(this);
    Path_->setAccessibleName(QStringLiteral("File to save"));
    auto* const choose = new QPushButton(QStringLiteral("C&hoose…"), this);
    Save_ = new QPushButton(QStringLiteral("&Save"), this);
    place->addWidget(Path_, 1);
    place->addWidget(choose);
    place->addWidget(Save_);
    column.addLayout(place);
    State_ = new QLabel(this);
    State_->setObjectName(QStringLiteral("exportState"));
    State_->setTextFormat(Qt::PlainText);
    State_->setWordWrap(true);
    column.addWidget(State_);
    auto* const row = new QHBoxLayout;
    Copy_ = new QPushButton(QStringLiteral("&Copy as table"), this);
    Copy_->setToolTip(QStringLiteral("All records with the chosen columns, for a spreadsheet that is open."));
    OpenIn_ = new QPushButton(QStringLiteral("&Open in…"), this);
    OpenIn_->setToolTip(QStringLiteral("Opens a copy in the program that the desktop has for the format."));
    Replace_ = new QPushButton(QStringLiteral("&Replace it"), this);
    Replace_->hide();
    auto* const done = new QPushButton(QStringLiteral("Close"), this);
    for (QPushButton* const button : {Copy_, OpenIn_})
        row->addWidget(button);
    row->addStretch();
    row->addWidget(Replace_);
    row->addWidget(done);
    column.addLayout(row);
    QObject::connect(Path_, &QLineEdit::textChanged, this, [this] { Tell({}); });
    QObject::connect(Path_, &QLineEdit::returnPressed, this, [this] { Save(false); });
    QObject::connect(choose, &QPushButton::clicked, this, [this] { ChoosePath(); });
    QObject::connect(Save_, &QPushButton::clicked, this, [this] { Save(false); });
    QObject::connect(Replace_, &QPushButton::clicked, this, [this] { Save(true); });
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
        Tell(QStringLiteral("Reading…"));
        const int asked = ++Asked_;
        Source_.Preview([dialog = QPointer<ExportDialog>(this), asked](const ExportPreview& preview) {
            if (dialog != nullptr && dialog->Asked_ == asked)
                dialog->Show(preview);
        });
    }
    if (!std::exchange(WasPlaced_, true))
        PutBeside(*this, Form_);
    BringForward(*this);
    Save_->setFocus();
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
    Tell(QString::fromStdString(preview.Why));
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
        Path_->setText(QFile::decodeName(QByteArray::fromStdString(Source_.Path(Source_.Formats[format].Ending))));
}

/// This dialog asks itself whether a file is to be replaced.
void ExportDialog::ChoosePath() {
    auto* const dialog = new QFileDialog(this, QStringLiteral("Export"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->selectFile(Path_->text());
    QObject::connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& file) { Path_->setText(file); });
    dialog->open();
}

void ExportDialog::Save(bool replaces) {
    const QString path = Path_->text().trimmed();
    if (path.isEmpty())
        return Tell(QStringLiteral("Say where the file is to be saved."));
    if (!replaces && QFile::exists(path))
        return Tell(QStringLiteral("There is a file of this name already."), true);
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
    Tell(what);
    SetWorking(true);
    act(choice, [dialog = QPointer<ExportDialog>(this), done](const std::string& why, const std::string& odd) {
        if (dialog == nullptr)
            return;
        dialog->SetWorking(false);
        if (!why.empty())
            dialog->Tell(QString::fromStdString(why));
        else
            dialog->Tell(odd.empty() ? done : done + QStringLiteral("\n") + QString::fromStdString(odd));
    });
}

void ExportDialog::SetWorking(bool working) {
    IsWorking_ = working;
    const bool isPossible = !working && !Choice().Columns.empty();
    for (QPushButton* const button : {Save_, Copy_, OpenIn_, Replace_})
        button->setEnabled(isPossible);
}

void ExportDialog::Tell(const QString& what, bool asksToReplace) {
    State_->setText(what);
    Replace_->setVisible(asksToReplace);
}

void ExportDialog::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    GiveKeyboardBack(Form_);
}

void ExportDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace backends::qt
