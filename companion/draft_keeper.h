// SPDX-License-Identifier: MIT
// Keeps a draft of the record on the screen while it differs from its file.
#pragma once

#include "companion/draft.h"
#include "src/view/platform/reading_log.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace companion {

/// Where drafts are kept, each under a name.
class DraftStore {
public:
    virtual ~DraftStore() = default;
    /// Writes a draft completely or not at all, and returns once it is on the medium. Returns why it could not; empty
    /// on success.
    virtual Text Write(const std::string& name, const std::string& bytes) = 0;
    virtual void Remove(const std::string& name) = 0;
};

class DraftKeeper final : public platform::ReadingLog {
public:
    using Moment = std::chrono::milliseconds; ///< by a clock that is never set
    using MomentFinder = Moment (*)();

    /// The names of the drafts begin with `session`, which no other run has used.
    DraftKeeper(DraftStore& store, RootId root, std::string session, MomentFinder now);

    /// Takes up a draft of an earlier run that a person has not decided about.
    void TakeUp(const std::string& name, const Draft& draft) { Left_.push_back({name, draft}); }

    /// Looks at the screen, a few times a second at most; the loop calls it in each round. A draft is written at once
    /// after a reading, and else when the record has not changed for a second.
    void Look();
    /// Writes the draft of what is on the screen now, because a save has failed or the program can't go on.
    void KeepNow();

    void TextReceived(platform::TextSource, TextView) override {}
    void DecodingBegins() override {}
    void TextEmptied(TextView) override {}
    void ReadingJudged(const platform::Verdict&) override { ReadingCame_ = true; }
    void RowChanged(const platform::RowChange& change) override;

    /// True if the draft of what is on the screen is on the medium.
    bool Keeps() const { return !Current_.Name.empty() && !HasFailed_; }

    std::function<void(const Text& why)> Failed; ///< a draft could not be written
    std::function<void()> Works;                 ///< one was written again

private:
    /// A draft on the medium.
    struct Kept {
        std::string Name;
        Draft Content;
    };

    bool IsDue(Moment now);
    void Write(Draft draft);
    void Discard();
    void Leave();
    void Saved(const platform::RowChange& change);
    void Follow(const platform::RowChange& change);
    void Disown(const platform::RowChange& change);
    void Renumber(Kept& left, std::int32_t row);

    DraftStore& Store_;
    RootId Root_;
    std::string Session_;
    MomentFinder Now_;
    Kept Current_;           ///< of the record on the screen; without a name if there is none
    std::vector<Kept> Left_; ///< of records that could not be saved
    std::vector<Text> Seen_; ///< the texts at the last look
    Moment ChangedAt_{};
    Moment NextLook_{};
    int Count_ = 0; ///< drafts of this run
    bool ReadingCame_ = false;
    bool SaveHasFailed_ = false; ///< of the record of Current_
    bool HasFailed_ = false;     ///< the last writing of a draft
};

} // namespace companion
