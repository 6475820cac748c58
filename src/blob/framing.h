// SPDX-License-Identifier: MIT
// Finds complete BLobs in the text that has come so far.
#pragma once

#include "text/text.h"

namespace modBLob {

struct FramingState {
    Text BlobBuffer; ///< all that was not part of a complete BLob; only ExtractBlobs writes it
};
inline FramingState Framing;

/// Decodes what the text completes and captures each result into the record on screen, under the status strip.
void ProcessReceivedText(const Text& received);

/// Takes new text and decodes each complete BLob in the buffer. True when at least one was decoded and none failed.
bool ExtractBlobs(const Text& received);

} // namespace modBLob
