// SPDX-License-Identifier: MIT
#include "src/blob/tags.h"

namespace modBLob {

using modStringTools::FindChar;

bool HasTag(TextView text, TextView tag) {
    for (std::size_t at = FindChar(text, Bracket); at != TextView::npos; at = FindChar(text, Bracket, at + 1))
        if (BeginsWithTag(text.substr(at), tag))
            return true;
    return false;
}

LastTags FindLastTags(TextView text) {
    LastTags last;
    for (std::size_t at = FindChar(text, Bracket); at != TextView::npos; at = FindChar(text, Bracket, at + 1)) {
        const TextView rest = text.substr(at);
        if (BeginsWithTag(rest, ConnectTag))
            last.Connect = at;
        else if (BeginsWithTag(rest, OriginTag))
            last.Origin = at;
    }
    return last;
}

TextView InsideTag(TextView text, std::size_t place, TextView tag) {
    if (place > 0)
        text.remove_prefix(place + tag.size());
    return text.substr(0, FindChar(text, u']'));
}

} // namespace modBLob
