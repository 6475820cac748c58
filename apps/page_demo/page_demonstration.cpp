// SPDX-License-Identifier: MIT
#include "apps/page_demo/page_demonstration.h"

#include "apps/demo/demo_data.h"
#include "apps/guide/guide.h"
#include "companion/arrivals.h"
#include "journal/journal_lines.h"
#include "src/view/screen_table.h"

#include <utility>

namespace apps {

using backends::web::PageEvent;
using companion::InTheWay;
using journal::Utf8;
using modStringTools::FromBytes;
using Json = journal::Line;

namespace {

Json Button(const char* act, const Text& words, bool isEnabled) {
    return {{"act", act}, {"words", Utf8(words)}, {"enabled", isEnabled}};
}

} // namespace

PageDemonstration::PageDemonstration(backends::web::WebPlatform& page, PipeLine& line)
    : Page_(page), Line_(line), Meter_(line) {
    page.loop.Listen(*this);
}

bool PageDemonstration::Take(const PageEvent& event) {
    if (event.Kind != "instrument")
        return false;
    const std::string& act = event.Data;
    if (act == "kind" && event.Item >= 0 && static_cast<std::size_t>(event.Item) < Meter_.Kinds().size())
        Meter_.SendKind(static_cast<std::size_t>(event.Item));
    else if (act == "all")
        Meter_.SendAll();
    else if (act == "stranger")
        Meter_.SendOfAStranger();
    else if (act == "cable")
        PullOrPlug();
    else if (act == "every")
        Meter_.Tick(!Meter_.IsTicked());
    else if (act == "afresh")
        AfreshWanted_ = MayStartAfresh();
    return true;
}

void PageDemonstration::PullOrPlug() {
    if (Line_.IsPlugged())
        Line_.Unplug();
    else
        Line_.Plug();
}

bool PageDemonstration::MayStartAfresh() const {
    return companion::WhatIsInTheWay(Page_.boxes.Current() != nullptr) == InTheWay::Nothing;
}

std::string PageDemonstration::StripText() {
    const bool isHeard = Line_.IsHeard();
    Json buttons = Json::array();
    for (std::size_t kind = 0; kind < Meter_.Kinds().size(); ++kind) {
        Json button = Button("kind", FromBytes(Meter_.Kinds()[kind]), isHeard);
        button["item"] = kind;
        buttons.push_back(std::move(button));
    }
    buttons.push_back(Button("all", companion::ButtonOfAll, isHeard));
    buttons.push_back(Button("stranger", companion::ButtonOfStranger, isHeard));
    buttons.push_back(Button("cable", companion::ButtonOfCable(Line_.IsPlugged()), true));
    buttons.push_back(Button("every", companion::ButtonOfTick, true));
    buttons.back()["ticked"] = Meter_.IsTicked();
    buttons.push_back(Button("afresh", companion::ButtonOfAfresh, MayStartAfresh()));
    buttons.back()["asks"] = Utf8(companion::AfreshQuestion) + ".";
    return journal::TextOf({{"words", Utf8(Meter_.Words())}, {"buttons", std::move(buttons)}});
}

bool PageDemonstration::RaiseWhatIsPending() {
    if (!IsPrepared_ || !Says)
        return false;
    Meter_.Step(Page_.clock.Milliseconds(),
                companion::WhatIsInTheWay(Page_.boxes.Current() != nullptr) == InTheWay::Question);
    if (std::string strip = StripText(); strip != Shown_)
        Says(Shown_ = std::move(strip));
    return false;
}

void PageDemonstration::Step() {
    if (!std::exchange(IsPrepared_, true)) {
        PrepareDemo();
        RaiseWhatIsPending();
    }
    if (!AfreshWanted_ || !Page_.IsAtRest() || !MayStartAfresh())
        return;
    AfreshWanted_ = false;
    if (!Guide(Page_).GoTo(modQuorin::ScrMain))
        return;
    const Text why = EmptyDemo();
    PrepareDemo();
    if (Emptied)
        Emptied(why);
}

} // namespace apps
