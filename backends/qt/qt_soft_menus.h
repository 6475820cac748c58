// SPDX-License-Identifier: MIT
// The two soft menus of the form: menus of a menu bar on a desktop, two large keys at the foot of the window on a
// device whose menus are keys. F1 and F2 press the one and the other.
#pragma once

#include "backends/loop/form_controls.h"

#include <QAction>
#include <QBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QWidget>

#include <array>
#include <functional>

namespace backends::qt {

/// A top-level menu or an item: what the application has set of it.
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

    /// What a click on a caption does.
    void PressTitle(std::int32_t menu);
    /// F1 and F2: presses a key that has no list, opens any other.
    void Open(std::int32_t menu);

    /// Called when a box opens or closes: while it is open the menus look disabled, whatever the form has set.
    void SetBlocked(bool blocked);

    bool AreKeys() const { return Keys_[0] != nullptr; }
    QPushButton* Key(std::int32_t menu) const { return Keys_[static_cast<std::size_t>(menu - 1)]; }
    QMenu& List(std::int32_t menu) { return Lists_[static_cast<std::size_t>(menu - 1)].List; } ///< its items, all five
    QMenuBar* Bar() const { return MenuBar_; }

    /// Takes up what has changed; the loop calls it when it handles events. Whether anything had.
    bool FollowIfChanged();

private:
    void Follow(std::size_t menu);
    QString WithMnemonic(const Text& caption, QString& taken) const;

    struct Shown {
        QMenu List;
        std::array<QAction*, MenuItemCount> Actions{};
    };

    std::array<Shown, 2> Lists_;
    std::array<QPushButton*, 2> Keys_{};
    QMenuBar* MenuBar_ = nullptr;
    bool HasChanged_ = false;
    bool IsBlocked_ = false;
};

} // namespace backends::qt
