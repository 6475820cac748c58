// SPDX-License-Identifier: MIT
// Reports what becomes of the results that are not delivered.
#pragma once

#include "src/blob/decoding.h"
#include "src/blob/framing.h"

namespace modBLob {

/// Reports the results of the BLobs that the last call of ExtractBlobs has refused, and of those that connect.
void JudgeLostBlobs(const FramingState& framing);

/// Returns the index of the slot that the next result is put into.
std::size_t NextSlot(const DecoderState& decoder);

/// Reports the results that wait in the slots from this one on.
void JudgeWaiting(const DecoderState& decoder, std::size_t firstSlot);

/// Reports a text that is dropped without being decoded, and each result in it.
void JudgeEmptied(const FramingState& framing, const DecoderState& decoder, const Text& text);

} // namespace modBLob
