// SPDX-License-Identifier: MIT
#include "companion/link_watch.h"

#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/text/text.h"

namespace companion {

bool LinkWatch::IsDue(Moment now) {
    constexpr auto BetweenLooks = std::chrono::milliseconds(200);
    if (now - LastLook_ < BetweenLooks)
        return false;
    LastLook_ = now;
    return true;
}

std::string LinkWatch::TroubleOf(const PortFacts& port, Moment now) {
    constexpr auto BetweenLooks = std::chrono::seconds(2);
    if (port.LastOpening == platform::NoError)
        return {};
    if (!port.Trouble.empty())
        return port.Address + ": " + port.Trouble;
    const bool isKnown = port.Address == Found_.Address && port.LastOpening == Found_.Error;
    if (!isKnown || now - Found_.When >= BetweenLooks)
        Found_ = {port.Address, port.LastOpening, now, Find_(port.Address, port.LastOpening)};
    return Found_.Words;
}

LinkLine LinkWatch::Line(const PortFacts& port, bool held, Moment now) {
    const Text name = modBluetooth::StoredPort();
    LinkView link;
    link.Road = modBluetooth::RoadOf(name);
    link.Wanted = modBluetooth::Receive.LinkWanted;
    link.Open = modBluetooth::Ports.LinkOpen;
    link.Port = modStringTools::ToBytes(name);
    link.Held = held;
    link.Waits = port.Waiting;
    if (link.Road == LinkRoad::Serial) {
        link.Path = port.Address;
        link.Open = port.Open;
        link.Heard = port.Heard;
        link.Trouble = TroubleOf(port, now);
    }
    if (LastResult_)
        link.RecordAge = std::chrono::duration_cast<std::chrono::seconds>(now - *LastResult_).count();
    return LinkLineOf(link);
}

} // namespace companion
