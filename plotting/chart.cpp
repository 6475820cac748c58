// SPDX-License-Identifier: MIT
#include "plotting/chart.h"

#include "plotting/axes.h"
#include "plotting/cut_line.h"
#include "plotting/panels.h"
#include "plotting/readable.h"
#include "plotting/reduction.h"
#include "src/text/utf8.h"

#include <algorithm>
#include <cmath>

namespace plotting {

namespace {

constexpr std::size_t MostPanels = 12;
constexpr std::size_t MostNotes = 4;
constexpr std::size_t MostMarked = 60; // points of a line that have a marker each
constexpr int LeastRows = 3;           // of text, in the height of a plot

class Drawing {
public:
    Drawing(const Data& data, Kind kind, const Look& look)
        : Data_(data), Kind_(kind), Look_(look), Panels_(PanelsOf(data, kind, look)),
          Legend_(LegendOf(data, Panels_, kind)) {
        Measure();
    }

    /// Returns the height of a plot. Negative if there is no room.
    double PlotHeight() const {
        double rest = Look_.Height - Look_.Edge - FootHeight() - HeadHeight();
        for (const Panel& panel : Panels_)
            rest -= AbovePlot(panel) + BelowPlot();
        const double unit = Look_.IsCells ? Look_.Row : 1;
        return std::floor(rest / static_cast<double>(Panels_.size()) / unit) * unit;
    }
    std::size_t Panels() const { return Panels_.size(); }

    Scene Make() {
        Scene_ = {.Width = Look_.Width,
                  .Height = Look_.Height,
                  .Title = Data_.Title,
                  .Description = DescriptionOf(Data_, Kind_),
                  .Items = {}};
        Write({Look_.Edge, Look_.Edge + Look_.TitleRow / 2},
              Fitting(Data_.Title, Look_.Width - 2 * Look_.Edge, Role::Title), Anchor::Start, Role::Title);
        DrawLegend();
        double top = HeadHeight();
        for (std::size_t i = 0; i < Panels_.size(); ++i)
            top = DrawPanel(Panels_[i], top, i + 1 == Panels_.size());
        DrawNotes();
        return Scene_;
    }

private:
    // --- measures

    bool HasOwnX() const { return Kind_ == Kind::Histogram; }
    double LabelRows() const { return XAxis_.HasSecondRow() ? 2 : 1; }
    /// Room for the title, the statistics, and the limits that stand upright in a histogram.
    double AbovePlot(const Panel& panel) const {
        const int rows = 1 + (panel.Caption.empty() ? 0 : 1) + (HasOwnX() && !panel.Limits.empty() ? 1 : 0);
        return Look_.Row * rows + (Look_.IsCells ? 0 : Look_.Space);
    }
    double BelowPlot() const { return Look_.TickHeight + PanelSpace() + (HasOwnX() ? Look_.Row * 2 : 0); }
    double PanelSpace() const { return Look_.IsCells ? 0 : Look_.Space; }
    double HeadHeight() const {
        return Look_.Edge + Look_.TitleRow + static_cast<double>(LegendRows_) * Look_.Row + PanelSpace();
    }
    double FootHeight() const {
        const double axis = HasOwnX() ? 0 : Look_.Row * (LabelRows() + 1);
        return axis + static_cast<double>(std::min(Data_.Notes.size(), MostNotes + 1)) * Look_.Row;
    }

    void Measure() {
        for (const std::string& name : Legend_)
            if (!name.empty() && std::find(Names_.begin(), Names_.end(), name) == Names_.end())
                Names_.push_back(name);
        LegendRows_ = Names_.empty() ? 0 : LegendPlaces().back().Y + 1;
        double labels = 0, limits = Look_.Space;
        constexpr int TicksForMeasure = 8;
        for (Panel& panel : Panels_) {
            Axis axis = YAxis(panel, TicksForMeasure);
            for (const Tick& tick : axis.Ticks)
                labels = std::max(labels, Look_.WidthOf(tick.Label, Role::Text));
            if (!HasOwnX())
                for (const LimitLine& limit : panel.Limits)
                    limits = std::max(limits, Look_.WidthOf(limit.Text, Role::Faint) + 2 * Look_.Space);
        }
        Left_ = Even(Look_.Edge + labels + Look_.TickWidth + Look_.Space);
        Right_ = Even(Look_.Width - Look_.Edge - std::min(limits, Look_.Width / 4));
        Range x;
        for (const Series& series : Data_.Series)
            for (const Point& point : series.Points)
                x.Take(point.X);
        XAxis_ = FittingX(x);
    }
    double Even(double width) const { return Look_.IsCells ? std::ceil(width / 2) * 2 : std::ceil(width); }

    Axis YAxis(const Panel& panel, int most) const {
        constexpr double Margin = 0.04;
        Axis axis;
        if (HasOwnX()) {
            const auto& counts = panel.Bins.Counts;
            const std::size_t highest = *std::max_element(counts.begin(), counts.end());
            axis.High = static_cast<double>(std::max<std::size_t>(highest, 1)) * (1 + Margin);
            axis.Ticks = NumberTicks(0, axis.High, most, true);
            return axis;
        }
        axis = AxisOf(panel.Values, Data_.Range, Margin);
        axis.Ticks = Shown(NumberTicks(axis.Low, axis.High, most));
        return axis;
    }
    std::vector<Tick> Shown(std::vector<Tick> ticks) const {
        for (Tick& tick : ticks)
            tick.Label = Look_.NumberOf(tick.Label);
        return ticks;
    }

    /// Returns the axis with the most labels that do not touch each other.
    Axis FittingX(const Range& range) const {
        constexpr double Margin = 0.015;
        Axis axis = HasOwnX() ? AxisOf(range, Data_.Range, Margin) : Axis{range.Low, range.High, {}};
        const double most = (Right_ - Left_) / Look_.WidthOf("00000", Role::Text);
        if (!HasOwnX() && Data_.XKind != XKind::Number && axis.Low == axis.High) {
            axis.Low -= 1;
            axis.High += 1;
        } else if (!HasOwnX()) {
            Widen(axis.Low, axis.High, Margin);
        }
        for (int count = static_cast<int>(std::clamp(most, 2.0, 16.0)); count >= 2; --count) {
            axis.Ticks = XTicks(axis, count);
            if (DoLabelsFit(axis))
                break;
        }
        return axis;
    }
    std::vector<Tick> XTicks(const Axis& axis, int most) const {
        if (!HasOwnX() && (Data_.XKind == XKind::Moment || Data_.XKind == XKind::TimeOfDay))
            return TimeTicks(axis.Low, axis.High, most, Data_.XKind == XKind::Moment);
        return Shown(NumberTicks(axis.Low, axis.High, most, !HasOwnX() && Data_.XKind == XKind::Record));
    }
    bool DoLabelsFit(const Axis& axis) const {
        double end = -1e9;
        for (const Tick& tick : axis.Ticks) {
            const double half = Look_.WidthOf(tick.Label, Role::Text) / 2, at = XOf(axis, tick.At);
            if (at - half < end + Look_.Space)
                return false;
            end = at + half;
        }
        return true;
    }

    double XOf(const Axis& axis, double value) const {
        const double width = Right_ - Left_ - (Look_.IsCells ? 1 : 0);
        return Left_ + std::clamp(axis.Share(value), 0.0, 1.0) * width;
    }
    double LastY() const { return Bottom_ - (Look_.IsCells ? 1 : 0); }
    double YOf(const Axis& axis, double value) const { return std::clamp(UncutY(axis, value), Top_, LastY()); }
    /// Beyond the plot, where the value is.
    double UncutY(const Axis& axis, double value) const {
        constexpr double Far = 1e6; // of which the way there has the same slope as to where it is
        return Top_ + (1 - std::clamp(axis.Share(value), -Far, Far)) * (LastY() - Top_);
    }

    // --- texts

    void Write(Spot at, const std::string& text, Anchor anchor, Role role = Role::Text) {
        if (!text.empty())
            Scene_.Items.emplace_back(Label{at, text, anchor, role});
    }
    /// Returns a text, cut with an ellipsis if it is wider than the room for it.
    std::string Fitting(const std::string& text, double room, Role role) const {
        if (Look_.WidthOf(text, role) <= room)
            return text;
        std::string cut;
        for (std::string_view rest = text; !rest.empty();) {
            std::string longer = cut;
            modStringTools::AppendUtf8(longer, TakeCharacter(rest));
            if (Look_.WidthOf(longer + "…", role) > room)
                break;
            cut = longer;
        }
        return cut + "…";
    }

    int StyleOf(std::size_t series) const {
        const auto found = std::find(Names_.begin(), Names_.end(), Legend_[series]);
        return found == Names_.end() ? 0 : static_cast<int>(found - Names_.begin());
    }

    double SampleWidth() const { return Look_.IsCells ? 4 : 34; }

    struct Place {
        double X;
        std::size_t Y; ///< row
    };
    std::vector<Place> LegendPlaces() const {
        std::vector<Place> places;
        double x = Look_.Edge;
        std::size_t row = 0;
        for (const std::string& name : Names_) {
            const double width = SampleWidth() + Look_.WidthOf(LegendText(name), Role::Text) + 2 * Look_.Space;
            if (x > Look_.Edge && x + width > Look_.Width - Look_.Edge) {
                x = Look_.Edge;
                ++row;
            }
            places.push_back({x, row});
            x += std::ceil(width / 2) * 2;
        }
        return places;
    }
    std::string LegendText(const std::string& name) const {
        return Fitting(name, Look_.Width - 2 * Look_.Edge - SampleWidth() - 2 * Look_.Space, Role::Text);
    }

    void DrawLegend() {
        const std::vector<Place> places = LegendPlaces();
        for (std::size_t i = 0; i < Names_.size(); ++i) {
            const double y = Look_.Edge + Look_.TitleRow + (static_cast<double>(places[i].Y) + 0.5) * Look_.Row;
            const Stroke stroke{Role::Data, static_cast<int>(i)};
            const double x = places[i].X, wide = SampleWidth() - Look_.Space;
            if (Kind_ == Kind::Line && !Look_.IsCells)
                Scene_.Items.emplace_back(Polyline{{{x, y}, {x + wide, y}}, stroke});
            Scene_.Items.emplace_back(Markers{{{Look_.IsCells ? x : x + wide / 2, y}}, stroke});
            Write({x + SampleWidth(), y}, LegendText(Names_[i]), Anchor::Start);
        }
    }

    void DrawNotes() {
        const std::size_t shown = Data_.Notes.size() > MostNotes + 1 ? MostNotes : Data_.Notes.size();
        double y = Look_.Height - Look_.Edge / 2 -
                   static_cast<double>(std::min(Data_.Notes.size(), MostNotes + 1)) * Look_.Row + Look_.Row / 2;
        for (std::size_t i = 0; i < shown; ++i, y += Look_.Row)
            Write({Look_.Edge, y}, Fitting(Data_.Notes[i], Look_.Width - 2 * Look_.Edge, Role::Faint), Anchor::Start,
                  Role::Faint);
        if (shown < Data_.Notes.size())
            Write({Look_.Edge, y}, "and " + std::to_string(Data_.Notes.size() - shown) + " more", Anchor::Start,
                  Role::Faint);
    }

    // --- a panel

    /// Returns where the next one begins.
    double DrawPanel(const Panel& panel, double top, bool hasLabels) {
        const double wide = Look_.Width - 2 * Look_.Edge;
        const std::string title = HasOwnX() ? "Count of " + panel.Title : panel.Title;
        Write({Look_.Edge, top + Look_.Row / 2}, Fitting(title, wide, Role::Text), Anchor::Start);
        Write({Look_.Edge, top + Look_.Row * 1.5}, Fitting(panel.Caption, wide, Role::Faint), Anchor::Start,
              Role::Faint);
        Top_ = top + AbovePlot(panel);
        Bottom_ = Top_ + PlotHeight();
        const Axis y = YAxis(
            panel, static_cast<int>(std::clamp((Bottom_ - Top_) / Look_.Row / (Look_.IsCells ? 2 : 1.8), 2.0, 8.0)));
        const Axis x = HasOwnX() ? FittingX(panel.Values) : XAxis_;
        DrawYAxis(y);
        DrawXAxis(x, hasLabels || HasOwnX(), HasOwnX() ? panel.Title : Data_.XTitle);
        if (HasOwnX())
            DrawBars(panel, x, y);
        std::vector<Item> markers; // over all lines, so that each line is known by them
        for (std::size_t i = 0; i < panel.Series.size() && !HasOwnX(); ++i)
            DrawSeries(panel, panel.Series[i], x, y, markers);
        if (!HasOwnX())
            DrawLimits(panel, y); // over the lines, which may cover all of their height
        Scene_.Items.insert(Scene_.Items.end(), markers.begin(), markers.end());
        return Bottom_ + BelowPlot();
    }

    void DrawYAxis(const Axis& axis) {
        for (const Tick& tick : axis.Ticks) {
            const double y = YOf(axis, tick.At);
            Scene_.Items.emplace_back(Line{{Left_, y}, {Right_, y}, {Role::Grid}});
            Scene_.Items.emplace_back(Line{{Left_ - Look_.TickWidth, y}, {Left_, y}, {Role::Tick}});
            Write({Left_ - Look_.TickWidth - (Look_.IsCells ? 0 : 3), y}, tick.Label, Anchor::End);
        }
        Scene_.Items.emplace_back(Line{{Left_, Top_}, {Left_, Bottom_}, {Role::Axis}});
    }

    void DrawXAxis(const Axis& axis, bool hasLabels, const std::string& title) {
        Scene_.Items.emplace_back(Line{{Left_, Bottom_}, {Right_, Bottom_}, {Role::Axis}});
        double row = Bottom_ + Look_.TickHeight + Look_.Row / 2, dayEnd = -1e9;
        for (const Tick& tick : axis.Ticks) {
            const double x = XOf(axis, tick.At);
            Scene_.Items.emplace_back(Line{{x, Bottom_}, {x, Bottom_ + Look_.TickHeight}, {Role::Tick}});
            if (!hasLabels)
                continue;
            WriteBelow(x, row, tick.Label);
            const double half = Look_.WidthOf(tick.Below, Role::Text) / 2;
            if (tick.Below.empty() || x - half < dayEnd)
                continue;
            dayEnd = WriteBelow(x, row + Look_.Row, tick.Below) + Look_.Space;
        }
        if (hasLabels)
            Write({(Left_ + Right_) / 2, row + Look_.Row * (axis.HasSecondRow() ? 2 : 1)},
                  Fitting(title, Right_ - Left_, Role::Text), Anchor::Middle);
    }
    /// Returns where the text ends.
    double WriteBelow(double x, double y, const std::string& text) {
        const double half = Look_.WidthOf(text, Role::Text) / 2;
        const double inside = std::max(std::min(x, Look_.Width - half), half);
        Write({inside, y}, text, Anchor::Middle);
        return inside + half;
    }

    void DrawLimits(const Panel& panel, const Axis& axis) {
        std::vector<LimitLine> lines = panel.Limits;
        std::stable_sort(lines.begin(), lines.end(),
                         [](const auto& one, const auto& other) { return one.At > other.At; });
        double free = Top_ - Look_.Row; // the limits are written below each other, however near they are
        for (const LimitLine& limit : lines) {
            const double y = YOf(axis, limit.At);
            Scene_.Items.emplace_back(Line{{Left_, y}, {Right_, y}, {limit.Role}});
            const double text = std::max(y, free);
            Write({Right_ + Look_.Space, text}, Fitting(limit.Text, Look_.Width - Right_ - Look_.Space, Role::Faint),
                  Anchor::Start, Role::Faint);
            free = text + Look_.Row * (Look_.IsCells ? 1 : 0.8);
        }
    }

    void DrawBars(const Panel& panel, const Axis& x, const Axis& y) {
        const Bins& bins = panel.Bins;
        for (std::size_t i = 0; i < bins.Counts.size(); ++i) {
            const double low = bins.First + bins.Width * static_cast<double>(i);
            if (bins.Counts[i] > 0)
                Scene_.Items.emplace_back(Rectangle{{XOf(x, low), YOf(y, static_cast<double>(bins.Counts[i]))},
                                                    {XOf(x, low + bins.Width), Bottom_},
                                                    {Role::Bar}});
        }
        for (const LimitLine& limit : panel.Limits) {
            const double at = XOf(x, limit.At);
            Scene_.Items.emplace_back(Line{{at, Top_}, {at, Bottom_}, {limit.Role}});
            const double half = Look_.WidthOf(limit.Text, Role::Faint) / 2;
            Write({std::min(at, Look_.Width - half - Look_.Edge), Top_ - Look_.Row / 2}, limit.Text, Anchor::Middle,
                  Role::Faint);
        }
    }

    // --- a series

    /// Adds its markers to `markers`.
    void DrawSeries(const Panel& panel, std::size_t index, const Axis& x, const Axis& y, std::vector<Item>& markers) {
        const std::vector<Point>& points = Data_.Series[index].Points;
        const Stroke stroke{Role::Data, StyleOf(index)};
        const bool isMany = points.size() > MostPointsAsTheyAre;
        const bool hasLine = Kind_ != Kind::Points;
        std::vector<Spot> run, marked, outside;
        bool isLastShown = false;
        const auto endRun = [&] {
            if (run.size() == 1 && isLastShown)
                marked.push_back(run.front());
            for (const std::vector<Spot>& part : PartsBetween(run, Top_, LastY()))
                if (hasLine)
                    Scene_.Items.emplace_back(Polyline{isMany ? ReducedLine(part) : part, stroke});
            run.clear();
        };
        const std::size_t step = MarkerStep(points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Spot spot{XOf(x, points[i].X), UncutY(y, points[i].Y)};
            if (points[i].IsAfterGap && !Data_.JoinsGaps)
                endRun();
            run.push_back(spot);
            isLastShown = Data_.Range.Has(points[i].Y);
            if (!isLastShown)
                continue;
            const bool isOutside = panel.Control && panel.Control->IsOutside(points[i].Y);
            if (isOutside)
                outside.push_back(spot);
            else if (step > 0 && i % step == step / 2)
                marked.push_back(spot);
        }
        endRun();
        AddMarkers(std::move(marked), stroke, isMany, markers);
        AddMarkers(std::move(outside), {Role::Outside}, isMany, markers);
    }

    /// Every how many points there is a marker, 0 for none. A line of many has a few, by which it is known without
    /// colour.
    std::size_t MarkerStep(std::size_t points) const {
        constexpr std::size_t MarkersOfALine = 8;
        if (Kind_ == Kind::Points || points <= MostMarked)
            return 1;
        return Names_.size() > 1 ? points / MarkersOfALine : 0;
    }

    static void AddMarkers(std::vector<Spot> spots, const Stroke& stroke, bool isMany, std::vector<Item>& markers) {
        if (!spots.empty())
            markers.emplace_back(Markers{isMany ? ReducedMarkers(spots) : std::move(spots), stroke});
    }

    const Data& Data_;
    Kind Kind_;
    Look Look_;
    std::vector<Panel> Panels_;
    std::vector<std::string> Legend_; ///< of the series, same index
    std::vector<std::string> Names_;  ///< in the legend, each once
    std::size_t LegendRows_ = 0;
    Axis XAxis_;
    double Left_ = 0, Right_ = 0;
    double Top_ = 0, Bottom_ = 0; ///< of the panel that is drawn
    Scene Scene_;
};

} // namespace

/// A line would join numbers that do not follow each other.
Kind UsualKind(const Data& data) {
    return data.XKind == XKind::Number ? Kind::Points : Kind::Line;
}

Spot UsualSize(const Data& data, Kind kind) {
    const auto panels = static_cast<double>(PanelsOf(data, kind, {}).size());
    return {960, panels == 1 ? 540 : 160 + 240 * panels};
}

std::string WhyNotDrawn(const Data& data, Kind kind, const Look& look) {
    const Drawing drawing(data, kind, look);
    if (drawing.Panels() > MostPanels)
        return std::to_string(drawing.Panels()) + " panels would be needed, one for each unit or series; " +
               std::to_string(MostPanels) + " are the most: choose fewer columns, or --by another one.";
    const double least = look.Row * LeastRows;
    if (drawing.PlotHeight() >= least && look.Width >= look.Row * (look.IsCells ? 10 : 12))
        return {};
    return "The picture is too small for " + std::to_string(drawing.Panels()) +
           (drawing.Panels() == 1 ? " panel" : " panels") + ": give it more room by --size.";
}

Scene Draw(const Data& data, Kind kind, const Look& look) {
    return Drawing(data, kind, look).Make();
}

} // namespace plotting
