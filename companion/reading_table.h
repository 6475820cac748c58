// SPDX-License-Identifier: MIT
// The readings of a run as rows for a person; those that match a filter are shown. A report adds to what is kept and
// does not change what is shown: the view asks for the changes when it can take them.
#pragma once

#include "companion/readings.h"
#include "companion/value_limits.h"
#include "companion/verdict_words.h"
#include "src/view/platform/device.h"

#include <deque>
#include <optional>
#include <vector>

namespace companion {

/// The columns in their order.
enum class ReadingColumn { Time, Origin, Type, Value, Verdict, Limit, Download, Row, Explanation };
inline constexpr std::size_t ReadingColumns = 9;

/// Returns the headline of a column.
Text NameOf(ReadingColumn column);

/// A choice of the filter by verdict: those of an outcome, of a fate, or all.
struct VerdictChoice {
    Text Name;
    std::optional<companion::Outcome> Outcome = std::nullopt;
    std::optional<platform::Fate> Fate = std::nullopt;
};

/// Returns the choices; the first is all.
const std::vector<VerdictChoice>& VerdictChoices();

class ReadingTable final : public platform::ReadingLog {
public:
    /// At most this many readings are kept, and of large ones fewer: as many as KeptReadings keeps.
    static constexpr std::size_t MostRows = 100'000;

    /// Compares values with these limits from now on. They must exist for as long as readings are reported.
    void Use(const ValueLimits& limits) { Limits_ = &limits; }

    // The shown rows, from 0, the oldest first.
    std::size_t Rows() const { return Shown_.size(); }
    /// Returns the text of a cell. Its control characters are blanks, so that a table of cells can be copied.
    /// A time has its date only if that is not today.
    Text Cell(std::size_t row, ReadingColumn column) const;
    /// Returns the text of a cell, a time always with its date.
    Text WholeCell(std::size_t row, ReadingColumn column) const;
    /// Returns what became of a row's reading, as the window's line says it.
    Text Words(std::size_t row) const;
    /// Returns the BLob of a row as lines, its control characters as their pictures (␀). Of a longer one than
    /// `longest` characters, the beginning.
    Text RawText(std::size_t row, std::size_t longest) const;
    /// True if that is the BLob as it was received. Of a reading that was delivered it holds this reading alone.
    bool IsAsReceived(std::size_t row) const;
    /// Returns the shown rows of these numbers, each a line of cells with tabs between them.
    Text CopyOf(const std::vector<std::size_t>& rows) const;
    /// Returns why a row can't be taken again now; empty if it can. `isAsked` as for the rule of AgainRefusal.
    Text AgainRefusal(std::size_t row, bool isAsked) const;
    /// Hands the BLob of a row to the receive path. REQUIRES: AgainRefusal is empty.
    void TakeAgain(std::size_t row) const;

    /// Returns how many readings are kept, shown or not.
    std::size_t Kept() const { return Details_.size(); }
    /// Returns the number of a row's reading in the run, from 1, which identifies it.
    std::size_t NumberAt(std::size_t row) const { return Shown_[row]; }
    /// Returns the row of a reading; none if it is not shown.
    std::optional<std::size_t> RowOf(std::size_t number) const;

    /// Shows the readings that have this text in a cell, ignoring case, and this choice of verdict.
    void SetFilter(const Text& text, std::size_t choice);

    /// Returns how many of the first shown rows are not kept any more.
    std::size_t Expired() const;
    void DropExpired();
    /// Finds the readings that match and are not shown yet, and returns how many. ShowFresh adds them after the last
    /// row.
    std::size_t FindFresh();
    void ShowFresh();

    void TextReceived(platform::TextSource, TextView) override {}
    void TextEmptied(TextView) override {}
    void DecodingBegins() override {}
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange&) override {}

private:
    struct Details {
        platform::DateTime When;
        platform::Fate Fate = platform::Fate::Taken;
        companion::Outcome Outcome = companion::Outcome::Taken;
        bool AsReceived = false;
        Text Origin, Type, Value, File, Row;
        Text Limit; ///< that the value is outside of, in short
        Text Words; ///< begins with the mark and a blank; without the limit
        Text Line;  ///< with the limit; empty if there is none
    };

    std::size_t FirstNumber() const { return Readings_.Count() - Details_.size() + 1; }
    const Details* Numbered(std::size_t number) const;
    bool Matches(const Details& details) const;

    const ValueLimits* Limits_ = nullptr;
    KeptReadings Readings_;
    std::deque<Details> Details_;   ///< of the last readings
    std::deque<std::size_t> Shown_; ///< numbers
    std::vector<std::size_t> Fresh_;
    std::size_t Searched_ = 0; ///< the number of the last reading that was compared with the filter
    Text Wanted_;              ///< in lower case
    std::size_t Choice_ = 0;
};

} // namespace companion
