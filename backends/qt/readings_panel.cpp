// SPDX-License-Identifier: MIT
#include "backends/qt/readings_panel.h"

#include "backends/loop/acts.h"
#include "backends/qt/beside_form.h"
#include "backends/qt/conversions.h"
#include "companion/taking_again.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace backends::qt {

namespace {

constexpr QSize PanelSize(960, 420);
constexpr std::size_t LongestRecord = 20'000;                     // characters that are shown
constexpr int SampleWidths[] = {10, 8, 9, 8, 10, 11, 10, 10, 18}; // in characters, one for each column

/// Sets a text only if it is another one: a label that is set is painted.
void Put(QLabel& label, const QString& text) {
    if (label.text() != text)
        label.setText(text);
}

} // namespace

ReadingsPanel::ReadingsPanel(companion::ReadingTable& table, QWidget& form, std::function<bool()> isAsked)
    : Table_(table), Form_(form), IsAsked_(std::move(isAsked)), Model_(table) {
    setObjectName(QStringLiteral("readings"));
    setWindowTitle(QStringLiteral("Readings"));
    auto* const column = new QVBoxLayout(this);
    MakeHead(*column);
    MakeTable();
    auto* const record = new QWidget(this);
    auto* const recordColumn = new QVBoxLayout(record);
    recordColumn->setContentsMargins(0, 0, 0, 0);
    RecordTitle_ = new QLabel(record);
    RecordTitle_->setTextFormat(Qt::PlainText);
    RecordTitle_->setWordWrap(true);
    Record_ = new QPlainTextEdit(record);
    Record_->setReadOnly(true);
    Record_->setAccessibleName(QStringLiteral("Record of the selected reading"));
    recordColumn->addWidget(RecordTitle_);
    recordColumn->addWidget(Record_, 1);
    auto* const parts = new QSplitter(Qt::Vertical, this);
    parts->addWidget(View_);
    parts->addWidget(record);
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 1);
    parts->setChildrenCollapsible(false);
    column->addWidget(parts, 1);
    MakeFoot(*column);
    auto* const escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    QObject::connect(escape, &QShortcut::activated, this, [this] { close(); });
    addActions(form.actions());
    resize(PanelSize);
}

void ReadingsPanel::MakeHead(QBoxLayout& column) {
    auto* const row = new QHBoxLayout;
    auto* const title = new QLabel(QStringLiteral("&Filter:"), this);
    Words_ = new QLineEdit(this);
    Words_->setPlaceholderText(QStringLiteral("text in any column"));
    Words_->setAccessibleName(QStringLiteral("Filter by text"));
    Words_->setClearButtonEnabled(true);
    title->setBuddy(Words_);
    Verdicts_ = new QComboBox(this);
    Verdicts_->setAccessibleName(QStringLiteral("Filter by verdict"));
    for (const companion::VerdictChoice& choice : companion::VerdictChoices())
        Verdicts_->addItem(ToQt(choice.Name));
    Verdicts_->view()->installEventFilter(this);
    Count_ = new QLabel(this);
    row->addWidget(title);
    row->addWidget(Words_, 1);
    row->addWidget(Verdicts_);
    row->addWidget(Count_);
    column.addLayout(row);
    QObject::connect(Words_, &QLineEdit::textChanged, this, [this] { Filter(); });
    QObject::connect(Verdicts_, &QComboBox::currentIndexChanged, this, [this] { Filter(); });
}

void ReadingsPanel::MakeTable() {
    View_ = new QTableView(this);
    View_->setModel(&Model_);
    View_->setAccessibleName(QStringLiteral("Readings"));
    View_->setSelectionBehavior(QAbstractItemView::SelectRows);
    View_->setWordWrap(false);
    View_->setTabKeyNavigation(false);
    View_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    View_->verticalHeader()->hide();
    View_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed); // no row is measured
    View_->verticalHeader()->setDefaultSectionSize(View_->fontMetrics().height() + 6);
    View_->horizontalHeader()->setStretchLastSection(true);
    View_->horizontalHeader()->setHighlightSections(false);
    View_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    for (int column = 0; column < Model_.columnCount(); ++column)
        View_->setColumnWidth(column, SampleWidths[column] * View_->fontMetrics().horizontalAdvance(u'0'));
    QObject::connect(View_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        WasHandedOver_ = false;
        ShowRecord();
        ShowState();
    });
}

void ReadingsPanel::MakeFoot(QBoxLayout& column) {
    auto* const row = new QHBoxLayout;
    Again_ = new QPushButton(QStringLiteral("&Take again"), this);
    Copy_ = new QPushButton(QStringLiteral("&Copy"), this);
    State_ = new QLabel(this);
    State_->setTextFormat(Qt::PlainText);
    State_->setWordWrap(true);
    row->addWidget(Again_);
    row->addWidget(Copy_);
    row->addWidget(State_, 1);
    column.addLayout(row);
    QObject::connect(Again_, &QPushButton::clicked, this, [this] { TakeAgain(); });
    QObject::connect(Copy_, &QPushButton::clicked, this, [this] { Copy(); });
    auto* const copy = new QAction(View_);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut); // the other widgets copy their own texts
    View_->addAction(copy);
    QObject::connect(copy, &QAction::triggered, this, [this] { Copy(); });
}

void ReadingsPanel::Toggle() {
    if (isVisible() && isActiveWindow() && !isMinimized()) {
        close();
        return;
    }
    const bool wasClosed = !isVisible();
    if (wasClosed)
        PutBesideForm();
    BringForward(*this);
    TakeUp();
    if (!wasClosed)
        return;
    View_->setFocus();
    if (SelectedRows() == 0 && Model_.rowCount() > 0)
        Select(Model_.rowCount() - 1);
    if (OpenChanged)
        OpenChanged(true);
}

void ReadingsPanel::OpenAside() {
    PutBesideForm();
    QWidget* const active = QApplication::activeWindow();
    setAttribute(Qt::WA_ShowWithoutActivating); // not every window system heeds it
    show();
    if (active != nullptr)
        active->activateWindow();
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    View_->setFocus(); // for the time when the panel gets the keyboard
    TakeUp();
}

void ReadingsPanel::PutBesideForm() {
    if (!std::exchange(WasPlaced_, true))
        PutBeside(*this, Form_);
}

void ReadingsPanel::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    if (OpenChanged)
        OpenChanged(false);
    GiveKeyboardBack(Form_);
}

/// Esc and F4 close the open list of verdicts alone. The list itself would close at the search for shortcuts already,
/// and the panel's shortcut would then be found.
bool ReadingsPanel::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Escape && key != Qt::Key_F4)
        return false;
    if (event->type() == QEvent::KeyPress)
        Verdicts_->hidePopup();
    event->accept();
    return true;
}

void ReadingsPanel::TakeUp() {
    if (!isVisible())
        return;
    const QScrollBar& bar = *View_->verticalScrollBar();
    const bool follows = bar.value() == bar.maximum();
    const int before = Model_.rowCount();
    Model_.TakeUp();
    if (follows && Model_.rowCount() != before)
        View_->scrollToBottom();
    ShowState();
}

/// Whatever keys are held: a capital letter that is typed into the filter is no longer selection.
void ReadingsPanel::Select(int row) {
    const QModelIndex index = Model_.index(row, 0);
    View_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    View_->scrollTo(index);
}

void ReadingsPanel::Filter() {
    const auto selected = OnlySelected();
    const std::size_t number = selected ? Table_.NumberAt(*selected) : 0;
    Model_.SetFilter(Words_->text(), Verdicts_->currentIndex());
    const auto row = Table_.RowOf(number);
    if (row)
        Select(static_cast<int>(*row));
    else
        View_->scrollToBottom();
    ShowRecord();
    ShowState();
}

/// Counts the ranges of the selection: it may have a hundred thousand rows.
std::size_t ReadingsPanel::SelectedRows() const {
    std::size_t count = 0;
    for (const QItemSelectionRange& range : View_->selectionModel()->selection())
        count += static_cast<std::size_t>(range.height());
    return count;
}

std::optional<std::size_t> ReadingsPanel::OnlySelected() const {
    if (SelectedRows() != 1)
        return std::nullopt;
    return static_cast<std::size_t>(View_->selectionModel()->selection().constFirst().top());
}

void ReadingsPanel::Copy() {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : View_->selectionModel()->selectedRows())
        rows.push_back(static_cast<std::size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    if (!rows.empty())
        QApplication::clipboard()->setText(ToQt(Table_.CopyOf(rows)));
}

Text ReadingsPanel::AgainRefusal() const {
    if (const auto row = OnlySelected())
        return Table_.AgainRefusal(*row, IsAsked_());
    return SelectedRows() == 0 ? u"no reading is selected" : u"more than one reading is selected";
}

void ReadingsPanel::TakeAgain() {
    const bool isSecondClick = LastTaken_.isValid() && LastTaken_.elapsed() < QApplication::doubleClickInterval();
    if (!isSecondClick && AgainRefusal().empty()) {
        LastTaken_.start();
        WasHandedOver_ = true;
        ReportAct({.Word = "again", .About = u"the panel of readings"});
        Table_.TakeAgain(*OnlySelected());
    }
    ShowState();
}

void ReadingsPanel::ShowRecord() {
    const auto row = OnlySelected();
    Record_->setPlainText(row ? ToQt(Table_.RawText(*row, LongestRecord)) : QString());
    QString title = QStringLiteral("Record:");
    if (row)
        title = ToQt(Table_.Words(*row)) + (Table_.IsAsReceived(*row)
                                                ? QStringLiteral("\nRecord, as it was received:")
                                                : QStringLiteral("\nRecord, with this reading alone:"));
    Put(*RecordTitle_, title);
}

void ReadingsPanel::ShowState() {
    const Text why = AgainRefusal();
    Again_->setEnabled(why.empty());
    Copy_->setEnabled(SelectedRows() > 0);
    QString state;
    if (!why.empty())
        state = QStringLiteral("Can't be taken again: %1.").arg(ToQt(why));
    else if (WasHandedOver_)
        state = QStringLiteral("It was handed over. What becomes of it is a new row, in about a second.");
    if (companion::AgainWaits())
        state = QStringLiteral("It is taken again as soon as the line that is arriving has ended.");
    Put(*State_, state);
    Again_->setToolTip(state);
    Again_->setAccessibleDescription(state);
    Put(*Count_, QStringLiteral("%1 of %2").arg(Model_.rowCount()).arg(Table_.Kept()));
}

} // namespace backends::qt
