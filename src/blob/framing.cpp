// SPDX-License-Identifier: MIT
#include "blob/framing.h"

#include "blob/capture.h"
#include "blob/decoding.h"
#include "blob/tags.h"
#include "view/status_strip.h"

#include <algorithm>

namespace modBLob {

using modStringTools::FindChar;

namespace {

constexpr char16_t LineFeed = u'\n';

/// Whether the line feed at a place of a text stands behind a carriage return, be it the last one of what is in front.
bool IsPaired(TextView text, std::size_t feed, TextView inFront) {
    if (feed > 0)
        return text[feed - 1] == LineEnd;
    return !inFront.empty() && inFront.back() == LineEnd;
}

bool HasPair(TextView text, TextView inFront) {
    std::size_t feed = FindChar(text, LineFeed);
    while (feed != TextView::npos && !IsPaired(text, feed, inFront))
        feed = FindChar(text, LineFeed, feed + 1);
    return feed != TextView::npos;
}

/// Appends a text with one carriage return for each pair. False when a line feed was left standing.
bool AppendWithoutPairs(Text& buffer, TextView text) {
    std::size_t taken = 0;
    bool allTaken = true;
    for (std::size_t feed = FindChar(text, LineFeed); feed != TextView::npos;
         feed = FindChar(text, LineFeed, feed + 1)) {
        if (IsPaired(text, feed, buffer)) {
            buffer.append(text, taken, feed - taken);
            taken = feed + 1;
        } else {
            allTaken = false;
        }
    }
    buffer.append(text, taken);
    return allTaken;
}

/// Appends a text with a carriage return for each line feed.
void AppendWithoutFeeds(Text& buffer, TextView text) {
    std::size_t feed = FindChar(text, LineFeed);
    feed = feed == TextView::npos ? feed : feed + buffer.size();
    buffer += text;
    for (; feed != TextView::npos; feed = FindChar(buffer, LineFeed, feed + 1))
        buffer[feed] = LineEnd;
}

/// Lines are dealt with anew from the one on that `place` lies in, which is the buffer's end. The text in front of that
/// line has no BLob in it that is whole, so that the start lines there are just the open ones.
void GoBackTo(std::size_t place) {
    const std::size_t lineEnd = TextView(Framing.BlobBuffer).substr(0, place).rfind(LineEnd);
    Framing.OpenLine = lineEnd == TextView::npos ? 0 : lineEnd + 1;
    std::vector<std::size_t>& open = Framing.OpenBlobs;
    while (!open.empty() && open.back() >= Framing.OpenLine)
        open.pop_back();
}

void MakeRoom(Text& buffer, std::size_t added) {
    const std::size_t needed = buffer.size() + added;
    if (needed > buffer.capacity())
        buffer.reserve(std::max(needed, 2 * buffer.capacity()));
}

/// What a call has put at the buffer's end.
struct NewText {
    std::size_t Place = 0;  ///< where it begins, with the older text that its coming has changed
    bool FeedsLeft = false; ///< there are line feeds in it
};

/// Appends the new text and normalises the whole buffer's line ends: each pair of carriage return and line feed becomes
/// one carriage return; in a buffer without any such pair each line feed does. Odd, and required: one pair anywhere
/// leaves every lone line feed standing, and the pair that "\r\n\n" leaves behind waits for the next call. Of the older
/// text, only line feeds that were left so can change: what stands from the first such one on is appended once more.
NewText TakeIn(TextView received) {
    Text& buffer = Framing.BlobBuffer;
    const bool hasPair = Framing.PairedFeed != TextView::npos || HasPair(received, buffer);
    const std::size_t changed = hasPair ? Framing.PairedFeed : Framing.LoneFeed;
    Text again;
    if (changed != TextView::npos) {
        again = buffer.substr(changed).append(received);
        received = again;
        buffer.resize(changed);
        GoBackTo(changed);
    }
    MakeRoom(buffer, received.size());
    const std::size_t place = buffer.size();
    if (hasPair)
        return {place, !AppendWithoutPairs(buffer, received)};
    AppendWithoutFeeds(buffer, received);
    return {place, false};
}

/// One walk over the lines that are new. What is cut out of the buffer leaves a gap, and what stays behind it is moved
/// up when the next piece is cut out: a BLob that came whole is decoded where it stands, and no character is moved
/// twice.
struct Walk {
    Text& Buffer;
    std::size_t Unchanged; ///< so many characters at the buffer's head are what the last call has left
    std::size_t Kept;      ///< so many are in their places
    std::size_t Moving;    ///< where the stretch behind the gap begins, whose place is behind those
    bool Decoded = false;  ///< a BLob was accepted
    bool Failed = false;   ///< a BLob was refused
};

/// Moves the characters in front of `end`, a place behind the gap, to their places.
void MoveUp(Walk& walk, std::size_t end) {
    const std::size_t length = end - walk.Moving;
    if (walk.Kept != walk.Moving)
        Text::traits_type::move(walk.Buffer.data() + walk.Kept, walk.Buffer.data() + walk.Moving, length);
    walk.Kept += length;
    walk.Moving = end;
}

/// Decodes and cuts out the innermost open BLob, whose text ends in front of `end`.
void CloseBlob(Walk& walk, std::size_t end) {
    const std::size_t start = Framing.OpenBlobs.back();
    Framing.OpenBlobs.pop_back();
    const bool moved = start < walk.Kept; // a part of it: there was another BLob inside
    MoveUp(walk, moved ? end : walk.Moving + (start - walk.Kept));
    const TextView text = walk.Buffer;
    const bool accepted =
        DecodeBlob(moved ? text.substr(start, walk.Kept - start) : text.substr(walk.Moving, end - walk.Moving));
    (accepted ? walk.Decoded : walk.Failed) = true;
    walk.Kept = start;
    walk.Moving = end;
    walk.Unchanged = std::min(walk.Unchanged, start);
}

/// Deals with the line from `start` up to the line end at `end`.
void TakeLine(Walk& walk, std::size_t start, std::size_t end) {
    const TextView line = TextView(walk.Buffer).substr(start, end - start);
    if (BeginsWithTag(line, StartTag))
        Framing.OpenBlobs.push_back(walk.Kept + (start - walk.Moving));
    else if (BeginsWithTag(line, EndTag) && !Framing.OpenBlobs.empty())
        CloseBlob(walk, end + 1);
}

/// Notes the first line feed of each kind for the next call. In front of `place` none has changed, and no paired one
/// was left there.
void NoteLineFeeds(std::size_t place, bool feedsLeft) {
    const TextView buffer = Framing.BlobBuffer;
    Framing.PairedFeed = TextView::npos;
    if (Framing.LoneFeed >= place)
        Framing.LoneFeed = TextView::npos;
    if (!feedsLeft)
        return;
    for (std::size_t feed = FindChar(buffer, LineFeed, place); feed != TextView::npos;
         feed = FindChar(buffer, LineFeed, feed + 1)) {
        std::size_t& first = IsPaired(buffer, feed, {}) ? Framing.PairedFeed : Framing.LoneFeed;
        first = std::min(first, feed);
    }
}

} // namespace

void ProcessReceivedText(const Text& received) {
    modPDAUI::ShowStatus(u"Decoding Result");
    if (ExtractBlobs(received))
        while (NextResult())
            CaptureResult();
    modPDAUI::HideStatus();
}

// A BLob is a start line and the next end line, and the search begins at the buffer's first line again as soon as one
// has been taken out. What stood around it is one text then: a start line in front of it that had been given up for a
// later one opens a BLob again, and the end line behind it closes that one. So start lines behave like opening brackets
// and end lines like closing ones, and a single walk that remembers all open start lines, also from one call to the
// next, finds the same BLobs in the same order. In "[BLob] 1 [BLob] 2 [/BLob] 3 [/BLob]", a line each, the BLob around
// 2 comes first and the one that is left, with 1 and 3 in it, second. An end line without a start line opens and closes
// nothing: it stays, as noise.
bool ExtractBlobs(const Text& received) {
    const NewText added = TakeIn(received);
    Text& buffer = Framing.BlobBuffer;
    std::size_t lineStart = Framing.OpenLine;
    Walk walk{buffer, added.Place, lineStart, lineStart};
    for (std::size_t end = FindChar(buffer, LineEnd, added.Place); end != TextView::npos;
         end = FindChar(buffer, LineEnd, lineStart)) {
        TakeLine(walk, lineStart, end);
        lineStart = end + 1;
    }
    Framing.OpenLine = walk.Kept + (lineStart - walk.Moving);
    buffer.erase(walk.Kept, walk.Moving - walk.Kept);
    NoteLineFeeds(walk.Unchanged, added.FeedsLeft);
    return walk.Decoded && !walk.Failed;
}

} // namespace modBLob
