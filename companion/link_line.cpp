// SPDX-License-Identifier: MIT
#include "companion/link_line.h"

#include <algorithm>

namespace companion {

namespace {

constexpr std::int64_t Minute = 60;
constexpr std::int64_t Hour = 60 * Minute;

LinkLine Plain(const std::string& text) {
    return {text, LineLook::Plain, text};
}

/// Names of adapters are long, and their ends tell them apart.
std::string ShortPath(const std::string& path) {
    constexpr std::size_t Longest = 36;
    constexpr std::size_t Head = 12;
    if (path.size() <= Longest)
        return path;
    return path.substr(0, Head) + "…" + path.substr(path.size() - (Longest - Head));
}

/// Returns the trouble of a port with its path shortened, so that the reason has room.
std::string ShortTrouble(const LinkView& link) {
    std::string text = link.Trouble;
    const std::size_t at = link.Path.empty() ? std::string::npos : text.find(link.Path);
    return at == std::string::npos ? text : text.replace(at, link.Path.size(), ShortPath(link.Path));
}

std::string Name(const LinkView& link) {
    if (link.Kind == LinkKind::Server)
        return "RFCOMM server";
    return link.Path.empty() ? link.Port : link.Port + " (" + ShortPath(link.Path) + ")";
}

std::string WaitingText(const LinkView& link) {
    switch (link.Kind) {
    case LinkKind::Server:
        return "waiting for the RFCOMM server";
    case LinkKind::Serial:
        if (!link.Trouble.empty())
            return link.Port + ": " + ShortTrouble(link) + ", trying again";
        break;
    default:
        break;
    }
    return link.Port + ": waiting for it to open";
}

std::string HeldText(const LinkView& link) {
    const std::string open = link.Paused ? "you have paused it" : "two questions are open";
    if (link.Kind != LinkKind::Serial)
        return open + ", the mailbox is waiting";
    if (link.Waits == 0)
        return open;
    return open + ", " + std::to_string(link.Waits) +
           (link.Waits == 1 ? " character is waiting" : " characters are waiting");
}

LinkLine OpenLine(const LinkView& link) {
    const std::string open = "Link open: " + Name(link) + "; ";
    if (!link.HeardAge)
        return Plain(open + "no reading yet");
    if (*link.HeardAge < Minute)
        return Plain(open + "characters arrive, but no reading yet");
    return {open + "characters came " + AgeText(*link.HeardAge) + " ago, but no reading yet", LineLook::Plain,
            open + "characters came, but no reading yet"};
}

std::string TimedText(const LastReading& last) {
    return modStringTools::ToBytes(last.Words.Line) + ", " + modStringTools::ToBytes(last.Time);
}

/// A reading that was refused a moment ago is not hidden by a cable that is pulled after it.
bool WasJustRefused(const LinkView& link) {
    return link.Last && link.Last->Words.Outcome == Outcome::Alarm && link.Last->Age < AlarmSeconds;
}

/// A port that has just been chosen is not open for a moment, which is no alarm.
LinkLine DownLine(const LinkView& link) {
    const std::string why = WaitingText(link);
    const std::string last = link.Last ? "; last: " + TimedText(*link.Last) : "";
    if (link.DownFor == 0)
        return {"Link down: " + why + last, LineLook::Plain, "Link down: " + why};
    return {"Link down for " + AgeText(link.DownFor) + ": " + why + last, LineLook::Alarm, "Link down: " + why};
}

LinkLine ReadingLine(const LastReading& last, const LinkView& link) {
    const std::string words = modStringTools::ToBytes(last.Words.Line);
    const std::string timed = TimedText(last);
    if (last.Words.Outcome == Outcome::Alarm)
        return {words + ", " + AgeText(last.Age) + " ago", LineLook::Alarm, timed};
    if (last.Age < Minute)
        return {timed, last.Words.Outcome == Outcome::Taken ? LineLook::Alive : LineLook::Plain, timed};
    if (link.HeardAge.value_or(Minute) < Minute)
        return {timed + "; characters arrive, but no reading", LineLook::Plain, timed};
    const std::string quiet = AgeText(std::min(last.Age, link.HeardAge.value_or(last.Age)));
    return {"Link open but quiet for " + quiet + ": " + Name(link) + "; last: " + timed, LineLook::Plain,
            "Link quiet; last: " + timed};
}

/// Returns the line with the offer to choose another port.
LinkLine WithPorts(LinkLine line) {
    line.OffersPorts = true;
    return line;
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
    if (link.Kind == LinkKind::None)
        return WithPorts(Plain("Link off: no port is chosen"));
    if (!link.Wanted)
        return Plain("Link off: no download is open for " + link.Port);
    if ((link.Held || link.Paused) && link.Kind != LinkKind::Connection)
        return Plain("Link held: " + HeldText(link));
    if (!link.Open && !WasJustRefused(link))
        return WithPorts(DownLine(link));
    return link.Last ? ReadingLine(*link.Last, link) : OpenLine(link);
}

} // namespace companion
