// SPDX-License-Identifier: MIT
#include "companion/first_package.h"

#include "src/blob/blob_text.h"
#include "src/blob/targets.h"
#include "src/drivers/inf_tables.h"

#include <algorithm>

namespace companion {

using modStringTools::SameIgnoringCase;

namespace {

void AddNew(std::vector<Text>& names, const Text& name) {
    const auto isSame = [&](const Text& each) { return SameIgnoringCase(each, name); };
    if (!name.empty() && std::none_of(names.begin(), names.end(), isSame))
        names.push_back(name);
}

/// Returns a text as a bare name: small letters and digits, with `_` for all else.
Text BareName(const Text& text) {
    Text name;
    for (const char16_t character : modStringTools::LowerCase(text)) {
        const bool isPlain =
            (character >= u'a' && character <= u'z') || (character >= u'0' && character <= u'9') || character > 0x7F;
        name += isPlain ? character : u'_';
    }
    return name;
}

/// A line that begins with # would be a comment.
Text WithoutHash(const Text& name) {
    return !name.empty() && name.front() == u'#' ? u"_" + name : name;
}

/// The lines of a package while it is made.
class Lines {
public:
    std::vector<Text> All;

    void AddRow(const Text& name, const Text& copy, const Text& blob, const Text& dataType = {},
                const Text& formula = {}, const Text& visible = u"1") {
        const Text field = FreeName(name);
        All.push_back(field + u"|" + visible + u"|" + copy + u"|" + blob + u"||" + BareName(field) + u"|" + dataType +
                      u"|" + formula);
    }

private:
    /// Two fields of one name can't be told apart.
    Text FreeName(const Text& name) {
        Text field = WithoutHash(name);
        const auto isTaken = [&](const Text& each) { return SameIgnoringCase(each, field); };
        while (std::any_of(Names_.begin(), Names_.end(), isTaken))
            field += u"_";
        Names_.push_back(field);
        return field;
    }

    std::vector<Text> Names_;
};

/// What the results have: each by its first type.
struct Sent {
    Text Instrument;
    std::vector<Text> Variables;
    std::vector<Text> Types;
    std::vector<Text> Comments;
};

Sent WhatWasSent(const std::vector<RecordedResult>& results) {
    Sent sent;
    for (const ResultKind& kind : KindsOf(results)) {
        if (kind.Lost)
            continue;
        if (sent.Instrument.empty())
            sent.Instrument = kind.Example.Origin;
        for (const Text& variable : kind.Variables)
            AddNew(sent.Variables, variable);
        const std::size_t before = sent.Types.size();
        if (!kind.Example.Types.empty())
            AddNew(sent.Types, kind.Example.Types.front());
        if (sent.Types.size() > before)
            sent.Comments.push_back(u"# " + NamesOf(kind.Example) + u": such as " +
                                    modBLob::ValueAndUnitOf(kind.Example));
    }
    return sent;
}

} // namespace

std::vector<Text> FirstPackage(const std::vector<RecordedResult>& results) {
    const Sent sent = WhatWasSent(results);
    const Text name = sent.Instrument.empty() ? u"Instrument" : WithoutHash(sent.Instrument);
    Lines lines;
    lines.All = {u"# Made from a recording. Give the driver a name that people know, and look at each row:",
                 u"# its name and place, the colour, and what is copied from record to record."};
    lines.All.insert(lines.All.end(), sent.Comments.begin(), sent.Comments.end());
    lines.All.push_back(name + u"|driver_" + BareName(name) + u".txt");
    lines.All.push_back(modQuorin::InfHeader);
    // The screen of a driver's name uses the first two fields: they are shown, and no dates.
    const std::vector<Text> plain = {u"Place", u"Person"};
    for (std::size_t i = sent.Variables.size(); i < plain.size(); ++i)
        lines.AddRow(plain[i], u"1", {});
    for (const Text& variable : sent.Variables)
        lines.AddRow(variable, u"1", modBLob::VariableMark + variable);
    for (const Text& type : sent.Types)
        lines.AddRow(type, {}, type);
    lines.AddRow(u"Remark", {}, {});
    lines.AddRow(u"Start Date", {}, {}, u"DATE", u"startdate");
    lines.AddRow(u"Start Time", {}, {}, u"TIME", u"starttime");
    lines.AddRow(u"End Date", {}, {}, u"DATE", u"enddate");
    lines.AddRow(u"End Time", {}, {}, u"TIME", u"endtime");
    if (!sent.Instrument.empty())
        lines.AddRow(u"Meter", {}, modBLob::VariableMark + u"ORIGIN", {}, {}, u"0");
    return lines.All;
}

} // namespace companion
