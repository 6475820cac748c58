// SPDX-License-Identifier: MIT
#include "backends/serial/port_probe.h"

#include "tests/support/plugged_instrument.h"

#include <gmock/gmock.h>

namespace backends {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class Probe : public testing::Test {
protected:
    /// Sends, and waits until the probe has counted that many bytes at the first device.
    void SendAndCount(const std::string& bytes) {
        Talking.Send(bytes);
        const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (Ports.Counts().at(Talking.Path()) < bytes.size() && std::chrono::steady_clock::now() < patience)
            poll(nullptr, 0, 1);
    }

    PseudoTerminal Talking;
    PseudoTerminal Silent;
    PortProbe Ports;
};

TEST_F(Probe, CountsWhatArrivesAtEachDevice) {
    Ports.Start({Talking.Path(), Silent.Path()});
    SendAndCount("14.1 %");
    EXPECT_THAT(Ports.Counts(), testing::UnorderedElementsAre(Pair(Talking.Path(), 6), Pair(Silent.Path(), 0)));
}

TEST_F(Probe, ADeviceThatCantBeOpenedHasNoCount) {
    Ports.Start({"/dev/null", Silent.Path()});
    EXPECT_THAT(Ports.Counts(), ElementsAre(Pair(Silent.Path(), 0)));
}

TEST_F(Probe, LeavesTheDevicesToOthersAfterwards) {
    Ports.Start({Talking.Path()});
    Ports.Stop();
    pollfd end{Talking.Number(), POLLIN, 0};
    poll(&end, 1, 2000);
    EXPECT_NE(end.revents & POLLHUP, 0) << "the device is still open";
    Ports.Start({});
    EXPECT_THAT(Ports.Counts(), IsEmpty());
}

} // namespace
} // namespace backends
