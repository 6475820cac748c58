// SPDX-License-Identifier: MIT
#include "exporting/table_view.h"

#include "companion/values/moments.h"
#include "companion/values/table_text.h"

#include <algorithm>
#include <optional>

namespace exporting {

using values::Column;
using values::ColumnKind;
using values::Quantity;

namespace {

constexpr std::size_t MostNamed = 20; // odd rows: a table of which all are would be told line by line

std::string FreeName(const std::string& name, const std::vector<OutColumn>& columns) {
    std::string free = name;
    for (int count = 2;
         std::any_of(columns.begin(), columns.end(), [&](const auto& each) { return each.Name == free; }); ++count)
        free = name + "_" + std::to_string(count);
    return free;
}

const char* WordOf(CellType type) {
    return type == CellType::Date ? "date" : type == CellType::Time ? "time" : "number with a unit";
}

bool IsPlain(std::string_view number) {
    const bool hasDigit = !number.empty() && number.front() >= '0' && number.front() <= '9';
    return hasDigit && number.find(',') == std::string_view::npos;
}

} // namespace

/// Makes the cells of one row after the other. Most cells are parts of the line; a text that is made anew is kept here,
/// and used again while the field is the same as in the row before, as dates are.
class TableView::Maker {
public:
    explicit Maker(const TableView& view) : View_(view), Cells_(view.Columns_.size()), Made_(view.Columns_.size()) {}

    const std::vector<Cell>& Row(std::string_view line, std::size_t record) {
        values::Split(line, Fields_);
        Line_ = line;
        Record_ = record;
        for (std::size_t i = 0; i < Cells_.size(); ++i)
            Cells_[i] = CellOf(View_.Origins_[i], Made_[i]);
        return Cells_;
    }

private:
    struct Kept {
        std::string From;
        std::string Text;
        CellType Type = CellType::Missing; ///< Missing: nothing is kept
    };

    Cell CellOf(const Origin& origin, Kept& kept) {
        switch (origin.Part) {
        case Part::Alias:
            return {CellType::Text, View_.Source_.Alias};
        case Part::Record:
            kept.Text = std::to_string(Record_);
            return {CellType::Number, kept.Text};
        case Part::Beyond:
            return Beyond();
        default:
            break;
        }
        if (origin.Field >= Fields_.size())
            return {};
        const std::string_view field = Fields_[origin.Field];
        switch (origin.Part) {
        case Part::Number:
            return NumberIn(field, kept);
        case Part::Unit:
            return UnitIn(field);
        case Part::Date:
        case Part::Time:
            return MomentIn(field, origin.Part, kept);
        default:
            return {CellType::Text, field};
        }
    }

    /// All fields behind the last column, with their bars.
    Cell Beyond() const {
        if (Fields_.size() <= View_.HeaderFields_)
            return {};
        const auto start = static_cast<std::size_t>(Fields_[View_.HeaderFields_].data() - Line_.data());
        return {CellType::Text, Line_.substr(start)};
    }

    Cell NumberIn(std::string_view field, Kept& kept) const {
        const auto quantity = values::QuantityOf(field, View_.Plan_.Decimal);
        if (!quantity)
            return {CellType::Text, field};
        if (IsPlain(quantity->Number))
            return {CellType::Number, quantity->Number};
        kept.Text = values::PlainNumber(quantity->Number);
        return {CellType::Number, kept.Text};
    }

    Cell UnitIn(std::string_view field) const {
        const auto quantity = values::QuantityOf(field, View_.Plan_.Decimal);
        return quantity ? Cell{CellType::Text, quantity->Unit} : Cell{};
    }

    Cell MomentIn(std::string_view field, Part part, Kept& kept) const {
        if (kept.Type == CellType::Missing || kept.From != field) {
            const auto made = part == Part::Date ? values::IsoDate(field) : values::IsoTime(field, View_.Plan_.Zone);
            kept.From = field;
            kept.Text = made.value_or("");
            kept.Type = !made ? CellType::Text : part == Part::Date ? CellType::Date : CellType::Time;
        }
        return kept.Type == CellType::Text ? Cell{CellType::Text, field} : Cell{kept.Type, kept.Text};
    }

    const TableView& View_;
    std::string_view Line_;
    std::size_t Record_ = 0;
    std::vector<std::string_view> Fields_;
    std::vector<Cell> Cells_;
    std::vector<Kept> Made_; ///< one for each column
};

TableView::TableView(const Source& source, const Plan& plan) : Source_(source), Plan_(plan) {
    values::LineWalk walk(source.Bytes);
    if (!walk.Next())
        return;
    std::vector<std::string_view> header;
    values::Split(walk.Line(), header);
    HeaderFields_ = header.size();
    const std::vector<Column> columns = values::ColumnsOf(header, source.Fields);
    std::vector<Measure> measures(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        measures[i].IsMeasured = plan.Units != Units::Keep && IsMeasured(columns, i);
    LookForNamed(columns);
    Survey(measures);
    MakeColumns(columns, measures);
    ChooseColumns();
    CountOtherTexts();
}

namespace {

bool IsNamed(const Column& column, std::size_t index, const std::string& name) {
    const auto numbered = values::NumberedColumn(name);
    return numbered ? *numbered == index : values::IsName(name, column.Field);
}

} // namespace

bool TableView::IsMeasured(const std::vector<Column>& columns, std::size_t index) const {
    return columns[index].Kind == ColumnKind::Measured ||
           std::any_of(Plan_.Measured.begin(), Plan_.Measured.end(),
                       [&](const std::string& each) { return IsNamed(columns[index], index, each); });
}

void TableView::LookForNamed(const std::vector<Column>& columns) {
    for (const std::string& name : Plan_.Measured) {
        bool isThere = false;
        for (std::size_t i = 0; i < columns.size(); ++i)
            isThere = isThere || IsNamed(columns[i], i, name);
        if (!isThere)
            Odd_.push_back("there is no column " + name);
    }
}

void TableView::Measure::Take(std::string_view field, values::DecimalSign sign) {
    if (field.empty())
        return;
    const auto quantity = values::QuantityOf(field, sign);
    if (!quantity)
        return;
    if (!Unit)
        Unit = std::string(quantity->Unit);
    else
        HasSeveral = HasSeveral || *Unit != quantity->Unit;
}

void TableView::Survey(std::vector<Measure>& measures) {
    std::vector<std::string_view> fields;
    values::LineWalk walk(Source_.Bytes);
    for (walk.Next(); walk.Next();) {
        ++Rows_;
        values::Split(walk.Line(), fields);
        if (fields.size() != HeaderFields_)
            LookAtLength(fields.size(), walk.Number());
        for (std::size_t i = 0; i < std::min(fields.size(), measures.size()); ++i)
            if (measures[i].IsMeasured)
                measures[i].Take(fields[i], Plan_.Decimal);
    }
    if (OddRows_ > MostNamed)
        Odd_.push_back("and " + std::to_string(OddRows_ - MostNamed) + " more");
}

void TableView::LookAtLength(std::size_t fields, std::size_t line) {
    HasLongRow_ = HasLongRow_ || fields > HeaderFields_;
    if (++OddRows_ > MostNamed)
        return;
    const std::string place = "line " + std::to_string(line) + ": ";
    if (fields < HeaderFields_)
        Odd_.push_back(place + std::to_string(fields) + " of " + std::to_string(HeaderFields_) +
                       " fields: the others are missing");
    else
        Odd_.push_back(place + std::to_string(fields) + " fields under " + std::to_string(HeaderFields_) +
                       (HeaderFields_ == 1 ? " column" : " columns") + ": the others are in the column \"beyond\"");
}

void TableView::MakeColumns(const std::vector<Column>& columns, const std::vector<Measure>& measures) {
    if (Plan_.Alias)
        Add({.Name = "alias"}, Part::Alias);
    if (Plan_.Record)
        Add({.Name = "record", .Type = CellType::Number}, Part::Record);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Column& column = columns[i];
        const bool becomesIso = Plan_.Dates == Dates::Iso;
        if (!column.IsShown && !Plan_.Hidden)
            continue;
        if (measures[i].IsMeasured)
            AddMeasured(column, i, measures[i]);
        else if (column.Kind == ColumnKind::Date && becomesIso)
            Add({.Name = column.Name, .Field = column.Field, .Type = CellType::Date}, Part::Date, i);
        else if (column.Kind == ColumnKind::Time && becomesIso)
            Add({.Name = column.Name, .Field = column.Field, .Type = CellType::Time}, Part::Time, i);
        else
            Add({.Name = column.Name, .Field = column.Field}, Part::Whole, i);
    }
    if (HasLongRow_)
        Add({.Name = "beyond"}, Part::Beyond);
}

/// Returns the indices of the columns that a person means: all of a field by its number, else the one of this name.
/// Names may differ by case alone: the very same name goes first.
std::vector<std::size_t> TableView::ColumnsCalled(const std::string& name) const {
    std::vector<std::size_t> found;
    if (const auto numbered = values::NumberedColumn(name)) {
        for (std::size_t i = 0; i < Columns_.size(); ++i) {
            const Part part = Origins_[i].Part;
            const bool isOfField = part != Part::Alias && part != Part::Record && part != Part::Beyond;
            if (isOfField && Origins_[i].Field == *numbered)
                found.push_back(i);
        }
        return found;
    }
    auto column = std::find_if(Columns_.begin(), Columns_.end(), [&](const auto& each) { return each.Name == name; });
    if (column == Columns_.end())
        column = std::find_if(Columns_.begin(), Columns_.end(),
                              [&](const auto& each) { return values::IsName(each.Name, name); });
    if (column != Columns_.end())
        found.push_back(static_cast<std::size_t>(column - Columns_.begin()));
    return found;
}

void TableView::ChooseColumns() {
    if (Plan_.Columns.empty())
        return;
    std::vector<OutColumn> columns;
    std::vector<Origin> origins;
    for (const std::string& name : Plan_.Columns) {
        const std::vector<std::size_t> called = ColumnsCalled(name);
        if (called.empty())
            Odd_.push_back("there is no column " + name);
        for (const std::size_t i : called) {
            columns.push_back(Columns_[i]);
            origins.push_back(Origins_[i]);
        }
    }
    Columns_ = std::move(columns);
    Origins_ = std::move(origins);
}

void TableView::AddMeasured(const Column& column, std::size_t field, const Measure& measure) {
    const std::string unit = measure.HasSeveral ? std::string() : measure.Unit.value_or("");
    OutColumn number{.Name = column.Name, .Field = column.Field, .Type = CellType::Number, .Unit = unit};
    const bool inHeader = Plan_.Units == Units::Header && !measure.HasSeveral;
    if (inHeader && !unit.empty())
        number.Name += " [" + unit + "]";
    Add(number, Part::Number, field);
    if (!inHeader)
        Add({.Name = column.Name + "_unit", .Field = column.Field}, Part::Unit, field);
}

void TableView::Add(const OutColumn& column, Part part, std::size_t field) {
    Columns_.push_back(column);
    Columns_.back().Name.clear();
    Columns_.back().Name = FreeName(column.Name, Columns_);
    Origins_.push_back({part, field});
}

void TableView::CountOtherTexts() {
    const auto isTyped = [](const OutColumn& column) { return column.Type != CellType::Text; };
    if (std::none_of(Columns_.begin(), Columns_.end(), isTyped))
        return;
    ForEachRow([&](const std::vector<Cell>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (isTyped(Columns_[i]) && cells[i].Type == CellType::Text && !cells[i].Text.empty())
                ++Columns_[i].OtherTexts;
    });
    for (const OutColumn& column : Columns_)
        if (column.OtherTexts > 0)
            Untold_.push_back(column.Name + ": " + std::to_string(column.OtherTexts) +
                              (column.OtherTexts == 1 ? " value is no " : " values are no ") + WordOf(column.Type) +
                              ", kept as text");
}

void TableView::ForEachRow(const std::function<void(const std::vector<Cell>& cells)>& visit) const {
    Maker maker(*this);
    std::size_t record = 0;
    values::LineWalk walk(Source_.Bytes);
    constexpr std::size_t RowsACall = 1000;
    std::size_t told = 0;
    for (walk.Next(); walk.Next();) {
        visit(maker.Row(walk.Line(), ++record));
        if (Passed_ && record - told == RowsACall) {
            Passed_(RowsACall);
            told = record;
        }
    }
    if (Passed_)
        Passed_(record - told);
}

} // namespace exporting
