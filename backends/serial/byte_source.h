// SPDX-License-Identifier: MIT
// Where the bytes of a port come from: a terminal, a socket, a child process. A source decodes nothing and knows no
// loop.
#pragma once

#include "src/view/platform/errors.h"

#include <string>

namespace backends {

using namespace platform;

enum class ReadState {
    Data,    ///< bytes came
    Nothing, ///< none so far
    Gone,    ///< the other end or the device is away, and the source has closed itself
};

/// Why a source could not be opened, or is gone. `Why` is for people, and says what the number can't; it is empty where
/// the number and the path say all that is known.
struct SourceTrouble {
    ErrorNumber Error = NoError;
    std::string Why;
};

class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default; ///< closes it

    /// Opens the source, and never waits. On success the trouble is NoError. On failure the source is closed; one that
    /// takes long to be reached gives NotAvailable meanwhile, goes on by itself, and is open for who asks again later.
    /// An attempt that nobody asks about for two seconds is given up. `lineSettings` is such as "9600,N,8,1"; a source
    /// that is no line ignores it.
    virtual SourceTrouble Open(const Text& lineSettings) = 0;

    /// Closes the source, or gives up its opening. A closed one stays as it is.
    virtual void Close() = 0;

    /// Appends what can be had without waiting, up to 64 KB. Bytes that came before the end are given first, and the
    /// next call returns Gone. To be called now and then also while the source is being opened.
    virtual ReadState TakeAvailable(std::string& bytes) = 0;

    /// Readiness: what to wait on until there is something to take, the end included. Returns -1 for a source that is
    /// closed, or that has nothing to wait on and is to be asked at each round of the loop.
    virtual int Descriptor() const = 0;

    /// Why the source is gone, for people; empty where nothing is known, and for one that is not gone.
    virtual std::string Ending() const { return {}; }
};

/// Appends what a descriptor has, up to 64 KB: the part of TakeAvailable that all sources with a descriptor share. Gone
/// only where nothing came; `error` is the value of errno then, 0 for the end of the stream.
ReadState ReadDescriptor(int descriptor, std::string& bytes, int& error);

} // namespace backends
