// SPDX-License-Identifier: MIT
// The serial port control, over the available sources of bytes and over simulated ports.
#pragma once

#include "backends/loop/event_loop.h"
#include "backends/port/port_sources.h"
#include "backends/port/serial_text.h"
#include "src/view/platform/device.h"

#include <functional>
#include <string>
#include <string_view>

namespace backends {

using namespace platform;

class DeviceSerial final : public SerialPort, public EventSource {
public:
    /// `sources` must exist for as long as the port.
    explicit DeviceSerial(PortSources& sources) : Sources_(sources) {}

    void (*Received)() = nullptr; ///< the control's receive event

    void SetPortId(std::int32_t number) override { Id_ = number; }
    void SetLineSettings(const Text& settings) override { Line_ = settings; }
    void SetReceiveThreshold(std::int32_t characters) override { Threshold_ = characters; }
    bool PortOpen() const override { return Open_; }
    ErrorNumber SetPortOpen(bool open) override;
    /// 0 once the event being handled has had its share; the rest comes with the next event. Otherwise a handler that
    /// reads as long as there is anything would not end while an instrument sends.
    std::int32_t InBufferCount() const override;
    Text ReadInput() override;
    PortEvent LastEvent() const override { return PortEvent::CharactersReceived; }

    /// While this returns true, the port is still read into its own buffer, but its event is not raised. So nothing
    /// overflows, a port that disappears is noticed, and no unread bytes keep the loop awake.
    std::function<bool()> Held;
    std::size_t WaitingCharacters() const { return Waiting_.size(); }

    bool RaiseWhatIsPending() override;

    /// The observer of the line: called with all bytes that arrive, in order, before they are decoded. Text that
    /// arrives at a simulated port is passed to it as UTF-8.
    std::function<void(std::string_view bytes)> BytesCame;

    /// What happens to the port. One that fails at each opening fails again and again.
    enum class Step { Opened, Failed, Closed, Lost };
    /// The observer of that: called after it. `why` is text for the user, empty if there is no more to say.
    std::function<void(Step step, const std::string& why)> Stepped;

    /// The state of the port, for messages: the address and the result of the last opening, the reason where the error
    /// number is not enough, and whether anything has been read since the port was opened.
    const std::string& Address() const { return Address_; }
    ErrorNumber LastOpening() const { return LastOpening_; }
    const std::string& Trouble() const { return Trouble_; }

    // Operations on the simulated port, for tests and scripts.
    bool SimulatedPortOpen() const { return Open_ && !OnSource_; }
    void Arrive(Text text);
    void FailOpenings(std::int32_t count) { FailuresLeft_ = count; } ///< -1 means all
    void Drop();

private:
    ErrorNumber OpenPort();
    SourceTrouble OpenSource(const PortTarget& target);
    ErrorNumber OpenSimulatedPort();
    void ClosePort();
    void TakeFromSource();
    void Report(Step step, const std::string& why) const;

    PortSources& Sources_;
    std::int32_t Id_ = 0;
    Text Line_;
    std::int32_t Threshold_ = 0;
    bool Open_ = false;
    Text Waiting_;
    std::size_t Given_ = 0; ///< characters read by the event being handled
    std::int32_t FailuresLeft_ = 0;
    ByteSource* Source_ = nullptr; ///< of the last opening that used a source
    std::string AddressOfSource_;
    bool OnSource_ = false; ///< the port uses the source, not the simulation
    SerialText Decoder_;
    std::string Ending_; ///< why the source ended, until an opening has reported it
    std::string Address_;
    std::string Trouble_;
    ErrorNumber LastOpening_ = NoError;
};

} // namespace backends
