// SPDX-License-Identifier: MIT
// The source of a port's bytes: a terminal, a socket, a child process, or a buffer that something else fills. A source
// does not decode, and is independent of the event loop.
#pragma once

#include "src/view/platform/errors.h"

#include <string>

namespace backends {

using namespace platform;

enum class ReadState {
    Data,    ///< bytes were read
    Nothing, ///< none so far
    Gone,    ///< the other end or the device is gone, and the source has closed itself
};

/// Why a source could not be opened, or is gone. `Why` is text for the user with what the number can't express; it is
/// empty if the number and the path say all that is known.
struct SourceTrouble {
    ErrorNumber Error = NoError;
    std::string Why;
};

class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default; ///< closes the source

    /// Opens the source without waiting. On success the trouble is NoError. On failure the source is closed. A source
    /// that needs time to connect returns NotAvailable meanwhile and continues by itself; a later call finds it open.
    /// It gives up if Open is not called again for two seconds. `lineSettings` is text such as "9600,N,8,1"; a source
    /// that is not a serial line ignores it.
    virtual SourceTrouble Open(const Text& lineSettings) = 0;

    /// Closes the source, or gives up opening it. Has no effect on a closed one.
    virtual void Close() = 0;

    /// Appends what can be read without waiting, up to 64 KB. Bytes that arrived before the end are returned first, and
    /// the next call returns Gone. It is called in each round of the loop, also while the source is being opened. What
    /// wakes a sleeping loop for it is up to the pump.
    virtual ReadState TakeAvailable(std::string& bytes) = 0;

    /// Returns why the source is gone, as text for the user; empty if the reason is not known or the source is not
    /// gone.
    virtual std::string Ending() const { return {}; }
};

} // namespace backends
