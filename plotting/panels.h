// SPDX-License-Identifier: MIT
// Which series share a panel, with what ranges, limits and words. A panel has one unit: values of two units have no
// axis in common.
#pragma once

#include "plotting/axes.h"
#include "plotting/control.h"
#include "plotting/histogram.h"
#include "plotting/look.h"
#include "plotting/scene.h"
#include "plotting/series.h"

#include <optional>
#include <string>
#include <vector>

namespace plotting {

struct LimitLine {
    plotting::Role Role = plotting::Role::Warn;
    double At = 0;
    std::string Text;
    bool operator==(const LimitLine&) const = default;
};

struct Range {
    double Low = 0, High = 0;
    bool IsEmpty = true;
    void Take(double value);
};

struct Panel {
    std::string Title;   ///< of the axis of values: "moisture [%]"
    std::string Caption; ///< the statistics; empty for none
    std::vector<std::size_t> Series;
    std::vector<LimitLine> Limits;
    Range Values; ///< of the axis of values, with the limits that lie near them
    std::optional<ControlLimits> Control;
    plotting::Bins Bins;
};

/// Returns an axis without ticks, with some room around the values, or that ends where it was asked to.
Axis AxisOf(const Range& values, const ValueRange& asked, double margin);

/// Returns the panels in the order of their first series, with numbers as the look shows them. Those of a histogram or
/// a control chart have one series each.
std::vector<Panel> PanelsOf(const Data& data, Kind kind, const Look& look);

/// Returns what the legend calls each series, the same for the same group in several panels; all empty if the titles of
/// the panels say enough.
std::vector<std::string> LegendOf(const Data& data, const std::vector<Panel>& panels, Kind kind);

/// Returns the chart in words.
std::string DescriptionOf(const Data& data, Kind kind);

} // namespace plotting
