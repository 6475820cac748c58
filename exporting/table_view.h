// SPDX-License-Identifier: MIT
// A download as other tools want it: rows of cells that have a type, under columns that have a name.
#pragma once

#include "companion/values/columns.h"
#include "companion/values/quantity.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace exporting {

enum class Units {
    Split,  ///< a column for the number and one for the unit
    Header, ///< "moisture [%]" if all values of the column have one unit, else as Split
    Keep,   ///< "24.5 %" stays one text
};
enum class Dates { Iso, Keep };

struct Plan {
    exporting::Units Units = exporting::Units::Split;
    exporting::Dates Dates = exporting::Dates::Iso;
    values::DecimalSign Decimal = values::DecimalSign::Either; ///< of the numbers in the table
    std::string Zone = {}; ///< put behind each time: "Z" or "+01:00"; empty for none
    bool Hidden = false;   ///< with the columns that the form does not show
    bool Alias = false;    ///< with a column of the download's alias
    bool Record = false;   ///< with a column of the record's number, from 1
    /// Names of those that are wanted, in their order; empty for all. "|3": all that is made of the third field.
    std::vector<std::string> Columns = {};
    std::vector<std::string> Measured = {}; ///< FIELDNAMEs that have numbers and units besides those of the instrument
};

/// A download. What it refers to must exist as long as the view.
struct Source {
    std::string File = {};  ///< its name without a folder
    std::string Alias = {}; ///< empty for none
    std::string_view Bytes = {};
    std::vector<values::FieldRow> Fields = {}; ///< of its driver; empty if that is not known: all columns are text then
};

enum class CellType { Missing, Text, Number, Date, Time };

struct Cell {
    CellType Type = CellType::Missing; ///< Missing: the row is too short, or there is no such value
    std::string_view Text;             ///< a number has a full stop; empty if it is missing
};

struct OutColumn {
    std::string Name;       ///< no two columns have the same
    std::string Field = {}; ///< the FIELDNAME that it is made of; empty for none
    CellType Type = CellType::Text;
    std::string Unit = {};      ///< of all its numbers; empty if they have several or none, or it is not known
    std::size_t OtherTexts = 0; ///< cells that are not empty and could not be read as the type
};

/// Looks through the whole table once when it is made, and again for the rows.
class TableView {
public:
    TableView(const Source& source, const Plan& plan); ///< both must exist as long as the view
    TableView(const Source&& source, const Plan& plan) = delete;
    TableView(const Source& source, const Plan&& plan) = delete;

    /// Empty if the table has no header.
    const std::vector<OutColumn>& Columns() const { return Columns_; }
    std::size_t Rows() const { return Rows_; }

    /// Passes each row on: a cell for each column. The texts are valid during the call.
    void ForEachRow(const std::function<void(const std::vector<Cell>& cells)>& visit) const;

    /// Has `passed` called while ForEachRow goes through the rows, with how many were passed on since the call before.
    void Watch(std::function<void(std::size_t rows)> passed) { Passed_ = std::move(passed); }

    /// A line for each row that is shorter or longer than the header, with its number in the file: twenty, and how many
    /// more there are. Before them, a line for each column that the plan names and the table does not have.
    const std::vector<std::string>& Odd() const { return Odd_; }
    /// A line for each column with values that could not be told apart, and stay text.
    const std::vector<std::string>& Untold() const { return Untold_; }

private:
    enum class Part { Whole, Number, Unit, Date, Time, Alias, Record, Beyond };
    struct Origin {
        exporting::TableView::Part Part = Part::Whole;
        std::size_t Field = 0; ///< index in the row
    };
    /// What the values of a measured column are.
    struct Measure {
        bool IsMeasured = false;
        std::optional<std::string> Unit; ///< of the first number; empty for none
        bool HasSeveral = false;         ///< units
        void Take(std::string_view field, values::DecimalSign sign);
    };
    class Maker;

    bool IsMeasured(const std::vector<values::Column>& columns, std::size_t index) const;
    void Survey(std::vector<Measure>& measures);
    void CountOtherTexts();
    void LookForNamed(const std::vector<values::Column>& columns);
    void LookAtLength(std::size_t fields, std::size_t line);
    std::vector<std::size_t> ColumnsCalled(const std::string& name) const;
    void ChooseColumns();
    void MakeColumns(const std::vector<values::Column>& columns, const std::vector<Measure>& measures);
    void AddMeasured(const values::Column& column, std::size_t field, const Measure& measure);
    void Add(const OutColumn& column, Part part, std::size_t field = 0);

    const Source& Source_;
    const Plan& Plan_;
    std::vector<OutColumn> Columns_;
    std::vector<Origin> Origins_; ///< of the columns, same index
    std::size_t HeaderFields_ = 0;
    std::size_t Rows_ = 0;
    bool HasLongRow_ = false;
    std::size_t OddRows_ = 0;
    std::vector<std::string> Odd_;
    std::vector<std::string> Untold_;
    std::function<void(std::size_t rows)> Passed_; ///< empty if nobody watches
};

} // namespace exporting
