// SPDX-License-Identifier: MIT
// The two soft menus of the form: menus of a menu bar on a desktop, two large keys at the foot of the window on a
// device whose menus are keys. F1 opens or presses the first, F2 the second.
#pragma once

#include "backends/loop/form_controls.h"

#include <QAction>
#include <QBoxLayout>
#include <QFont>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QWidget>

#include <array>
#include <functional>

namespace backends::qt {

/// A title of a menu or an item, with what the application has set.
class QtMenuItem final : public MenuItem {
public:
    Text Caption() const override { return Value_; }
    void SetCaption(const Text& caption) override {
        Value_ = caption;
        Tell();
    }
    bool Visible() const override { return Visible_; }
    void SetVisible(bool visible) override {
        Visible_ = visible;
        Tell();
    }
    bool Enabled() const override { return Enabled_; }
    void SetEnabled(bool enabled) override {
        Enabled_ = enabled;
        Tell();
    }

    std::function<void()> Changed;

private:
    void Tell() {
        if (Changed)
            Changed();
    }

    Text Value_;
    bool Visible_ = false;
    bool Enabled_ = true;
};

class SoftMenus final {
public:
    SoftMenus();

    std::array<QtMenuItem, 2> Titles;
    std::array<std::array<QtMenuItem, MenuItemCount>, 2> Items;

    std::function<void(std::int32_t menu)> TitleClicked;
    std::function<void(std::int32_t menu, std::int32_t item)> ItemClicked;

    /// Puts the menus into the window, as a menu bar at its head or as keys at its foot.
    /// `keyHeight`: pixels.
    void PutInto(QWidget& window, QBoxLayout& head, QBoxLayout& foot, bool asKeys, int keyHeight);

    /// Sets the font of all titles and items.
    void SetFont(const QFont& font);

    /// Raises a click on the title of a menu.
    void PressTitle(std::int32_t menu);
    /// Called for F1 and F2. Presses the title; opens the list of a menu that has items.
    void Open(std::int32_t menu);

    /// Called when a box opens or closes: while one is open the menus look disabled, whatever the form has set.
    void SetBlocked(bool blocked);

    bool AreKeys() const { return Keys_[0] != nullptr; }
    QPushButton* Key(std::int32_t menu) const { return Keys_[static_cast<std::size_t>(menu - 1)]; }
    QMenu& List(std::int32_t menu) { return Lists_[static_cast<std::size_t>(menu - 1)].List; } ///< all five items
    QMenuBar* Bar() const { return MenuBar_; }

    /// Shows what the application has changed. The loop calls it when it handles events. Returns true if anything had
    /// changed.
    bool FollowIfChanged();

private:
    void HoldBarHeight();
    void Follow(std::size_t menu);
    void ShowInBar(std::size_t menu, const QString& caption);
    bool HasOneItem(std::size_t menu) const;
    QString WithMnemonic(const Text& caption, QString& taken) const;

    struct Shown {
        QMenu List;
        std::array<QAction*, MenuItemCount> Actions{};
        QAction* Only = nullptr; ///< in the menu bar in place of the list while that has one item
    };

    std::array<Shown, 2> Lists_;
    std::array<QPushButton*, 2> Keys_{};
    QMenuBar* MenuBar_ = nullptr;
    bool HasChanged_ = false;
    bool IsBlocked_ = false;
};

} // namespace backends::qt
