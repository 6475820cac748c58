// SPDX-License-Identifier: MIT
// The plot of a download that nobody has asked more about: the columns of the instrument over the numbers of the
// records.
#pragma once

#include "apps/download_files/device_table.h"
#include "plotting/series.h"

#include <string>

namespace exporter {

/// Returns what a plot shows of a table. It must exist during the call that the source is passed to.
plotting::Source PlottedSource(const Table& table, const companion::ValueLimits& limits);

/// Draws the plot as SVG. Returns why it can't be drawn, as a sentence; empty on success.
std::string DrawPlotFile(const Table& table, const companion::ValueLimits& limits, std::string& svg);

} // namespace exporter
