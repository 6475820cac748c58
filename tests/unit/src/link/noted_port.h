// SPDX-License-Identifier: MIT
// A serial port that records each call. It replaces the device's own.
#pragma once

#include "tests/support/program.h"

#include <deque>
#include <optional>

namespace modBluetooth {

class NotedPort final : public platform::SerialPort {
public:
    void SetPortId(std::int32_t number) override { Asked.push_back(u"id " + modStringTools::NumberText(number)); }
    void SetLineSettings(const Text& settings) override { Asked.push_back(u"line " + settings); }
    void SetReceiveThreshold(std::int32_t count) override {
        Asked.push_back(u"threshold " + modStringTools::NumberText(count));
    }
    bool PortOpen() const override { return Open; }
    platform::ErrorNumber SetPortOpen(bool open) override {
        Asked.push_back(open ? u"open" : u"close");
        Open = open && !Fails;
        return open && Fails ? platform::NotAvailable : platform::NoError;
    }
    std::int32_t InBufferCount() const override {
        return Chunks.empty() ? 0 : static_cast<std::int32_t>(Chunks.front().size());
    }
    Text ReadInput() override {
        const Text chunk = Chunks.front();
        Chunks.pop_front();
        Asked.push_back(u"read " + chunk);
        return chunk;
    }
    platform::PortEvent LastEvent() const override { return Event; }

    std::vector<Text> Asked;
    std::deque<Text> Chunks; ///< what is received, one piece for each read
    platform::PortEvent Event = platform::PortEvent::CharactersReceived;
    bool Open = false;
    bool Fails = false;
};

/// The program on a device with that serial port.
class OnANotedPort : public support::Program {
protected:
    explicit OnANotedPort(std::int32_t deviceType = 0) : Program(support::OfType(deviceType)) {
        platform::Platform& real = Device.Platform.record;
        with.emplace(platform::Platform{real.form,
                                        real.grdTitle,
                                        real.grdMain,
                                        real.txtInputField,
                                        real.cboInputField,
                                        real.cbotxtInputField,
                                        real.dteInputField,
                                        real.lstHoldMenu,
                                        real.lblStatus,
                                        real.AFVScrollBar1,
                                        real.tmrBlue,
                                        real.tmrHoldEvent,
                                        real.tmrMenus,
                                        real.mnuButton1,
                                        real.mnuButton2,
                                        real.mnuButtonO1,
                                        real.mnuButtonO2,
                                        real.colours,
                                        real.fontServer,
                                        real.myCsys,
                                        real.hardwareKeys,
                                        Port,
                                        real.connectionService,
                                        real.toneMaker,
                                        real.messageBox,
                                        real.settings,
                                        real.clock,
                                        real.random,
                                        real.runTime,
                                        real.volumes,
                                        real.fileSystem,
                                        real.recordDatabase,
                                        real.saveWatcher,
                                        real.onlooker,
                                        real.readingLog});
        platform::Install(&*with);
    }
    ~OnANotedPort() override { platform::Install(&Device.Platform.record); }

    NotedPort Port;
    std::optional<platform::Platform> with;
};

} // namespace modBluetooth
