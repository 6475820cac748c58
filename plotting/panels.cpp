// SPDX-License-Identifier: MIT
#include "plotting/panels.h"

#include "companion/values/number_text.h"
#include "companion/values/statistics.h"
#include "src/text/text.h"

#include <algorithm>
#include <cmath>
#include <iterator>

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

/// Returns the place of the last digit of numbers that were computed from values with this spread: so many of its
/// digits say something. Without a spread, or with one that is too large for a double, all that a double has.
int LastPlace(double spread, int digits) {
    constexpr int Any = -400;
    return spread > 0 && std::isfinite(spread) ? values::ExponentOf(spread) - (digits - 1) : Any;
}

/// The extremes have the digits that they came with.
std::string StatisticsIn(const Series& series, const Look& look) {
    constexpr int Digits = 3; // of the standard deviation
    const values::Statistics statistics = StatisticsOf(series);
    const double deviation = statistics.StandardDeviation();
    const int place = LastPlace(deviation, Digits);
    const std::string count = std::to_string(statistics.Count()) + (statistics.Count() == 1 ? " value" : " values");
    const bool areEqual = statistics.Minimum() == statistics.Maximum();
    const std::string mean = areEqual ? series.Lowest.Written : values::RoundedText(statistics.Mean(), place);
    return count + ": mean " + look.NumberOf(mean) + ", from " + look.NumberOf(series.Lowest.Written) + " to " +
           look.NumberOf(series.Highest.Written) + ", standard deviation " +
           look.NumberOf(values::RoundedText(deviation, place));
}

std::string ControlWords(const Panel& panel, const Series& series) {
    if (!panel.Control)
        return "; no limits: no two values follow each other";
    const auto outside = std::count_if(series.Points.begin(), series.Points.end(),
                                       [&](const Point& point) { return panel.Control->IsOutside(point.Y); });
    return "; " + (outside == 0 ? "none" : std::to_string(outside)) + " outside of mean ± 3σ";
}

void TakeLimits(Panel& panel, const Series& series, bool isNamed, const Look& look) {
    const auto add = [&](Role role, const char* word, const std::optional<companion::Limit>& limit) {
        if (!limit)
            return;
        const LimitLine line{role, limit->Number,
                             word + look.NumberOf(modStringTools::ToBytes(limit->Written)) +
                                 (isNamed ? " " + series.Column : "")};
        if (std::find(panel.Limits.begin(), panel.Limits.end(), line) == panel.Limits.end())
            panel.Limits.push_back(line);
    };
    add(Role::Fail, "fail ", series.Limits.FailHigh);
    add(Role::Warn, "warn ", series.Limits.WarnHigh);
    add(Role::Warn, "warn ", series.Limits.WarnLow);
    add(Role::Fail, "fail ", series.Limits.FailLow);
}

void TellFar(Panel& panel, const std::string& limits) {
    if (!limits.empty())
        panel.Caption += (panel.Caption.empty() ? "" : "; ") + std::string("beyond the picture: ") + limits;
}

/// A limit far away would leave no room for the values: it is named instead.
void TakeNearLimits(Panel& panel, const ValueRange& range) {
    constexpr double MostTimes = 3;
    const Range values = panel.Values;
    const bool hasEnds = range.Low && range.High;
    std::vector<LimitLine> near;
    std::string far;
    for (const LimitLine& limit : panel.Limits) {
        Range with = values;
        with.Take(limit.At);
        const double size = values.High / 2 - values.Low / 2;
        const bool isFar = !hasEnds && size > 0 && with.High / 2 - with.Low / 2 > size * MostTimes;
        if (isFar || !range.Has(limit.At)) {
            AddTo(far, limit.Text);
            continue;
        }
        near.push_back(limit);
        panel.Values.Take(limit.At);
    }
    panel.Limits = near;
    TellFar(panel, far);
}

void TakeControl(Panel& panel, const Series& series, const Look& look, const ValueRange& range) {
    panel.Control = ControlLimitsOf(series.Points);
    panel.Caption += ControlWords(panel, series);
    if (!panel.Control)
        return;
    const ControlLimits& limits = *panel.Control;
    constexpr int Digits = 2; // of sigma
    const auto text = [place = LastPlace(limits.Sigma, Digits), &look](double value) {
        return look.NumberOf(values::RoundedText(value, place));
    };
    panel.Limits = {{Role::ControlLimit, limits.High(), "+3σ " + text(limits.High())},
                    {Role::Mean, limits.Mean, "mean " + text(limits.Mean)},
                    {Role::ControlLimit, limits.Low(), look.NumberOf("-3σ ") + text(limits.Low())}};
    std::string far;
    for (const LimitLine& line : panel.Limits) {
        if (range.Has(line.At))
            panel.Values.Take(line.At);
        else
            AddTo(far, line.Text);
    }
    std::erase_if(panel.Limits, [&range](const LimitLine& line) { return !range.Has(line.At); });
    TellFar(panel, far);
}

void TakeBins(Panel& panel, const Series& series, const ValueRange& range) {
    std::vector<Point> shown;
    std::copy_if(series.Points.begin(), series.Points.end(), std::back_inserter(shown),
                 [&range](const Point& point) { return range.Has(point.Y); });
    panel.Bins.Counts = {0};
    if (shown.empty())
        return;
    panel.Bins = BinsOf(shown);
    panel.Values.Take(panel.Bins.First);
    panel.Values.Take(panel.Bins.End());
}

void Complete(Panel& panel, const Data& data, Kind kind, const Look& look) {
    const std::vector<std::string> columns = ColumnsOf(panel, data);
    for (const std::string& column : columns)
        AddTo(panel.Title, column);
    const Series& first = data.Series[panel.Series.front()];
    panel.Title += first.Unit.empty() ? "" : " [" + first.Unit + "]";
    for (const std::size_t index : panel.Series)
        for (const Point& point : data.Series[index].Points)
            if (data.Range.Has(point.Y))
                panel.Values.Take(point.Y);
    if (HasPanelsOfOneSeries(kind)) {
        AddTo(panel.Title, first.Group);
        AddTo(panel.Title, first.Source);
        panel.Caption = StatisticsIn(first, look);
    }
    if (kind == Kind::Histogram) {
        TakeBins(panel, first, data.Range);
    }
    if (kind == Kind::Control)
        return TakeControl(panel, first, look, data.Range);
    for (const std::size_t index : panel.Series)
        TakeLimits(panel, data.Series[index], columns.size() > 1, look);
    TakeNearLimits(panel, data.Range);
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

Axis AxisOf(const Range& values, const ValueRange& asked, double margin) {
    Axis axis{values.Low, values.High, {}};
    Widen(axis.Low, axis.High, margin);
    axis.Low = asked.Low.value_or(axis.Low);
    axis.High = asked.High.value_or(axis.High);
    if (axis.Low < axis.High)
        return axis;
    double& end = asked.Low ? axis.Low : axis.High; // the one that was asked for; no value of the panel is in the range
    axis.Low = axis.High = end;
    const double kept = end;
    Widen(axis.Low, axis.High, 0);
    end = kept;
    return axis;
}

std::vector<Panel> PanelsOf(const Data& data, Kind kind, const Look& look) {
    std::vector<Panel> panels;
    for (std::size_t i = 0; i < data.Series.size(); ++i) {
        const auto found = std::find_if(panels.begin(), panels.end(), [&](const Panel& panel) {
            return !HasPanelsOfOneSeries(kind) && data.Series[panel.Series.front()].Unit == data.Series[i].Unit;
        });
        Panel& panel = found == panels.end() ? panels.emplace_back() : *found;
        panel.Series.push_back(i);
    }
    for (Panel& panel : panels)
        Complete(panel, data, kind, look);
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
        text += ". " + name + (series.Unit.empty() ? "" : " [" + series.Unit + "]") + ": " +
                StatisticsIn(series, CellLook(0, 0));
    }
    for (const std::string& note : data.Notes)
        text += ". " + note;
    return text + ".";
}

} // namespace plotting
