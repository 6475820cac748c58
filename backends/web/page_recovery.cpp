// SPDX-License-Identifier: MIT
#include "backends/web/page_recovery.h"

#include "journal/journal_lines.h"

#include <nlohmann/json.hpp>

#include <poll.h>
#include <utility>

namespace backends::web {

namespace {

std::string Utf8(const Text& text) {
    return modStringTools::ToBytes(text);
}

} // namespace

void PageRecovery::Run() {
    const std::vector<Drafts::Kept> unsaved = Drafts_.Unsaved();
    if (unsaved.empty())
        return;
    const auto number = [](std::size_t count) { return modStringTools::NumberText(static_cast<std::int32_t>(count)); };
    const auto usual = std::exchange(Events_.Raised, nullptr);
    for (std::size_t i = 0; i < unsaved.size(); ++i)
        Decide(unsaved[i], unsaved.size() > 1 ? number(i + 1) + u" of " + number(unsaved.size()) + u": " : Text());
    Shows("null");
    Events_.Raised = usual;
    for (const PageEvent& event : Others_)
        if (usual)
            usual(event);
}

/// A draft that could not be put back is offered again, with the reason.
void PageRecovery::Decide(const Drafts::Kept& draft, const Text& place) {
    Text whyNot;
    if (!Drafts_.IsUnsaved(draft, whyNot))
        return; // the one before has put it back, too
    for (;;) {
        Show(draft, place, whyNot);
        const Text wish = NextWish();
        if (wish == u"forget")
            return Drafts_.Forget(draft);
        if (wish != u"put")
            return;
        whyNot = Drafts_.PutBack(draft);
        if (whyNot.empty())
            return;
    }
}

void PageRecovery::Show(const Drafts::Kept& draft, const Text& place, const Text& whyNot) const {
    Text words = place + WordsOf(draft.Content, companion::DraftTime(Device_.clock.Now()));
    if (!whyNot.empty())
        words += u" It can't be put back: " + whyNot + u".";
    nlohmann::json fields = nlohmann::json::array();
    for (const companion::DraftField& field : FieldsOf(draft.Content))
        fields.push_back({Utf8(field.Name), Utf8(field.Shown), Utf8(field.Saved)});
    const nlohmann::json offer = {{"words", Utf8(words)}, {"puts", whyNot.empty()}, {"fields", fields}};
    Shows(journal::TextOf(offer));
}

Text PageRecovery::NextWish() {
    Text wish;
    Events_.Raised = [this, &wish](const PageEvent& event) {
        if (event.Kind == "recover")
            wish = event.Words;
        else
            Others_.push_back(event);
    };
    while (wish.empty()) {
        pollfd page{Events_.Descriptor(), POLLIN, 0};
        ::poll(&page, 1, -1);
        while (wish.empty() && Events_.RaiseWhatIsPending()) {
        }
    }
    return wish;
}

} // namespace backends::web
