// SPDX-License-Identifier: MIT
#include "src/blob/verdicts.h"

#include "src/blob/tags.h"
#include "src/view/platform/platform.h"

#include <algorithm>
#include <utility>

namespace modBLob {

using platform::Device;
using platform::Fate;
using platform::Reading;

namespace {

void Judge(Fate fate, const Reading& reading, const Text& expected = {}) {
    Device().readingLog.ReadingJudged({.Fate = fate, .Reading = reading, .Expected = expected});
}

/// Reports each result of a text as emptied, and keeps what it has of a BLob without an end.
void JudgeDropped(const DecoderState& decoder, const Text& text) {
    FramingState lines;
    DecoderState results;
    results.ConnectedID = decoder.ConnectedID;
    ExtractBlobs(lines, results, text);
    for (const LostBlob& lost : lines.Lost)
        VisitResults(lost, [](const Reading& reading) { Judge(Fate::Emptied, reading); });
    while (NextResult(results))
        Judge(Fate::Emptied, CurrentResult(results));
    CutBlob = lines.OpenBlobs.empty() ? Text() : lines.BlobBuffer.substr(lines.OpenBlobs.back());
}

} // namespace

void JudgeLostBlobs(const FramingState& framing) {
    for (const LostBlob& lost : framing.Lost) {
        const Text expected = lost.Why == Fate::Origin ? lost.Connected : Text();
        VisitResults(lost, [&](const Reading& reading) { Judge(lost.Why, reading, expected); });
    }
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
    JudgeDropped(decoder, CutBlob + begun + text);
}

void JudgeCutBlob(const FramingState& framing, const DecoderState& decoder, const Text& received) {
    if (!framing.OpenBlobs.empty())
        return; // the form finds a BLob there, which has its own verdict
    std::size_t next = 0;
    for (std::size_t at = 0; !CutBlob.empty() && at < received.size(); at = next) {
        const std::size_t end = std::min(received.find(u"\r\n", at), received.size());
        next = end + 2;
        const Text line = received.substr(at, end - at) + LineEnd;
        if (BeginsWithTag(line, StartTag))
            CutBlob.clear();
        else if (BeginsWithTag(line, EndTag))
            JudgeDropped(decoder, std::exchange(CutBlob, {}) + line);
        else
            CutBlob += line;
    }
}

} // namespace modBLob
