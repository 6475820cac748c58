// SPDX-License-Identifier: MIT
// What windows of the program's own have in common that stand beside the form's: the panel of readings, the help. They
// have no parent, because a message box blocks its parent and all windows that belong to it.
#pragma once

#include <QWidget>

namespace backends::qt {

/// Moves a window to where it does not cover the form, as far as the screen has space for both, and makes it no larger
/// than the screen.
void PutBeside(QWidget& window, const QWidget& form);

/// Shows a window in front of all others, with the keyboard.
void BringForward(QWidget& window);

/// Gives the keyboard to what waits for it: an open message box, else the form.
void GiveKeyboardBack(QWidget& form);

/// A window that stands beside the form's. Esc closes it, unless something in it takes the key, or it has asked
/// something, which Esc takes back.
class BesideForm : public QWidget {
public:
    /// `form`: the form's window, which must live longer.
    BesideForm(QWidget& form, const char* name, const QString& title, const QSize& size);

protected:
    /// Shows it, the first time where it does not cover the form.
    void ComeForward();

    /// Returns true if Esc has taken a question back.
    virtual bool TakesEscape() { return false; }

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget& Form_;
    bool WasPlaced_ = false;
};

} // namespace backends::qt
