// SPDX-License-Identifier: MIT
// A chart as lines, markers and texts at their places, for whatever draws it.
#pragma once

#include <string>
#include <variant>
#include <vector>

namespace plotting {

struct Spot {
    double X = 0, Y = 0; ///< from the upper left corner; pixels of an image, or dots of a terminal (two by four a cell)
    bool operator==(const Spot&) const = default;
};

/// What a part of a chart is; palette.h says how it looks.
enum class Role { Axis, Tick, Grid, Data, Bar, Warn, Fail, Mean, ControlLimit, Outside, Text, Faint, Title };

struct Stroke {
    plotting::Role Role = Role::Axis;
    int Series = 0; ///< whose colour, dashes and marker it has
};

struct Line {
    Spot From, To;
    plotting::Stroke Stroke;
};
struct Polyline {
    std::vector<Spot> Spots; ///< two or more
    plotting::Stroke Stroke;
};
struct Markers {
    std::vector<Spot> Spots;
    plotting::Stroke Stroke;
};
struct Rectangle {
    Spot From, To; ///< upper left and lower right corner
    plotting::Stroke Stroke;
};
enum class Anchor { Start, Middle, End };
struct Label {
    Spot At; ///< the middle of its height
    std::string Text;
    plotting::Anchor Anchor = Anchor::Start;
    plotting::Role Role = Role::Text;
};

using Item = std::variant<Line, Polyline, Markers, Rectangle, Label>;

struct Scene {
    double Width = 0, Height = 0;
    std::string Title;
    std::string Description; ///< what is to be seen, for who does not see it
    std::vector<Item> Items; ///< a later one is drawn over an earlier one
};

} // namespace plotting
