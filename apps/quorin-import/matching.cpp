// SPDX-License-Identifier: MIT
#include "apps/quorin-import/matching.h"

#include <algorithm>
#include <string_view>

namespace importer {

namespace {

constexpr std::string_view UnitEnding = "_unit";

std::string Quoted(const std::string& name) {
    return "\"" + name + "\"";
}

bool EndsWith(std::string_view text, std::string_view ending) {
    return text.size() > ending.size() && text.substr(text.size() - ending.size()) == ending;
}

class Matcher {
public:
    Matcher(const std::vector<std::string>& columns, const std::vector<values::Column>& fields)
        : Columns_(columns), Fields_(fields), IsUsed_(columns.size(), false) {
        for (const values::Column& field : fields)
            Made_.Fields.push_back({.Kind = field.Kind});
    }

    Matching Take(const std::vector<Mapping>& maps) {
        for (const Mapping& map : maps)
            TakeMapping(map);
        for (std::size_t column = 0; column < Columns_.size(); ++column)
            if (!IsUsed_[column])
                if (const auto field = FieldCalled(Columns_[column]))
                    Fill(*field, column);
        for (std::size_t column = 0; column < Columns_.size(); ++column)
            if (!IsUsed_[column])
                TakeUnit(column);
        Tell();
        return std::move(Made_);
    }

private:
    std::optional<std::size_t> FieldCalled(std::string_view name) const {
        for (std::size_t i = 0; i < Fields_.size(); ++i)
            if (values::IsName(Fields_[i].Name, name) || values::IsName(Fields_[i].Field, name))
                return i;
        return std::nullopt;
    }

    void TakeMapping(const Mapping& map) {
        const auto column = std::find_if(Columns_.begin(), Columns_.end(),
                                         [&](const auto& each) { return values::IsName(each, map.Column); });
        const auto field = FieldCalled(map.Field);
        if (column == Columns_.end())
            return Refuse("The file has no column " + Quoted(map.Column) + ".");
        if (!field)
            return Refuse("The driver has no field " + Quoted(map.Field) + ".");
        Fill(*field, static_cast<std::size_t>(column - Columns_.begin()));
    }

    void Fill(std::size_t field, std::size_t column) {
        FieldSource& source = Made_.Fields[field];
        if (source.Value)
            return Refuse("The columns " + Quoted(Columns_[*source.Value]) + " and " + Quoted(Columns_[column]) +
                          " would both fill the field " + Quoted(Fields_[field].Field) + ".");
        source.Value = column;
        IsUsed_[column] = true;
    }

    /// Takes "NAME_unit" to the field that has the number already, and "NAME [UNIT]" to one that has none.
    void TakeUnit(std::size_t column) {
        const std::string_view name = Columns_[column];
        if (EndsWith(name, UnitEnding)) {
            const auto field = FieldCalled(name.substr(0, name.size() - UnitEnding.size()));
            if (field && Made_.Fields[*field].Value && !Made_.Fields[*field].Unit) {
                Made_.Fields[*field].Unit = column;
                IsUsed_[column] = true;
            }
            return;
        }
        const std::size_t bracket = name.rfind(" [");
        if (bracket == name.npos || name.back() != ']')
            return;
        if (const auto field = FieldCalled(name.substr(0, bracket))) {
            Fill(*field, column);
            Made_.Fields[*field].FixedUnit = name.substr(bracket + 2, name.size() - bracket - 3);
        }
    }

    void Tell() {
        for (std::size_t i = 0; i < Fields_.size(); ++i) {
            const FieldSource& source = Made_.Fields[i];
            if (source.Value)
                Made_.Filled.push_back(Quoted(Fields_[i].Field) + " from " + Quoted(Columns_[*source.Value]) +
                                       (source.Unit ? " and " + Quoted(Columns_[*source.Unit]) : ""));
            else
                Made_.Unfilled.push_back(Quoted(Fields_[i].Field));
        }
        for (std::size_t column = 0; column < Columns_.size(); ++column)
            if (!IsUsed_[column])
                Made_.LeftOut.push_back(Quoted(Columns_[column]));
        if (Made_.Filled.empty())
            Refuse("No column fills a field of the driver: --map names them, and --delimiter what is between them.");
    }

    void Refuse(const std::string& why) {
        if (Made_.WhyNot.empty())
            Made_.WhyNot = why;
    }

    const std::vector<std::string>& Columns_;
    const std::vector<values::Column>& Fields_;
    std::vector<bool> IsUsed_; ///< of the columns
    Matching Made_;
};

} // namespace

Matching Match(const std::vector<std::string>& columns, const std::vector<values::Column>& fields,
               const std::vector<Mapping>& maps) {
    return Matcher(columns, fields).Take(maps);
}

} // namespace importer
