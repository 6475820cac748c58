// SPDX-License-Identifier: MIT
// Decodes the text of one complete BLob into result slots, and makes the slots the current result one at a time.
// docs/formats.md describes the tags and what they carry.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/reading_log.h"

#include <functional>
#include <memory>
#include <vector>

namespace modBLob {

/// One result that waits to be delivered. What a BLob sets once for several results is kept once: otherwise a BLob of N
/// variables and N unit lines would need memory for N times N variables.
struct ResultSlot {
    bool Filled = false;
    bool SameTypes = false; ///< as in the slot before
    bool SameValue = false;
    Text Types;                 ///< joined by `|`
    std::size_t HeadOfVars = 0; ///< so many characters of the variables are the first ones of the slot before
    std::size_t TailOfVars = 0; ///< and so many its last ones
    Text Vars;                  ///< what is between the two
    Text Value;
    Text Unit;
};

/// Why a BLob was refused.
enum class Refusal {
    None,
    Shape,  ///< it has no exact end tag
    Origin, ///< it names an origin that is not the connected instrument
};

/// Why the origin of a BLob was refused.
enum class BlobError : std::int16_t {
    None = 0,
    OriginMismatch = 1, ///< its origin is not the connected instrument
    NoConnection = 2,   ///< it names an origin, and no instrument is connected
};

/// The state of decoding. Entry n of a list, counted from 1, has index n-1. Only the routines below write it.
struct DecoderState {
    Text ConnectedID;                          ///< identity of the instrument, from the last BLob with a connect tag
    bool ConnectSeen = false;                  ///< the last decoded BLob had a connect tag
    BlobError BlobErrorCode = BlobError::None; ///< of the last BLob with an origin that was refused
    Text BlobErrorText;                        ///< the message belonging to the code
    std::vector<ResultSlot> Slots;             ///< of the results
    std::int32_t SlotCount = 0;                ///< number of slots, including the free one at the end
    std::int32_t SlotCursor = 0;               ///< the slot last delivered
    Text Variables;                ///< of the last BLob that was accepted: those that its next result would have
    Text VarsDelivered;            ///< of the slot last delivered, joined by `|`
    Text ValueDelivered;           ///< of the same slot, including what follows a bar in it
    std::vector<Text> ResultTypes; ///< of the current result: the names by which it may be known
    std::vector<Text> ResultVars;  ///< its variables, each a name, `=` and a value; the first is ORIGIN
    Text ResultValue;              ///< its value
    Text ResultUnit;               ///< its unit
};
inline DecoderState Decoder; ///< the application's

/// Decodes one BLob. Its lines end with a carriage return, the last one too. Returns why it is refused, or None.
Refusal ReadBlob(DecoderState& decoder, TextView blob);

/// The same. Returns false if the BLob is refused.
inline bool DecodeBlob(DecoderState& decoder, TextView blob) {
    return ReadBlob(decoder, blob) == Refusal::None;
}

/// Returns the index of the slot that the next result is put into.
std::size_t NextSlot(const DecoderState& decoder);

/// Makes the next filled slot the current result. Returns false if there is none left, and empties the slots then.
bool NextResult(DecoderState& decoder);

/// A BLob none of whose results is delivered.
struct LostBlob {
    platform::Fate Why = platform::Fate::Shape; ///< Shape, Origin or Connect
    std::shared_ptr<const Text> Lines;          ///< each ends with a carriage return
    Text Connected;                             ///< the instrument that was connected then
};

/// Calls a routine with each result of a BLob, as if it were delivered.
void VisitResults(const LostBlob& blob, const std::function<void(const platform::Reading&)>& visit);

/// Returns the current result.
platform::Reading CurrentResult(const DecoderState& decoder);

/// True if results wait in the slots. If one BLob of a burst was refused, the results of the others wait there.
bool ResultsWait(const DecoderState& decoder);

/// The slots as texts. Each text is the number of the slot, `|`, and its types, its variables, or its value and unit,
/// joined by `|`; the text of a free slot is empty.
struct SlotTexts {
    std::vector<Text> Types, Vars, Values;
};
SlotTexts TextsOfSlots(const DecoderState& decoder);

/// Makes sure that a free slot follows the filled ones.
void AddResultSlot(DecoderState& decoder);

void SetBlobError(DecoderState& decoder, BlobError code, const Text& text);

/// Puts a variable (name, `=`, value) into a list joined by `|`: in place of the one of that name, or at the end. The
/// name is used as a pattern and is looked for anywhere in the list.
void SetDescriptiveVar(Text& list, TextView variable);

/// Returns the text between the first and the last double quote of a line; empty without two quotes.
Text QuotedValue(TextView line);

// The same for the application's own decoder.
inline bool DecodeBlob(TextView blob) {
    return DecodeBlob(Decoder, blob);
}
inline bool NextResult() {
    return NextResult(Decoder);
}
inline void AddResultSlot() {
    AddResultSlot(Decoder);
}
inline void SetBlobError(BlobError code, const Text& text) {
    SetBlobError(Decoder, code, text);
}

} // namespace modBLob
