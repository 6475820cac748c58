// SPDX-License-Identifier: MIT
#include "plotting/panels.h"

#include "companion/values/statistics.h"
#include "plotting/axes.h"

#include <algorithm>

namespace plotting {

namespace {

bool HasPanelsOfOneSeries(Kind kind) {
    return kind == Kind::Histogram || kind == Kind::Control;
}

void AddTo(std::string& list, const std::string& text) {
    if (!text.empty())
        list += (list.empty() ? "" : ", ") + text;
}

/// Returns the names of the columns of a panel, each once.
std::vector<std::string> ColumnsOf(const Panel& panel, const Data& data) {
    std::vector<std::string> columns;
    for (const std::size_t index : panel.Series)
        if (std::find(columns.begin(), columns.end(), data.Series[index].Column) == columns.end())
            columns.push_back(data.Series[index].Column);
    return columns;
}

values::Statistics StatisticsOf(const Series& series) {
    values::Statistics statistics;
    for (const Point& point : series.Points)
        statistics.Take(point.Y);
    return statistics;
}

std::string WordsOf(const values::Statistics& statistics) {
    const std::string count = std::to_string(statistics.Count()) + (statistics.Count() == 1 ? " value" : " values");
    return count + ": mean " + NumberText(statistics.Mean()) + ", from " + NumberText(statistics.Minimum()) + " to " +
           NumberText(statistics.Maximum()) + ", standard deviation " + NumberText(statistics.StandardDeviation(), 3);
}

std::string ControlWords(const Panel& panel, const Series& series) {
    if (!panel.Control)
        return "; no limits: no two values follow each other";
    const auto outside = std::count_if(series.Points.begin(), series.Points.end(),
                                       [&](const Point& point) { return panel.Control->IsOutside(point.Y); });
    return "; " + (outside == 0 ? "none" : std::to_string(outside)) + " outside of mean ± 3σ";
}

void TakeLimits(Panel& panel, const Series& series, bool isNamed) {
    const auto add = [&](Role role, const char* word, const std::optional<double>& limit) {
        if (!limit)
            return;
        const LimitLine line{role, *limit, word + NumberText(*limit) + (isNamed ? " " + series.Column : "")};
        if (std::find(panel.Limits.begin(), panel.Limits.end(), line) == panel.Limits.end())
            panel.Limits.push_back(line);
    };
    add(Role::Fail, "fail ", series.Limits.FailHigh);
    add(Role::Warn, "warn ", series.Limits.WarnHigh);
    add(Role::Warn, "warn ", series.Limits.WarnLow);
    add(Role::Fail, "fail ", series.Limits.FailLow);
}

/// A limit far away would leave no room for the values: it is named instead.
void TakeNearLimits(Panel& panel) {
    constexpr double MostTimes = 3;
    const Range values = panel.Values;
    std::vector<LimitLine> near;
    std::string far;
    for (const LimitLine& limit : panel.Limits) {
        Range with = values;
        with.Take(limit.At);
        const double size = values.High / 2 - values.Low / 2;
        if (size > 0 && with.High / 2 - with.Low / 2 > size * MostTimes) {
            AddTo(far, limit.Text);
            continue;
        }
        near.push_back(limit);
        panel.Values.Take(limit.At);
    }
    panel.Limits = near;
    if (!far.empty())
        panel.Caption += (panel.Caption.empty() ? "" : "; ") + std::string("beyond the picture: ") + far;
}

void TakeControl(Panel& panel, const Series& series) {
    panel.Control = ControlLimitsOf(series.Points);
    panel.Caption += ControlWords(panel, series);
    if (!panel.Control)
        return;
    const ControlLimits& limits = *panel.Control;
    panel.Limits = {{Role::ControlLimit, limits.High(), "+3σ " + NumberText(limits.High(), 4)},
                    {Role::Mean, limits.Mean, "mean " + NumberText(limits.Mean, 4)},
                    {Role::ControlLimit, limits.Low(), "-3σ " + NumberText(limits.Low(), 4)}};
    for (const LimitLine& line : panel.Limits)
        panel.Values.Take(line.At);
}

void Complete(Panel& panel, const Data& data, Kind kind) {
    const std::vector<std::string> columns = ColumnsOf(panel, data);
    for (const std::string& column : columns)
        AddTo(panel.Title, column);
    const Series& first = data.Series[panel.Series.front()];
    panel.Title += first.Unit.empty() ? "" : " [" + first.Unit + "]";
    for (const std::size_t index : panel.Series)
        for (const Point& point : data.Series[index].Points)
            panel.Values.Take(point.Y);
    if (HasPanelsOfOneSeries(kind)) {
        AddTo(panel.Title, first.Group);
        AddTo(panel.Title, first.Source);
        panel.Caption = WordsOf(StatisticsOf(first));
    }
    if (kind == Kind::Histogram) {
        panel.Bins = BinsOf(first.Points);
        panel.Values.Take(panel.Bins.First);
        panel.Values.Take(panel.Bins.End());
    }
    if (kind == Kind::Control)
        return TakeControl(panel, first);
    for (const std::size_t index : panel.Series)
        TakeLimits(panel, data.Series[index], columns.size() > 1);
    TakeNearLimits(panel);
}

const char* WordOf(Kind kind) {
    constexpr const char* Words[] = {"Lines", "Points", "Histogram", "Control chart"};
    return Words[static_cast<int>(kind)];
}

} // namespace

void Range::Take(double value) {
    Low = IsEmpty ? value : std::min(Low, value);
    High = IsEmpty ? value : std::max(High, value);
    IsEmpty = false;
}

std::vector<Panel> PanelsOf(const Data& data, Kind kind) {
    std::vector<Panel> panels;
    for (std::size_t i = 0; i < data.Series.size(); ++i) {
        const auto found = std::find_if(panels.begin(), panels.end(), [&](const Panel& panel) {
            return !HasPanelsOfOneSeries(kind) && data.Series[panel.Series.front()].Unit == data.Series[i].Unit;
        });
        Panel& panel = found == panels.end() ? panels.emplace_back() : *found;
        panel.Series.push_back(i);
    }
    for (Panel& panel : panels)
        Complete(panel, data, kind);
    return panels;
}

std::vector<std::string> LegendOf(const Data& data, const std::vector<Panel>& panels, Kind kind) {
    std::vector<std::string> names(data.Series.size());
    if (HasPanelsOfOneSeries(kind))
        return names;
    for (const Panel& panel : panels) {
        const bool isNamed = ColumnsOf(panel, data).size() > 1;
        for (const std::size_t index : panel.Series) {
            const Series& series = data.Series[index];
            AddTo(names[index], isNamed ? series.Column : "");
            AddTo(names[index], series.Group);
            AddTo(names[index], series.Source);
        }
    }
    return names;
}

std::string DescriptionOf(const Data& data, Kind kind) {
    std::string text = WordOf(kind);
    if (kind != Kind::Histogram)
        text += " against " + data.XTitle;
    for (const Series& series : data.Series) {
        std::string name = series.Column;
        AddTo(name, series.Group);
        AddTo(name, series.Source);
        text +=
            ". " + name + (series.Unit.empty() ? "" : " [" + series.Unit + "]") + ": " + WordsOf(StatisticsOf(series));
    }
    for (const std::string& note : data.Notes)
        text += ". " + note;
    return text + ".";
}

} // namespace plotting
