// SPDX-License-Identifier: MIT
// The text of one complete BLob becomes result slots, and the slots become the current result one at a time. The tags
// and what they carry are told in docs/formats.md.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modBLob {

/// One result that waits to be delivered. What a line of its BLob has said for the result in front of it as well is not
/// kept a second time: a BLob of N variables and N unit lines would take N times N of them.
struct ResultSlot {
    bool Filled = false;
    bool SameTypes = false; ///< as the slot in front
    bool SameValue = false;
    Text Types;                 ///< joined by `|`
    std::size_t HeadOfVars = 0; ///< so many characters of the variables stand at the head of those of the slot in front
    std::size_t TailOfVars = 0; ///< and so many at their end
    Text Vars;                  ///< what stands between the two
    Text Value;
    Text Unit;
};

/// What decoding keeps. Lists are 1-based for the reader: entry n stands at n less 1. All of it is written by the
/// routines below alone.
struct DecoderState {
    Text ConnectedID;               ///< identity of the instrument, from the last BLob with a connect tag
    bool ConnectSeen = false;       ///< the last decoded BLob had a connect tag
    std::int16_t BlobErrorCode = 0; ///< why a BLob was refused: 1 origin mismatch, 2 no connection
    Text BlobErrorText;             ///< the message belonging to the code
    std::vector<ResultSlot> Slots;  ///< of the results
    std::int32_t SlotCount = 0;     ///< number of slots, the free one at the end included
    std::int32_t SlotCursor = 0;    ///< slot last delivered
    Text Variables;                 ///< of the last BLob that was accepted: those that its next result would have
    Text VarsDelivered;             ///< of the slot last delivered, joined by `|`
    Text ValueDelivered;            ///< of the same, with what stands behind a bar in it
    std::vector<Text> ResultTypes;  ///< the current result: the names by which it may be known
    std::vector<Text> ResultVars;   ///< its variables, each a name, `=` and a value; the first is ORIGIN
    Text ResultValue;               ///< its value
    Text ResultUnit;                ///< its unit
};
inline DecoderState Decoder; ///< the application's

/// Takes one BLob, lines ended by a carriage return, the end line's included. False when it is refused: no proper start
/// or end tag, or the origin is not the connected instrument.
bool DecodeBlob(DecoderState& decoder, TextView blob);

/// Makes the next filled slot the current result. False when there is none left, which empties the slots.
bool NextResult(DecoderState& decoder);

/// Whether results wait in the slots: where one record of a burst was refused, those of the others do.
bool ResultsWait(const DecoderState& decoder);

/// The slots as texts: of each its number, `|`, and its types, its variables, or value and unit, joined by `|`; empty
/// for a free slot.
struct SlotTexts {
    std::vector<Text> Types, Vars, Values;
};
SlotTexts TextsOfSlots(const DecoderState& decoder);

/// Makes sure that a free slot stands behind the filled ones.
void AddResultSlot(DecoderState& decoder);

void SetBlobError(DecoderState& decoder, std::int16_t code, const Text& text);

/// Puts a variable (name, `=`, value) into a list joined by `|`, by name or at its end. The name is used as a pattern
/// and looked for anywhere in the list.
void SetDescriptiveVar(Text& list, TextView variable);

/// What stands between the first and the last double quote of a line; empty without quotes.
Text QuotedValue(TextView line);

// The same of the application's own decoder.
inline bool DecodeBlob(TextView blob) {
    return DecodeBlob(Decoder, blob);
}
inline bool NextResult() {
    return NextResult(Decoder);
}
inline void AddResultSlot() {
    AddResultSlot(Decoder);
}
inline void SetBlobError(std::int16_t code, const Text& text) {
    SetBlobError(Decoder, code, text);
}

} // namespace modBLob
