// SPDX-License-Identifier: MIT
// The window's own menu: a button in its status area, with what can be done beside the form. The form's menus are
// SoftMenus.
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QToolButton>

#include <functional>

namespace backends::qt {

/// An entry of the window's menu. Its keys work while the window itself is active, so not in a message box.
struct WindowEntry {
    QString Name;               ///< with `&` before its letter
    QKeySequence Keys = {};     ///< none of the form's (keyboard_map.h); empty for none
    std::function<void()> Runs; ///< called when a person chooses the entry; a handler may be on the stack
};

class WindowMenu final : public QToolButton {
public:
    explicit WindowMenu(QWidget* window);

    /// Adds an entry at the end.
    QAction& Add(const WindowEntry& entry);
    /// Adds an action that the window has already.
    void Add(QAction& action);
    /// Opens the list above the button, with the first entry selected.
    void Open();

    QMenu& List() { return List_; }

private:
    QMenu List_;
};

} // namespace backends::qt
