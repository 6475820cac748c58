// SPDX-License-Identifier: MIT
#include "companion/hints.h"

#include "companion/offers.h"
#include "companion/words.h"

#include <optional>
#include <utility>

namespace companion {

namespace {

using modStringTools::FromBytes;

constexpr const char* DriverStep = "driver";
constexpr const char* DownloadStep = "download";
constexpr const char* PortStep = "port";
constexpr const char* LinkStep = "link";

const Offer NoHints = {OfferNoHints, u"No hints"};
const Offer ChoosePort = {OfferPorts, u"Choose a port…"};

Notice HintOf(const Text& words, const std::vector<Offer>& offers) {
    return {.About = AboutHint, .Weight = Severity::Hint, .Words = words, .Stands = Until::Withdrawn, .Offers = offers};
}

} // namespace

Notice NoDriverHint() {
    return HintOf(u"No driver is installed yet.",
                  {{OfferInstall, u"Install a driver…"}, {OfferSample, u"Try the sample"}, NoHints});
}

void Hints::Look(const Surroundings& now) {
    const std::size_t before = Done_.size();
    for (const auto& [step, isDone] : {std::pair(DriverStep, now.HasDriver), std::pair(DownloadStep, now.HasDownload),
                                       std::pair(PortStep, now.HasPort), std::pair(LinkStep, now.LinkIsOpen)})
        if (isDone)
            Done_.insert(step);
    if (Done_.size() != before && DoneChanged)
        DoneChanged();
    Show(now);
}

bool Hints::AsksForDriver() const {
    return Wanted(DriverStep);
}

void Hints::SetOn(bool on) {
    IsOn_ = on;
    if (!on)
        Notices_.Withdraw(AboutHint);
}

void Hints::Show(const Surroundings& now) {
    if (!IsOn_)
        return;
    if (!now.HasDriver && Wanted(DriverStep))
        Notices_.Raise(NoDriverHint());
    else if (now.IsListOfDownloads && !now.HasDownload && Wanted(DownloadStep))
        Notices_.Raise(HintOf(u"No download yet: File, New makes one.", {NoHints}));
    else if (now.HasPort && now.IsStart && Wanted(DownloadStep))
        Notices_.Raise(HintOf(u"Main, Start… lists the drivers: choose the one of your instrument.", {NoHints}));
    else if (!now.HasPort && Wanted(PortStep) && !now.NamedPort.empty())
        Notices_.Raise(HintOf(FromBytes(now.NamedPort) + u", and no port is chosen: nothing can be received.",
                              {{OfferNamedPort, u"Use " + FromBytes(now.NameOfPort)}, ChoosePort, NoHints}));
    else if (!now.HasPort && Wanted(PortStep))
        Notices_.Raise(HintOf(u"No port is chosen: nothing can be received.", {ChoosePort, NoHints}));
    else if (!now.PortTrouble.empty() && Wanted(LinkStep))
        Notices_.Raise(HintOf(FromBytes(now.PortTrouble), {ChoosePort, NoHints}));
    else
        Notices_.Withdraw(AboutHint);
}

} // namespace companion
