// SPDX-License-Identifier: MIT
// The serial port control over the sources of bytes that there are, and over simulated ports.
#pragma once

#include "backends/loop/event_loop.h"
#include "backends/serial/byte_sources.h"
#include "backends/serial/serial_text.h"
#include "src/view/platform/device.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace backends {

using namespace platform;

/// What stands behind port numbers.
struct PortPaths {
    std::map<std::int32_t, PortAddress> Pinned;
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
    PortEvent LastEvent() const override { return PortEvent::CharactersReceived; }

    /// While this holds the port is read as ever, into its own buffer, and its event is not raised: nothing overflows,
    /// a port that goes away is noticed, and nothing is left to be read that would keep the loop awake.
    std::function<bool()> Held;
    std::size_t WaitingCharacters() const { return Waiting.size(); }

    int Descriptor() override { return Source ? Source->Descriptor() : -1; }
    bool RaiseWhatIsPending() override;

    /// The observer of the line: called with all bytes that come, in their order, before they are decoded. What arrives
    /// at a simulated port is UTF-8 there.
    std::function<void(std::string_view bytes)> BytesCame;

    /// What happened at the port, for people: the address of the last opening, what came of it, why where the number
    /// does not tell, and whether anything has been read since the port was opened.
    const std::string& Address() const { return LastAddress; }
    ErrorNumber LastOpening() const { return Outcome; }
    const std::string& Trouble() const { return LastTrouble; }
    bool Heard() const { return HasHeard; }

    // The hand of the simulated port.
    bool SimulatedPortOpen() const { return Open && !OnSource; }
    void Arrive(Text text);
    void FailOpenings(std::int32_t count) { FailuresLeft = count; } ///< -1 means all
    void Drop();

private:
    ErrorNumber OpenPort();
    SourceTrouble OpenSource(const PortAddress& address);
    ErrorNumber OpenSimulatedPort();
    void ClosePort();
    void TakeFromSource();

    PortPaths Paths;
    void (*Receive)();
    std::int32_t Id = 0;
    Text Line;
    std::int32_t Threshold = 0;
    bool Open = false;
    Text Waiting;
    std::size_t Given = 0; ///< characters to the event that is being handled
    std::int32_t FailuresLeft = 0;
    PortAddress AddressOfSource;
    std::unique_ptr<ByteSource> Source; ///< of the last opening that had one
    bool OnSource = false;              ///< it is what is open
    SerialText Decoder;
    std::string Ending; ///< why the source went away, while no opening has told it
    std::string LastAddress;
    std::string LastTrouble;
    ErrorNumber Outcome = NoError;
    bool HasHeard = false;
};

} // namespace backends
