// SPDX-License-Identifier: MIT
#include "backends/host/drafts.h"

#include "backends/host/host_clock.h"
#include "backends/loop/acts.h"
#include "backends/loop/long_call.h"
#include "companion/words.h"

#include <chrono>
#include <unistd.h>

namespace backends {

namespace {

companion::DraftKeeper::Moment Now() {
    return companion::DraftKeeper::Moment(HostTime().Steady());
}

std::string NameOfThisRun() {
    return std::to_string(HostTime().Local()) + "-" + std::to_string(::getpid());
}

} // namespace

Drafts::Drafts(const std::string& folder, const std::string& root)
    : Folder_(folder), Root_(RootIdOf(root)), Keeper_(Folder_, Root_, NameOfThisRun(), Now) {
}

std::vector<Drafts::Kept> Drafts::Unsaved() {
    std::vector<Kept> unsaved = OfLastRuns();
    Text whyNot;
    std::erase_if(unsaved, [&](const Kept& draft) { return !IsUnsaved(draft, whyNot); });
    return unsaved;
}

bool Drafts::IsUnsaved(const Kept& draft, Text& whyNot) {
    const companion::DraftState state = StateOf(draft.Content);
    whyNot = state.WhyNot;
    if (state.IsSaved)
        Folder_.Remove(draft.Name);
    return !state.IsSaved;
}

void Drafts::Forget(const Kept& draft) {
    ReportAct({.Word = "recover", .Arguments = "forget", .About = WordsOf(draft.Content, {})});
    Folder_.Remove(draft.Name);
}

Text Drafts::PutBack(const Kept& draft) {
    ReportAct({.Word = "recover", .Arguments = "put", .About = WordsOf(draft.Content, {})});
    const Text why = companion::PutBack(draft.Content);
    if (why.empty())
        Folder_.Remove(draft.Name);
    return why;
}

void Drafts::Attach(BackEnd& device) {
    Device_ = &device;
    const std::vector<Kept> left = OfLastRuns();
    for (const Kept& draft : left)
        Keeper_.TakeUp(draft.Name, draft.Content);
    if (!left.empty())
        device.onlooker.notices.Raise(companion::DraftsWait(left.size()));
    if (const std::vector<Text> unreadable = Unreadable(); !unreadable.empty())
        device.onlooker.notices.Raise(companion::DraftsNotRead(unreadable));
    Keeper_.Failed = [&device](const Text& why) { device.onlooker.notices.Raise(companion::DraftNotKept(why)); };
    Keeper_.Works = [&device] { device.onlooker.notices.Withdraw(companion::AboutDraft); };
    device.readings.Add(Keeper_);
    device.runTime.Failing = [this] { Keeper_.KeepNow(); };
    device.loop.Listen(*this);
}

bool Drafts::RaiseWhatIsPending() {
    const LongCall call(*Device_);
    Keeper_.Look();
    return false;
}

} // namespace backends
