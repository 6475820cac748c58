// SPDX-License-Identifier: MIT
#pragma once

namespace backends {

/// Something that a program can wait for by poll.
class Waitable {
public:
    virtual ~Waitable() = default;
    /// Returns a descriptor that is readable when there is something to take, or the end of it. Returns -1 while there
    /// is nothing to wait for.
    virtual int Descriptor() const = 0;
};

} // namespace backends
