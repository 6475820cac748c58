// SPDX-License-Identifier: MIT
#include "apps/demo/demo_instrument.h"

namespace apps {

using modStringTools::FromBytes;

namespace {

constexpr std::int64_t Interval = 10000; // milliseconds

instrument::MadeUpStream ClimateMeter() {
    instrument::MadeUpStream stream;
    stream.Kinds = instrument::ClimateKinds();
    return stream;
}

} // namespace

DemoInstrument::DemoInstrument(DemoLine& line) : Line_(line), Results_(ClimateMeter()) {
}

void DemoInstrument::Send(const Text& what, const std::string& result) {
    What_ = what;
    Last_ = Line_.Send(result) ? companion::SentState::Sent : companion::SentState::LineFull;
    WaitsAnew_ = true;
}

void DemoInstrument::SendKind(std::size_t kind) {
    Send(FromBytes(Kinds()[kind]), Results_.One(kind));
}

void DemoInstrument::SendAll() {
    Send(u"one of each", Results_.All());
}

void DemoInstrument::SendOfAStranger() {
    Send(u"a stranger's reading", Results_.OfAStranger());
}

/// The interval starts again with each result, and with the end of a question.
void DemoInstrument::Step(std::int64_t now, bool isAsked) {
    const bool isDue = now - WaitsSince_ >= Interval;
    const bool waits = !WaitsAnew_ && IsTicked_ && !isAsked && Line_.IsHeard();
    if (waits && !isDue)
        return;
    if (waits)
        Send(u"a result", Results_.Next());
    WaitsAnew_ = false;
    WaitsSince_ = now;
}

Text DemoInstrument::Words() {
    const bool isHeard = Line_.IsHeard();
    if (!isHeard)
        Last_ = companion::SentState::Nothing;
    return companion::InstrumentLine({.IsPlugged = Line_.IsPlugged(),
                                      .IsHeard = isHeard,
                                      .Problem = FromBytes(Line_.Problem()),
                                      .Last = Last_,
                                      .What = What_});
}

} // namespace apps
