// SPDX-License-Identifier: MIT
#include "companion/link_line.h"

namespace companion {

namespace {

constexpr std::int64_t Minute = 60;
constexpr std::int64_t Hour = 60 * Minute;

std::string Name(const LinkView& link) {
    return link.Path.empty() ? link.Port : link.Port + " (" + link.Path + ")";
}

std::string RecordText(const LinkView& link) {
    if (link.RecordAge)
        return "last record " + AgeText(*link.RecordAge) + " ago";
    if (link.Road == LinkRoad::Serial && link.Heard)
        return "characters arrive, but no record yet";
    return "no record yet";
}

std::string WaitingText(const LinkView& link) {
    switch (link.Road) {
    case LinkRoad::Server:
        return "waiting for the RFCOMM server";
    case LinkRoad::Serial:
        if (!link.Trouble.empty())
            return link.Port + ": " + link.Trouble + ", trying again";
        break;
    default:
        break;
    }
    return link.Port + ": waiting for it to open";
}

std::string HeldText(const LinkView& link) {
    const std::string what = link.Road == LinkRoad::Serial ? std::to_string(link.Waits) + " characters are waiting"
                                                           : "the mailbox is waiting";
    return "a question is open, " + what;
}

} // namespace

std::string AgeText(std::int64_t seconds) {
    if (seconds < Minute)
        return std::to_string(seconds) + " s";
    if (seconds < Hour)
        return std::to_string(seconds / Minute) + " min";
    return std::to_string(seconds / Hour) + " h " + std::to_string(seconds % Hour / Minute) + " min";
}

const char* WorkText(Work work) {
    switch (work) {
    case Work::None:
        break;
    case Work::Long:
        return "Working…";
    case Work::Waiting:
        return "Another program is using this file: waiting…";
    }
    return "";
}

LinkLine LinkLineOf(const LinkView& link) {
    if (link.Road == LinkRoad::None)
        return {"Link off: no port is chosen", false};
    if (!link.Wanted)
        return {"Link off: no download is open for " + link.Port, false};
    if (link.Held && link.Road != LinkRoad::Connection)
        return {"Link held: " + HeldText(link), false};
    const std::string age = link.RecordAge ? "; " + RecordText(link) : "";
    if (!link.Open)
        return {"Link down: " + WaitingText(link) + age, false};
    const std::string name = link.Road == LinkRoad::Server ? "RFCOMM server" : Name(link);
    const bool fresh = link.RecordAge && *link.RecordAge < Minute;
    return {(fresh || !link.RecordAge ? "Link open: " : "Link open but quiet: ") + name + "; " + RecordText(link),
            fresh};
}

} // namespace companion
