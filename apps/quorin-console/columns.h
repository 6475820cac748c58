// SPDX-License-Identifier: MIT
// Measures and fits texts to the columns of a terminal. A character takes none, one or two of them.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace console {

/// Returns the number of columns that a text takes.
std::size_t ColumnsOf(TextView text);

/// Returns the longest start of a text that takes `columns` columns at most. No character is cut in two.
TextView HeadOf(TextView text, std::size_t columns);

/// Returns the longest end of a text that takes `columns` columns at most.
TextView TailOf(TextView text, std::size_t columns);

/// Returns a text padded with blanks to a width; a longer text is cut and ends with `…`.
Text Fitted(const Text& text, std::size_t columns);
Text Centred(const Text& text, std::size_t columns);

/// Returns a text with its control characters replaced by blanks.
Text WithoutControls(Text text);

/// Returns the lines of a text, which end with CR LF, CR or LF, each wrapped at blanks to a width of 1 or more.
std::vector<Text> Wrapped(const Text& text, std::size_t columns);

} // namespace console
