// SPDX-License-Identifier: MIT
#include "companion/recording_check.h"

#include "companion/driver_fill_check.h"
#include "src/blob/blob_text.h"
#include "src/blob/targets.h"

#include <algorithm>

namespace companion {

using modQuorin::InfField;
using modStringTools::SameIgnoringCase;

namespace {

Text CountText(std::size_t count) {
    return modStringTools::NumberText(static_cast<std::int64_t>(count)) + (count == 1 ? u" result" : u" results");
}

/// True if the results have a type, or more than one.
bool HasType(const platform::Reading& reading) {
    return std::any_of(reading.Types.begin(), reading.Types.end(), [](const Text& type) { return !type.empty(); });
}

Text NamesInWords(const platform::Reading& reading) {
    return HasType(reading) ? Quoted(NamesOf(reading)) : Text(u"no type");
}

Destination DestinationOf(const DriverPackage& package, const std::vector<InfField>& fields, std::int64_t row) {
    if (row < 0)
        return {};
    const auto index = static_cast<std::size_t>(row);
    return {fields[index].FieldName, package.Rows[index].Line};
}

/// Adds a note for each row that nothing of the recording fills. What can't be filled at all is in the check of the
/// package.
void NoteUnfilledRows(const DriverPackage& package, const std::vector<FilledKind>& kinds, std::vector<Finding>& found) {
    for (const PackageRow& row : package.Rows) {
        const Text blob = TextIn(package, row, u"BLOB");
        const auto fills = [&](const FilledKind& kind) {
            return kind.To.Line == row.Line ||
                   std::any_of(kind.Variables.begin(), kind.Variables.end(),
                               [&](const FilledVariable& each) { return each.To.Line == row.Line; });
        };
        if (!blob.empty() && std::none_of(kinds.begin(), kinds.end(), fills))
            found.push_back(
                {row.Line, PlaceIn(package, row, u"BLOB"), Grade::Note, u"nothing in the recording fills this field"});
    }
}

} // namespace

std::vector<FilledKind> DestinationsOf(const DriverPackage& package, const std::vector<RecordedResult>& results) {
    const std::vector<InfField> fields = FieldsOf(package);
    std::vector<FilledKind> filled;
    for (const ResultKind& kind : KindsOf(results)) {
        FilledKind& place = filled.emplace_back();
        place.Kind = kind;
        if (kind.Lost)
            continue;
        const modBLob::Target target = modBLob::FindTarget(fields, kind.Example.Types);
        place.To = DestinationOf(package, fields, target.Row);
        if (target.MatchedType.empty())
            continue; // the variables of such a result are dropped
        for (const Text& variable : kind.Example.Variables) {
            const Text name = modBLob::SplitVariable(variable).Name;
            if (const auto row = modBLob::FindVariableRow(fields, name, target.MatchedType))
                place.Variables.push_back({name, DestinationOf(package, fields, *row)});
        }
    }
    return filled;
}

Text WhyNowhere(const FilledKind& kind) {
    if (!kind.Kind.Lost)
        return kind.To.Line == 0 ? u"no row asks for it" : u"";
    switch (*kind.Kind.Lost) {
    case platform::Fate::Origin:
        return u"refused: it names another origin than the instrument that has connected";
    case platform::Fate::Connect:
        return u"dropped: it is in the record by which the instrument connects";
    default:
        return u"refused: its record has no exact end tag [/BLob]";
    }
}

std::vector<Finding> CheckRecording(const DriverPackage& package, const std::vector<RecordedResult>& results) {
    std::vector<Finding> found;
    const std::vector<FilledKind> kinds = DestinationsOf(package, results);
    if (kinds.empty())
        return {{0, 0, Grade::Warning, u"the recording has no result"}};
    for (const FilledKind& kind : kinds) {
        const Text count = CountText(kind.Kind.Count) + u" of the recording with ";
        const Text what = count + NamesInWords(kind.Kind.Example);
        if (const Text why = WhyNowhere(kind); !why.empty())
            found.push_back({0, 0, Grade::Warning, what + u": " + why});
        else if (!HasType(kind.Kind.Example))
            found.push_back(
                {kind.To.Line, 1, Grade::Warning, what + u": they go into this field, the first that asks for none"});
    }
    NoteUnfilledRows(package, kinds, found);
    SortByPlace(found);
    return found;
}

Text WordsOf(const FilledKind& kind) {
    const platform::Reading& example = kind.Kind.Example;
    Text words = (HasType(example) ? Shown(NamesOf(example)) : Text(u"no type")) + u": " + CountText(kind.Kind.Count) +
                 u" such as " + Shown(modBLob::ValueAndUnitOf(example)) + u" → ";
    const Text why = WhyNowhere(kind);
    words += why.empty() ? Shown(kind.To.Field) : why;
    for (const FilledVariable& variable : kind.Variables)
        words += u"; " + Shown(variable.Name) + u" → " + Shown(variable.To.Field);
    return words;
}

} // namespace companion
