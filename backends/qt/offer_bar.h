// SPDX-License-Identifier: MIT
// A bar above the form that says what will be done once the form is free, and lets a person call it off.
#pragma once

#include <QFrame>
#include <QLabel>

#include <functional>

namespace backends::qt {

class OfferBar final : public QFrame {
public:
    explicit OfferBar(QWidget* parent);

    /// Shows these words; hides the bar if they are empty.
    void Show(const QString& words);
    std::function<void()> NotNow; ///< called when a person calls it off

private:
    QLabel* Words_;
};

} // namespace backends::qt
