// SPDX-License-Identifier: MIT
#include "src/blob/verdicts.h"

#include "src/view/platform/platform.h"

namespace modBLob {

using platform::Device;
using platform::Fate;
using platform::Reading;

namespace {

void Judge(Fate fate, const Reading& reading, const Text& expected = {}) {
    Device().readingLog.ReadingJudged({.Fate = fate, .Reading = reading, .Expected = expected});
}

} // namespace

void JudgeLostBlobs(const FramingState& framing) {
    for (const LostBlob& lost : framing.Lost) {
        const Text expected = lost.Why == Fate::Origin ? lost.Connected : Text();
        VisitResults(*lost.Blob, [&](const Reading& reading) { Judge(lost.Why, reading, expected); });
    }
}

std::size_t NextSlot(const DecoderState& decoder) {
    return decoder.SlotCount == 0 ? 0 : static_cast<std::size_t>(decoder.SlotCount - 1);
}

// The slots from the first one of a BLob on need none before them.
void JudgeWaiting(const DecoderState& decoder, std::size_t firstSlot) {
    if (firstSlot >= NextSlot(decoder))
        return;
    DecoderState delivered; // the results stay in the slots of `decoder`
    delivered.Slots.assign(decoder.Slots.begin() + static_cast<std::ptrdiff_t>(firstSlot), decoder.Slots.end());
    delivered.SlotCount = static_cast<std::int32_t>(delivered.Slots.size());
    while (NextResult(delivered))
        Judge(Fate::Waiting, CurrentResult(delivered));
}

void JudgeEmptied(const FramingState& framing, const DecoderState& decoder, const Text& text) {
    if (text.empty())
        return;
    Device().readingLog.TextEmptied(text);
    // The text may complete a BLob that began in the text before.
    const Text begun = framing.OpenBlobs.empty() ? Text() : framing.BlobBuffer.substr(framing.OpenBlobs.back());
    FramingState lines;
    DecoderState results;
    results.ConnectedID = decoder.ConnectedID;
    ExtractBlobs(lines, results, begun + text);
    for (const LostBlob& lost : lines.Lost)
        VisitResults(*lost.Blob, [](const Reading& reading) { Judge(Fate::Emptied, reading); });
    while (NextResult(results))
        Judge(Fate::Emptied, CurrentResult(results));
}

} // namespace modBLob
