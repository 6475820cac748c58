// SPDX-License-Identifier: MIT
// The list of all notices that stand, which opens over the window's line.
#pragma once

#include "companion/notices.h"

#include <QFrame>
#include <QListWidget>

#include <functional>
#include <vector>

namespace backends::qt {

/// Walked through by the arrow keys. Enter or a click does what can be done about the row, Esc closes the list.
class NoticeList final : public QFrame {
public:
    explicit NoticeList(QWidget* window);

    /// Opens the list with its lower edge on this place of the screen.
    void Open(QPoint lowerLeft, int width);
    /// Keeps the row that is chosen. The list closes when it is empty.
    void Fill(const std::vector<companion::Notice>& notices);

    std::function<void(const Text& about)> Chosen;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Choose();

    QListWidget* Rows_;
};

} // namespace backends::qt
