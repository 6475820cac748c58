// SPDX-License-Identifier: MIT
#include "plotting/text_picture.h"

#include "plotting/palette.h"
#include "plotting/readable.h"
#include "src/text/utf8.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace plotting {

namespace {

constexpr int DotsWide = 2, DotsHigh = 4; // of a cell

constexpr std::u32string_view Shapes = U"●■▲◆+×⊗"; // in the order of Shape
constexpr std::string_view AsciiShapes = "o#^*+x@";
constexpr unsigned Left = 1, Right = 2, Up = 4, Down = 8; // the arms of a frame

char32_t FrameOf(unsigned arms) {
    switch (arms) {
    case Left | Right:
        return U'─';
    case Up | Down:
        return U'│';
    case Up | Right:
        return U'└';
    case Left | Up | Down:
        return U'┤';
    case Left | Right | Down:
        return U'┬';
    case Left | Right | Up | Down:
        return U'┼';
    case Up | Right | Down:
        return U'├';
    case Left | Up | Right:
        return U'┴';
    default:
        return (arms & (Up | Down)) != 0 ? U'│' : U'─';
    }
}

struct Cell {
    unsigned Dots = 0; ///< of braille
    unsigned Arms = 0; ///< of a frame
    char32_t Rule = 0; ///< of a limit; 0 for none
    std::string Text = {};
    bool IsCovered = false; ///< by a wide character to its left
};

class Picture {
public:
    Picture(const Scene& scene, Letters letters)
        : Columns_(static_cast<int>(scene.Width) / DotsWide), Rows_(static_cast<int>(scene.Height) / DotsHigh),
          Letters_(letters), Cells_(static_cast<std::size_t>(Columns_ * Rows_)) {}

    void operator()(const Line& line) {
        const int column = ColumnOf(line.From.X), row = RowOf(line.From.Y);
        const bool isUpright = line.From.X == line.To.X;
        if (line.Stroke.Role == Role::Axis && isUpright) {
            for (int each = row; each < RowOf(line.To.Y); ++each)
                Frame(column - 1, each, Up | Down);
            Frame(column - 1, RowOf(line.To.Y), Up | Right);
        } else if (line.Stroke.Role == Role::Axis) {
            for (int each = column; each < ColumnOf(line.To.X); ++each)
                Frame(each, row, Left | Right);
        } else if (line.Stroke.Role == Role::Tick && isUpright) {
            Frame(column, row, Down);
        } else if (line.Stroke.Role == Role::Tick) {
            Frame(column, row, Left);
        } else if (line.Stroke.Role != Role::Grid) {
            Rule(line, isUpright);
        }
    }
    void operator()(const Polyline& line) { Stroke(line.Spots); }
    void operator()(const Markers& markers) {
        const auto shape = static_cast<std::size_t>(AppearanceOf(markers.Stroke).Shape);
        std::string text;
        if (Letters_ == Letters::Ascii)
            text = AsciiShapes[shape];
        else
            modStringTools::AppendUtf8(text, Shapes[shape]);
        for (const Spot& spot : markers.Spots)
            if (Cell* const cell = At(ColumnOf(spot.X), RowOf(spot.Y)))
                cell->Text = text;
    }
    void operator()(const Rectangle& box) {
        for (int x = static_cast<int>(std::lround(box.From.X)); x < static_cast<int>(std::lround(box.To.X)); ++x)
            for (int y = static_cast<int>(std::lround(box.From.Y)); y < static_cast<int>(std::lround(box.To.Y)); ++y)
                Dot(x, y);
    }
    void operator()(const Label& label) {
        const int cells = CellsOf(label.Text);
        int column = ColumnOf(label.At.X);
        column -= label.Anchor == Anchor::End ? cells : label.Anchor == Anchor::Middle ? cells / 2 : 0;
        const int row = RowOf(label.At.Y);
        for (std::string_view rest = label.Text; !rest.empty();) {
            const char32_t character = TakeCharacter(rest);
            const int width = CellsOf(character);
            Put(width == 0 ? column - 1 : column, row, character, width);
            column += width;
        }
    }

    std::string Text() const {
        std::string text;
        for (int row = 0; row < Rows_; ++row) {
            std::string line;
            for (int column = 0; column < Columns_; ++column)
                line += TextAt(Cells_[static_cast<std::size_t>(row * Columns_ + column)]);
            line.erase(line.find_last_not_of(' ') + 1);
            text += line + "\n";
        }
        return text;
    }

private:
    static int ColumnOf(double x) { return static_cast<int>(std::floor(x / DotsWide)); }
    static int RowOf(double y) { return static_cast<int>(std::floor(y / DotsHigh)); }

    Cell* At(int column, int row) {
        const bool isInside = column >= 0 && row >= 0 && column < Columns_ && row < Rows_;
        return isInside ? &Cells_[static_cast<std::size_t>(row * Columns_ + column)] : nullptr;
    }
    void Frame(int column, int row, unsigned arms) {
        if (Cell* const cell = At(column, row))
            cell->Arms |= arms;
    }
    void Dot(int x, int y) {
        constexpr unsigned Bits[DotsHigh][DotsWide] = {{0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};
        Cell* const cell = x < 0 || y < 0 ? nullptr : At(x / DotsWide, y / DotsHigh);
        if (cell != nullptr)
            cell->Dots |= Bits[y % DotsHigh][x % DotsWide];
    }
    /// A limit, for which a whole line of dots would look like data.
    void Rule(const Line& line, bool isUpright) {
        const Appearance look = AppearanceOf(line.Stroke);
        const bool isWhole = look.Dashes.front() == 0;
        const std::u32string_view letters = Letters_ == Letters::Ascii ? U"=-:!" : U"━┄┊┃";
        const char32_t letter = letters[isUpright ? (isWhole ? 3 : 2) : (isWhole ? 0 : 1)];
        const int last = isUpright ? RowOf(line.To.Y) - 1 : ColumnOf(line.To.X) - 1;
        for (int at = isUpright ? RowOf(line.From.Y) : ColumnOf(line.From.X); at <= last; ++at)
            if (Cell* const cell = isUpright ? At(ColumnOf(line.From.X), at) : At(at, RowOf(line.From.Y)))
                cell->Rule = letter;
    }
    void Stroke(const std::vector<Spot>& spots) {
        for (std::size_t i = 1; i < spots.size(); ++i) {
            const double wide = spots[i].X - spots[i - 1].X, high = spots[i].Y - spots[i - 1].Y;
            const int steps = std::max(1, static_cast<int>(std::ceil(std::max(std::fabs(wide), std::fabs(high)))));
            for (int step = 0; step <= steps; ++step) {
                const double share = static_cast<double>(step) / steps;
                Dot(static_cast<int>(std::floor(spots[i - 1].X + wide * share)),
                    static_cast<int>(std::floor(spots[i - 1].Y + high * share)));
            }
        }
    }

    void Put(int column, int row, char32_t character, int width) {
        Cell* const cell = At(column, row);
        if (cell == nullptr || (width == 2 && At(column + 1, row) == nullptr))
            return;
        std::string text;
        if (Letters_ == Letters::Ascii && character >= 0x80)
            text = std::string(static_cast<std::size_t>(width), '?');
        else
            modStringTools::AppendUtf8(text, character);
        if (width == 0) {
            cell->Text += text;
            return;
        }
        *cell = {.Dots = 0, .Arms = 0, .Rule = 0, .Text = text, .IsCovered = false};
        if (width == 2)
            *At(column + 1, row) = {.Dots = 0, .Arms = 0, .Rule = 0, .Text = {}, .IsCovered = true};
    }

    std::string TextAt(const Cell& cell) const {
        if (cell.IsCovered)
            return {};
        if (!cell.Text.empty())
            return cell.Text;
        std::string text;
        if (cell.Arms != 0 && Letters_ == Letters::Ascii)
            return (cell.Arms & (Up | Down)) == 0 ? "-" : (cell.Arms & (Left | Right)) == 0 ? "|" : "+";
        if (cell.Arms != 0)
            modStringTools::AppendUtf8(text, FrameOf(cell.Arms));
        else if (cell.Dots != 0 && Letters_ == Letters::Ascii)
            text = ".";
        else if (cell.Dots != 0)
            modStringTools::AppendUtf8(text, 0x2800 + cell.Dots);
        else if (cell.Rule != 0)
            modStringTools::AppendUtf8(text, cell.Rule);
        return text.empty() ? " " : text;
    }

    int Columns_, Rows_;
    Letters Letters_;
    std::vector<Cell> Cells_;
};

} // namespace

std::string TextOf(const Scene& scene, Letters letters) {
    Picture picture(scene, letters);
    for (const Item& item : scene.Items)
        std::visit(picture, item);
    return picture.Text();
}

} // namespace plotting
