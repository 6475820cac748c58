// SPDX-License-Identifier: MIT
#include "backends/qt/notice_list.h"

#include "backends/qt/conversions.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace backends::qt {

namespace {

constexpr int AboutRole = Qt::UserRole;
constexpr int OfferRole = Qt::UserRole + 1; ///< empty in the row of a notice

} // namespace

NoticeList::NoticeList(QWidget* window) : QFrame(window, Qt::Popup), Rows_(new QListWidget(this)) {
    setObjectName(QStringLiteral("notices"));
    setFrameShape(QFrame::Box);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(Rows_);
    Rows_->setAccessibleName(QStringLiteral("Notices"));
    Rows_->setWordWrap(true);
    Rows_->setFrameShape(QFrame::NoFrame);
    Rows_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Rows_->installEventFilter(this);
    setFocusProxy(Rows_);
    QObject::connect(Rows_, &QListWidget::itemClicked, [this] { Choose(); });
}

void NoticeList::Fill(const std::vector<companion::Notice>& notices) {
    const QListWidgetItem* const current = Rows_->currentItem();
    const auto named = [](const QListWidgetItem* row) {
        return row == nullptr ? QString() : row->data(AboutRole).toString() + u' ' + row->data(OfferRole).toString();
    };
    const QString selected = named(current);
    const auto add = [&](const Text& words, const Text& said, const Text& about, const Text& offer) {
        auto* const row = new QListWidgetItem(ToQt(words), Rows_);
        row->setData(Qt::AccessibleTextRole, ToQt(said));
        row->setData(AboutRole, ToQt(about));
        row->setData(OfferRole, ToQt(offer));
        if (named(row) == selected)
            Rows_->setCurrentItem(row);
    };
    Rows_->clear();
    for (const companion::Notice& notice : notices) {
        add(notice.Words, notice.Words, notice.About, u"");
        for (const companion::Offer& offer : notice.Offers)
            add(u"    → " + offer.Words, offer.Words + u": " + notice.Words, notice.About, offer.Name);
    }
    if (Rows_->currentRow() < 0)
        Rows_->setCurrentRow(0);
    if (notices.empty())
        close();
}

void NoticeList::Open(QPoint lowerLeft, int width) {
    constexpr int Highest = 300;
    const int edges = 2 * frameWidth();
    Rows_->resize(width - edges, Highest);
    Rows_->doItemsLayout();
    int height = 0;
    for (int row = 0; row < Rows_->count(); ++row)
        height += Rows_->visualItemRect(Rows_->item(row)).height();
    height = std::min(height, Highest) + edges;
    setFixedSize(width, height);
    move(lowerLeft - QPoint(0, height));
    show();
    Rows_->setFocus();
}

void NoticeList::Choose() {
    const QListWidgetItem* const row = Rows_->currentItem();
    if (row == nullptr)
        return;
    const Text about = FromQt(row->data(AboutRole).toString());
    const Text offer = FromQt(row->data(OfferRole).toString());
    if (offer.empty()) {
        if (Chosen)
            Chosen(about);
        return;
    }
    close(); // what the offer opens must not open under the list
    if (OfferChosen)
        OfferChosen(offer);
}

bool NoticeList::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        Choose();
    else if (key == Qt::Key_Escape || key == Qt::Key_F4)
        close();
    else
        return false;
    return true;
}

} // namespace backends::qt
