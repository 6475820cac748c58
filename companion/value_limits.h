// SPDX-License-Identifier: MIT
// The limits of a driver's values. A reading outside of them is taken as ever; its verdict says so.
#pragma once

#include "src/view/platform/reading_log.h"

#include <optional>
#include <vector>

namespace companion {

enum class Breach { WarnLow, WarnHigh, FailLow, FailHigh };

/// Returns its name, as programs read it: "warnlow".
Text NameOf(Breach breach);

/// What a value is outside of.
struct OutsideOf {
    companion::Breach Breach = companion::Breach::WarnLow;
    Text Limit; ///< as the file has it
    bool operator==(const OutsideOf&) const = default;
};

/// True if a person must act on it, which a warning alone does not ask for.
bool IsFail(Breach breach);

/// True if the value is below the limit, false if it is above.
bool IsLow(Breach breach);

/// Returns "below the limit 5" or "above the limit 80".
Text WordsOf(const OutsideOf& outside);

struct Limit {
    double Number = 0;
    Text Written; ///< as the file has it
    bool operator==(const Limit&) const = default;
};

/// The limits of one column; none where the table has none.
struct Bounds {
    std::optional<Limit> WarnLow = {}, WarnHigh = {}, FailLow = {}, FailHigh = {};
};

/// Returns the number at the beginning of a value: blanks, a sign, digits with one decimal sign among them, and an
/// exponent if it has digits. The decimal sign is a full stop or a comma, whatever the locale: "24.5 %" and "24,5 %"
/// are 24.5. Returns no value for a text that begins with anything else, such as "<0.5" or "dry".
std::optional<double> NumberOf(TextView value);

/// The table of limits, by example:
///
///     COLUMN|WARNLOW|WARNHIGH|FAILLOW|FAILHIGH
///     Moisture|5|20||25
///
///  1. The columns have any order, and are found by their names without regard to case. All but COLUMN may be missing;
///     others are ignored.
///  2. COLUMN is a FIELDNAME of the driver, without regard to case. The first row of a column counts.
///  3. A limit is a number and nothing else; NumberOf reads it. An empty cell is no limit, and a missing one is empty.
///  4. A value is outside if it is below a low limit or above a high one: the limit itself is inside. A fail counts
///     before a warning.
///  5. What breaks a rule is not used and is reported with its line; all else is used. Empty lines mean nothing.
class ValueLimits {
public:
    ValueLimits() = default; ///< no limits
    /// Reads a table for a driver with these columns.
    ValueLimits(TextView table, const std::vector<Text>& columns);

    /// Returns what is wrong with the table, each with its line: `line 3: "x" is no number`.
    const std::vector<Text>& Problems() const { return Problems_; }

    /// Returns what a value of a column is outside of; none if it is inside, has no number, or there is no limit.
    std::optional<OutsideOf> Judge(TextView column, TextView value) const;
    /// Returns the limits of a column, by its FIELDNAME.
    Bounds BoundsOf(TextView column) const;
    /// Judges a reading that was written to the screen.
    std::optional<OutsideOf> Judge(const platform::Verdict& verdict) const;

private:
    struct Row {
        Text Column;
        std::optional<Limit> WarnLow, WarnHigh, FailLow, FailHigh;
    };
    struct Header;

    Row ReadRow(const std::vector<Text>& fields, const Header& header, const Text& line);
    std::optional<Limit> ReadLimit(const std::vector<Text>& fields, std::size_t column, const Text& line);
    void DropIfCrossed(std::optional<Limit>& low, std::optional<Limit>& high, const Text& line);
    const Row* Find(TextView column) const;

    std::vector<Row> Rows_;
    std::vector<Text> Problems_;
};

} // namespace companion
