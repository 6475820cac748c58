// SPDX-License-Identifier: MIT
// The literal framing and decoding of BLobs, step by step, with a copy of everything and a scan from the first line
// after each BLob. It is slow. Only tests and fuzz targets use it, to compare the product with it.
#pragma once

#include "src/blob/decoding.h"

namespace reference {

/// Each slot has its own copy of everything.
struct LiteralDecoder : modBLob::DecoderState {
    std::vector<Text> SlotTypes, SlotVars, SlotValues;
};

/// The state of the link to one instrument.
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
