// SPDX-License-Identifier: MIT
#include "backends/qt/notice_list.h"

#include "backends/qt/conversions.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace backends::qt {

namespace {

constexpr int AboutRole = Qt::UserRole;

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
    const QString about = current == nullptr ? QString() : current->data(AboutRole).toString();
    Rows_->clear();
    for (const companion::Notice& notice : notices) {
        auto* const row = new QListWidgetItem(ToQt(notice.Words), Rows_);
        row->setData(AboutRole, ToQt(notice.About));
        if (ToQt(notice.About) == about)
            Rows_->setCurrentItem(row);
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
    if (row != nullptr && Chosen)
        Chosen(FromQt(row->data(AboutRole).toString()));
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
