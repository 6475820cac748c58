// SPDX-License-Identifier: MIT
// The list of all current notices, which opens above the window's line.
#pragma once

#include "companion/notices.h"

#include <QFrame>
#include <QListWidget>

#include <functional>
#include <vector>

namespace backends::qt {

/// The arrow keys select a row. Enter, Space or a click chooses it, Esc or Shift+F4 closes the list.
class NoticeList final : public QFrame {
public:
    explicit NoticeList(QWidget* window);

    /// Opens the list with its lower edge on this place of the screen.
    void Open(QPoint lowerLeft, int width);
    /// Shows these notices, each followed by its offers; the selected row stays selected. Closes the list if there are
    /// none.
    void Fill(const std::vector<companion::Notice>& notices);

    std::function<void(const Text& about)> Chosen;
    std::function<void(const Text& offer)> OfferChosen; ///< gets the name of an offer; the list is closed then

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Choose();

    QListWidget* Rows_;
};

} // namespace backends::qt
