// SPDX-License-Identifier: MIT
#include "src/text/patterns.h"

#include "src/text/pattern_reading.h"

#include <algorithm>

namespace modStringTools {

namespace {

/// A pattern without its anchors, and the text to search.
struct Search {
    TextView Searched;
    TextView Body;
    bool StartAnchored = false;
    bool EndAnchored = false;
    bool CaseSensitive = false;
    bool Plain = false; ///< the pattern has no special character: plain text
};

struct Found {
    std::int32_t First = 0;
    std::int32_t Last = 0; ///< 0 for no match
};

bool StandsAt(const Search& search, std::size_t at) {
    const TextView there = search.Searched.substr(at, search.Body.size());
    return search.CaseSensitive ? there == search.Body : SameIgnoringCase(there, search.Body);
}

/// Returns the next offset from `at` on (both count from 0) whose character is the first one of the plain body.
std::size_t NextCandidate(const Search& search, std::size_t at) {
    const char16_t wanted = search.Body.front();
    if (search.CaseSensitive || !HasCases(wanted))
        return search.Searched.find(wanted, at);
    const char16_t lower = LowerChar(wanted);
    const auto place = std::find_if(search.Searched.begin() + static_cast<std::ptrdiff_t>(at), search.Searched.end(),
                                    [lower](char16_t each) { return LowerChar(each) == lower; });
    return place == search.Searched.end() ? TextView::npos : static_cast<std::size_t>(place - search.Searched.begin());
}

Found FoundAt(const Search& search, std::size_t at) {
    return {static_cast<std::int32_t>(at + 1), static_cast<std::int32_t>(at + search.Body.size())};
}

Found FindPlain(const Search& search, std::int32_t from) {
    auto at = static_cast<std::size_t>(from - 1);
    if (search.Searched.size() - at < search.Body.size())
        return {};
    const std::size_t lastPlace = search.Searched.size() - search.Body.size();
    if (search.EndAnchored) {
        if (search.StartAnchored && at != lastPlace)
            return {};
        at = lastPlace;
    }
    if (search.StartAnchored || search.EndAnchored)
        return StandsAt(search, at) ? FoundAt(search, at) : Found{};
    for (at = NextCandidate(search, at); at <= lastPlace; at = NextCandidate(search, at + 1))
        if (StandsAt(search, at))
            return FoundAt(search, at);
    return {};
}

Search PrepareSearch(TextView text, TextView pattern, bool caseSensitive) {
    Search search;
    search.Searched = text;
    search.CaseSensitive = caseSensitive;
    search.StartAnchored = pattern.front() == u'^';
    if (search.StartAnchored)
        pattern.remove_prefix(1);
    search.EndAnchored = !pattern.empty() && pattern.back() == u'$';
    if (search.EndAnchored)
        pattern.remove_suffix(1);
    search.Body = pattern;
    search.Plain = !HasSpecial(pattern);
    return search;
}

void Read(PatternReading& reading, const Search& search, std::int32_t from) {
    ReadPattern(reading, search.Searched, from, search.Body, search.StartAnchored, search.EndAnchored);
}

/// Returns the next match from position `from`, which is inside the text. With an anchor at the start the match must
/// begin at `from`.
Found FindRead(const PatternReading& reading, const Search& search, std::int32_t from) {
    Found found;
    found.First = FirstMatch(reading, from, found.Last);
    return search.StartAnchored && found.First != from ? Found{} : found;
}

Found FindOnce(const Search& search, std::int32_t from) {
    PatternReading reading(search.CaseSensitive);
    Read(reading, search, from);
    return FindRead(reading, search, from);
}

std::int32_t Length(TextView text) {
    return static_cast<std::int32_t>(text.size());
}

// The next match is searched for after the replacement, in the rest of the old text. What is before does not matter,
// except to an anchor at the start, which holds while the result so far is empty: "^a" replaced by an empty text
// removes all of "aaa".
template <typename Find>
void Replace(Text& text, const Search& search, TextView replacement, bool global, Find find) {
    Text replaced;
    std::int32_t taken = 0; // characters of the old text handled so far
    do {
        const Found found = find(taken + 1);
        if (found.Last == 0)
            break;
        replaced.append(text, static_cast<std::size_t>(taken), static_cast<std::size_t>(found.First - 1 - taken));
        replaced += replacement;
        taken = found.Last;
    } while (global && taken < Length(text) && !(search.StartAnchored && !replaced.empty()));
    if (taken == 0)
        return;
    replaced.append(text, static_cast<std::size_t>(taken), Text::npos);
    text = std::move(replaced);
}

} // namespace

bool HasSpecial(TextView pattern) {
    return std::any_of(pattern.begin(), pattern.end(), [](char16_t each) {
        return each == u'.' || each == u'+' || each == u'\\' || each == u'^' || each == u'$';
    });
}

bool MatchPattern(TextView text, std::int32_t start, TextView pattern, std::int32_t& first, std::int32_t& last,
                  bool caseSensitive) {
    start = std::max(start, 1);
    if (start > Length(text) || pattern.empty())
        return false;
    Found found;
    const Search search = PrepareSearch(text, pattern, caseSensitive);
    if (!search.Body.empty() && (!search.StartAnchored || start == 1))
        found = search.Plain ? FindPlain(search, start) : FindOnce(search, start);
    first = found.First;
    last = found.Last;
    return found.Last > 0;
}

bool HasPattern(TextView text, TextView pattern, bool, bool caseSensitive) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    return MatchPattern(text, 0, pattern, first, last, caseSensitive);
}

std::int32_t FindPattern(const std::int32_t& start, TextView text, TextView pattern, std::int32_t& first,
                         std::int32_t& last, bool caseSensitive) {
    MatchPattern(text, start, pattern, first, last, caseSensitive);
    return first;
}

void ReplacePattern(Text& text, TextView pattern, TextView replacement, bool global, bool caseSensitive) {
    if (text.empty() || pattern.empty())
        return;
    const Search search = PrepareSearch(text, pattern, caseSensitive);
    if (search.Body.empty())
        return;
    if (search.Plain) {
        Replace(text, search, replacement, global, [&](std::int32_t from) { return FindPlain(search, from); });
        return;
    }
    PatternReading reading(caseSensitive);
    Read(reading, search, 1);
    Replace(text, search, replacement, global, [&](std::int32_t from) { return FindRead(reading, search, from); });
}

} // namespace modStringTools
