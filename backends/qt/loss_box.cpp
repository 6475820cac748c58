// SPDX-License-Identifier: MIT
#include "backends/qt/loss_box.h"

namespace backends::qt {

void LossBox::Say(const QString& text) {
    if (!Box_.IsOpen())
        Box_.Open(text, {.Name = "lossBox"}, [this](QMessageBox::StandardButton) { Seen_(); });
    else if (Box_.Dialog()->text() != text)
        Box_.Dialog()->setText(text);
}

} // namespace backends::qt
