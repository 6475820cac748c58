// SPDX-License-Identifier: MIT
// The instrument of a demonstration.
#pragma once

#include <chrono>
#include <string>

namespace quorin {

/// A simulated instrument on a pseudo terminal, in a process of its own, which ends with this object and, however it
/// comes about, with this process. To be made by the main thread while there is neither another thread nor a window.
class DemoInstrument {
public:
    /// `interval`: from the end of a result to the next one, while somebody listens.
    explicit DemoInstrument(std::chrono::milliseconds interval = std::chrono::seconds(3));
    DemoInstrument(const DemoInstrument&) = delete;
    DemoInstrument& operator=(const DemoInstrument&) = delete;
    ~DemoInstrument();

    /// The path of its terminal; empty when it could not be started, and Problem says why.
    const std::string& Port() const { return PortPath; }
    const std::string& Problem() const { return ProblemText; }

private:
    void TakeAnswer(const std::string& line);

    int Process = -1;
    std::string PortPath;
    std::string ProblemText;
};

} // namespace quorin
