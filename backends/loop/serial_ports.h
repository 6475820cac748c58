// SPDX-License-Identifier: MIT
// The serial port control, over the available sources of bytes and over simulated ports.
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

/// The source behind each port number.
struct PortPaths {
    std::map<std::int32_t, PortAddress> Pinned;
    /// Called at each opening of a number that is not pinned; an empty path means that there is no device. If it is not
    /// set, such a port is simulated.
    std::function<std::string(std::int32_t)> Find;
};

class DeviceSerial final : public SerialPort, public EventSource {
public:
    /// `receive` is the control's receive event.
    DeviceSerial(PortPaths paths, void (*receive)()) : Paths(std::move(paths)), Receive(receive) {}

    void SetPortId(std::int32_t number) override { Id = number; }
    void SetLineSettings(const Text& settings) override { Line = settings; }
    void SetReceiveThreshold(std::int32_t characters) override { Threshold = characters; }
    bool PortOpen() const override { return Open; }
    ErrorNumber SetPortOpen(bool open) override;
    /// 0 once the event being handled has had its share; the rest comes with the next event. Otherwise a handler that
    /// reads as long as there is anything would not end while an instrument sends.
    std::int32_t InBufferCount() const override;
    Text ReadInput() override;
    PortEvent LastEvent() const override { return PortEvent::CharactersReceived; }

    /// While this returns true, the port is still read into its own buffer, but its event is not raised. So nothing
    /// overflows, a port that disappears is noticed, and no unread bytes keep the loop awake.
    std::function<bool()> Held;
    std::size_t WaitingCharacters() const { return Waiting.size(); }

    int Descriptor() override { return Source ? Source->Descriptor() : -1; }
    bool RaiseWhatIsPending() override;

    /// The observer of the line: called with all bytes that arrive, in order, before they are decoded. Text that
    /// arrives at a simulated port is passed to it as UTF-8.
    std::function<void(std::string_view bytes)> BytesCame;

    /// The state of the port, for messages: the address and the result of the last opening, the reason where the error
    /// number is not enough, and whether anything has been read since the port was opened.
    const std::string& Address() const { return LastAddress; }
    ErrorNumber LastOpening() const { return Outcome; }
    const std::string& Trouble() const { return LastTrouble; }
    bool Heard() const { return HasHeard; }

    // Operations on the simulated port, for tests and scripts.
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
    std::size_t Given = 0; ///< characters read by the event being handled
    std::int32_t FailuresLeft = 0;
    PortAddress AddressOfSource;
    std::unique_ptr<ByteSource> Source; ///< of the last opening that used a source
    bool OnSource = false;              ///< the port uses Source, not the simulation
    SerialText Decoder;
    std::string Ending; ///< why the source ended, until an opening has reported it
    std::string LastAddress;
    std::string LastTrouble;
    ErrorNumber Outcome = NoError;
    bool HasHeard = false;
};

} // namespace backends
