// SPDX-License-Identifier: MIT
#include "bench/blob_readers.h"

#include <array>
#include <cstring>
#include <re2/re2.h>

namespace bench {

namespace {

/// What the lines have said so far. The tags of a record come in a fixed order.
struct Collected {
    Reading Current;
    std::vector<Reading> Readings;
};

/// Returns the next line without its line end, and removes it from the stream.
std::string_view TakeLine(std::string_view& stream) {
    const void* const found = std::memchr(stream.data(), '\n', stream.size());
    const std::size_t end =
        found == nullptr ? stream.size() : static_cast<std::size_t>(static_cast<const char*>(found) - stream.data());
    std::string_view line = stream.substr(0, end);
    stream.remove_prefix(found == nullptr ? end : end + 1);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

/// Returns the text between the line's first quote and the `"]` at its end.
std::string_view Quoted(std::string_view line) {
    const void* const quote = std::memchr(line.data(), '"', line.size());
    if (quote == nullptr)
        return {};
    line.remove_prefix(static_cast<std::size_t>(static_cast<const char*>(quote) - line.data()) + 1);
    return line.substr(0, line.size() < 2 ? 0 : line.size() - 2);
}

void Take(Collected& collected, std::string_view keyword, std::string_view value) {
    Reading& current = collected.Current;
    if (keyword == "RESULT_VALUE") {
        current.Value = value;
    } else if (keyword == "RESULT_TYPE") {
        current.Types = value;
    } else if (keyword == "RESULT_UNIT") {
        current.Unit = value;
        collected.Readings.push_back(current);
    } else if (keyword == "DESCRIPTIVE_VAR") {
        current.Variable = value;
    } else if (keyword == "ORIGIN") {
        current.Origin = value;
    } else if (keyword == "BLob") {
        current = {};
    }
}

std::string_view View(const re2::StringPiece& piece) {
    return {piece.data(), piece.size()};
}

RE2::Options AnyCase() {
    RE2::Options options;
    options.set_case_sensitive(false);
    options.set_encoding(RE2::Options::EncodingLatin1);
    return options;
}

/// Returns true if the pattern matches; `value` is then the piece of the line that its group has matched.
bool Fits(const RE2& pattern, std::string_view line, std::string_view& value) {
    std::array<re2::StringPiece, 2> pieces;
    const re2::StringPiece text(line.data(), line.size());
    const int groups = pattern.NumberOfCapturingGroups() + 1;
    if (!pattern.Match(text, 0, line.size(), RE2::ANCHOR_START, pieces.data(), groups))
        return false;
    value = View(pieces[1]);
    return true;
}

} // namespace

Found FoundIn(const std::vector<Reading>& readings) {
    Found found;
    for (const Reading& reading : readings) {
        ++found.Values;
        found.Characters +=
            static_cast<std::int64_t>(reading.Types.size() + reading.Value.size() + reading.Unit.size());
    }
    return found;
}

std::vector<Reading> SplitByHand(std::string_view stream) {
    Collected collected;
    while (!stream.empty()) {
        const std::string_view line = TakeLine(stream);
        if (line.empty() || line.front() != '[')
            continue;
        const void* const blank = std::memchr(line.data(), ' ', line.size());
        const std::size_t end = blank == nullptr
                                    ? line.size() - 1 // the closing bracket
                                    : static_cast<std::size_t>(static_cast<const char*>(blank) - line.data());
        Take(collected, line.substr(1, end - 1), Quoted(line));
    }
    return collected.Readings;
}

std::vector<Reading> MatchInTurn(std::string_view stream) {
    struct Tag {
        RE2 Pattern;
        std::string_view Keyword;
    };
    static const std::array<Tag, 7> tags = {{{RE2("\\[BLob", AnyCase()), "BLob"},
                                             {RE2("\\[ORIGIN \"(.*)\"", AnyCase()), "ORIGIN"},
                                             {RE2("\\[DESCRIPTIVE_VAR \"(.*)\"", AnyCase()), "DESCRIPTIVE_VAR"},
                                             {RE2("\\[RESULT_TYPE \"(.*)\"", AnyCase()), "RESULT_TYPE"},
                                             {RE2("\\[RESULT_VALUE \"(.*)\"", AnyCase()), "RESULT_VALUE"},
                                             {RE2("\\[RESULT_UNIT \"(.*)\"", AnyCase()), "RESULT_UNIT"},
                                             {RE2("\\[/BLob\\]", AnyCase()), "/BLob"}}};
    Collected collected;
    while (!stream.empty()) {
        const std::string_view line = TakeLine(stream);
        for (const Tag& tag : tags) {
            std::string_view value;
            if (Fits(tag.Pattern, line, value)) {
                Take(collected, tag.Keyword, value);
                break;
            }
        }
    }
    return collected.Readings;
}

std::vector<Reading> MatchOnce(std::string_view stream) {
    static const RE2 pattern("\\[(/?[A-Za-z_]+)(?: \"([^\"]*)\")?\\]", AnyCase());
    Collected collected;
    while (!stream.empty()) {
        const std::string_view line = TakeLine(stream);
        std::array<re2::StringPiece, 3> pieces;
        const re2::StringPiece text(line.data(), line.size());
        if (pattern.Match(text, 0, line.size(), RE2::ANCHOR_START, pieces.data(), 3))
            Take(collected, View(pieces[1]), View(pieces[2]));
    }
    return collected.Readings;
}

} // namespace bench
