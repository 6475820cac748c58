// SPDX-License-Identifier: MIT
// The framing and decoding of BLobs step by step, as the system's documents tell them, with a copy of everything and a
// scan from the first line after each BLob. Slow, and used by the tests alone, which compare it with the product.
#pragma once

#include "src/blob/decoding.h"

namespace reference {

/// With each slot's own copy of everything.
struct LiteralDecoder : modBLob::DecoderState {
    std::vector<Text> SlotTypes, SlotVars, SlotValues;
};

/// One instrument link's worth of state, of its own.
struct BlobReference {
    Text BlobBuffer;
    LiteralDecoder Decoder;
};

bool ExtractBlobs(BlobReference& state, const Text& received);
bool DecodeBlob(BlobReference& state, Text blob);
bool NextResult(BlobReference& state);
void AddResultSlot(BlobReference& state);
void SetDescriptiveVar(Text& list, const Text& variable);
Text QuotedValue(const Text& text);
void SetBlobError(BlobReference& state, std::int16_t code, const Text& text);

} // namespace reference
