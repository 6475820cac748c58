// SPDX-License-Identifier: MIT
// The tags of a BLob and how they are looked for: in any case, and with anything behind what stands here.
#pragma once

#include "src/text/text.h"

#include <cstring>

namespace modBLob {

inline constexpr char16_t LineEnd = u'\r'; ///< what ends a line of a BLob
inline constexpr char16_t Bracket = u'[';  ///< what each tag begins with
inline constexpr TextView StartTag = u"[BLob";
inline constexpr TextView EndTag = u"[/BLob";
inline constexpr TextView ExactEndLine = u"[/BLob]\r"; ///< without it a BLob is refused
inline constexpr TextView ConnectTag = u"[CONNECT";
inline constexpr TextView OriginTag = u"[ORIGIN";
inline constexpr TextView DescriptiveVarTag = u"[DESCRIPTIVE_VAR";
inline constexpr TextView ResultTypeTag = u"[RESULT_TYPE";
inline constexpr TextView ResultValueTag = u"[RESULT_VALUE";
inline constexpr TextView ResultUnitTag = u"[RESULT_UNIT";

/// Whether a line begins with a tag.
inline bool BeginsWithTag(TextView line, TextView tag) {
    // The bracket tells nearly every line of noise from a tag, and two letters nearly every other tag. In these two
    // places no tag has an I or a K, the only letters whose case is not just this bit: they have further ones beyond
    // ASCII.
    constexpr std::uint32_t CaseBit = 0x20;
    const auto mayBeSame = [line, tag](std::size_t at) {
        return ((std::uint32_t{line[at]} ^ std::uint32_t{tag[at]}) & ~CaseBit) == 0;
    };
    if (line.size() < tag.size() || line.front() != Bracket || !mayBeSame(1) || !mayBeSame(tag.size() - 1))
        return false;
    return std::memcmp(line.data(), tag.data(), tag.size() * sizeof(char16_t)) == 0 ||
           modStringTools::SameIgnoringCase(line.substr(0, tag.size()), tag);
}

/// Whether a tag stands anywhere in a text.
bool HasTag(TextView text, TextView tag);

/// The tags that count wherever they stand in a BLob: where the last one of each is, TextView::npos for none.
struct LastTags {
    std::size_t Connect = TextView::npos;
    std::size_t Origin = TextView::npos;
};
LastTags FindLastTags(TextView text);

/// What stands between the tag at `place` and the next closing bracket, or the text's end where none follows. A tag at
/// the very beginning of the text is passed over.
TextView InsideTag(TextView text, std::size_t place, TextView tag);

} // namespace modBLob
