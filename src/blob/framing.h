// SPDX-License-Identifier: MIT
// Finds complete BLobs in the text that has come so far.
#pragma once

#include "src/blob/decoding.h"
#include "src/text/text.h"

#include <vector>

namespace modBLob {

/// The buffer, and what the last call has learned of it, so that the next one goes on where that one stopped: noise
/// that nothing ever takes away is gone through once. Only ExtractBlobs writes any of it. Places count from 0.
struct FramingState {
    Text BlobBuffer;                         ///< all that was not part of a complete BLob
    std::size_t OpenLine = 0;                ///< where the line begins that has no end yet: what is in front is done
    std::vector<std::size_t> OpenBlobs;      ///< where the start lines begin that no end line has closed, in order
    std::size_t LoneFeed = TextView::npos;   ///< the first line feed that has no carriage return in front of it
    std::size_t PairedFeed = TextView::npos; ///< the first one that has: its pair waits for the next call
};
inline FramingState Framing; ///< the application's

/// Takes new text and decodes each complete BLob in the buffer. True when at least one was decoded and none failed.
bool ExtractBlobs(FramingState& framing, DecoderState& decoder, const Text& received);

/// The same of the application's own buffer and decoder.
inline bool ExtractBlobs(const Text& received) {
    return ExtractBlobs(Framing, Decoder, received);
}

} // namespace modBLob
