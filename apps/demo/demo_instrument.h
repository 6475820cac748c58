// SPDX-License-Identifier: MIT
// The simulated instrument of a demonstration.
#pragma once

#include "apps/quorin-instrument/made_to_order.h"
#include "companion/instrument_words.h"

#include <cstdint>
#include <string>
#include <vector>

namespace apps {

/// The line from the instrument to the program.
class DemoLine {
public:
    DemoLine() = default;
    DemoLine(const DemoLine&) = delete;
    DemoLine& operator=(const DemoLine&) = delete;
    virtual ~DemoLine() = default;

    virtual bool IsPlugged() const = 0;
    virtual bool IsHeard() const = 0; ///< a record listens
    /// Returns why it can't be plugged in; empty if nothing is wrong.
    virtual const std::string& Problem() const = 0;
    /// Sends without waiting for the listener. Returns false if not all was sent.
    virtual bool Send(const std::string& text) = 0;
};

/// It sends only what it is asked for, and only while a record listens. While it is ticked it sends a result each 10
/// seconds by itself, and none while a question is open.
class DemoInstrument {
public:
    explicit DemoInstrument(DemoLine& line);

    /// Returns the names of what it measures; a kind is its place in this list.
    const std::vector<std::string>& Kinds() const { return Results_.Names(); }
    void SendKind(std::size_t kind);
    void SendAll();
    void SendOfAStranger();

    void Tick(bool isTicked) { IsTicked_ = isTicked; }
    bool IsTicked() const { return IsTicked_; }
    /// Sends what is due by itself. Call it in each round of events. `now`: milliseconds of the device's clock.
    void Step(std::int64_t now, bool isAsked);

    /// Returns the line above the buttons.
    Text Words();

private:
    void Send(const Text& what, const std::string& result);

    DemoLine& Line_;
    instrument::MadeToOrder Results_;
    companion::SentState Last_ = companion::SentState::Nothing;
    Text What_;
    bool IsTicked_ = false;
    bool WaitsAnew_ = true;       ///< something was sent since the last step
    std::int64_t WaitsSince_ = 0; ///< since when the next result of its own is waited for
};

} // namespace apps
