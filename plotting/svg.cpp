// SPDX-License-Identifier: MIT
#include "plotting/svg.h"

#include "plotting/palette.h"
#include "plotting/readable.h"

#include <cmath>
#include <cstdlib>

namespace plotting {

namespace {

/// Returns a length in pixels: to a tenth, which nobody sees more of.
std::string Length(double value) {
    const long long tenths = std::llround(value * 10);
    const std::string whole = (tenths < 0 ? "-" : "") + std::to_string(std::llabs(tenths) / 10);
    return tenths % 10 == 0 ? whole : whole + "." + std::to_string(std::llabs(tenths) % 10);
}

std::string Pair(const Spot& spot) {
    return Length(spot.X) + "," + Length(spot.Y);
}

std::string Attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + value + "\"";
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char character : Readable(text)) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

std::string StrokeText(const Stroke& stroke) {
    const Appearance look = AppearanceOf(stroke);
    std::string text = Attribute("stroke", std::string(look.Colour)) + Attribute("stroke-width", Length(look.Width));
    std::string dashes;
    for (const int length : look.Dashes)
        if (length > 0)
            dashes += (dashes.empty() ? "" : " ") + std::to_string(length);
    return dashes.empty() ? text : text + Attribute("stroke-dasharray", dashes);
}

std::string Path(const std::vector<Spot>& corners, bool isClosed) {
    std::string path = "M" + Pair(corners.front());
    for (std::size_t i = 1; i < corners.size(); ++i)
        path += "L" + Pair(corners[i]);
    return isClosed ? path + "Z" : path;
}

std::string CircleAt(const Spot& at, double radius) {
    const std::string r = Length(radius);
    const std::string half = "a" + r + "," + r + " 0 1,0 ";
    return "M" + Pair({at.X - radius, at.Y}) + half + Length(2 * radius) + ",0" + half + Length(-2 * radius) + ",0";
}

std::string MarkerAt(const Spot& at, Shape shape) {
    constexpr double Small = 3.2, Large = 4.2, OfRing = 6;
    const auto beside = [&](double x, double y) { return Spot{at.X + x, at.Y + y}; };
    switch (shape) {
    case Shape::Disc:
        return CircleAt(at, Small);
    case Shape::Ring: // a cross in a circle
        return CircleAt(at, OfRing) + Path({beside(-Small, -Small), beside(Small, Small)}, false) +
               Path({beside(-Small, Small), beside(Small, -Small)}, false);
    case Shape::Square:
        return Path({beside(-Small, -Small), beside(Small, -Small), beside(Small, Small), beside(-Small, Small)}, true);
    case Shape::Triangle:
        return Path({beside(0, -Large), beside(Large, Small), beside(-Large, Small)}, true);
    case Shape::Diamond:
        return Path({beside(0, -Large), beside(Large, 0), beside(0, Large), beside(-Large, 0)}, true);
    case Shape::Plus:
        return Path({beside(-Large, 0), beside(Large, 0)}, false) + Path({beside(0, -Large), beside(0, Large)}, false);
    case Shape::Cross:
        break;
    }
    return Path({beside(-Small, -Small), beside(Small, Small)}, false) +
           Path({beside(-Small, Small), beside(Small, -Small)}, false);
}

struct Writer {
    std::string& Svg;

    void operator()(const Line& line) const {
        Svg += "<path" + Attribute("d", Path({line.From, line.To}, false)) + StrokeText(line.Stroke) + "/>\n";
    }
    void operator()(const Polyline& line) const {
        Svg += "<path" + Attribute("d", Path(line.Spots, false)) + StrokeText(line.Stroke) +
               Attribute("stroke-linejoin", "round") + "/>\n";
    }
    void operator()(const Markers& markers) const {
        const Appearance look = AppearanceOf(markers.Stroke);
        const bool isOpen = look.Shape == Shape::Plus || look.Shape == Shape::Cross || look.Shape == Shape::Ring;
        std::string path;
        for (const Spot& spot : markers.Spots)
            path += MarkerAt(spot, look.Shape);
        const std::string colour(look.Colour);
        Svg += "<path" + Attribute("d", path) +
               (isOpen ? Attribute("stroke", colour) + Attribute("stroke-width", "1.8") : Attribute("fill", colour)) +
               "/>\n";
    }
    void operator()(const Rectangle& box) const {
        const std::string colour(AppearanceOf(box.Stroke).Colour);
        Svg += "<rect" + Attribute("x", Length(box.From.X)) + Attribute("y", Length(box.From.Y)) +
               Attribute("width", Length(box.To.X - box.From.X)) + Attribute("height", Length(box.To.Y - box.From.Y)) +
               Attribute("fill", colour) + Attribute("fill-opacity", "0.35") + Attribute("stroke", colour) + "/>\n";
    }
    void operator()(const Label& label) const {
        constexpr double HalfOfASmallLetter = 0.35;
        const double size = SizeOf(label.Role);
        constexpr const char* Anchors[] = {"", "middle", "end"};
        const std::string anchor = Anchors[static_cast<int>(label.Anchor)];
        Svg += "<text" + Attribute("x", Length(label.At.X)) +
               Attribute("y", Length(label.At.Y + size * HalfOfASmallLetter)) + Attribute("font-size", Length(size)) +
               (anchor.empty() ? "" : Attribute("text-anchor", anchor)) +
               (label.Role == Role::Title ? Attribute("font-weight", "bold") : "") + Attribute("stroke", "none") +
               Attribute("fill", std::string(AppearanceOf({label.Role}).Colour)) + ">" + Escaped(label.Text) +
               "</text>\n";
    }
};

} // namespace

std::string SvgOf(const Scene& scene) {
    const std::string width = Length(scene.Width), height = Length(scene.Height);
    std::string svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
                      Attribute("width", width) + Attribute("height", height) +
                      Attribute("viewBox", "0 0 " + width + " " + height) +
                      " role=\"img\" aria-labelledby=\"title desc\" fill=\"none\""
                      " font-family=\"'DejaVu Sans', Verdana, sans-serif\">\n";
    svg += "<title id=\"title\">" + Escaped(scene.Title) + "</title>\n<desc id=\"desc\">" + Escaped(scene.Description) +
           "</desc>\n";
    svg += "<rect" + Attribute("width", width) + Attribute("height", height) + " fill=\"#FFFFFF\"/>\n";
    for (const Item& item : scene.Items)
        std::visit(Writer{svg}, item);
    return svg + "</svg>\n";
}

} // namespace plotting
