// SPDX-License-Identifier: MIT
#include "plotting/series.h"

#include "companion/values/table_text.h"
#include "plotting/moments_of_rows.h"
#include "plotting/readable.h"
#include "src/text/text.h"

#include <algorithm>
#include <optional>

namespace plotting {

using values::Column;
using values::ColumnKind;

namespace {

constexpr std::size_t Nowhere = static_cast<std::size_t>(-1);
constexpr std::size_t MostNamed = 20; // odd rows

std::size_t PlaceOf(const std::string& name, const std::vector<Column>& columns) {
    if (const auto numbered = values::NumberedColumn(name))
        return *numbered < columns.size() ? *numbered : Nowhere;
    for (const auto member : {&Column::Name, &Column::Field}) // a name for other tools goes first
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (values::IsName(columns[i].*member, name))
                return i;
    return Nowhere;
}

std::string Listed(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + Readable(name);
    return list.empty() ? "none" : list;
}

std::string Counted(std::size_t count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string_view FieldAt(const std::vector<std::string_view>& fields, std::size_t place) {
    return place < fields.size() ? fields[place] : std::string_view();
}

std::optional<double> NumberIn(std::string_view field, values::DecimalSign sign) {
    const auto quantity = values::QuantityOf(field, sign);
    return quantity ? values::ValueOf(quantity->Number) : std::nullopt;
}

/// Returns the names of the columns that have a number in any row.
std::vector<std::string> WithNumbers(const Source& source, const std::vector<Column>& columns,
                                     values::DecimalSign sign) {
    std::vector<bool> has(columns.size());
    std::vector<std::string_view> fields;
    values::LineWalk walk(source.Bytes);
    for (walk.Next(); walk.Next();) {
        values::Split(walk.Line(), fields);
        for (std::size_t i = 0; i < std::min(fields.size(), has.size()); ++i)
            has[i] = has[i] || NumberIn(fields[i], sign);
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (has[i])
            names.push_back(columns[i].Name);
    return names;
}

} // namespace

/// The rows of one table.
class SeriesReader::Rows {
public:
    Rows(SeriesReader& reader, const Source& source) : Reader_(reader), Source_(source), Walk_(source.Bytes) {}

    std::string Read() {
        if (!Walk_.Next())
            return Named() + " is empty: it has no columns.";
        values::Split(Walk_.Line(), Fields_);
        HeaderFields_ = Fields_.size();
        Columns_ = values::ColumnsOf(Fields_, Source_.Fields);
        for (const auto& find : {&Rows::FindX, &Rows::FindGroup, &Rows::FindColumns})
            if (std::string why = (this->*find)(); !why.empty())
                return why;
        while (Walk_.Next())
            if (std::string why = TakeRow(); !why.empty())
                return why;
        TellWhatIsMissing();
        return {};
    }

private:
    /// What is known of one column of the chart in one group: a series for each unit.
    struct Place {
        std::vector<std::size_t> Series; ///< indices
        std::vector<bool> HasGap;        ///< a value is missing since the last point of the series, same index
    };
    struct Shown {
        std::size_t Column = 0;
        std::size_t Numbers = 0, Others = 0, Empty = 0;
        std::vector<Place> Groups; ///< by the number of the group
    };

    std::string Named() const { return Readable(Source_.Name); }

    std::string NoColumn(const std::string& name) const {
        std::vector<std::string> names;
        for (const Column& column : Columns_)
            names.push_back(column.Name);
        return Named() + " has no column " + Readable(name) + "; it has " + Listed(names) + ".";
    }

    std::string FindColumns() {
        std::vector<std::size_t> places;
        for (const std::string& name : Reader_.Request_.Columns) {
            places.push_back(PlaceOf(name, Columns_));
            if (places.back() == Nowhere)
                return NoColumn(name);
        }
        for (std::size_t i = 0; i < Columns_.size() && Reader_.Request_.Columns.empty(); ++i)
            if (Columns_[i].Kind == ColumnKind::Measured && Columns_[i].IsShown)
                places.push_back(i);
        for (const std::size_t place : places)
            if (std::none_of(Shown_.begin(), Shown_.end(), [&](const Shown& each) { return each.Column == place; }))
                Shown_.push_back({.Column = place, .Numbers = 0, .Others = 0, .Empty = 0, .Groups = {}});
        if (Shown_.empty())
            return Named() + ": no column is known to have readings. --plot names one of those that have numbers: " +
                   Listed(WithNumbers(Source_, Columns_, Reader_.Sign_)) + ".";
        return {};
    }

    std::string FindGroup() {
        const std::string& by = Reader_.Request_.By;
        By_ = by.empty() ? Nowhere : PlaceOf(by, Columns_);
        return by.empty() || By_ != Nowhere ? std::string() : NoColumn(by);
    }

    std::string FindX() {
        const std::string& against = Reader_.Request_.Against;
        if (against == "record")
            return SetX(XKind::Record, "Record");
        std::size_t place = against == "time" ? FirstMoment() : PlaceOf(against, Columns_);
        if (place == Nowhere)
            return against == "time" ? Named() + ": no column is known to have dates or times." : NoColumn(against);
        if (Columns_[place].Kind == ColumnKind::Date || Columns_[place].Kind == ColumnKind::Time)
            return FindMoment(place);
        Number_ = place;
        return SetX(XKind::Number, Readable(Columns_[place].Name));
    }

    std::size_t FirstMoment() const {
        for (const ColumnKind kind : {ColumnKind::Date, ColumnKind::Time})
            for (std::size_t i = 0; i < Columns_.size(); ++i)
                if (Columns_[i].Kind == kind)
                    return i;
        return Nowhere;
    }

    /// A driver has the date and the time of a moment one after the other.
    std::string FindMoment(std::size_t place) {
        const bool isDate = Columns_[place].Kind == ColumnKind::Date;
        const auto kindAt = [&](std::size_t at) { return at < Columns_.size() ? Columns_[at].Kind : ColumnKind::Text; };
        if (isDate)
            Date_ = place;
        else
            Time_ = place;
        if (isDate && kindAt(place + 1) == ColumnKind::Time)
            Time_ = place + 1;
        if (!isDate && place > 0 && kindAt(place - 1) == ColumnKind::Date)
            Date_ = place - 1;
        std::string title;
        for (const std::size_t at : {Date_, Time_})
            if (at != Nowhere)
                title += (title.empty() ? "" : ", ") + Readable(Columns_[at].Name);
        return SetX(Date_ == Nowhere ? XKind::TimeOfDay : XKind::Moment, title);
    }

    std::string SetX(XKind kind, const std::string& title) {
        plotting::Data& data = Reader_.Data_;
        if (!Reader_.Names_.empty() && data.XKind != kind)
            return Named() + " has dates or times where the others have none: they do not fit one axis.";
        data.XKind = kind;
        data.XTitle = title;
        return {};
    }

    std::string TakeRow() {
        ++Record_;
        values::Split(Walk_.Line(), Fields_);
        if (Fields_.size() != HeaderFields_)
            LookAtLength();
        const auto x = XOfRow();
        if (!x) {
            ++Placeless_;
            return {};
        }
        const std::size_t group = GroupOfRow();
        for (Shown& shown : Shown_)
            if (!TakeField(shown, group, *x))
                return Named() + ": " + (By_ == Nowhere ? "these columns" : "--by " + Readable(Columns_[By_].Name)) +
                       " would make more than " + std::to_string(MostSeries) +
                       " lines, which nobody can tell apart: choose a column with fewer different texts, or fewer "
                       "columns.";
        return {};
    }

    void LookAtLength() {
        ++OddRows_;
        std::vector<std::string>& odd = Reader_.Odd_;
        if (OddRows_ <= MostNamed)
            odd.push_back(Named() + ", line " + std::to_string(Walk_.Number()) + ": " + std::to_string(Fields_.size()) +
                          " fields under " + std::to_string(HeaderFields_) + " columns");
    }

    std::optional<double> XOfRow() {
        if (Number_ != Nowhere)
            return XNumber();
        if (Date_ != Nowhere)
            return Time_ == Nowhere ? Moments_.Day(FieldAt(Fields_, Date_))
                                    : Moments_.Moment(FieldAt(Fields_, Date_), FieldAt(Fields_, Time_));
        if (Time_ != Nowhere)
            return Moments_.TimeAlone(FieldAt(Fields_, Time_));
        return static_cast<double>(Record_);
    }

    /// The first unit is that of the axis: values of others have no place on it.
    std::optional<double> XNumber() {
        const auto quantity = values::QuantityOf(FieldAt(Fields_, Number_), Reader_.Sign_);
        if (!quantity)
            return std::nullopt;
        if (!Reader_.HasXUnit_) {
            Reader_.HasXUnit_ = true;
            Reader_.XUnit_ = quantity->Unit;
        }
        return Reader_.XUnit_ == quantity->Unit ? values::ValueOf(quantity->Number) : std::nullopt;
    }

    std::size_t GroupOfRow() {
        if (By_ == Nowhere)
            return 0;
        const std::string_view text = FieldAt(Fields_, By_);
        if (Groups_.empty() || text != LastText_) {
            LastText_ = text;
            LastGroup_ = Groups_.try_emplace(LastText_, Groups_.size()).first->second;
        }
        return LastGroup_;
    }

    /// Returns false if there are too many series.
    bool TakeField(Shown& shown, std::size_t group, double x) {
        if (group >= shown.Groups.size())
            shown.Groups.resize(group + 1);
        if (group >= MostSeries)
            return false;
        Place& place = shown.Groups[group];
        const std::string_view field = FieldAt(Fields_, shown.Column);
        const auto quantity = values::QuantityOf(field, Reader_.Sign_);
        const auto number = quantity ? values::ValueOf(quantity->Number) : std::nullopt;
        if (!number) {
            ++(field.empty() ? shown.Empty : shown.Others);
            place.HasGap.assign(place.HasGap.size(), true);
            return true;
        }
        ++shown.Numbers;
        return Take(shown, place, *quantity, {.X = x, .Y = *number});
    }

    bool Take(const Shown& shown, Place& place, const values::Quantity& quantity, Point point) {
        const std::string_view unit = quantity.Unit;
        std::size_t chosen = Nowhere;
        for (std::size_t i = 0; i < place.Series.size(); ++i) {
            if (Units_[place.Series[i]] == unit)
                chosen = i;
            else
                place.HasGap[i] = true;
        }
        if (chosen == Nowhere) {
            const std::size_t index = Begin(shown, unit);
            if (index >= MostSeries)
                return false;
            chosen = place.Series.size();
            place.Series.push_back(index);
            place.HasGap.push_back(false);
        }
        point.IsAfterGap = place.HasGap[chosen];
        place.HasGap[chosen] = false;
        Series& series = Reader_.Data_.Series[place.Series[chosen]];
        TakeExtremes(series, point.Y, quantity.Number);
        series.Points.push_back(point);
        return true;
    }

    static void TakeExtremes(Series& series, double value, std::string_view number) {
        if (series.Lowest.Written.empty() || value < series.Lowest.Value)
            series.Lowest = {value, values::PlainNumber(number)};
        if (series.Highest.Written.empty() || value > series.Highest.Value)
            series.Highest = {value, values::PlainNumber(number)};
    }

    /// Returns the index of a new series, for the group of this row.
    std::size_t Begin(const Shown& shown, std::string_view unit) {
        const Column& column = Columns_[shown.Column];
        Series series;
        series.Column = Readable(column.Name);
        series.Unit = Readable(unit);
        if (By_ != Nowhere)
            series.Group = LastText_.empty() ? "(empty)" : Readable(LastText_);
        if (Reader_.HasSeveralSources_)
            series.Source = Named();
        if (Source_.Limits != nullptr)
            series.Limits = Source_.Limits->BoundsOf(modStringTools::FromBytes(column.Field));
        std::vector<Series>& all = Reader_.Data_.Series;
        for (const Series& each : all) // tables may write the name of a column in large or small letters
            if (values::IsName(each.Column, series.Column))
                series.Column = each.Column;
        all.push_back(series);
        Units_[all.size() - 1] = unit;
        return all.size() - 1;
    }

    void TellWhatIsMissing() {
        const std::string name = Reader_.HasSeveralSources_ ? Named() + ", " : std::string();
        std::vector<std::string>& notes = Reader_.Data_.Notes;
        if (OddRows_ > MostNamed)
            Reader_.Odd_.push_back("and " + std::to_string(OddRows_ - MostNamed) + " more");
        if (Placeless_ > 0)
            notes.push_back(name + Counted(Placeless_, "record has", "records have") + " no value of " +
                            Reader_.Data_.XTitle + (Reader_.XUnit_.empty() ? "" : " in " + Readable(Reader_.XUnit_)) +
                            ": left out");
        for (const Shown& shown : Shown_) {
            const std::string column = name + Readable(Columns_[shown.Column].Name) + ": ";
            if (shown.Others > 0)
                notes.push_back(column + Counted(shown.Others, "value is", "values are") + " no number: " + Gap());
            if (shown.Empty > 0)
                notes.push_back(column + Counted(shown.Empty, "record has", "records have") + " no value: " + Gap());
            if (shown.Numbers == 0)
                TellColumnsWithNumbers(Columns_[shown.Column]);
        }
    }

    std::string Gap() const { return Reader_.Request_.JoinsGaps ? "left out of the line" : "a gap"; }

    void TellColumnsWithNumbers(const Column& column) {
        Reader_.WithoutNumbers_.push_back(
            Named() + ": " + Readable(column.Name) + " has no number" +
            (Placeless_ > 0 ? " in a record that has a place on the axis" : "") +
            "; columns with numbers: " + Listed(WithNumbers(Source_, Columns_, Reader_.Sign_)) + ".");
    }

    SeriesReader& Reader_;
    const Source& Source_;
    values::LineWalk Walk_;
    std::vector<std::string_view> Fields_;
    std::size_t HeaderFields_ = 0;
    std::vector<Column> Columns_;
    std::size_t By_ = Nowhere, Number_ = Nowhere, Date_ = Nowhere, Time_ = Nowhere; ///< indices of columns
    std::vector<Shown> Shown_;
    std::map<std::string, std::size_t> Groups_; ///< their numbers, by the text of the table
    std::string LastText_;
    std::size_t LastGroup_ = 0;
    std::map<std::size_t, std::string> Units_; ///< of the series, as the table has them
    MomentReader Moments_;
    std::size_t Record_ = 0, OddRows_ = 0;
    std::size_t Placeless_ = 0; ///< records without an x
};

SeriesReader::SeriesReader(Request request, values::DecimalSign sign, bool hasSeveralSources)
    : Request_(std::move(request)), Sign_(sign), HasSeveralSources_(hasSeveralSources) {
    Data_.JoinsGaps = Request_.JoinsGaps;
    Data_.Range = Request_.Range;
}

std::string SeriesReader::Read(const Source& source) {
    std::string why = Rows(*this, source).Read();
    Names_.push_back(Readable(source.Name));
    return why;
}

std::string SeriesReader::Finish() {
    Data_.Title = Names_.size() == 1 ? Names_.front() : Counted(Names_.size(), "download", "downloads");
    if (HasXUnit_ && !XUnit_.empty())
        Data_.XTitle += " [" + Readable(XUnit_) + "]";
    if (Data_.Series.empty())
        return WithoutNumbers_.empty() ? "There is no record to show." : WithoutNumbers_.front();
    for (std::string& sentence : WithoutNumbers_)
        Data_.Notes.push_back(std::move(sentence));
    if (Data_.XKind == XKind::Moment || Data_.XKind == XKind::TimeOfDay)
        Sort();
    std::size_t all = 0;
    for (const Series& series : Data_.Series)
        all += series.Points.size();
    const std::size_t beyond = CountBeyondRange();
    if (beyond == all)
        return "No value lies in the range \"" + Data_.Range.Written + "\": choose another --range.";
    if (beyond > 0)
        Data_.Notes.push_back(Counted(beyond, "value lies", "values lie") + " beyond the range " + Data_.Range.Written +
                              ": not shown");
    return {};
}

std::size_t SeriesReader::CountBeyondRange() const {
    std::size_t count = 0;
    for (const Series& series : Data_.Series)
        count +=
            static_cast<std::size_t>(std::count_if(series.Points.begin(), series.Points.end(),
                                                   [this](const Point& point) { return !Data_.Range.Has(point.Y); }));
    return count;
}

/// A line that runs back in time can't be read.
void SeriesReader::Sort() {
    const auto isEarlier = [](const Point& one, const Point& other) { return one.X < other.X; };
    std::size_t back = 0;
    for (Series& series : Data_.Series) {
        for (std::size_t i = 1; i < series.Points.size(); ++i)
            back += isEarlier(series.Points[i], series.Points[i - 1]) ? 1 : 0;
        std::stable_sort(series.Points.begin(), series.Points.end(), isEarlier);
    }
    if (back > 0)
        Data_.Notes.push_back(Counted(back, "value is", "values are") +
                              " earlier than the one before: shown in the order of time");
}

} // namespace plotting
