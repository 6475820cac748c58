// SPDX-License-Identifier: MIT
#include "companion/arrivals.h"

#include "src/view/screen_table.h"

#include <algorithm>

namespace companion {

using namespace modQuorin;

InTheWay WhatIsInTheWay(bool isAsked) {
    const ScreenId screen = Screens.CurrentScreen;
    if (isAsked || screen == ScrInput)
        return InTheWay::Question;
    if (screen == ScrInfRecord)
        return InTheWay::Record;
    if (screen != 0 && screen == ScrList && Screens.PreviousScreen == ScrPreferences)
        return InTheWay::Nothing;
    for (const ScreenId free : {ScrMain, ScrDrivers, ScrInstalledDrivers, ScrAddDriver, ScrPreferences}) {
        if (screen != 0 && screen == free)
            return InTheWay::Nothing;
    }
    return InTheWay::Screen;
}

Text WhenFree(InTheWay what) {
    switch (what) {
    case InTheWay::Nothing:
        return {};
    case InTheWay::Record:
        return u"when this record is done";
    case InTheWay::Question:
        return u"when this question is answered";
    case InTheWay::Screen:
        break;
    }
    return u"when this screen is left";
}

void Arrivals::Add(const Package& package) {
    const auto isSame = [&package](const Arrival& each) { return each.Driver.Name == package.Name; };
    std::erase_if(List_, isSame);
    const auto download =
        std::find_if(List_.begin(), List_.end(), [](const Arrival& each) { return !each.IsPackage(); });
    List_.insert(download, {.Driver = package});
}

void Arrivals::AddDownload(const Text& name) {
    std::erase_if(List_, [](const Arrival& each) { return !each.IsPackage(); });
    List_.push_back({.Download = name});
}

void Arrivals::Answer(const Text& name, bool Arrival::*permission, bool isGiven) {
    const auto isIt = [&name](const Arrival& each) { return each.Driver.Name == name; };
    const auto place = std::find_if(List_.begin(), List_.end(), isIt);
    if (place == List_.end())
        return;
    if (isGiven)
        (*place).*permission = true;
    else
        List_.erase(place);
}

Text Arrivals::Offer(InTheWay what) const {
    if (List_.empty())
        return {};
    Text packages;
    for (const Arrival& each : List_) {
        if (each.IsPackage())
            packages += (packages.empty() ? u"Install " : u", ") + each.Driver.Name;
    }
    const Text& download = List_.back().Download;
    Text words = packages;
    if (!download.empty())
        words += (packages.empty() ? u"Open " : u" and open ") + download;
    const Text when = WhenFree(what);
    return words + (when.empty() ? u"" : u" ") + when + u".";
}

} // namespace companion
