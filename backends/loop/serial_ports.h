// SPDX-License-Identifier: MIT
// The serial port control over the machine's devices, and over simulated ones.
#pragma once

#include "backends/loop/event_loop.h"
#include "backends/serial/host_serial_port.h"
#include "src/view/platform/device.h"

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace backends {

using namespace platform;

/// Host paths behind port numbers.
struct PortPaths {
    std::map<std::int32_t, std::string> Pinned;
    /// Asked at each opening for a number that is not pinned; an empty path means that there is no device. Without it
    /// such a port is simulated.
    std::function<std::string(std::int32_t)> Find;
};

class DeviceSerial final : public SerialPort, public EventSource {
public:
    /// `receive` is the control's event.
    DeviceSerial(PortPaths paths, void (*receive)()) : Paths(std::move(paths)), Receive(receive) {}

    void SetPortId(std::int32_t number) override { Id = number; }
    void SetLineSettings(const Text& settings) override { Line = settings; }
    void SetReceiveThreshold(std::int32_t characters) override { Threshold = characters; }
    bool PortOpen() const override { return Open; }
    ErrorNumber SetPortOpen(bool open) override;
    /// None once the event that is being handled has had its share: what is left comes with the next one. Who reads on
    /// while there is anything would else do so as long as an instrument sends.
    std::int32_t InBufferCount() const override;
    Text ReadInput() override;
    std::int32_t LastEvent() const override { return CharactersReceived; }

    /// While this holds the port is read as ever, into its own buffer, and its event is not raised: nothing overflows,
    /// a port that goes away is noticed, and nothing is left to be read that would keep the loop awake.
    std::function<bool()> Held;
    std::size_t WaitingCharacters() const { return Waiting.size(); }

    int Descriptor() override { return Real.Descriptor(); }
    bool RaiseWhatIsPending() override;

    /// What happened at the port, for people: the host path of the last opening, what came of it, and whether anything
    /// has been read since the port was opened.
    const std::string& HostPath() const { return LastPath; }
    ErrorNumber LastOpening() const { return Outcome; }
    bool Heard() const { return HasHeard; }

    // The hand of the simulated port.
    bool SimulatedPortOpen() const { return Open && !Real.IsOpen(); }
    void Arrive(Text text) {
        modStringTools::BlankNuls(text);
        Waiting += text;
    }
    void FailOpenings(std::int32_t count) { FailuresLeft = count; } ///< -1 means all
    void Drop();

private:
    static constexpr std::int32_t CharactersReceived = 2;

    ErrorNumber OpenPort();
    ErrorNumber OpenHostPort(const std::string& path);
    ErrorNumber OpenSimulatedPort();
    void ClosePort();
    void TakeFromDevice();

    PortPaths Paths;
    void (*Receive)();
    std::int32_t Id = 0;
    Text Line;
    std::int32_t Threshold = 0;
    bool Open = false;
    Text Waiting;
    std::size_t Given = 0; ///< characters to the event that is being handled
    std::int32_t FailuresLeft = 0;
    SerialDevice Real;
    std::string LastPath;
    ErrorNumber Outcome = NoError;
    bool HasHeard = false;
};

} // namespace backends
