// SPDX-License-Identifier: MIT
// The tags of a BLob. They are found in any case, and whatever follows the characters given here.
#pragma once

#include "src/text/characters.h"
#include "src/text/text.h"

#include <cstring>

namespace modBLob {

inline constexpr char16_t LineEnd = modStringTools::CarriageReturn; ///< what ends a line of a BLob
inline constexpr char16_t Bracket = u'[';                           ///< the first character of each tag
inline constexpr TextView StartTag = u"[BLob";
inline constexpr TextView EndTag = u"[/BLob";
inline constexpr TextView ExactEndLine = u"[/BLob]\r"; ///< a BLob without it is refused
inline constexpr TextView ConnectTag = u"[CONNECT";
inline constexpr TextView OriginTag = u"[ORIGIN";
inline constexpr TextView DescriptiveVarTag = u"[DESCRIPTIVE_VAR";
inline constexpr TextView ResultTypeTag = u"[RESULT_TYPE";
inline constexpr TextView ResultValueTag = u"[RESULT_VALUE";
inline constexpr TextView ResultUnitTag = u"[RESULT_UNIT";

/// True if a line begins with a tag.
inline bool BeginsWithTag(TextView line, TextView tag) {
    // The bracket rules out nearly every line of noise, and two letters nearly every other tag. In these two positions
    // no tag has an I or a K, the only letters for which case is more than this bit: they also have case variants
    // outside of ASCII.
    constexpr std::uint32_t CaseBit = 0x20;
    const auto mayBeSame = [line, tag](std::size_t at) {
        return ((std::uint32_t{line[at]} ^ std::uint32_t{tag[at]}) & ~CaseBit) == 0;
    };
    if (line.size() < tag.size() || line.front() != Bracket || !mayBeSame(1) || !mayBeSame(tag.size() - 1))
        return false;
    return std::memcmp(line.data(), tag.data(), tag.size() * sizeof(char16_t)) == 0 ||
           modStringTools::SameIgnoringCase(line.substr(0, tag.size()), tag);
}

/// True if a text contains a tag.
bool HasTag(TextView text, TextView tag);

/// The tags that apply wherever they are in a BLob: the index of the last one of each, TextView::npos for none.
struct LastTags {
    std::size_t Connect = TextView::npos;
    std::size_t Origin = TextView::npos;
};
LastTags FindLastTags(TextView text);

/// Returns the text between the tag at index `place` and the next closing bracket, or the end of the text if none
/// follows. For a tag at index 0, the text returned begins with the tag itself.
TextView InsideTag(TextView text, std::size_t place, TextView tag);

} // namespace modBLob
