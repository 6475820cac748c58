// SPDX-License-Identifier: MIT
#include "backends/web/page_link.h"

#include "backends/host/host_clock.h"
#include "backends/loop/port_facts.h"
#include "journal/journal_lines.h"

#include <nlohmann/json.hpp>

namespace backends::web {

namespace {

companion::LinkWatch::Moment Now() {
    return companion::LinkWatch::Moment(HostTime().Steady());
}

/// What the page does not say itself: it has no port of that number.
std::string Trouble(const std::string& name, ErrorNumber error) {
    if (name.empty())
        return "it was not added to this page yet";
    return name + ": " + modStringTools::ToBytes(ErrorText(error));
}

const char* LookOf(companion::LineLook look) {
    switch (look) {
    case companion::LineLook::Alive:
        return "alive";
    case companion::LineLook::Alarm:
        return "alarm";
    case companion::LineLook::Plain:
        break;
    }
    return "plain";
}

} // namespace

PageLink::PageLink(WebPlatform& device) : Device_(device), Link_(Now, Trouble) {
    device.loop.Listen(*this);
    Link_.Use(device.onlooker.limits);
    device.readings.Add(Link_);
}

/// The link's timer causes a round at least twice a second.
bool PageLink::RaiseWhatIsPending() {
    if (!Changed || !Link_.IsDue())
        return false;
    const companion::LinkLine line = Link_.Line(PortFactsOf(Device_.serial), Device_.boxes.Piled());
    const nlohmann::json report = {{"text", line.Text},
                                   {"look", LookOf(line.Look)},
                                   {"news", line.News},
                                   {"ports", line.OffersPorts},
                                   {"losses", modStringTools::ToBytes(Device_.onlooker.losses.Words())}};
    std::string text = journal::TextOf(report);
    if (text == Shown_)
        return false;
    Shown_ = std::move(text);
    Changed(Shown_);
    return false;
}

} // namespace backends::web
