// SPDX-License-Identifier: MIT
#include "backends/host/drafts.h"

#include "backends/host/host_clock.h"
#include "companion/words.h"

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

std::vector<Drafts::Unsaved> Drafts::OfLastRuns(BackEnd& device) {
    device.Serve();
    std::vector<Unsaved> drafts;
    for (const DraftFolder::Kept& kept : Folder_.Of(Root_)) {
        const companion::DraftState state = StateOf(kept.Content);
        if (state.IsSaved)
            Folder_.Remove(kept.Name);
        else
            drafts.push_back({kept.Name, kept.Content, state.WhyNot});
    }
    return drafts;
}

Text Drafts::PutBack(const Unsaved& draft) {
    const Text why = companion::PutBack(draft.Content);
    if (why.empty())
        Folder_.Remove(draft.Name);
    return why;
}

void Drafts::Attach(BackEnd& device) {
    Keeper_.Failed = [&device](const Text& why) { device.onlooker.notices.Raise(companion::DraftNotKept(why)); };
    Keeper_.Works = [&device] { device.onlooker.notices.Withdraw(companion::AboutDraft); };
    device.readings.Add(Keeper_);
    device.loop.Listen(*this);
}

bool Drafts::RaiseWhatIsPending() {
    Keeper_.Look();
    return false;
}

} // namespace backends
