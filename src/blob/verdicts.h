// SPDX-License-Identifier: MIT
// Reports what becomes of the results that are not delivered.
#pragma once

#include "src/blob/decoding.h"
#include "src/blob/framing.h"

namespace modBLob {

/// Reports the results of the BLobs that the last call of ExtractBlobs has refused, and of those that connect.
void JudgeLostBlobs(const FramingState& framing);

/// Reports the results that wait in the slots from this one on.
void JudgeWaiting(const DecoderState& decoder, std::size_t firstSlot);

/// The lines of a BLob that was cut: its start was dropped with the text that arrived during a question, and its end
/// has not come yet. Only JudgeEmptied and JudgeCutBlob write it.
inline Text CutBlob;

/// Reports a text that is dropped without being decoded, and each result in it.
void JudgeEmptied(const FramingState& framing, const DecoderState& decoder, const Text& text);

/// Adds the lines that were received next to CutBlob, and reports its results once its end line has come. To the form
/// these lines are noise. REQUIRES: `received` is complete lines, each ended by CR LF.
void JudgeCutBlob(const DecoderState& decoder, const Text& received);

} // namespace modBLob
