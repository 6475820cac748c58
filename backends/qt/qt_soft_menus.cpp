// SPDX-License-Identifier: MIT
#include "backends/qt/qt_soft_menus.h"

#include "backends/qt/conversions.h"

#include <QKeySequence>
#include <QShortcut>

#include <algorithm>

namespace backends::qt {

namespace {

std::size_t Index(std::int32_t number) {
    return static_cast<std::size_t>(number - 1);
}

/// Selects the first item: a menu that was opened by a key is used by keys.
void MarkFirst(QMenu& list) {
    for (QAction* const action : list.actions()) {
        if (action->isVisible() && action->isEnabled())
            return list.setActiveAction(action);
    }
}

} // namespace

SoftMenus::SoftMenus() {
    for (std::size_t menu = 0; menu < Lists_.size(); ++menu) {
        const auto number = static_cast<std::int32_t>(menu + 1);
        Titles[menu].Changed = [this] { HasChanged_ = true; };
        for (std::size_t item = 0; item < Lists_[menu].Actions.size(); ++item) {
            const auto itemNumber = static_cast<std::int32_t>(item + 1);
            Items[menu][item].Changed = [this] { HasChanged_ = true; };
            QAction* const action = Lists_[menu].List.addAction(QString());
            Lists_[menu].Actions[item] = action;
            QObject::connect(action, &QAction::triggered, [this, number, itemNumber] {
                if (ItemClicked)
                    ItemClicked(number, itemNumber);
            });
        }
    }
}

/// The menu bar keeps its height while it is empty: otherwise the form's height would change with the menus.
void SoftMenus::HoldBarHeight() {
    QAction* const any = MenuBar_->addAction(QStringLiteral("X"));
    MenuBar_->setFixedHeight(MenuBar_->sizeHint().height());
    MenuBar_->removeAction(any);
}

void SoftMenus::SetFont(const QFont& font) {
    for (Shown& shown : Lists_)
        shown.List.setFont(font);
    for (QPushButton* const key : Keys_)
        if (key != nullptr)
            key->setFont(font);
    if (MenuBar_ == nullptr)
        return;
    MenuBar_->setFont(font);
    HoldBarHeight();
}

void SoftMenus::PutInto(QWidget& window, QBoxLayout& head, QBoxLayout& foot, bool asKeys, int keyHeight) {
    if (!asKeys) {
        MenuBar_ = new QMenuBar(&window);
        MenuBar_->setNativeMenuBar(false);
        HoldBarHeight();
        head.addWidget(MenuBar_);
    }
    for (std::size_t menu = 0; menu < Lists_.size(); ++menu) {
        const auto number = static_cast<std::int32_t>(menu + 1);
        auto* const shortcut = new QShortcut(QKeySequence(menu == 0 ? Qt::Key_F1 : Qt::Key_F2), &window);
        QObject::connect(shortcut, &QShortcut::activated, [this, number] { Open(number); });
        if (!asKeys) {
            MenuBar_->addMenu(&Lists_[menu].List);
            Lists_[menu].Only = MenuBar_->addAction(QString());
            QObject::connect(Lists_[menu].Only, &QAction::triggered, [this, number] {
                if (ItemClicked)
                    ItemClicked(number, 1);
            });
            QObject::connect(&Lists_[menu].List, &QMenu::aboutToShow, [this, number] {
                if (TitleClicked)
                    TitleClicked(number);
            });
            continue;
        }
        auto* const key = new QPushButton(&window);
        key->setObjectName(menu == 0 ? QStringLiteral("softKey1") : QStringLiteral("softKey2"));
        key->setMinimumHeight(keyHeight);
        key->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        key->setFocusPolicy(Qt::NoFocus); // a key of the device does not take the focus
        QObject::connect(key, &QPushButton::clicked, [this, number] { Open(number); });
        Keys_[menu] = key;
        foot.addWidget(key, 1);
    }
    HasChanged_ = true;
    FollowIfChanged();
}

/// Marks the first letter of the caption that no other entry has, and adds it to `taken`.
QString SoftMenus::WithMnemonic(const Text& caption, QString& taken) const {
    QString text = ToQt(caption);
    for (qsizetype place = 0; place < text.size(); ++place) {
        const QChar letter = text[place].toLower();
        if (!letter.isLetterOrNumber() || taken.contains(letter))
            continue;
        taken += letter;
        const QString head = text.left(place).replace(QLatin1Char('&'), QStringLiteral("&&"));
        const QString rest = text.mid(place).replace(QLatin1Char('&'), QStringLiteral("&&"));
        return head + QLatin1Char('&') + rest;
    }
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

bool SoftMenus::FollowIfChanged() {
    if (!HasChanged_ || (MenuBar_ == nullptr && !AreKeys()))
        return false;
    HasChanged_ = false;
    for (std::size_t menu = 0; menu < Lists_.size(); ++menu)
        Follow(menu);
    return true;
}

void SoftMenus::Follow(std::size_t menu) {
    const QtMenuItem& title = Titles[menu];
    QString takenByTitles;
    if (menu > 0)
        WithMnemonic(Titles[0].Caption(), takenByTitles);
    const QString caption = WithMnemonic(title.Caption(), takenByTitles);
    QString taken;
    for (std::size_t item = 0; item < Items[menu].size(); ++item) {
        const QtMenuItem& entry = Items[menu][item];
        QAction& action = *Lists_[menu].Actions[item];
        action.setText(entry.Visible() ? WithMnemonic(entry.Caption(), taken) : QString());
        action.setVisible(entry.Visible());
        action.setEnabled(entry.Enabled());
    }
    if (MenuBar_ != nullptr) {
        ShowInBar(menu, caption);
    } else {
        Keys_[menu]->setText(title.Visible() ? caption : QString());
        Keys_[menu]->setAccessibleName(ToQt(title.Caption()));
        Keys_[menu]->setEnabled(title.Visible() && title.Enabled() && !IsBlocked_);
    }
}

bool SoftMenus::HasOneItem(std::size_t menu) const {
    const auto& items = Items[menu];
    return items[0].Visible() &&
           std::none_of(items.begin() + 1, items.end(), [](const QtMenuItem& item) { return item.Visible(); });
}

/// A list of one item is not opened: a click on its title runs the item.
void SoftMenus::ShowInBar(std::size_t menu, const QString& caption) {
    const QtMenuItem& title = Titles[menu];
    const bool isOne = HasOneItem(menu);
    QAction& list = *Lists_[menu].List.menuAction();
    QAction& only = *Lists_[menu].Only;
    for (QAction* const action : {&list, &only})
        action->setText(caption);
    list.setVisible(title.Visible() && !isOne);
    list.setEnabled(title.Enabled());
    only.setVisible(title.Visible() && isOne);
    only.setEnabled(title.Enabled() && Items[menu][0].Enabled());
}

void SoftMenus::SetBlocked(bool blocked) {
    IsBlocked_ = blocked;
    if (MenuBar_ != nullptr)
        MenuBar_->setEnabled(!blocked);
    HasChanged_ = true;
    FollowIfChanged();
}

void SoftMenus::PressTitle(std::int32_t menu) {
    if (TitleClicked)
        TitleClicked(menu);
}

void SoftMenus::Open(std::int32_t menu) {
    FollowIfChanged();
    const QtMenuItem& title = Titles[Index(menu)];
    if (!title.Visible() || !title.Enabled())
        return;
    QMenu& list = Lists_[Index(menu)].List;
    if (MenuBar_ != nullptr && HasOneItem(Index(menu))) // nothing if it is disabled
        return Lists_[Index(menu)].Only->trigger();
    if (MenuBar_ != nullptr) {
        MenuBar_->setActiveAction(list.menuAction());
        MarkFirst(list);
        return;
    }
    const bool opens = Items[Index(menu)][0].Visible(); // without a list it is a key, which may open another screen
    PressTitle(menu);
    if (!opens)
        return;
    QPushButton& key = *Keys_[Index(menu)];
    list.setMinimumWidth(key.width());
    const QSize size = list.sizeHint();
    list.popup(key.mapToGlobal(QPoint(menu == 1 ? 0 : key.width() - size.width(), -size.height())));
    MarkFirst(list);
}

} // namespace backends::qt
