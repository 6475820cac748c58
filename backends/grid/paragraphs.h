// SPDX-License-Identifier: MIT
// The line ends in a text that is drawn.
#pragma once

#include "src/text/characters.h"
#include "src/text/text.h"

#include <algorithm>
#include <cstddef>

namespace backends {

inline bool IsLineEnd(char16_t unit) {
    return unit == modStringTools::CarriageReturn || unit == modStringTools::LineFeed;
}

/// Returns a text as one line: line ends have no width and begin none.
inline Text WithoutLineEnds(TextView text) {
    Text line(text);
    line.erase(std::remove_if(line.begin(), line.end(), IsLineEnd), line.end());
    return line;
}

/// Cuts off the first paragraph of a text, and its line end: CR LF, CR or LF.
inline TextView TakeParagraph(TextView& text) {
    const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
    const TextView paragraph = text.substr(0, end);
    const std::size_t lineEnd = text.substr(end, 2) == u"\r\n" ? 2 : 1;
    text.remove_prefix(std::min(end + lineEnd, text.size()));
    return paragraph;
}

} // namespace backends
