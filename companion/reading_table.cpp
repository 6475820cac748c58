// SPDX-License-Identifier: MIT
#include "companion/reading_table.h"

#include "companion/draft.h"
#include "companion/judged_words.h"
#include "companion/taking_again.h"
#include "companion/words.h"
#include "src/blob/blob_text.h"
#include "src/link/receive.h"
#include "src/text/digits.h"
#include "src/view/platform/platform.h"

#include <algorithm>

namespace companion {

using platform::Fate;

namespace {

constexpr auto LastFate = Fate::Emptied;

Text WithoutControls(Text text) {
    for (char16_t& character : text)
        character = character < u' ' || character == u'\x7f' ? u' ' : character;
    return text;
}

Text Joined(const std::vector<Text>& texts) {
    Text all;
    for (const Text& text : texts)
        all += (all.empty() || text.empty() ? u"" : u", ") + text;
    return all;
}

/// Returns the number of a row for people, who count from 1, and its name.
Text RowText(const platform::Verdict& verdict) {
    return verdict.Row < 0 ? Text() : modStringTools::NumberText(verdict.Row + 1) + u" " + verdict.Field;
}

/// "20:30:12", or "05/03 20:30" of another day.
Text ShortTime(const platform::DateTime& now, const platform::DateTime& moment) {
    using modStringTools::TwoDigits;
    const Text time = TimeText(moment);
    constexpr std::size_t ToMinute = 5;
    return moment.Date == now.Date
               ? time
               : TwoDigits(moment.Date.Day) + u"/" + TwoDigits(moment.Date.Month) + u" " + time.substr(0, ToMinute);
}

bool ContainsLower(const Text& text, const Text& lower) {
    return modStringTools::LowerCase(text).find(lower) != Text::npos;
}

std::vector<VerdictChoice> MakeChoices() {
    std::vector<VerdictChoice> choices = {{.Name = u"All verdicts"},
                                          {.Name = u"Refused, lost or doubtful", .Outcome = Outcome::Alarm},
                                          {.Name = u"Taken", .Outcome = Outcome::Taken},
                                          {.Name = u"Left out by a person", .Outcome = Outcome::Left}};
    for (int fate = 0; fate <= static_cast<int>(LastFate); ++fate) {
        const auto one = static_cast<Fate>(fate);
        choices.push_back({.Name = u"only \"" + NameOf(one) + u"\"", .Fate = one});
    }
    return choices;
}

} // namespace

Text NameOf(ReadingColumn column) {
    switch (column) {
    case ReadingColumn::Time:
        return u"Time";
    case ReadingColumn::Origin:
        return u"Origin";
    case ReadingColumn::Type:
        return u"Type";
    case ReadingColumn::Value:
        return u"Value";
    case ReadingColumn::Verdict:
        return u"Verdict";
    case ReadingColumn::Limit:
        return u"Limit";
    case ReadingColumn::Download:
        return u"Download";
    case ReadingColumn::Row:
        return u"Row";
    case ReadingColumn::Explanation:
        break;
    }
    return u"What became of it";
}

const std::vector<VerdictChoice>& VerdictChoices() {
    static const std::vector<VerdictChoice> choices = MakeChoices();
    return choices;
}

void ReadingTable::ReadingJudged(const platform::Verdict& verdict) {
    Readings_.ReadingJudged(verdict);
    const platform::Reading& reading = verdict.Reading;
    JudgedWords words = WordsOfJudged(verdict, Limits_);
    Details_.push_back({.When = platform::Device().clock.Now(),
                        .Fate = verdict.Fate,
                        .Outcome = words.Verdict.Outcome,
                        .AsReceived = reading.Blob != nullptr,
                        .Origin = WithoutControls(reading.Origin),
                        .Type = WithoutControls(Joined(reading.Types)),
                        .Value = WithoutControls(modBLob::ValueAndUnitOf(reading)),
                        .File = verdict.File,
                        .Row = WithoutControls(RowText(verdict)),
                        .Limit = words.Limit(),
                        .Words = words.Verdict.Line,
                        .Line = words.Outside ? words.Line() : Text()});
    const std::size_t most = std::min(MostRows, Readings_.Count() - Readings_.First() + 1);
    while (Details_.size() > most)
        Details_.pop_front();
}

const ReadingTable::Details* ReadingTable::Numbered(std::size_t number) const {
    const std::size_t first = FirstNumber();
    return number >= first && number - first < Details_.size() ? &Details_[number - first] : nullptr;
}

Text ReadingTable::Cell(std::size_t row, ReadingColumn column) const {
    const Details* const details = Numbered(Shown_[row]);
    if (details == nullptr)
        return {}; // until DropExpired is called
    switch (column) {
    case ReadingColumn::Time:
        return ShortTime(platform::Device().clock.Now(), details->When);
    case ReadingColumn::Origin:
        return details->Origin;
    case ReadingColumn::Type:
        return details->Type;
    case ReadingColumn::Value:
        return details->Value;
    case ReadingColumn::Verdict:
        return details->Words.substr(0, 2) + NameOf(details->Fate);
    case ReadingColumn::Limit:
        return details->Limit;
    case ReadingColumn::Download:
        return details->File;
    case ReadingColumn::Row:
        return details->Row;
    case ReadingColumn::Explanation:
        break;
    }
    return details->Words.substr(2);
}

Text ReadingTable::WholeCell(std::size_t row, ReadingColumn column) const {
    const Details* const details = Numbered(Shown_[row]);
    return details != nullptr && column == ReadingColumn::Time ? DraftTime(details->When) : Cell(row, column);
}

Text ReadingTable::Words(std::size_t row) const {
    const Details* const details = Numbered(Shown_[row]);
    if (details == nullptr)
        return {};
    return details->Line.empty() ? details->Words : details->Line;
}

Text ReadingTable::RawText(std::size_t row, std::size_t longest) const {
    const KeptReadings::Row* const reading = Readings_.Number(Shown_[row]);
    if (reading == nullptr)
        return {};
    constexpr char16_t FirstPicture = u'␀';
    Text text = reading->Blob->substr(0, longest);
    for (char16_t& character : text) {
        if (character == u'\r')
            character = u'\n';
        else if (character < u' ' && character != u'\n')
            character = static_cast<char16_t>(FirstPicture + character);
    }
    return reading->Blob->size() > longest ? text + u"…" : text;
}

bool ReadingTable::IsAsReceived(std::size_t row) const {
    const Details* const details = Numbered(Shown_[row]);
    return details != nullptr && details->AsReceived;
}

Text ReadingTable::CopyOf(const std::vector<std::size_t>& rows) const {
    Text text;
    for (const std::size_t row : rows) {
        for (std::size_t column = 0; column < ReadingColumns; ++column)
            text += (column == 0 ? u"" : u"\t") + WholeCell(row, static_cast<ReadingColumn>(column));
        text += u'\n';
    }
    return text;
}

Text ReadingTable::AgainRefusal(std::size_t row, bool isAsked) const {
    const Details* const details = Numbered(Shown_[row]);
    return details == nullptr ? u"it is not kept any more" : companion::AgainRefusal(details->Fate, isAsked);
}

void ReadingTable::TakeAgain(std::size_t row) const {
    const KeptReadings::Row* const reading = Readings_.Number(Shown_[row]);
    if (reading != nullptr)
        modBluetooth::TakeAgain(*reading->Blob);
}

std::optional<std::size_t> ReadingTable::RowOf(std::size_t number) const {
    const auto place = std::lower_bound(Shown_.begin(), Shown_.end(), number);
    if (place == Shown_.end() || *place != number)
        return std::nullopt;
    return static_cast<std::size_t>(place - Shown_.begin());
}

bool ReadingTable::Matches(const Details& details) const {
    const VerdictChoice& choice = VerdictChoices()[Choice_];
    if ((choice.Outcome && *choice.Outcome != details.Outcome) || (choice.Fate && *choice.Fate != details.Fate))
        return false;
    if (Wanted_.empty())
        return true;
    for (const Text* text : {&details.Type, &details.Value, &details.Words, &details.Line, &details.Limit,
                             &details.Origin, &details.File, &details.Row})
        if (ContainsLower(*text, Wanted_))
            return true;
    return ContainsLower(NameOf(details.Fate), Wanted_) || DraftTime(details.When).find(Wanted_) != Text::npos;
}

void ReadingTable::SetFilter(const Text& text, std::size_t choice) {
    Wanted_ = modStringTools::LowerCase(text);
    Choice_ = choice < VerdictChoices().size() ? choice : 0;
    Shown_.clear();
    Fresh_.clear();
    Searched_ = 0;
    FindFresh();
    ShowFresh();
}

std::size_t ReadingTable::Expired() const {
    return static_cast<std::size_t>(std::lower_bound(Shown_.begin(), Shown_.end(), FirstNumber()) - Shown_.begin());
}

void ReadingTable::DropExpired() {
    Shown_.erase(Shown_.begin(), Shown_.begin() + static_cast<std::ptrdiff_t>(Expired()));
}

std::size_t ReadingTable::FindFresh() {
    const std::size_t last = Readings_.Count();
    for (std::size_t number = std::max(Searched_ + 1, FirstNumber()); number <= last; ++number)
        if (Matches(*Numbered(number)))
            Fresh_.push_back(number);
    Searched_ = last;
    return Fresh_.size();
}

void ReadingTable::ShowFresh() {
    Shown_.insert(Shown_.end(), Fresh_.begin(), Fresh_.end());
    Fresh_.clear();
}

} // namespace companion
