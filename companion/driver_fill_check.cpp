// SPDX-License-Identifier: MIT
#include "companion/driver_fill_check.h"

#include "src/blob/capture.h"
#include "src/blob/decoding.h"
#include "src/blob/targets.h"

#include <algorithm>

namespace companion {

using modQuorin::FieldType;
using modQuorin::InfField;
using modStringTools::LowerCase;
using modStringTools::SameIgnoringCase;

namespace {

using modBLob::VariableMark;

bool BeginsWith(TextView text, TextView start) {
    return SameIgnoringCase(text.substr(0, start.size()), start);
}

bool HasOuterBlanks(TextView text) {
    return !text.empty() && (text.front() == u' ' || text.back() == u' ');
}

/// A row of the package that asks for something.
struct Asking {
    std::size_t Index = 0; ///< of the row
    Wanted What;
};

class FillCheck {
public:
    FillCheck(const DriverPackage& package, std::vector<Finding>& found)
        : Package_(package), Found_(found), Fields_(FieldsOf(package)) {
        for (std::size_t i = 0; i < Fields_.size(); ++i) {
            if (Fields_[i].Blob.empty())
                continue;
            Asking_.push_back({i, WantedBy(Fields_[i].Blob)});
            if (!Asking_.back().What.IsVariable)
                Types_.push_back(Asking_.back().What.Name);
        }
    }

    void Run() {
        if (Asking_.empty() && !Fields_.empty())
            Found_.push_back(
                {Package_.HeaderLine, 1, Grade::Warning, u"no row has a BLOB: the driver receives no readings"});
        for (const Asking& asking : Asking_) {
            CheckSpelling(asking);
            CheckWhatReplacesIt(asking);
            CheckThatItIsReached(asking);
        }
        CheckNamesThatEndAlike();
    }

private:
    void Add(std::size_t row, TextView column, Grade grade, const Text& words) {
        const PackageRow& place = Package_.Rows[row];
        Found_.push_back({place.Line, PlaceIn(Package_, place, column), grade, words});
    }

    void CheckSpelling(const Asking& asking) {
        const Text& blob = Fields_[asking.Index].Blob;
        const auto warn = [&](const Text& words) { Add(asking.Index, u"BLOB", Grade::Warning, words); };
        if (!asking.What.IsVariable && BeginsWith(blob, u"dv"))
            warn(Quoted(blob) + u" is taken for a result type: a variable is written \"dv: NAME\", with one blank");
        if (BeginsWith(blob, u"RT:"))
            warn(Quoted(blob) + u" has the RT: of \"Bluetooth Debug...\", which is no part of a type's name");
        if (HasOuterBlanks(blob) || HasOuterBlanks(asking.What.Name))
            warn(u"the blank at the beginning or end of " + Quoted(blob) + u" is compared as well");
        if (asking.What.IsVariable && asking.What.Name.empty())
            warn(Quoted(blob) + u" names no variable");
        if (asking.What.IsVariable && asking.What.Name.find(u'=') != Text::npos)
            warn(Quoted(blob) + u" is never filled: the name of a variable ends before its first =");
    }

    void CheckWhatReplacesIt(const Asking& asking) {
        const InfField& field = Fields_[asking.Index];
        const Grade grade = asking.What.IsVariable ? Grade::Warning : Grade::Error;
        if (field.DataType == FieldType::Date)
            Add(asking.Index, u"DATATYPE", grade,
                asking.What.IsVariable
                    ? u"a variable that is no date, in a row for dates, ends the program when the row is tapped"
                    : u"a reading in a row for dates ends the program when the row is tapped");
        const Text measured = u"1"; // any text
        const Text left = modBLob::FormulaValueAt({}, field.Formula, measured);
        if (!field.Formula.empty() && left != measured)
            Add(asking.Index, u"FORMULA", grade,
                left.empty()
                    ? u"the formula " + Quoted(field.Formula) + u" is unknown, and empties the field after each reading"
                    : u"the formula " + Quoted(field.Formula) + u" replaces what the instrument has sent");
        if (field.Copy && !asking.What.IsVariable)
            Add(asking.Index, u"COPY", Grade::Warning,
                u"each new record begins with the last reading, and the next one is asked about (\"Replace\")");
    }

    /// Returns the row that gets what this row asks for, with a result of this type.
    std::optional<std::size_t> RowFor(const Wanted& what, const Text& type) const {
        if (!what.IsVariable) {
            const std::int16_t row = modBLob::FindTarget(Fields_, {what.Name}).Row;
            return row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
        }
        const auto row = modBLob::FindVariableRow(Fields_, what.Name, type);
        return row ? std::optional(static_cast<std::size_t>(*row)) : std::nullopt;
    }

    void CheckThatItIsReached(const Asking& asking) {
        if (asking.What.IsVariable && Types_.empty()) {
            Add(asking.Index, u"BLOB", Grade::Warning,
                u"this field is never filled: a variable comes with a result that a row asks for, and no row asks for "
                u"one");
            return;
        }
        const std::vector<Text> any = {Text()};
        std::optional<std::size_t> other;
        for (const Text& type : asking.What.IsVariable ? Types_ : any) {
            const auto row = RowFor(asking.What, type);
            if (row == asking.Index)
                return;
            other = row ? row : other;
        }
        const bool lacksType = !asking.What.Type.empty() &&
                               std::none_of(Types_.begin(), Types_.end(),
                                            [&](const Text& type) { return SameIgnoringCase(type, asking.What.Type); });
        if (lacksType)
            Add(asking.Index, u"BLOB", Grade::Warning,
                u"this field is never filled: no row asks for results of type " + Quoted(asking.What.Type));
        else if (other)
            Add(asking.Index, u"BLOB", Grade::Warning,
                u"this field is never filled: line " +
                    modStringTools::NumberText(static_cast<std::int64_t>(Package_.Rows[*other].Line)) + u" gets " +
                    Quoted(asking.What.Name));
    }

    /// True if the decoder takes the second variable of a record for the first one.
    static bool IsMistaken(const Text& first, const Text& second) {
        Text list = first + u"=10";
        const Text both = list + u"|" + second + u"=20";
        modBLob::SetDescriptiveVar(list, second + u"=20");
        return list != both;
    }

    void CheckNamesThatEndAlike() {
        const Text origin = u"ORIGIN";
        std::vector<Text> before;
        for (const Asking& asking : Asking_) {
            const Text& name = asking.What.Name;
            const auto isSame = [&](const Text& each) { return SameIgnoringCase(each, name); };
            if (!asking.What.IsVariable || name.empty() || std::any_of(before.begin(), before.end(), isSame))
                continue;
            if (!isSame(origin) && IsMistaken(origin, name))
                WarnOfAlike(asking.Index, name, origin);
            for (const Text& other : before) {
                if (!isSame(origin) && !SameIgnoringCase(other, origin) &&
                    (IsMistaken(other, name) || IsMistaken(name, other)))
                    WarnOfAlike(asking.Index, name, other);
            }
            before.push_back(name);
        }
    }

    void WarnOfAlike(std::size_t row, const Text& name, const Text& other) {
        Add(row, u"BLOB", Grade::Warning,
            u"the variables " + Quoted(name) + u" and " + Quoted(other) +
                u" are mistaken for each other in one record: one name must not be the end of the other");
    }

    const DriverPackage& Package_;
    std::vector<Finding>& Found_;
    std::vector<InfField> Fields_;
    std::vector<Asking> Asking_;
    std::vector<Text> Types_; ///< that rows ask for
};

} // namespace

Wanted WantedBy(const Text& blob) {
    if (!BeginsWith(blob, VariableMark) || blob.size() < VariableMark.size())
        return {.IsVariable = false, .Name = blob, .Type = {}};
    const Text rest = blob.substr(VariableMark.size());
    const std::size_t brace = rest.find(u'}');
    if (rest.empty() || rest.front() != u'{' || brace == Text::npos)
        return {.IsVariable = true, .Name = rest, .Type = {}};
    return {.IsVariable = true, .Name = rest.substr(brace + 1), .Type = rest.substr(1, brace - 1)};
}

void CheckFilling(const DriverPackage& package, std::vector<Finding>& found) {
    FillCheck(package, found).Run();
}

} // namespace companion
