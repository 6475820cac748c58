// SPDX-License-Identifier: MIT
// The readings of this run, and who is told what becomes of them.
#pragma once

#include "src/view/platform/reading_log.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <vector>

namespace companion {

/// Returns the name of a fate, as programs read it: "taken", "openfield".
Text NameOf(platform::Fate fate);

/// Keeps the last readings, each as a BLob, and passes all reports on to the observers, in their order.
class Readings final : public platform::ReadingLog {
public:
    /// At most this many characters are kept.
    static constexpr std::size_t Capacity = 32'000'000;

    /// The observer must live as long as the readings.
    void Add(platform::ReadingLog& observer) { Observers_.push_back(&observer); }

    struct Kept {
        platform::Fate Fate;
        std::shared_ptr<const Text> Blob; ///< its lines end with a carriage return
    };

    /// Returns how many readings there were in this run: one for each verdict.
    std::size_t Count() const { return Dropped_ + Kept_.size(); }
    /// Returns reading N of the run, from 1; null if there is none, or if it is not kept any more.
    const Kept* Number(std::size_t n) const;

    void TextReceived(platform::TextSource source, TextView characters) override;
    void TextEmptied(TextView characters) override;
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange& change) override;

private:
    std::vector<platform::ReadingLog*> Observers_;
    std::deque<Kept> Kept_;
    std::size_t Characters_ = 0; ///< of all that are kept
    std::size_t Dropped_ = 0;    ///< the first ones, which are not kept any more
};

} // namespace companion
