// SPDX-License-Identifier: MIT
// The serial port control over real devices, and over a simulated one for every number without a device.
#pragma once

#include "platform/common/serial_device.h"
#include "platform/headless/event_loop.h"
#include "view/platform/device.h"

#include <map>
#include <string>

namespace platform::headless {

class HeadlessSerial final : public SerialPort, public EventSource {
public:
    /// `devices` maps port numbers to host paths; `receive` is the control's event.
    HeadlessSerial(std::map<std::int32_t, std::string> devices, void (*receive)())
        : Devices(std::move(devices)), Receive(receive) {}

    void SetPortId(std::int32_t number) override { Id = number; }
    void SetLineSettings(const Text& settings) override { Line = settings; }
    void SetReceiveThreshold(std::int32_t characters) override { Threshold = characters; }
    bool PortOpen() const override { return Open; }
    ErrorNumber SetPortOpen(bool open) override;
    std::int32_t InBufferCount() const override { return static_cast<std::int32_t>(Waiting.size()); }
    Text ReadInput() override;
    std::int32_t LastEvent() const override { return CharactersReceived; }

    int Descriptor() override { return Real.Descriptor(); }
    bool RaiseWhatIsPending() override;

    // The hand of the simulated port.
    bool SimulatedPortOpen() const { return Open && !Real.IsOpen(); }
    void Arrive(const Text& text) { Waiting += text; }
    void FailOpenings(std::int32_t count) { FailuresLeft = count; } ///< -1 means all
    void Drop();

private:
    static constexpr std::int32_t CharactersReceived = 2;

    ErrorNumber OpenPort();
    void ClosePort();
    void TakeFromDevice();

    std::map<std::int32_t, std::string> Devices;
    void (*Receive)();
    std::int32_t Id = 0;
    Text Line;
    std::int32_t Threshold = 0;
    bool Open = false;
    Text Waiting;
    std::int32_t FailuresLeft = 0;
    common::SerialDevice Real;
};

} // namespace platform::headless
