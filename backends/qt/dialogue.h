// SPDX-License-Identifier: MIT
// A box that may have come up under a person's hands.
#pragma once

#include <QElapsedTimer>
#include <QMessageBox>

namespace backends::qt {

/// Under hands, keys come to nothing until they have rested for half a second.
class Dialogue final : public QMessageBox {
public:
    Dialogue(QWidget* parent, bool underHands);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QElapsedTimer Rest;
};

} // namespace backends::qt
