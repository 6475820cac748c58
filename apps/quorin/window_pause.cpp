// SPDX-License-Identifier: MIT
#include "apps/quorin/window_pause.h"

#include "backends/host/host_clock.h"
#include "companion/words.h"
#include "src/link/receive.h"

namespace quorin {

WindowPause::WindowPause(backends::qt::QtPlatform& device) : Device_(device) {
    device.loop.Listen(*this);
    device.boxes.OffersPause = [this](const Text& message) {
        const companion::QuestionRush::Moment now(backends::HostTime().Steady());
        return modBluetooth::Receive.LinkWanted && Rush_.Comes(message, now);
    };
    device.boxes.LinkIsPaused = [this] { return Device_.LinkIsPaused(); };
    device.boxes.PauseLink = [this](bool isPaused) { isPaused ? Pause() : GoOn(); };
}

void WindowPause::Pause() {
    Device_.PauseLink(true);
    Device_.onlooker.notices.Raise(companion::LinkIsPaused());
}

void WindowPause::GoOn() {
    Device_.PauseLink(false);
    Device_.onlooker.notices.Withdraw(companion::AboutPause);
}

/// What has waited for the record that was left would be read into the next one, and would open the port again.
void WindowPause::RecordLeft() {
    const std::size_t dropped = Device_.serial.ReadInput().size();
    GoOn();
    if (dropped > 0)
        Device_.onlooker.notices.Raise(companion::NotReadInPause(dropped));
}

bool WindowPause::RaiseWhatIsPending() {
    if (Device_.LinkIsPaused() && !modBluetooth::Receive.LinkWanted)
        RecordLeft();
    return false;
}

} // namespace quorin
