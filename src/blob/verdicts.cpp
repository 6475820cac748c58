// SPDX-License-Identifier: MIT
#include "src/blob/verdicts.h"

#include "src/blob/tags.h"
#include "src/view/platform/platform.h"

#include <algorithm>
#include <functional>
#include <memory>

namespace modBLob {

using platform::Device;
using platform::Fate;
using platform::Reading;

namespace {

void Judge(Fate fate, const Reading& reading, const Text& expected = {}) {
    Device().readingLog.ReadingJudged({.Fate = fate, .Reading = reading, .Expected = expected});
}

/// Returns the text of the innermost BLob without an end; empty for none.
Text OpenBlob(const FramingState& framing) {
    return framing.OpenBlobs.empty() ? Text() : framing.BlobBuffer.substr(framing.OpenBlobs.back());
}

/// Reports each result of a text as emptied, but for those of BLobs without an end. Returns what is left of the text.
FramingState JudgeDropped(const DecoderState& decoder, const Text& text) {
    FramingState lines;
    DecoderState results;
    results.ConnectedID = decoder.ConnectedID;
    ExtractBlobs(lines, results, text);
    for (const LostBlob& lost : lines.Lost)
        VisitResults(lost, [](const Reading& reading) { Judge(Fate::Emptied, reading); });
    while (NextResult(results))
        Judge(Fate::Emptied, CurrentResult(results));
    return lines;
}

/// Reports each result that a text has after a BLob that had begun before it, and that goes on after it: the form finds
/// the end of that BLob, and delivers the other results.
void JudgeMiddle(const DecoderState& decoder, const FramingState& dropped, const Text& begun) {
    if (dropped.OpenBlobs.empty())
        return;
    const auto visit = [&decoder](const Text& lines, const std::function<void(Reading)>& each) {
        VisitResults({Fate::Emptied, std::make_shared<const Text>(lines), decoder.ConnectedID}, each);
    };
    const Text rest = dropped.BlobBuffer.substr(dropped.OpenBlobs.front());
    std::size_t delivered = 0;
    if (rest.starts_with(begun)) // the text did not end the BLob
        visit(begun, [&delivered](const Reading&) { ++delivered; });
    visit(rest, [&delivered](Reading reading) {
        reading.Blob = nullptr; // it has no end
        if (delivered > 0)
            --delivered;
        else
            Judge(Fate::Emptied, reading);
    });
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
    const Text begun = OpenBlob(framing);
    const FramingState dropped = JudgeDropped(decoder, begun + text);
    CutBlob = begun.empty() ? OpenBlob(dropped) : Text();
    if (!begun.empty())
        JudgeMiddle(decoder, dropped, begun);
}

void JudgeCutBlob(const DecoderState& decoder, const Text& received) {
    std::size_t next = 0;
    for (std::size_t at = 0; !CutBlob.empty() && at < received.size(); at = next) {
        const std::size_t end = std::min(received.find(u"\r\n", at), received.size());
        next = end + 2;
        const Text line = received.substr(at, end - at) + LineEnd;
        if (BeginsWithTag(line, StartTag))
            CutBlob.clear();
        else if (BeginsWithTag(line, EndTag))
            CutBlob = OpenBlob(JudgeDropped(decoder, CutBlob + line));
        else
            CutBlob += line;
    }
}

} // namespace modBLob
