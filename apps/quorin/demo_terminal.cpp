// SPDX-License-Identifier: MIT
#include "apps/quorin/demo_terminal.h"

namespace quorin {

DemoTerminal::DemoTerminal() {
    Plug();
}

void DemoTerminal::Plug() {
    if (Line_.Plug() != instrument::Outcome::Done)
        Line_.Unplug();
}

} // namespace quorin
