// SPDX-License-Identifier: MIT
// Observers of what becomes of the readings.
#pragma once

#include "src/view/platform/reading_log.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <vector>

namespace companion {

/// Returns the name of a fate, as programs read it: "taken", "openfield".
Text NameOf(platform::Fate fate);

/// Passes all reports on to its observers, in their order.
class ReadingReports final : public platform::ReadingLog {
public:
    /// The observer must live as long as the reports are made.
    void Add(platform::ReadingLog& observer) { Observers_.push_back(&observer); }

    void TextReceived(platform::TextSource source, TextView characters) override;
    void DecodingBegins() override;
    void ResultComes(const platform::Reading& result) override;
    void TextEmptied(TextView characters) override;
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange& change) override;

private:
    std::vector<platform::ReadingLog*> Observers_;
};

/// Keeps the last readings of a run, each as a BLob.
class KeptReadings final : public platform::ReadingLog {
public:
    /// At most this many characters are kept: some 100,000 readings of usual size.
    static constexpr std::size_t Capacity = 20'000'000;

    struct Row {
        platform::Fate Fate;
        std::shared_ptr<const Text> Blob; ///< its lines end with a carriage return
    };

    /// Returns how many readings there were in this run: one for each verdict.
    std::size_t Count() const { return Dropped_ + Rows_.size(); }
    /// Returns the number of the first one that is kept; Count() + 1 if there is none.
    std::size_t First() const { return Dropped_ + 1; }
    /// Returns reading N of the run, from 1; null if there is none, or if it is not kept any more.
    const Row* Number(std::size_t n) const;

    void TextReceived(platform::TextSource, TextView) override {}
    void DecodingBegins() override {}
    void TextEmptied(TextView) override {}
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange&) override {}

private:
    std::deque<Row> Rows_;
    std::size_t Characters_ = 0; ///< of all that are kept
    std::size_t Dropped_ = 0;    ///< the first ones, which are not kept any more
};

} // namespace companion
