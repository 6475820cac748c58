// SPDX-License-Identifier: MIT
#include "apps/arrivals/led_arrivals.h"

#include "apps/arrivals/sample_driver.h"
#include "companion/download_search.h"
#include "companion/package_question.h"
#include "src/drivers/downloads.h"
#include "src/drivers/installation.h"
#include "src/drivers/package_lines.h"
#include "src/drivers/selection.h"
#include "src/storage/line_files.h"

#include <algorithm>
#include <utility>

namespace apps {

using companion::InTheWay;
using namespace modQuorin;

// --- what a person has given -----------------------------------------------------------------------------------------

void LedArrivals::AddPackage(const Text& name, std::string_view bytes) {
    companion::Package package;
    const Text problem = companion::TakePackage(name, bytes, package);
    if (problem.empty())
        Waiting_.Add(package);
    else
        Tell(problem);
}

void LedArrivals::AddSample() {
    AddPackage(u"climate.qvd", SampleDriver());
}

void LedArrivals::Tell(const Text& problem) {
    Talk_.Note(problem);
    Problems_.push_back(problem);
}

void LedArrivals::ShowProblems() {
    Text all;
    for (const Text& problem : std::exchange(Problems_, {}))
        all += (all.empty() ? u"" : u"\n\n") + problem;
    Talk_.Show(all);
}

Text LedArrivals::Offer(bool isAsked) const {
    const InTheWay what = companion::WhatIsInTheWay(isAsked);
    return what == InTheWay::Nothing ? Text() : Waiting_.Offer(what);
}

// --- the steps -------------------------------------------------------------------------------------------------------

void LedArrivals::Step() {
    if (!Talk_.IsFree())
        return;
    if (!Problems_.empty())
        return ShowProblems();
    if (!Waiting_.Any())
        return GoHome(); // also after a refusal
    if (companion::WhatIsInTheWay(false) != InTheWay::Nothing)
        return;
    if (Waiting_.First().IsPackage())
        Install();
    else
        OpenDownload();
}

void LedArrivals::Install() {
    const companion::Arrival wanted = Waiting_.First();
    const companion::PackagePlace place = companion::PlaceOf(wanted.Driver);
    const Text asked = place.WhyNot.empty() && !wanted.MayInstall ? companion::InstallQuestion(wanted.Driver) : Text();
    if (!asked.empty())
        return Ask(asked, ArrivalQuestion::Check, &companion::Arrival::MayInstall);
    if (place.WhyNot.empty() && place.There == companion::Presence::Other && !wanted.MayReplace)
        return Ask(companion::ReplaceQuestion(wanted.Driver), ArrivalQuestion::Replace,
                   &companion::Arrival::MayReplace);
    Waiting_.DropFirst();
    Text why = place.WhyNot;
    if (why.empty() && place.There != companion::Presence::Same)
        why = companion::PutPackage(wanted.Driver);
    const bool isRefused = companion::IsInstalled(wanted.Driver);
    if (!why.empty())
        Tell(why);
    else if (LeadToInstallation(wanted.Driver.Name, place.FullName) && isRefused && place.IsFree)
        modFileSystem::DeleteFile(place.FullName); // a copy of no use, which "Add Driver" would list
    if (!Waiting_.Any())
        GoHome();
}

void LedArrivals::Ask(const Text& question, ArrivalQuestion about, bool companion::Arrival::*permission) {
    Talk_.Ask(question, about, [this, permission, name = Waiting_.First().Driver.Name](bool isGiven) {
        Waiting_.Answer(name, permission, isGiven);
    });
}

/// The form shows what comes of it.
bool LedArrivals::LeadToInstallation(const Text& name, const Text& fullName) {
    if (!Home_)
        Home_ = Screens.CurrentScreen == ScrList ? ScrPreferences : Screens.CurrentScreen;
    bool isThere = Guide_.GoTo(ScrAddDriver);
    if (isThere) {
        FollowDriverPackages();
        Guide_.Settle();
        isThere =
            Guide_.TapRow(fullName) && Screens.CurrentScreen == ScrAddDriver && Selection.SelectedPackage == fullName;
    }
    if (isThere)
        Guide_.Run(u"Install...");
    else
        Tell(name + u" is in the data folder. Install it by \"Add Driver...\".");
    return isThere;
}

void LedArrivals::OpenDownload() {
    const Text name = Waiting_.First().Download;
    Waiting_.DropFirst();
    const companion::DownloadFound found = companion::FindDownload(name);
    if (!found.WhyNot.empty())
        return Tell(found.WhyNot);
    Home_.reset();
    if (Guide_.GoTo(ScrDrivers) && Guide_.TapRow(found.Driver) && Screens.CurrentScreen == ScrDownloads) {
        const auto& files = Downloads.DownloadFiles;
        const auto place = std::find(files.begin(), files.end(), found.File);
        if (place != files.end())
            Guide_.TapRow(static_cast<std::int32_t>(place - files.begin()));
    }
    if (Screens.CurrentScreen != ScrInfRecord)
        Tell(found.File + u" could not be opened with the driver " + found.Driver + u".");
}

/// Goes back to where the form was led away from, unless a person has gone elsewhere.
void LedArrivals::GoHome() {
    const auto home = std::exchange(Home_, std::nullopt);
    if (home && Screens.CurrentScreen == ScrAddDriver && !Device_.loop.Ending())
        Guide_.GoTo(*home);
}

} // namespace apps
