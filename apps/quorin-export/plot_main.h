// SPDX-License-Identifier: MIT
// Plots of downloads.
#pragma once

#include "apps/quorin-export/export_options.h"
#include "apps/start/exit_status.h"

namespace exporter {

/// Draws all sources in one plot. REQUIRES: a format that is a picture.
start::ExitStatus PlotMain(const Options& options);

} // namespace exporter
