// SPDX-License-Identifier: MIT
#include "backends/qt/help_dialog.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace backends::qt {

namespace {

constexpr QSize DialogSize(720, 560);          // pixels of the screen
constexpr char16_t Scheme[] = u"help:/";       // of the addresses of pages, so that links in them lead to pages
constexpr int TimeOfTyping = 700;              // milliseconds without a key, after which the words stand
constexpr int LeastCharactersOfTheTitles = 12; // of the list of pages; its items may be wider

QUrl AddressOf(const QString& name) {
    return QUrl(QString::fromUtf16(Scheme) + name);
}

} // namespace

// --- the pages -------------------------------------------------------------------------------------------------------

QString PageBrowser::PageName() const {
    return source().fileName();
}

void PageBrowser::ShowPage(const QString& name) {
    if (PageName() == name && !source().hasFragment())
        reload();
    else
        setSource(AddressOf(name), QTextDocument::MarkdownResource);
}

void PageBrowser::GoToHeading(const QString& name) {
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 ||
            companion::NameOfHeading(block.text().toStdString()) != name.toStdString())
            continue;
        setTextCursor(QTextCursor(block));
        verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect().top());
        return;
    }
}

/// Whatever is no page is empty: a picture of a document is not looked for anywhere.
QVariant PageBrowser::loadResource(int, const QUrl& name) {
    return TextOf ? TextOf(name.fileName()) : QString();
}

// --- the window ------------------------------------------------------------------------------------------------------

HelpDialog::HelpDialog(Pages pages, QWidget& form)
    : BesideForm(form, "help", QStringLiteral("Help"), DialogSize), Pages_(std::move(pages)) {
    auto* const column = new QVBoxLayout(this);
    Browser_ = new PageBrowser(this);
    Browser_->setAccessibleName(QStringLiteral("Page"));
    Browser_->TextOf = [this](const QString& name) { return TextOf(name); };
    MakeHead(*column);
    column->addWidget(Browser_, 1);
    MakeFoot(*column);
    QObject::connect(Browser_, &QTextBrowser::sourceChanged, this, [this](const QUrl& page) { PageShown(page); });
    QObject::connect(Browser_, &QTextBrowser::backwardAvailable, Back_, &QPushButton::setEnabled);
}

void HelpDialog::MakeHead(QBoxLayout& column) {
    auto* const row = new QHBoxLayout;
    Back_ = new QPushButton(QStringLiteral("&Back"), this);
    Back_->setEnabled(false);
    Titles_ = new QComboBox(this);
    Titles_->setAccessibleName(QStringLiteral("Pages"));
    Titles_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    Titles_->setMinimumContentsLength(LeastCharactersOfTheTitles);
    row->addWidget(Back_);
    row->addWidget(Titles_, 1);
    column.addLayout(row);
    auto* const search = new QHBoxLayout;
    Words_ = new QLineEdit(this);
    Words_->setPlaceholderText(QStringLiteral("Search in all pages"));
    Words_->setAccessibleName(Words_->placeholderText());
    Words_->setClearButtonEnabled(true);
    Next_ = new QPushButton(QStringLiteral("&Next"), this);
    Found_ = new QLabel(this);
    Found_->setObjectName(QStringLiteral("found"));
    search->addWidget(Words_, 1);
    search->addWidget(Next_);
    search->addWidget(Found_);
    column.addLayout(search);
    QObject::connect(Back_, &QPushButton::clicked, Browser_, &QTextBrowser::backward);
    QObject::connect(Titles_, &QComboBox::activated, this, [this](int at) {
        Browser_->ShowPage(QString::fromStdString(Shown_[static_cast<std::size_t>(at)].Name));
    });
    QObject::connect(Words_, &QLineEdit::textChanged, this, [this] { FindSoon(); });
    Standing_ = new QTimer(this);
    Standing_->setSingleShot(true);
    Standing_->setInterval(TimeOfTyping);
    QObject::connect(Standing_, &QTimer::timeout, this, [this] { FindFirst(); });
    QObject::connect(Words_, &QLineEdit::returnPressed, this, [this] { FindNext(); });
    QObject::connect(Next_, &QPushButton::clicked, this, [this] { FindNext(); });
}

void HelpDialog::MakeFoot(QBoxLayout& column) {
    auto* const row = new QHBoxLayout;
    auto* const copy = new QPushButton(QStringLiteral("&Copy the page"), this);
    auto* const report = new QPushButton(QStringLiteral("&Report a problem…"), this);
    auto* const done = new QPushButton(QStringLiteral("Close"), this);
    row->addWidget(copy);
    row->addWidget(report);
    row->addStretch();
    row->addWidget(done);
    column.addLayout(row);
    QObject::connect(copy, &QPushButton::clicked, this,
                     [this] { QApplication::clipboard()->setText(Browser_->toPlainText()); });
    QObject::connect(report, &QPushButton::clicked, this, [this] {
        if (ReportWanted)
            ReportWanted();
    });
    QObject::connect(done, &QPushButton::clicked, this, [this] { close(); });
}

void HelpDialog::Open(const std::string& page) {
    TakePages();
    ComeForward();
    Browser_->ShowPage(QString::fromStdString(page));
    PageShown(Browser_->source());
    Browser_->setFocus();
}

void HelpDialog::Toggle(const std::string& page) {
    if (isVisible() && isActiveWindow() && !isMinimized())
        close();
    else
        Open(page);
}

void HelpDialog::TakePages() {
    Shown_ = Pages_();
    Texts_.clear();
    Titles_->clear();
    for (const companion::HelpPage& page : Shown_)
        Titles_->addItem(QString::fromStdString(page.Title), QString::fromStdString(page.Name));
}

QString HelpDialog::TextOf(const QString& name) const {
    const std::string wanted = name.toStdString();
    const auto found = std::find_if(Shown_.begin(), Shown_.end(),
                                    [&wanted](const companion::HelpPage& page) { return page.Name == wanted; });
    return found == Shown_.end() ? QString() : QString::fromStdString(found->Markdown);
}

/// The browser itself still names the page before.
void HelpDialog::PageShown(const QUrl& page) {
    Titles_->setCurrentIndex(Titles_->findData(page.fileName()));
    if (page.hasFragment())
        Browser_->GoToHeading(page.fragment());
}

// --- search ----------------------------------------------------------------------------------------------------------

/// Compares with what a person sees: without the marks of Markdown.
bool HelpDialog::HasWords(int page) {
    for (std::size_t at = Texts_.size(); at < Shown_.size(); ++at) {
        QTextDocument text;
        text.setMarkdown(QString::fromStdString(Shown_[at].Markdown));
        Texts_.push_back(text.toPlainText());
    }
    return Texts_[static_cast<std::size_t>(page)].contains(Words_->text(), Qt::CaseInsensitive);
}

/// A page that moves with each key can't be read.
void HelpDialog::FindSoon() {
    ShowFound();
    Standing_->start();
}

/// Selects the first place of the page from this one on, if there is one. Otherwise nothing moves.
bool HelpDialog::FindFrom(int place) {
    const QTextCursor found = Browser_->document()->find(Words_->text(), place);
    if (!found.isNull())
        Browser_->setTextCursor(found);
    return !found.isNull();
}

/// A place that was found stays selected as long as it has the words, and the page stays as long as it has them.
void HelpDialog::FindFirst() {
    Standing_->stop();
    if (Words_->text().isEmpty() || FindFrom(Browser_->textCursor().selectionStart()) || FindFrom(0))
        return;
    FindInOtherPages();
}

/// After the last place of a page comes the first one of the next page that has the words, at last that of this page.
void HelpDialog::FindNext() {
    if (Standing_->isActive())
        return FindFirst();
    if (!Words_->text().isEmpty() && !FindFrom(Browser_->textCursor().selectionEnd()))
        FindInOtherPages();
}

void HelpDialog::FindInOtherPages() {
    const int count = static_cast<int>(Shown_.size());
    for (int step = 1; step <= count; ++step) {
        const int page = (std::max(Titles_->currentIndex(), 0) + step) % count;
        if (!HasWords(page))
            continue;
        if (step < count)
            Browser_->ShowPage(Titles_->itemData(page).toString());
        FindFrom(0);
        return;
    }
}

void HelpDialog::ShowFound() {
    int pages = 0;
    for (int page = 0; page < Titles_->count() && !Words_->text().isEmpty(); ++page)
        pages += HasWords(page) ? 1 : 0;
    const QString words = pages == 0   ? QStringLiteral("not found")
                          : pages == 1 ? QStringLiteral("in 1 page")
                                       : QStringLiteral("in %1 pages").arg(pages);
    Found_->setText(Words_->text().isEmpty() ? QString() : words);
}

} // namespace backends::qt
