// SPDX-License-Identifier: MIT
// Offers what an earlier run of the page had on the screen and not in its file, before the form is started.
#pragma once

#include "backends/host/drafts.h"
#include "backends/web/page_events.h"

#include <functional>
#include <string>
#include <vector>

namespace backends::web {

class PageRecovery {
public:
    /// The device must serve the application (BackEnd::Serve). All must exist for as long as the recovery.
    PageRecovery(Drafts& drafts, BackEnd& device, PageEvents& events)
        : Drafts_(drafts), Device_(device), Events_(events) {}

    /// Called with a JSON object of the draft that a person has to decide about: "words", "puts" if it can be put back,
    /// "fields" as rows of a name, the text on the screen and the text in the file. "null" once nothing is left.
    std::function<void(const std::string& offer)> Shows;

    /// Offers each draft, and waits for the page's "recover" events: their words are "put", "forget" or "later". Drafts
    /// without a decision are kept. Other events are raised afterwards, in their order.
    void Run();

private:
    void Decide(const Drafts::Kept& draft, const Text& place);
    void Show(const Drafts::Kept& draft, const Text& place, const Text& whyNot) const;
    Text NextWish();

    Drafts& Drafts_;
    BackEnd& Device_;
    PageEvents& Events_;
    std::vector<PageEvent> Others_; ///< that came meanwhile
};

} // namespace backends::web
