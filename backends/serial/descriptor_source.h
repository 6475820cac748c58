// SPDX-License-Identifier: MIT
// A source of bytes with a descriptor.
#pragma once

#include "backends/descriptor/waitable.h"
#include "backends/port/byte_source.h"

namespace backends {

/// Its descriptor is -1 while it is closed or being opened.
class DescriptorSource : public ByteSource, public Waitable {};

/// Appends what a descriptor has, up to 64 KB: the part of TakeAvailable that all of these sources share. Returns Gone
/// only if nothing was read; then `error` is the value of errno, or 0 at the end of the stream.
ReadState ReadDescriptor(int descriptor, std::string& bytes, int& error);

} // namespace backends
