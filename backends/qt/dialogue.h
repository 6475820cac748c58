// SPDX-License-Identifier: MIT
// A message box that may appear while the user is typing.
#pragma once

#include <QElapsedTimer>
#include <QMessageBox>

namespace backends::qt {

/// It is wide enough for its title, no wider than the form unless its buttons are, and opens over the form. The actions
/// of its parent, with their keys, are also those of the box. With `underHands`, keys are ignored until none has been
/// pressed for half a second.
class Dialogue final : public QMessageBox {
public:
    Dialogue(QWidget* parent, bool underHands);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;

private:
    const QWidget* FormBelow() const;
    void FitTheForm();
    void PutOverForm();

    QElapsedTimer Rest_;
};

} // namespace backends::qt
