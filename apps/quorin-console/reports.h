// SPDX-License-Identifier: MIT
// The device as it stands, for programs and for people.
#pragma once

#include "apps/quorin-console/writer.h"
#include "backends/loop/back_end.h"

namespace console {

/// The screen object: both grids, the menus, an open input control, the status strip, the focus.
Json ScreenReport(const backends::BackEnd& device);

/// A date as 2007-03-05.
std::string IsoDate(const platform::CalendarDate& date);

/// The screen drawn as text, 80 columns wide: the rows that stand on the page, and what lies over them.
std::string Picture(const backends::BackEnd& device);

/// The module-level state that other tools may want.
Json StateReport(const backends::BackEnd& device);

} // namespace console
