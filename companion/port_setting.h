// SPDX-License-Identifier: MIT
// The port in the form's settings, where its list of ports stores it, too.
#pragma once

#include "src/text/text.h"

#include <cstdint>

namespace companion {

/// Returns the name of a serial port: "Com1" for 1.
Text NameOfPort(std::int32_t number);

/// Stores a serial port. A failure to store it is not reported here (SaveSetting).
void ChoosePort(std::int32_t number);

} // namespace companion
