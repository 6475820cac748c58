// SPDX-License-Identifier: MIT
// What is remembered about the link from one update of its line to the next: the last readings, when something was
// received, since when the link is down, and why a port could not be opened.
#pragma once

#include "companion/link_line.h"
#include "companion/value_limits.h"
#include "src/view/platform/errors.h"
#include "src/view/platform/reading_log.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace companion {

/// What a back-end knows of its serial port.
struct PortFacts {
    std::string Address; ///< the address that the port number stands for; empty for none
    bool Open = false;
    std::size_t Waiting = 0; ///< characters that have not been read
    bool Paused = false;     ///< by a person
    platform::ErrorNumber LastOpening = platform::NoError;
    std::string Trouble; ///< why the last opening failed, if the error number does not say it
};

class LinkWatch final : public platform::ReadingLog {
public:
    using Moment = std::chrono::milliseconds; ///< by a clock that includes the time while the machine sleeps
    using MomentFinder = Moment (*)();
    using TroubleFinder = std::function<std::string(const std::string& address, platform::ErrorNumber error)>;

    /// `find` returns why an address could not be opened. It may be slow: for an unchanged address and error it is
    /// called every two seconds at most.
    LinkWatch(MomentFinder now, TroubleFinder find) : Now_(now), Find_(std::move(find)) {}

    /// Compares values with these limits from now on. They must exist for as long as readings are reported.
    void Use(const ValueLimits& limits) { Limits_ = &limits; }

    /// Returns true five times a second at most: the line shows whole seconds, and the loop may call this a thousand
    /// times.
    bool IsDue();

    /// Returns the current line. `held`: two message boxes are open, one upon the other.
    LinkLine Line(const PortFacts& port, bool held);

    /// True if the link is down, or nothing has been received for a minute, as of the last line.
    bool IsSilent() const { return IsSilent_; }

    /// Returns what keeps the port of the record on the screen from opening, as of the last line: "Com1 is
    /// /dev/ttyUSB0: unplugged"; empty if nothing does.
    const std::string& PortTrouble() const { return PortTrouble_; }

    void TextReceived(platform::TextSource source, TextView characters) override;
    void DecodingBegins() override {}
    void TextEmptied(TextView) override {}
    void ReadingJudged(const platform::Verdict& verdict) override;
    void RowChanged(const platform::RowChange&) override {}

private:
    struct Judged {
        VerdictWords Words;
        Text Time;
        Moment When{};
    };

    std::string TroubleOf(const PortFacts& port);
    const std::optional<Judged>& Latest() const;
    void Forget();

    const ValueLimits* Limits_ = nullptr;
    MomentFinder Now_;
    TroubleFinder Find_;
    std::optional<Judged> Last_;  ///< the last reading
    std::optional<Judged> Alarm_; ///< the last one that was an alarm
    std::optional<Moment> Heard_;
    std::optional<Moment> DownSince_;
    std::string PortTrouble_;
    bool IsSilent_ = true;
    Moment LastLook_{-1000};
    /// The last answer of Find_.
    struct {
        std::string Address;
        platform::ErrorNumber Error = platform::NoError;
        Moment When{};
        std::string Words;
    } Found_;
};

} // namespace companion
