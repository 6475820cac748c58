// SPDX-License-Identifier: MIT
// Takes the zip file of a device into a device. What is new comes in; what is here stays as it is.
#pragma once

#include "handover/taker.h"

#include <functional>
#include <string>

namespace handover {

/// Takes a zip file in. All of it is checked first, so that one which is damaged or was made to do harm changes
/// nothing; then `here` is called. Each file is written whole, the downloads first and the register last: what is cut
/// off is completed by the next run.
TakeResult TakeIn(const std::string& zip, const std::function<Taker()>& here, const TakeListener& listener);

} // namespace handover
