// SPDX-License-Identifier: MIT
#include "companion/draft_keeper.h"

#include "src/storage/file_slots.h"
#include "src/view/platform/platform.h"

#include <utility>

namespace companion {

using platform::RowChange;
using platform::RowEvent;

namespace {

constexpr std::chrono::milliseconds BetweenLooks{200};
constexpr std::chrono::seconds Rest{1};          // of the keys, before what was typed is written
constexpr std::chrono::seconds AfterFailure{10}; // a full disk is not tried five times a second

bool IsSameRecord(const Draft& one, const Draft& other) {
    return one.FullName == other.FullName && one.Row == other.Row && one.Line == other.Line;
}

} // namespace

DraftKeeper::DraftKeeper(DraftStore& store, RootId root, std::string session, MomentFinder now)
    : Store_(store), Root_(std::move(root)), Session_(std::move(session)), Now_(now) {
}

bool DraftKeeper::IsDue(Moment now) {
    if (modFileSystem::Slots.Running != 0 || (now < NextLook_ && !(ReadingCame_ && !HasFailed_)))
        return false;
    NextLook_ = now + BetweenLooks;
    return true;
}

void DraftKeeper::Look() {
    const Moment now = Now_();
    if (!IsDue(now))
        return;
    const bool reading = std::exchange(ReadingCame_, false);
    std::optional<Draft> draft = DraftOfScreen();
    if (!draft) {
        if (SaveHasFailed_)
            Leave(); // the screen shows the file's record again
        Seen_.clear();
        return;
    }
    if (!IsNeeded(*draft)) {
        Discard();
        return;
    }
    SaveHasFailed_ = false; // it stays on the screen, and is saved later
    if (!Current_.Name.empty() && !IsSameRecord(Current_.Content, *draft))
        Leave();
    if (draft->Texts != Seen_) {
        Seen_ = draft->Texts;
        ChangedAt_ = now;
    }
    const bool isWritten = !Current_.Name.empty() && Current_.Content.Texts == draft->Texts;
    if (!isWritten && (reading || now - ChangedAt_ >= Rest))
        Write(std::move(*draft));
}

void DraftKeeper::KeepNow() {
    std::optional<Draft> draft = DraftOfScreen();
    if (!draft || !IsNeeded(*draft))
        return;
    if (!Current_.Name.empty() && !IsSameRecord(Current_.Content, *draft))
        Leave();
    Write(std::move(*draft));
}

void DraftKeeper::Write(Draft draft) {
    draft.Root = Root_;
    draft.Time = DraftTime(platform::Device().clock.Now());
    const std::string name =
        Current_.Name.empty() ? Session_ + "-" + std::to_string(++Count_) + ".draft" : Current_.Name;
    const Text why = Store_.Write(name, BytesOf(draft));
    if (why.empty())
        Current_ = {name, std::move(draft)};
    else
        NextLook_ = Now_() + AfterFailure;
    if (!why.empty() && !HasFailed_ && Failed)
        Failed(why);
    if (why.empty() && HasFailed_ && Works)
        Works();
    HasFailed_ = !why.empty();
}

void DraftKeeper::Discard() {
    if (!Current_.Name.empty())
        Store_.Remove(Current_.Name);
    Current_ = {};
    SaveHasFailed_ = false;
}

/// Keeps the draft for the next start.
void DraftKeeper::Leave() {
    if (!Current_.Name.empty())
        Left_.push_back(std::exchange(Current_, {}));
    SaveHasFailed_ = false;
}

void DraftKeeper::Saved(const RowChange& change) {
    if (Current_.Content.File == change.File && Current_.Content.Row == change.Row)
        Discard();
    std::erase_if(Left_, [&](const Kept& left) {
        const Draft& draft = left.Content;
        const bool isSaved = draft.File == change.File && draft.Row == change.Row && LineOf(draft) == change.NewLine;
        if (isSaved)
            Store_.Remove(left.Name);
        return isSaved;
    });
}

void DraftKeeper::Renumber(Kept& left, std::int32_t row) {
    left.Content.Row = row;
    Store_.Write(left.Name, BytesOf(left.Content));
}

/// Rows that are added and deleted change the numbers of those behind them: a blank record looks like the next one.
void DraftKeeper::Follow(const RowChange& change) {
    for (Kept& left : Left_) {
        const std::int32_t row = left.Content.Row;
        if (left.Content.File != change.File || row < change.Row)
            continue;
        if (change.Event == RowEvent::Added)
            Renumber(left, row + 1);
        else
            Renumber(left, row == change.Row ? 0 : row - 1);
    }
}

/// Takes its record from each draft of a download that was deleted: the next download may get the same name on the same
/// day, with the same blank record.
void DraftKeeper::Disown(const RowChange& change) {
    for (Kept& left : Left_) {
        if (!change.OldLine.empty() && left.Content.Register == change.OldLine)
            Renumber(left, 0);
    }
}

void DraftKeeper::RowChanged(const RowChange& change) {
    if (!change.Why.empty()) {
        if (change.Event != RowEvent::Saved)
            return;
        KeepNow();
        SaveHasFailed_ = true;
        NextLook_ = {}; // before anything else is entered
        return;
    }
    if (change.Event != RowEvent::Added)
        Saved(change);
    if (change.Event != RowEvent::Saved)
        Follow(change);
    if (change.Event == RowEvent::Deleted)
        Disown(change);
}

} // namespace companion
