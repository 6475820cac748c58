// SPDX-License-Identifier: MIT
// The readings of this run, and who is told what becomes of them.
#pragma once

#include "src/view/platform/reading_log.h"

#include <cstddef>
#include <vector>

namespace companion {

/// Returns the name of a fate, as programs read it: "taken", "openfield".
Text NameOf(platform::Fate fate);

/// Keeps each verdict and passes all reports on to the observers, in their order.
class Readings final : public platform::ReadingLog {
public:
    /// The observer must live as long as the readings.
    void Add(platform::ReadingLog& observer) { Observers_.push_back(&observer); }

    /// Returns the verdicts in the order in which they were given; reading N of the run is at index N - 1.
    const std::vector<platform::Verdict>& Verdicts() const { return Verdicts_; }

    void TextReceived(platform::TextSource source, TextView characters) override;
    void TextEmptied(TextView characters) override;
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange& change) override;

private:
    std::vector<platform::ReadingLog*> Observers_;
    std::vector<platform::Verdict> Verdicts_;
};

} // namespace companion
