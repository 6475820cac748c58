// SPDX-License-Identifier: MIT
// Makes the table of results from the lines that the benchmarks print.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;

constexpr double MostGrowth = 12; ///< of the time, when the input grows tenfold

std::string Short(double number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), number >= 100 ? "%.0f" : number >= 1 ? "%.2f" : "%.2g", number);
    return text.data();
}

/// Seconds in the unit that a person would use.
std::string Duration(double seconds) {
    if (seconds >= 1)
        return Short(seconds) + " s";
    if (seconds >= 1e-3)
        return Short(seconds * 1e3) + " ms";
    return seconds >= 1e-6 ? Short(seconds * 1e6) + " µs" : Short(seconds * 1e9) + " ns";
}

std::string Amount(double amount, const std::string& unit) {
    return unit == "s" ? Duration(amount) : Short(amount) + " " + unit;
}

/// A mark is a round number, and is printed without trailing zeros.
std::string Round(double number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", number);
    return text.data();
}

std::string MarkOf(const Json& line) {
    const double mark = line["mark"];
    const std::string unit = line["unit"];
    const std::string text = line["of"] == "ratio" ? Round(mark)
                             : unit == "s"         ? Round(mark * 1e3) + " ms"
                                                   : Round(mark) + " " + unit;
    return (line["below"] ? "below " : "at most ") + text;
}

std::string FigureOf(const Json& line) {
    const double figure = line["figure"];
    return line["of"] == "ratio" ? Short(figure) : Amount(figure, line["unit"]);
}

const char* Verdict(double figure, double mark, bool below) {
    return figure < mark || (figure == mark && !below) ? "reached" : "above the mark";
}

/// The width of a text on the screen, in characters.
std::size_t Width(const std::string& text) {
    std::size_t width = 0;
    for (const char byte : text)
        width += (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U ? 1 : 0;
    return width;
}

using Cells = std::vector<std::string>;

/// Escapes bars, each of which would end the cell.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char character : text)
        escaped += character == '|' ? std::string("\\|") : std::string(1, character);
    return escaped;
}

std::string GrowthOf(const Json& line) {
    if (!line.contains("growth"))
        return "";
    const std::string product = Short(line["growth"]);
    return line.contains("floor_growth") ? product + " (floor " + Short(line["floor_growth"]) + ")" : product;
}

Cells CellsOf(const Json& line) {
    const std::string unit = line["unit"];
    return {Escaped(line["work"]),
            Amount(line["product"], unit),
            Escaped(line["floor"]),
            line.contains("floor_took") ? Amount(line["floor_took"], unit) : "",
            FigureOf(line),
            MarkOf(line),
            Verdict(line["figure"], line["mark"], line["below"]),
            GrowthOf(line),
            Escaped(line.value("note", ""))};
}

/// Adds the last row, the worst growth of the others: how the time grows with the input.
void AddGrowth(std::vector<Cells>& table, const std::vector<Json>& lines) {
    double worst = 0;
    Json where;
    for (const Json& line : lines) {
        if (line.contains("growth") && line["growth"] > worst) {
            worst = line["growth"];
            where = line;
        }
    }
    if (worst > 0)
        table.push_back({"growth of each row above when its input grows tenfold, the worst", "", "", "", Short(worst),
                         "at most " + Round(MostGrowth), Verdict(worst, MostGrowth, false), GrowthOf(where),
                         Escaped(where["work"])});
}

void Print(const std::vector<Cells>& table) {
    std::vector<std::size_t> widths(table.front().size(), 3);
    for (const Cells& cells : table)
        for (std::size_t i = 0; i < cells.size(); ++i)
            widths[i] = std::max(widths[i], Width(cells[i]));
    bool head = true;
    for (const Cells& cells : table) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            std::cout << "| " << cells[i] << std::string(widths[i] - Width(cells[i]) + 1, ' ');
        std::cout << "|\n";
        if (head)
            for (const std::size_t width : widths)
                std::cout << "|" << std::string(width + 2, '-');
        if (head)
            std::cout << "|\n";
        head = false;
    }
}

} // namespace

int main() {
    std::vector<Json> lines;
    for (std::string text; std::getline(std::cin, text);)
        lines.push_back(Json::parse(text));
    std::vector<Cells> table = {
        {"Work", "Product", "Floor or peer", "It takes", "Figure", "Mark", "", "Tenfold input", "Note"}};
    for (const Json& line : lines)
        table.push_back(CellsOf(line));
    AddGrowth(table, lines);
    Print(table);
    return 0;
}
