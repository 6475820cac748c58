// SPDX-License-Identifier: MIT
// The destination of an instrument's bytes.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace instrument {

enum class Outcome {
    Done,
    Stopped, ///< the process was told to stop
    Failed,  ///< the outlet's Problem says why
};

/// How long to wait at the end of a stream; none: until the reader has gone.
using Linger = std::optional<std::chrono::milliseconds>;

class Outlet {
public:
    Outlet() = default;
    Outlet(const Outlet&) = delete;
    Outlet& operator=(const Outlet&) = delete;
    virtual ~Outlet() = default;

    /// Prepares the outlet for a reader.
    virtual Outcome Open() = 0;
    /// Returns when all bytes are handed over, however long the reader takes.
    virtual Outcome Send(std::string_view bytes) = 0;
    /// Returns false if it is known that nobody listens.
    virtual bool IsHeard() const { return true; }
    /// Takes the line from its reader, as a pulled cable does; Open brings it back. Returns false if it has none.
    virtual bool Unplug() { return false; }
    /// Makes sure that the last bytes reach the reader.
    virtual Outcome Finish(Linger linger) = 0;

    const std::string& Problem() const { return ProblemText_; }

protected:
    Outcome Fail(std::string problem) {
        ProblemText_ = std::move(problem);
        return Outcome::Failed;
    }
    /// Fails with the message "what: the system's text for errno".
    Outcome FailBySystem(const std::string& what);

private:
    std::string ProblemText_;
};

} // namespace instrument
