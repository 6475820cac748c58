// SPDX-License-Identifier: MIT
// Texts on the columns of a terminal, of which a character takes none, one or two.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace console {

/// The columns that a text takes.
std::size_t ColumnsOf(TextView text);

/// The longest head of a text that takes no more than so many columns. No character is cut in two.
TextView HeadOf(TextView text, std::size_t columns);

/// The longest tail, likewise.
TextView TailOf(TextView text, std::size_t columns);

/// Filled up with blanks to a width or, where it is longer, cut with a sign that something is missing.
Text Fitted(const Text& text, std::size_t columns);
Text Centred(const Text& text, std::size_t columns);

/// Control characters become blanks.
Text WithoutControls(Text text);

/// The lines of a text, ended by CR LF, CR or LF, each wrapped at blanks to a width of 1 or more.
std::vector<Text> Wrapped(const Text& text, std::size_t columns);

} // namespace console
