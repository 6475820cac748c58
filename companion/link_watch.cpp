// SPDX-License-Identifier: MIT
#include "companion/link_watch.h"

#include "companion/judged_words.h"
#include "companion/words.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/view/platform/platform.h"

namespace companion {

namespace {

std::int64_t SecondsFrom(LinkWatch::Moment then, LinkWatch::Moment now) {
    return std::chrono::duration_cast<std::chrono::seconds>(now - then).count();
}

/// Returns what is wrong with a serial port that is wanted and has been down for a second.
std::string TroubleOfPort(const LinkView& link, platform::ErrorNumber lastOpening) {
    if (link.Kind != LinkKind::Serial || !link.Wanted || link.Open || link.DownFor == 0)
        return {};
    if (link.Path.empty())
        return link.Port + ": no adapter is plugged in";
    return link.Port + " is " + link.Path + ": " + (lastOpening == platform::FileNotFound ? "unplugged" : link.Trouble);
}

} // namespace

bool LinkWatch::IsDue() {
    constexpr auto BetweenLooks = std::chrono::milliseconds(200);
    const Moment now = Now_();
    if (now - LastLook_ < BetweenLooks)
        return false;
    LastLook_ = now;
    return true;
}

std::string LinkWatch::TroubleOf(const PortFacts& port) {
    constexpr auto BetweenLooks = std::chrono::seconds(2);
    if (port.LastOpening == platform::NoError)
        return {};
    if (!port.Trouble.empty())
        return port.Address + ": " + port.Trouble;
    const Moment now = Now_();
    const bool isKnown = port.Address == Found_.Address && port.LastOpening == Found_.Error;
    if (!isKnown || now - Found_.When >= BetweenLooks)
        Found_ = {port.Address, port.LastOpening, now, Find_(port.Address, port.LastOpening)};
    return Found_.Words;
}

void LinkWatch::TextReceived(platform::TextSource, TextView) {
    Heard_ = Now_();
}

void LinkWatch::ReadingJudged(const platform::Verdict& verdict) {
    const JudgedWords words = WordsOfJudged(verdict, Limits_);
    Last_ = {{words.Line(), words.Verdict.Outcome}, TimeText(platform::Device().clock.Now()), Now_()};
    if (Last_->Words.Outcome == Outcome::Alarm)
        Alarm_ = Last_;
}

/// Of a burst, the last reading may be taken and the one before refused.
const std::optional<LinkWatch::Judged>& LinkWatch::Latest() const {
    return Alarm_ && SecondsFrom(Alarm_->When, Now_()) < AlarmSeconds ? Alarm_ : Last_;
}

/// What became of the readings of another record is no state of this link.
void LinkWatch::Forget() {
    Last_.reset();
    Alarm_.reset();
    DownSince_.reset();
}

LinkLine LinkWatch::Line(const PortFacts& port, bool held) {
    const Moment now = Now_();
    const Text name = modBluetooth::StoredPort();
    LinkView link;
    link.Kind = modBluetooth::KindOf(name);
    link.Wanted = modBluetooth::Receive.LinkWanted;
    link.Open = modBluetooth::Ports.LinkOpen;
    link.Port = modStringTools::ToBytes(name);
    link.Held = held;
    link.Paused = port.Paused;
    link.Waits = port.Waiting;
    if (link.Kind == LinkKind::Serial) {
        link.Path = port.Address;
        link.Open = port.Open;
        link.Trouble = TroubleOf(port);
    }
    if (!link.Wanted)
        Forget();
    if (link.Open) {
        DownSince_.reset();
    } else {
        DownSince_ = DownSince_.value_or(now);
        link.DownFor = SecondsFrom(*DownSince_, now);
        Heard_.reset();
    }
    PortTrouble_ = TroubleOfPort(link, port.LastOpening);
    if (Heard_)
        link.HeardAge = SecondsFrom(*Heard_, now);
    constexpr std::int64_t LongSilence = 60; // seconds
    IsSilent_ = !link.Open || link.HeardAge.value_or(LongSilence) >= LongSilence;
    if (const auto& last = Latest())
        link.Last = {last->Words, last->Time, SecondsFrom(last->When, now)};
    return LinkLineOf(link);
}

} // namespace companion
