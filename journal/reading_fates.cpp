// SPDX-License-Identifier: MIT
#include "journal/reading_fates.h"

#include "journal/glance.h"
#include "journal/reading_words.h"

#include <algorithm>
#include <array>
#include <set>

namespace journal {

namespace {

struct FateRow {
    const char* Verdict;
    const char* Words;
    bool MayBeLost = false;
};

constexpr const char* Waiting = "waiting";

/// All verdicts but those of a reading that is in the field that asked for it.
constexpr std::array<FateRow, 12> Fates = {{
    {"kept", "not taken, the old value was kept"},
    {"openfield", "written to the text field that was open for typing"},
    {"norow", "refused, no row asked for it"},
    {"offscreen", "refused, no record was on the screen"},
    {"trace", "listed on the trace, which stores nothing"},
    {"origin", "refused, it was of another instrument than the connected one"},
    {"connect", "refused, it came with the connection"},
    {"shape", "refused, the end tag of its BLob was not exact"},
    {"nocolumn", "shown, but no column of the file held it", true},
    {"norecord", "shown, but the file had no record for it", true},
    {"emptied", "lost, it came while a question was open", true},
    {Waiting, "still waits, because another BLob of its burst was refused", true},
}};
constexpr FateRow OfNewerProgram = {"", "a verdict that this program does not know", true};

const FateRow& FateOf(const std::string& verdict) {
    const auto* const found =
        std::find_if(Fates.begin(), Fates.end(), [&](const FateRow& row) { return verdict == row.Verdict; });
    return found == Fates.end() ? OfNewerProgram : *found;
}

/// A BLob that was refused was not delivered, and a reading that waits neither: they are no second verdict.
bool IsDelivered(const std::string& verdict) {
    static const std::set<std::string> refused = {"origin", "connect", "shape", "emptied", Waiting};
    return refused.count(verdict) == 0;
}

std::string KeyOf(const Line& reading) {
    const auto types = reading.find("types");
    return (types == reading.end() ? std::string() : types->dump(-1, ' ', false, Line::error_handler_t::replace)) +
           "|" + TextIn(reading, "value") + "|" + TextIn(reading, "unit") + "|" + TextIn(reading, "origin");
}

} // namespace

void ReadingFates::Take(const Line& line) {
    const std::string event = TextIn(line, "event");
    if (event == "reading")
        return TakeReading(line);
    if (event == "received")
        ComesAgain_ = TextIn(line, "from") == "again";
    if (event == "start" || event == "end")
        for (Open& open : Open_)
            open.IsOfThisRun = false;
}

void ReadingFates::TakeReading(const Line& line) {
    const std::string verdict = TextIn(line, "verdict");
    const std::string key = KeyOf(line);
    TakeSecondVerdict(key, verdict);
    if (IsStored(verdict))
        return;
    if (verdict != Waiting)
        ++Counts_[verdict];
    if (FateOf(verdict).MayBeLost)
        Open_.push_back(
            {.Key = key,
             .Verdict = verdict,
             .Words = ResultOf(line) + ", " + TimeText(TextIn(line, "time")) + ": " + FateOf(verdict).Words});
}

/// The first of those that wait is the first that is delivered.
void ReadingFates::TakeSecondVerdict(const std::string& key, const std::string& verdict) {
    if (!IsDelivered(verdict))
        return;
    const bool isTakenAgain = ComesAgain_ && IsStored(verdict);
    const auto found = std::find_if(Open_.begin(), Open_.end(), [&](const Open& open) {
        return open.Key == key && (open.Verdict == Waiting ? open.IsOfThisRun : isTakenAgain);
    });
    if (found != Open_.end())
        Open_.erase(found);
}

std::vector<std::string> ReadingFates::Counts() const {
    std::map<std::string, std::size_t> counts = Counts_;
    const auto waiting =
        std::count_if(Open_.begin(), Open_.end(), [](const Open& open) { return open.Verdict == Waiting; });
    if (waiting > 0)
        counts[Waiting] = static_cast<std::size_t>(waiting);
    std::vector<std::string> lines;
    for (const auto& [verdict, count] : counts)
        lines.push_back(std::to_string(count) + (count == 1 ? " reading (" : " readings (") + OneLine(verdict) +
                        "): " + FateOf(verdict).Words);
    return lines;
}

std::vector<std::string> ReadingFates::Findings() const {
    std::vector<std::string> findings;
    for (const Open& open : Open_)
        findings.push_back(open.Words + (open.Verdict == Waiting && !open.IsOfThisRun
                                             ? ", and its program was over before it had another verdict"
                                             : ""));
    return findings;
}

} // namespace journal
