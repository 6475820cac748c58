// SPDX-License-Identifier: MIT
// Where the bytes of an instrument go.
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

/// How long to stay at the end of a stream; none stays until the reader has gone.
using Linger = std::optional<std::chrono::milliseconds>;

class Outlet {
public:
    Outlet() = default;
    Outlet(const Outlet&) = delete;
    Outlet& operator=(const Outlet&) = delete;
    virtual ~Outlet() = default;

    /// Makes the outlet ready for a reader.
    virtual Outcome Open() = 0;
    /// Returns when all bytes are handed over, however long the reader keeps us waiting.
    virtual Outcome Send(std::string_view bytes) = 0;
    /// Sees to it that the last bytes reach the reader.
    virtual Outcome Finish(Linger linger) = 0;

    const std::string& Problem() const { return ProblemText; }

protected:
    Outcome Fail(std::string problem) {
        ProblemText = std::move(problem);
        return Outcome::Failed;
    }
    /// A failed system call: "what: the system's word for errno".
    Outcome FailBySystem(const std::string& what);

private:
    std::string ProblemText;
};

} // namespace instrument
