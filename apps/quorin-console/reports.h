// SPDX-License-Identifier: MIT
// Reports of the device's current state, for programs and for people.
#pragma once

#include "apps/quorin-console/writer.h"
#include "backends/loop/back_end.h"

namespace console {

/// Returns the screen object: both grids, the menus, an open input control, the status strip, the focus.
Json ScreenReport(const backends::BackEnd& device);

/// Returns a date as 2007-03-05.
std::string IsoDate(const platform::CalendarDate& date);

/// Returns the screen drawn as text, 80 columns wide: the rows of the page, and what is over them.
std::string Picture(const backends::BackEnd& device);

/// Returns the state of the modules that other tools may need.
Json StateReport(const backends::BackEnd& device);

} // namespace console
