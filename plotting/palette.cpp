// SPDX-License-Identifier: MIT
#include "plotting/palette.h"

namespace plotting {

namespace {

// The colours and the shapes are of numbers without a common divisor: all of the first 42 series differ.
constexpr std::array<std::string_view, 7> Colours = {"#0072B2", "#D55E00", "#009E73", "#CC79A7",
                                                     "#000000", "#E69F00", "#56B4E9"};
constexpr std::array<Shape, 6> Shapes = {Shape::Disc,    Shape::Square, Shape::Triangle,
                                         Shape::Diamond, Shape::Plus,   Shape::Cross};
constexpr std::array<std::array<int, 4>, 5> Dashes = {{{}, {7, 4}, {2, 3}, {9, 3, 2, 3}, {12, 5}}};

Appearance OfSeries(int series) {
    const auto number = static_cast<std::size_t>(series);
    return {Colours[number % Colours.size()], 1.6, Dashes[number % Dashes.size()], Shapes[number % Shapes.size()]};
}

} // namespace

Appearance AppearanceOf(const Stroke& stroke) {
    switch (stroke.Role) {
    case Role::Data:
    case Role::Bar:
        return OfSeries(stroke.Series);
    case Role::Grid:
        return {"#DDDDDD", 1, {}, {}};
    case Role::Warn:
        return {"#7A5200", 1, {12, 3, 2, 3}, {}};
    case Role::Fail:
        return {"#B0003A", 1.4, {}, {}};
    case Role::Mean:
        return {"#555555", 1.2, {}, {}};
    case Role::ControlLimit:
        return {"#B0003A", 1.2, {8, 4}, {}};
    case Role::Outside:
        return {"#B0003A", 1.8, {}, Shape::Ring};
    case Role::Faint:
        return {"#555555", 1, {}, {}};
    default:
        return {"#222222", 1, {}, {}};
    }
}

double SizeOf(Role role) {
    return role == Role::Title ? 16 : role == Role::Faint ? 11 : 12;
}

} // namespace plotting
