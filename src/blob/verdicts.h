// SPDX-License-Identifier: MIT
// Reports what becomes of the results that are not delivered.
#pragma once

#include "src/blob/decoding.h"
#include "src/blob/framing.h"

namespace modBLob {

/// Returns the number of results that are in the slots and have not been delivered.
std::int32_t CountWaiting(const DecoderState& decoder);

/// Reports the results of the BLobs that the last call of ExtractBlobs has refused, and of those that connect.
void JudgeLostBlobs(const FramingState& framing, const DecoderState& decoder);

/// Reports the results that wait in the slots, except for the first `reported` ones.
void JudgeWaiting(const DecoderState& decoder, std::int32_t reported);

/// Reports a text that is dropped without being decoded, and each result in it.
void JudgeEmptied(const FramingState& framing, const DecoderState& decoder, const Text& text);

} // namespace modBLob
