// SPDX-License-Identifier: MIT
// The simulated instrument of a demonstration.
#pragma once

#include <chrono>
#include <string>

namespace quorin {

/// A simulated instrument on a pseudo terminal, in a process of its own. The process ends with this object and,
/// whatever the cause, with this process. Must be created by the main thread, before there is another thread or a
/// window.
class DemoInstrument {
public:
    /// `interval`: the time from the end of a result to the next one, while a listener has the terminal open.
    explicit DemoInstrument(std::chrono::milliseconds interval = std::chrono::seconds(3));
    DemoInstrument(const DemoInstrument&) = delete;
    DemoInstrument& operator=(const DemoInstrument&) = delete;
    ~DemoInstrument();

    /// The path of its terminal; empty if it could not be started, and Problem says why.
    const std::string& Port() const { return PortPath_; }
    const std::string& Problem() const { return ProblemText_; }

private:
    void TakeAnswer(const std::string& line);

    int Process_ = -1;
    std::string PortPath_;
    std::string ProblemText_;
};

} // namespace quorin
