// SPDX-License-Identifier: MIT
#include "companion/draft_keeper.h"

#include "src/drivers/downloads.h"
#include "src/drivers/unsaved_record.h"
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
        Seen_.clear();
        return;
    }
    if (!IsNeeded(*draft)) {
        Discard();
        return;
    }
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

void DraftKeeper::Write(Draft draft) {
    draft.Root = Root_;
    draft.Time = DraftTime(platform::Device().clock.Now());
    draft.Register = modQuorin::RegisterLineOf(draft.File);
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
}

/// Keeps the draft for the next start.
void DraftKeeper::Leave() {
    if (!Current_.Name.empty())
        Left_.push_back(std::exchange(Current_, {}));
}

/// A record that another program's lock has kept from being saved stays on the screen, and is saved later.
void DraftKeeper::Saved(const RowChange& change) {
    if (Current_.Content.File == change.File && Current_.Content.Row == change.Row)
        Discard();
    std::erase_if(Left_, [&](const Kept& left) {
        Draft saved = left.Content;
        saved.Line = change.NewLine;
        const bool isSaved = saved.File == change.File && saved.Row == change.Row && !IsNeeded(saved);
        if (isSaved)
            Store_.Remove(left.Name);
        return isSaved;
    });
}

/// Takes its record from each draft of a download that was deleted: the next download may get the same name on the same
/// day, with the same blank record.
void DraftKeeper::Disown(const RowChange& change) {
    for (Kept& left : Left_) {
        if (change.OldLine.empty() || left.Content.Register != change.OldLine)
            continue;
        left.Content.Row = 0;
        Store_.Write(left.Name, BytesOf(left.Content));
    }
}

// After a failure the form shows the record of the file again, and what was to be saved is nowhere else.
void DraftKeeper::RowChanged(const RowChange& change) {
    if (change.Event == RowEvent::Added)
        return;
    if (change.Why.empty()) {
        Saved(change);
        if (change.Event == RowEvent::Deleted)
            Disown(change);
    } else if (change.Event == RowEvent::Saved && modQuorin::RecordIsUnsaved()) {
        Draft draft = DraftOfRow(change.NewLine);
        if (IsNeeded(draft))
            Write(std::move(draft));
        Leave();
    }
}

} // namespace companion
