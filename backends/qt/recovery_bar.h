// SPDX-License-Identifier: MIT
// A bar above the form, which gives back a record that was not saved.
#pragma once

#include "companion/draft.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include <functional>

namespace backends::qt {

class RecoveryBar final : public QFrame {
public:
    explicit RecoveryBar(QWidget* parent);

    enum class Choice { PutBack, Show, Forget, Later };
    std::function<void(Choice)> Chosen;

    /// Shows a draft. `whyNot`: why it can't be put back; empty if it can. `today` as for WordsOf. `place`: which of
    /// how many it is, before the words. The buttons work after the time of a double click, whose second half belongs
    /// to the draft before.
    void Offer(const companion::Draft& draft, const Text& whyNot, const Text& today, const Text& place = {});
    /// Opens a box with the fields of a draft, which can be copied, and waits until it is closed.
    void ShowFields(const companion::Draft& draft);
    /// Asks whether a draft may be removed for good.
    bool MayForget();

private:
    QPushButton* Button(const char* text, Choice choice);

    QLabel* Words_;
    QPushButton* PutBack_;
    QPushButton* Show_;
    QPushButton* Forget_;
    QPushButton* Later_;
};

} // namespace backends::qt
