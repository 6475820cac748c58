// SPDX-License-Identifier: MIT
#include "backends/qt/recovery_bar.h"

#include "backends/qt/conversions.h"
#include "backends/qt/to_screen_reader.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMessageBox>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace backends::qt {

namespace {

constexpr QSize FieldsSize(560, 320); // pixels of the screen

/// The lines of a table for a spreadsheet or a letter.
QString TextOf(const std::vector<companion::DraftField>& fields) {
    QString text;
    for (const companion::DraftField& field : fields)
        text += ToQt(field.Name) + u'\t' + ToQt(field.Shown) + u'\t' + ToQt(field.Saved) + u'\n';
    return text;
}

} // namespace

RecoveryBar::RecoveryBar(QWidget* parent) : QFrame(parent), Words_(new QLabel(this)) {
    setObjectName(QStringLiteral("recovery"));
    setAutoFillBackground(true);
    setStyleSheet(QStringLiteral("#recovery { background: #ffd54f; } #recovery QLabel { color: black; }"));
    Words_->setTextFormat(Qt::PlainText);
    Words_->setWordWrap(true);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(Words_);
    auto* const row = new QHBoxLayout;
    column->addLayout(row);
    PutBack_ = Button("&Put it back", Choice::PutBack);
    Show_ = Button("&Show", Choice::Show);
    Forget_ = Button("&Forget", Choice::Forget);
    Later_ = Button("&Later", Choice::Later);
    for (QPushButton* const button : {PutBack_, Show_, Forget_, Later_})
        row->addWidget(button);
    row->addStretch(1);
}

QPushButton* RecoveryBar::Button(const char* text, Choice choice) {
    auto* const button = new QPushButton(QString::fromLatin1(text), this);
    QObject::connect(button, &QPushButton::clicked, [this, choice] {
        if (Chosen)
            Chosen(choice);
    });
    return button;
}

void RecoveryBar::Offer(const companion::Draft& draft, const Text& whyNot, const Text& today, const Text& place) {
    Text words = place + WordsOf(draft, today);
    if (!whyNot.empty())
        words += u" It can't be put back: " + whyNot + u".";
    Words_->setText(ToQt(words));
    Words_->setAccessibleName(ToQt(words));
    PutBack_->setEnabled(whyNot.empty());
    setEnabled(false);
    QTimer::singleShot(QApplication::doubleClickInterval(), this, [this] {
        setEnabled(true);
        (PutBack_->isEnabled() ? PutBack_ : Show_)->setFocus();
    });
    Announce(*Words_);
}

void RecoveryBar::ShowFields(const companion::Draft& draft) {
    const std::vector<companion::DraftField> fields = FieldsOf(draft);
    QDialog box(window());
    box.setObjectName(QStringLiteral("draftFields"));
    box.setWindowTitle(QStringLiteral("The record that was not saved"));
    auto* const table = new QTableWidget(static_cast<int>(fields.size()), 3, &box);
    table->setHorizontalHeaderLabels(
        {QStringLiteral("Field"), QStringLiteral("Not saved"), QStringLiteral("Saved before")});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    int row = 0;
    for (const companion::DraftField& field : fields) {
        const bool differs = field.Shown != field.Saved;
        int column = 0;
        for (const Text& text : {field.Name, field.Shown, field.Saved}) {
            auto* const item = new QTableWidgetItem(ToQt(text));
            QFont font = item->font();
            font.setBold(differs);
            item->setFont(font);
            table->setItem(row, column++, item);
        }
        ++row;
    }
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, &box);
    auto* const copy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
    QObject::connect(copy, &QPushButton::clicked, [&fields] { QApplication::clipboard()->setText(TextOf(fields)); });
    QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);
    auto* const column = new QVBoxLayout(&box);
    column->addWidget(table);
    column->addWidget(buttons);
    box.resize(FieldsSize);
    box.exec();
}

bool RecoveryBar::MayForget() {
    return QMessageBox::question(window(), QStringLiteral("Quorin"),
                                 QStringLiteral("Forget what was entered in this record? It can't be put back then."),
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

} // namespace backends::qt
