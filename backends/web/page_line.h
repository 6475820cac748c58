// SPDX-License-Identifier: MIT
// The serial ports that a person has granted to the page. Only the page can open them: it is asked to, says what became
// of it as an event, and writes the bytes of the open one into a descriptor. One port is open at a time.
#pragma once

#include "backends/serial/descriptor_source.h"
#include "backends/serial/host_ports.h"
#include "backends/web/page_events.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace backends::web {

/// What the page is asked to do with a port.
struct PortRequest {
    enum class Act { Open, Read, Close };
    Act Wanted = Act::Close;
    std::int32_t Number = 0;       ///< of the port, from 1 in the order in which they were granted
    std::int32_t Attempt = 0;      ///< the page's events about this opening have the same number
    std::string LineSettings = {}; ///< "9600,N,8,1"
};

class PageLine {
public:
    using Asking = std::function<void(const PortRequest& request)>;

    /// `bytes`: a descriptor that does not block; -1 for a page that has no ports.
    PageLine(int bytes, Asking ask) : Bytes_(bytes), Ask_(std::move(ask)) {}

    /// Takes what the page says of its ports. Returns false if the event is about something else.
    bool TakeUp(const PageEvent& event);

    /// Returns what a device is given as its ports: ComN is the Nth that was granted.
    PortPaths Paths();

    /// Called when characters were lost on the way to the program, with the reason in words.
    std::function<void(const Text& why)> Lost;

    // As for a ByteSource.
    SourceTrouble Open(std::int32_t number, const Text& lineSettings);
    void Close();
    ReadState TakeAvailable(std::string& bytes);
    int Descriptor() const { return State_ == State::Open ? Bytes_ : -1; }
    const std::string& Ending() const { return Ending_; }

private:
    enum class State {
        Closed,
        Opening, ///< the page was asked
        Opened,  ///< the page has it open, and reads once it is asked to
        Open,
        Ended, ///< the page has it no longer; what it has written is still to be read
    };

    void TakeUpEnd(const std::string& why);
    void Ask(PortRequest::Act wanted, const std::string& lineSettings = {}) const;
    SourceTrouble BeginOpening(std::int32_t number, const Text& lineSettings);
    SourceTrouble StillOpening() const;
    void DiscardOldBytes() const;

    int Bytes_;
    Asking Ask_;
    std::vector<std::string> Names_; ///< of the granted ports; an empty one was taken back
    State State_ = State::Closed;
    std::int32_t Number_ = 0;
    std::int32_t Attempt_ = 0;
    std::chrono::steady_clock::time_point Wanted_{}; ///< when Open was called last
    std::string Ending_;                             ///< why the port that was open last is gone
    std::string Failure_;                            ///< why the last opening failed
};

} // namespace backends::web
