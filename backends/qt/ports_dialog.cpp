// SPDX-License-Identifier: MIT
#include "backends/qt/ports_dialog.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace backends::qt {

namespace {

using companion::PortRow;
using companion::PortState;

constexpr int LookInterval = 1000;                  // milliseconds between two looks at what is plugged in
constexpr int CountInterval = 200;                  // milliseconds between two counts
constexpr std::array Widths = {22, 22, 14, 28, 12}; // characters of each column
constexpr int HeardColumn = 4;
constexpr QSize Frame(8, 40); // at most, of a window

const QString NoPort =
    QStringLiteral("There is no serial port on this machine. Plug an adapter in, or bind a Bluetooth "
                   "device by rfcomm: it appears here.");
const QString AboutBoard =
    QStringLiteral("This is a port of the machine's board. The machine's console may be on it, so "
                   "that it is used only if you choose it.");
const QString AboutListening =
    QStringLiteral("What arrives meanwhile is counted only: it is no reading. An instrument that "
                   "introduces itself once has to connect again.");

QString Shown(const std::string& text) {
    return QString::fromStdString(text);
}

/// The others would take the place of a link that works, and not open.
bool CanBeUsed(const PortRow& row) {
    return row.State == PortState::Ready || row.State == PortState::Untried || row.State == PortState::Ours ||
           row.State == PortState::Elsewhere;
}

/// Only a device that this program may open and nobody uses is looked at; a port of the board may be the console.
bool CanBeHeard(const PortRow& row) {
    return row.State == PortState::Ready;
}

bool IsPinned(const PortRow& row) {
    return std::any_of(row.Numbers.begin(), row.Numbers.end(),
                       [](const companion::PortName& name) { return name.Pinned; });
}

} // namespace

PortsDialog::PortsDialog(PortsOfMachine machine, QWidget& form)
    : QWidget(&form, Qt::Dialog), Machine_(std::move(machine)) {
    setObjectName(QStringLiteral("ports"));
    setWindowTitle(QStringLiteral("Ports"));
    auto* const column = new QVBoxLayout(this);
    List_ = new QTreeWidget(this);
    List_->setAccessibleName(QStringLiteral("Ports of this machine"));
    List_->setRootIsDecorated(false);
    List_->setAllColumnsShowFocus(true);
    List_->setHeaderLabels({QStringLiteral("Port"), QStringLiteral("Product"), QStringLiteral("Name"),
                            QStringLiteral("State"), QStringLiteral("Characters")});
    for (int at = 0; at < static_cast<int>(Widths.size()); ++at)
        List_->setColumnWidth(at, Widths[static_cast<std::size_t>(at)] * List_->fontMetrics().averageCharWidth());
    column->addWidget(List_, 1);
    Details_ = new QLabel(this);
    Details_->setObjectName(QStringLiteral("portDetails"));
    Details_->setTextFormat(Qt::PlainText);
    Details_->setWordWrap(true);
    Details_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(Details_);
    MakeButtonsOfPort();
    MakeAddressLine();
    MakeFoot();
    Changes_ = new QTimer(this);
    Changes_->setInterval(LookInterval);
    Hearing_ = new QTimer(this);
    Hearing_->setInterval(CountInterval);
    QObject::connect(Changes_, &QTimer::timeout, this, [this] { LookForChanges(); });
    QObject::connect(Hearing_, &QTimer::timeout, this, [this] { ShowHeard(); });
    QObject::connect(List_, &QTreeWidget::currentItemChanged, this, [this] {
        Said_.clear();
        ShowDetails();
    });
    // Not "activated": on some desktops that is a single click, which only selects here.
    QObject::connect(List_, &QTreeWidget::itemDoubleClicked, this, [this] { UseSelected(); });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const enter = new QShortcut(QKeySequence(key), List_, nullptr, nullptr, Qt::WidgetShortcut);
        QObject::connect(enter, &QShortcut::activated, this, [this] { UseSelected(); });
    }
    auto* const escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    QObject::connect(escape, &QShortcut::activated, this, [this] { close(); });
    resize(100 * List_->fontMetrics().averageCharWidth(), 20 * List_->fontMetrics().height());
}

/// For what is in no list: a device that is not there yet, a listener elsewhere, a command.
void PortsDialog::MakeAddressLine() {
    auto* const row = new QHBoxLayout;
    auto* const label = new QLabel(QStringLiteral("&Another address:"), this);
    Address_ = new QLineEdit(this);
    Address_->setObjectName(QStringLiteral("portAddress"));
    Address_->setPlaceholderText(QStringLiteral("/dev/rfcomm3, tcp:HOST:PORT or exec:COMMAND"));
    label->setBuddy(Address_);
    UseAddress_ = new QPushButton(QStringLiteral("Use this address"), this);
    UseAddress_->setObjectName(QStringLiteral("useAddress"));
    row->addWidget(label);
    row->addWidget(Address_, 1);
    row->addWidget(UseAddress_);
    AddressTrouble_ = new QLabel(this);
    AddressTrouble_->setObjectName(QStringLiteral("addressTrouble"));
    AddressTrouble_->setTextFormat(Qt::PlainText);
    AddressTrouble_->setWordWrap(true);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    layout()->addWidget(AddressTrouble_);
    QObject::connect(Address_, &QLineEdit::textChanged, this, [this] { JudgeAddress(); });
    QObject::connect(Address_, &QLineEdit::returnPressed, this, [this] { UseAddress(); });
    QObject::connect(UseAddress_, &QPushButton::clicked, this, [this] { UseAddress(); });
    JudgeAddress();
}

/// What can be done about the selected port.
void PortsDialog::MakeButtonsOfPort() {
    auto* const row = new QHBoxLayout;
    Use_ = new QPushButton(QStringLiteral("&Use this one"), this);
    Use_->setObjectName(QStringLiteral("usePort"));
    Copy_ = new QPushButton(QStringLiteral("&Copy the command"), this);
    Copy_->setObjectName(QStringLiteral("copyRemedy"));
    Forget_ = new QPushButton(QStringLiteral("&Forget the pin"), this);
    Forget_->setObjectName(QStringLiteral("forgetPin"));
    Forget_->setToolTip(QStringLiteral("The name goes by the rule again: the first adapter is Com1."));
    for (QPushButton* const button : {Use_, Copy_, Forget_})
        row->addWidget(button);
    row->addStretch();
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    QObject::connect(Use_, &QPushButton::clicked, this, [this] { UseSelected(); });
    QObject::connect(Copy_, &QPushButton::clicked, this, [this] {
        if (const int at = Selected(); at >= 0)
            QApplication::clipboard()->setText(Shown(Rows_[static_cast<std::size_t>(at)].Trouble.Command));
    });
    QObject::connect(Forget_, &QPushButton::clicked, this, [this] { ForgetSelected(); });
}

void PortsDialog::MakeFoot() {
    auto* const row = new QHBoxLayout;
    Listen_ = new QPushButton(QStringLiteral("&Look for characters (3 s)"), this);
    Listen_->setObjectName(QStringLiteral("listenPorts"));
    Listen_->setToolTip(AboutListening);
    Listen_->setAccessibleDescription(AboutListening);
    auto* const done = new QPushButton(QStringLiteral("Close"), this);
    row->addWidget(Listen_);
    row->addStretch();
    row->addWidget(done);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    QObject::connect(Listen_, &QPushButton::clicked, this, [this] { StartListening(); });
    QObject::connect(done, &QPushButton::clicked, this, [this] { close(); });
}

void PortsDialog::Open() {
    Said_.clear();
    if (!isVisible()) {
        Survey();
        resize(size().boundedTo(screen()->availableGeometry().size() - Frame));
    }
    show();
    raise();
    activateWindow();
    List_->setFocus();
    Changes_->start();
}

/// A person comes back from another window, where the remedy may have been carried out.
void PortsDialog::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible() && !Hearing_->isActive())
        Survey();
    QWidget::changeEvent(event);
}

void PortsDialog::closeEvent(QCloseEvent* event) {
    Changes_->stop();
    StopListening();
    event->accept();
}

void PortsDialog::LookForChanges() {
    if (!Hearing_->isActive() && Machine_.Names() != Names_)
        Survey();
}

void PortsDialog::Survey() {
    Names_ = Machine_.Names();
    Rows_ = Machine_.Survey();
    ShowRows();
}

/// The selected port stays selected.
void PortsDialog::ShowRows() {
    const QString selected = List_->currentItem() == nullptr ? QString() : List_->currentItem()->text(0);
    const QSignalBlocker bySurvey(List_);
    List_->clear();
    for (const PortRow& row : Rows_) {
        auto* const item = new QTreeWidgetItem(List_, {Shown(row.Path), Shown(companion::ProductOf(row.Name)),
                                                       Shown(companion::NumbersText(row.Numbers)),
                                                       QString::fromLatin1(companion::StateWord(row.State))});
        item->setToolTip(1, Shown(row.Name.Vendor + " " + row.Name.Model + " " + row.Name.SerialNumber).trimmed());
        if (item->text(0) == selected)
            List_->setCurrentItem(item);
    }
    if (List_->currentItem() == nullptr && List_->topLevelItemCount() > 0)
        List_->setCurrentItem(List_->topLevelItem(Proposed()));
    for (int column = 0; column < HeardColumn; ++column)
        List_->resizeColumnToContents(column);
    ShowDetails();
}

/// Returns the row of the port that is chosen by now, else of one that can be opened.
int PortsDialog::Proposed() const {
    const auto find = [this](auto fits) {
        return static_cast<int>(std::find_if(Rows_.begin(), Rows_.end(), fits) - Rows_.begin());
    };
    const int rows = static_cast<int>(Rows_.size());
    const int ours = find([](const PortRow& row) { return row.State == PortState::Ours; });
    const int ready = find(CanBeHeard);
    return ours < rows ? ours : ready < rows ? ready : 0;
}

int PortsDialog::Selected() const {
    return List_->indexOfTopLevelItem(List_->currentItem());
}

void PortsDialog::ShowDetails() {
    const int at = Selected();
    const bool isRow = at >= 0 && at < static_cast<int>(Rows_.size());
    const PortRow row = isRow ? Rows_[static_cast<std::size_t>(at)] : PortRow{};
    const QString trouble = Shown(row.Trouble.Reason + (row.Trouble.Remedy.empty() ? "" : " " + row.Trouble.Remedy));
    const QString words = row.State == PortState::Untried ? AboutBoard : trouble;
    Details_->setText(!Said_.isEmpty() ? Said_ : Rows_.empty() ? NoPort : words);
    Use_->setEnabled(isRow && CanBeUsed(row));
    Copy_->setVisible(!row.Trouble.Command.empty());
    Forget_->setVisible(IsPinned(row));
    bool anyCanBeHeard = false;
    for (const PortRow& each : Rows_)
        anyCanBeHeard = anyCanBeHeard || CanBeHeard(each);
    Listen_->setEnabled(anyCanBeHeard && !Hearing_->isActive());
}

void PortsDialog::UseSelected() {
    const int at = Selected();
    if (at < 0 || at >= static_cast<int>(Rows_.size()) || !CanBeUsed(Rows_[static_cast<std::size_t>(at)]))
        return;
    StopListening(); // otherwise the form could not open the port
    Machine_.Use(companion::ChoiceOf(Rows_, static_cast<std::size_t>(at)));
    close();
}

void PortsDialog::JudgeAddress() {
    const std::string typed = Address_->text().trimmed().toStdString();
    const std::string trouble = typed.empty() ? std::string() : Machine_.WhyNotUsable(typed);
    AddressTrouble_->setText(Shown(trouble));
    AddressTrouble_->setVisible(!trouble.empty());
    UseAddress_->setEnabled(!typed.empty() && trouble.empty());
}

void PortsDialog::UseAddress() {
    if (!UseAddress_->isEnabled())
        return;
    StopListening(); // otherwise the form could not open the port
    Machine_.Use(companion::ChoiceOfAddress(Rows_, Address_->text().trimmed().toStdString()));
    Address_->clear();
    close();
}

/// The pinned numbers of the row stand for what the rule says again.
void PortsDialog::ForgetSelected() {
    const int at = Selected();
    if (at < 0)
        return;
    const std::vector<companion::PortName> numbers = Rows_[static_cast<std::size_t>(at)].Numbers;
    for (const companion::PortName& name : numbers)
        if (name.Pinned)
            Machine_.Forget(name.Number);
    Survey();
    for (const companion::PortName& name : numbers)
        if (name.Pinned)
            Said_ += (Said_.isEmpty() ? "" : " ") + Shown(companion::ForgottenText(Rows_, name.Number));
    ShowDetails();
}

void PortsDialog::StartListening() {
    std::vector<std::string> paths;
    for (const PortRow& row : Rows_)
        if (CanBeHeard(row))
            paths.push_back(row.Path);
    Machine_.Listen(paths);
    HearingLeft_ = ListeningTime;
    Hearing_->start();
    Details_->setText(AboutListening);
    Listen_->setEnabled(false);
    ShowHeard();
}

void PortsDialog::ShowHeard() {
    const std::map<std::string, std::size_t> heard = Machine_.Heard();
    for (int at = 0; at < List_->topLevelItemCount(); ++at) {
        QTreeWidgetItem* const item = List_->topLevelItem(at);
        const auto found = heard.find(item->text(0).toStdString());
        if (found != heard.end())
            item->setText(HeardColumn, found->second == 0 ? QStringLiteral("none") : QString::number(found->second));
    }
    HearingLeft_ -= CountInterval;
    if (HearingLeft_ <= 0)
        StopListening();
}

/// The counts stay in the list.
void PortsDialog::StopListening() {
    if (!Hearing_->isActive())
        return;
    Hearing_->stop();
    Machine_.Listen({});
    ShowDetails();
}

} // namespace backends::qt
