// SPDX-License-Identifier: MIT
#include "apps/quorin/demo_instrument.h"

namespace quorin {

namespace {

instrument::MadeUpStream ClimateMeter() {
    instrument::MadeUpStream stream;
    stream.Kinds = instrument::ClimateKinds();
    return stream;
}

} // namespace

DemoInstrument::DemoInstrument() : Results_(ClimateMeter()) {
    Plug();
}

void DemoInstrument::Plug() {
    if (Line_.Plug() != instrument::Outcome::Done)
        Line_.Unplug();
}

} // namespace quorin
