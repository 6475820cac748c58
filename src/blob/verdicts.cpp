// SPDX-License-Identifier: MIT
#include "src/blob/verdicts.h"

#include "src/view/platform/platform.h"

namespace modBLob {

using platform::Device;
using platform::Fate;
using platform::Reading;
using platform::Verdict;

namespace {

void Judge(Fate fate, const Reading& reading, const Text& expected = {}) {
    Device().readingLog.ReadingJudged({.Fate = fate, .Reading = reading, .Expected = expected});
}

} // namespace

std::int32_t CountWaiting(const DecoderState& decoder) {
    std::int32_t count = 0;
    for (auto slot = static_cast<std::size_t>(decoder.SlotCursor); slot < decoder.Slots.size(); ++slot)
        count += decoder.Slots[slot].Filled ? 1 : 0;
    return decoder.SlotCount == 0 ? 0 : count;
}

void JudgeLostBlobs(const FramingState& framing, const DecoderState& decoder) {
    for (const LostBlob& lost : framing.Lost) {
        for (const Reading& reading : ResultsOf(lost.Blob))
            Judge(lost.Why, reading, lost.Why == Fate::Origin ? decoder.ConnectedID : Text());
    }
}

void JudgeWaiting(const DecoderState& decoder, std::int32_t reported) {
    DecoderState delivered = decoder; // the results stay in the slots of `decoder`
    for (std::int32_t count = 1; NextResult(delivered); ++count) {
        if (count > reported)
            Judge(Fate::Waiting, CurrentResult(delivered));
    }
}

void JudgeEmptied(const FramingState& framing, const DecoderState& decoder, const Text& text) {
    if (text.empty())
        return;
    Device().readingLog.TextEmptied(text);
    // The text may complete a BLob that began in the text before.
    const Text begun = framing.OpenBlobs.empty() ? Text() : framing.BlobBuffer.substr(framing.OpenBlobs.front());
    FramingState lines;
    DecoderState results;
    results.ConnectedID = decoder.ConnectedID;
    ExtractBlobs(lines, results, begun + text);
    for (const LostBlob& lost : lines.Lost) {
        for (const Reading& reading : ResultsOf(lost.Blob))
            Judge(Fate::Emptied, reading);
    }
    while (NextResult(results))
        Judge(Fate::Emptied, CurrentResult(results));
}

} // namespace modBLob
