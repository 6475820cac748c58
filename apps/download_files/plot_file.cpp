// SPDX-License-Identifier: MIT
#include "apps/download_files/plot_file.h"

#include "plotting/chart.h"
#include "plotting/svg.h"

namespace exporter {

plotting::Source PlottedSource(const Table& table, const companion::ValueLimits& limits) {
    return {.Name = table.Source.Alias.empty() ? table.Source.File : table.Source.Alias,
            .Bytes = table.Bytes,
            .Fields = table.Source.Fields,
            .Limits = &limits};
}

std::string DrawPlotFile(const Table& table, const companion::ValueLimits& limits, std::string& svg) {
    plotting::SeriesReader reader(plotting::Request{}, exporting::Plan{}.Decimal, false);
    std::string why = reader.Read(PlottedSource(table, limits));
    if (why.empty())
        why = reader.Finish();
    if (!why.empty())
        return why;
    const plotting::Data& data = reader.Data();
    const plotting::Kind kind = plotting::UsualKind(data);
    const plotting::Spot size = plotting::UsualSize(data, kind);
    const plotting::Look look = plotting::PixelLook(size.X, size.Y);
    why = plotting::WhyNotDrawn(data, kind, look);
    if (why.empty())
        svg = plotting::SvgOf(plotting::Draw(data, kind, look));
    return why;
}

} // namespace exporter
