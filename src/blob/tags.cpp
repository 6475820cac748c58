// SPDX-License-Identifier: MIT
#include "blob/tags.h"

namespace modBLob {

bool BeginsWithTag(TextView line, TextView tag) {
    // The bracket alone tells nearly every line of noise from a tag.
    return line.size() >= tag.size() && line.front() == tag.front() &&
           modStringTools::SameIgnoringCase(line.substr(0, tag.size()), tag);
}

bool HasTag(TextView text, TextView tag) {
    for (std::size_t at = text.find(tag.front()); at != TextView::npos; at = text.find(tag.front(), at + 1))
        if (BeginsWithTag(text.substr(at), tag))
            return true;
    return false;
}

TextView InsideLastTag(TextView text, TextView tag) {
    for (std::size_t at = text.rfind(tag.front()); at != TextView::npos && at > 0;
         at = text.rfind(tag.front(), at - 1)) {
        if (BeginsWithTag(text.substr(at), tag)) {
            text.remove_prefix(at + tag.size());
            break;
        }
    }
    return text.substr(0, text.find(u']'));
}

} // namespace modBLob
