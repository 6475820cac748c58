// SPDX-License-Identifier: MIT
#include "companion/value_limits.h"

#include "companion/file_lines.h"
#include "companion/finding.h"
#include "companion/values/quantity.h"
#include "src/storage/row_line.h"

#include <algorithm>

namespace companion {

using modStringTools::SameIgnoringCase;

namespace {

constexpr std::size_t Missing = static_cast<std::size_t>(-1);

TextView WithoutBlanks(TextView text) {
    const std::size_t first = std::min(text.find_first_not_of(u" \t"), text.size());
    text.remove_prefix(first);
    text.remove_suffix(text.size() - (text.find_last_not_of(u" \t") + 1));
    return text;
}

Text CellOf(const std::vector<Text>& fields, std::size_t column) {
    return column < fields.size() ? Text(WithoutBlanks(fields[column])) : Text();
}

} // namespace

struct ValueLimits::Header {
    explicit Header(const std::vector<Text>& names) {
        for (const auto& [place, name] :
             {std::pair(&Column, u"COLUMN"), std::pair(&WarnLow, u"WARNLOW"), std::pair(&WarnHigh, u"WARNHIGH"),
              std::pair(&FailLow, u"FAILLOW"), std::pair(&FailHigh, u"FAILHIGH")}) {
            const auto found = std::find_if(names.begin(), names.end(), [name = Text(name)](const Text& each) {
                return SameIgnoringCase(WithoutBlanks(each), name);
            });
            if (found != names.end())
                *place = static_cast<std::size_t>(found - names.begin());
        }
    }

    std::size_t Column = Missing, WarnLow = Missing, WarnHigh = Missing, FailLow = Missing, FailHigh = Missing;
};

Text NameOf(Breach breach) {
    switch (breach) {
    case Breach::WarnLow:
        return u"warnlow";
    case Breach::WarnHigh:
        return u"warnhigh";
    case Breach::FailLow:
        return u"faillow";
    case Breach::FailHigh:
        break;
    }
    return u"failhigh";
}

bool IsFail(Breach breach) {
    return breach == Breach::FailLow || breach == Breach::FailHigh;
}

bool IsLow(Breach breach) {
    return breach == Breach::WarnLow || breach == Breach::FailLow;
}

Text WordsOf(const OutsideOf& outside) {
    return (IsLow(outside.Breach) ? u"below the limit " : u"above the limit ") + outside.Limit;
}

std::optional<double> NumberOf(TextView value) {
    const std::string text = modStringTools::ToBytes(Text(WithoutBlanks(value)));
    const std::size_t length = values::NumberLength(text, values::DecimalSign::Either);
    return length == 0 ? std::nullopt : values::ValueOf(std::string_view(text).substr(0, length));
}

ValueLimits::ValueLimits(TextView table, const std::vector<Text>& columns) {
    std::vector<Text> fields;
    std::optional<Header> header;
    std::size_t number = 0;
    for (const Text& text : LinesOf(table)) {
        const Text line = u"line " + modStringTools::NumberText(static_cast<std::int64_t>(++number)) + u": ";
        modFileSystem::Split(text, fields);
        if (!header) {
            header.emplace(fields);
            if (header->Column != Missing)
                continue;
            Problems_.push_back(line + u"it has no column COLUMN");
            return;
        }
        if (WithoutBlanks(text).empty())
            continue;
        const Text column = CellOf(fields, header->Column);
        const bool isKnown = std::any_of(columns.begin(), columns.end(),
                                         [&](const Text& each) { return SameIgnoringCase(each, column); });
        if (!isKnown)
            Problems_.push_back(line + u"the driver has no column " + Quoted(column));
        else if (Find(column) != nullptr)
            Problems_.push_back(line + column + u" has limits already");
        else
            Rows_.push_back(ReadRow(fields, *header, line));
    }
    if (!header)
        Problems_.emplace_back(u"line 1: it has no column COLUMN");
}

ValueLimits::Row ValueLimits::ReadRow(const std::vector<Text>& fields, const Header& header, const Text& line) {
    Row row;
    row.Column = CellOf(fields, header.Column);
    row.WarnLow = ReadLimit(fields, header.WarnLow, line);
    row.WarnHigh = ReadLimit(fields, header.WarnHigh, line);
    row.FailLow = ReadLimit(fields, header.FailLow, line);
    row.FailHigh = ReadLimit(fields, header.FailHigh, line);
    DropIfCrossed(row.WarnLow, row.WarnHigh, line);
    DropIfCrossed(row.FailLow, row.FailHigh, line);
    return row;
}

std::optional<Limit> ValueLimits::ReadLimit(const std::vector<Text>& fields, std::size_t column, const Text& line) {
    const Text text = CellOf(fields, column);
    if (text.empty())
        return std::nullopt;
    const std::size_t length = values::NumberLength(modStringTools::ToBytes(text), values::DecimalSign::Either);
    const auto number = length == text.size() ? NumberOf(text) : std::nullopt; // a number is ASCII
    if (number)
        return Limit{*number, text};
    Problems_.push_back(line + Quoted(text) + u" is no number");
    return std::nullopt;
}

/// Otherwise every value would be outside.
void ValueLimits::DropIfCrossed(std::optional<Limit>& low, std::optional<Limit>& high, const Text& line) {
    if (!low || !high || low->Number <= high->Number)
        return;
    Problems_.push_back(line + u"the low limit " + low->Written + u" is above the high one, " + high->Written);
    low.reset();
    high.reset();
}

const ValueLimits::Row* ValueLimits::Find(TextView column) const {
    const auto row = std::find_if(Rows_.begin(), Rows_.end(),
                                  [&](const Row& each) { return SameIgnoringCase(each.Column, column); });
    return row == Rows_.end() ? nullptr : &*row;
}

std::optional<OutsideOf> ValueLimits::Judge(TextView column, TextView value) const {
    const Row* const row = Find(column);
    const auto number = row != nullptr ? NumberOf(value) : std::nullopt;
    if (!number)
        return std::nullopt;
    if (row->FailLow && *number < row->FailLow->Number)
        return OutsideOf{Breach::FailLow, row->FailLow->Written};
    if (row->FailHigh && *number > row->FailHigh->Number)
        return OutsideOf{Breach::FailHigh, row->FailHigh->Written};
    if (row->WarnLow && *number < row->WarnLow->Number)
        return OutsideOf{Breach::WarnLow, row->WarnLow->Written};
    if (row->WarnHigh && *number > row->WarnHigh->Number)
        return OutsideOf{Breach::WarnHigh, row->WarnHigh->Written};
    return std::nullopt;
}

Bounds ValueLimits::BoundsOf(TextView column) const {
    const Row* const row = Find(column);
    return row == nullptr ? Bounds{} : Bounds{row->WarnLow, row->WarnHigh, row->FailLow, row->FailHigh};
}

std::optional<OutsideOf> ValueLimits::Judge(const platform::Verdict& verdict) const {
    if (verdict.Row < 0 || verdict.Fate == platform::Fate::Kept)
        return std::nullopt;
    return Judge(verdict.Field, verdict.Reading.Value);
}

} // namespace companion
