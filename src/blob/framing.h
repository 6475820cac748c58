// SPDX-License-Identifier: MIT
// Finds complete BLobs in the text received so far.
#pragma once

#include "src/blob/decoding.h"
#include "src/text/text.h"

#include <vector>

namespace modBLob {

/// The buffer, and what the last call found in it, so that the next call continues there: noise that is never removed
/// is searched only once. Only ExtractBlobs writes it. Indexes count from 0.
struct FramingState {
    Text BlobBuffer;                         ///< the text that was not part of a complete BLob
    std::size_t OpenLine = 0;                ///< start of the line that has no end yet; all before it has been handled
    std::vector<std::size_t> OpenBlobs;      ///< starts of the start lines that no end line has closed, in order
    std::size_t LoneFeed = TextView::npos;   ///< the first line feed without a carriage return before it
    std::size_t PairedFeed = TextView::npos; ///< the first line feed with one: its pair waits for the next call
    std::vector<LostBlob> Lost;              ///< of the last call, in order
};
inline FramingState Framing; ///< the application's

/// Appends new text and decodes each complete BLob in the buffer. Returns true if at least one was decoded and none was
/// refused.
bool ExtractBlobs(FramingState& framing, DecoderState& decoder, const Text& received);

/// The same for the application's own buffer and decoder.
inline bool ExtractBlobs(const Text& received) {
    return ExtractBlobs(Framing, Decoder, received);
}

} // namespace modBLob
