// SPDX-License-Identifier: MIT
// The numbers of tables as series of points.
#pragma once

#include "companion/value_limits.h"
#include "companion/values/columns.h"
#include "companion/values/quantity.h"
#include "plotting/request.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace plotting {

struct Point {
    double X = 0; ///< record number from 1, seconds since 1970 (without a zone), or a number of another column
    double Y = 0;
    bool IsAfterGap = false; ///< a value is missing between this one and that before it
};

struct Extreme {
    double Value = 0;
    std::string Written; ///< with its digits as the table has them, and a full stop; empty before the first value
};

/// The values of one column that have one unit, in the order of the records, or of their times.
struct Series {
    std::string Column; ///< its name for other tools
    std::string Unit;   ///< empty for none
    std::string Group;  ///< what stands in the column By; empty without one
    std::string Source; ///< of which table; empty if there is only one
    companion::Bounds Limits;
    std::vector<Point> Points;
    Extreme Lowest, Highest; ///< of the values
};

enum class XKind { Record, Moment, TimeOfDay, Number };

/// What a chart shows. All texts are readable UTF-8.
struct Data {
    std::string Title;
    plotting::XKind XKind = XKind::Record;
    std::string XTitle;
    std::vector<plotting::Series> Series; ///< none is empty
    std::vector<std::string> Notes;       ///< what is not shown as it stands in the table
    bool JoinsGaps = false;               ///< a line goes on where values are missing
    ValueRange Range = {};
};

/// A table. What it refers to must exist during the call that it is passed to.
struct Source {
    std::string Name; ///< as a person knows it
    std::string_view Bytes;
    std::vector<values::FieldRow> Fields = {}; ///< of its driver; empty if that is not known
    const companion::ValueLimits* Limits = nullptr;
};

/// The most series of a chart: a person can't tell more apart.
constexpr std::size_t MostSeries = 24;

/// Reads tables, one after the other, for one chart.
class SeriesReader {
public:
    SeriesReader(Request request, values::DecimalSign sign, bool hasSeveralSources);

    /// Returns why the table can't be shown, as a sentence that says what can be; empty on success.
    std::string Read(const Source& source);
    /// Returns why there is nothing to show, or an empty text.
    std::string Finish();

    const plotting::Data& Data() const { return Data_; }
    /// Lines that are shorter or longer than the header of their table: twenty, and how many more there are.
    const std::vector<std::string>& Odd() const { return Odd_; }

private:
    class Rows;
    void Sort();
    std::size_t CountBeyondRange() const;

    Request Request_;
    values::DecimalSign Sign_;
    bool HasSeveralSources_;
    plotting::Data Data_;
    std::vector<std::string> Odd_;
    std::vector<std::string> Names_;          ///< of the tables
    std::vector<std::string> WithoutNumbers_; ///< what was found instead, a sentence for each column
    std::string XUnit_;
    bool HasXUnit_ = false;
};

} // namespace plotting
