// SPDX-License-Identifier: MIT
// Generates what an instrument might send, and much that none would: whole BLobs, loose tags, noise, tags in other
// case, bars, missing quotes, all kinds of line ends, lost and doubled characters.
#pragma once

#include "src/text/text.h"
#include "tests/reference/choices.h"

namespace reference {

class BlobCases {
public:
    explicit BlobCases(Choices& choices) : Chosen_(choices) {}

    /// A few BLobs and noise.
    Text Stream();
    /// A few short lines, most of them tags, to test line ends.
    Text ShortStream();
    /// A text that in most cases begins and ends like a BLob.
    Text BlobText();
    /// A list of variables joined by bars, and a variable.
    Text VariableList();
    Text Variable();
    /// A line with some double quotes in it, or none.
    Text QuotedLine();

private:
    Text LineOfBlob();
    Text LooseLine();
    TextView LineEnd();
    void AddLine(Text& text, TextView line);
    void AddBlob(Text& text, std::uint32_t depth);
    void AddLongBlob(Text& text);
    void Damage(Text& text);

    Choices& Chosen_;
    std::uint32_t LineEnds_ = 0; ///< 0 CR, 1 CR LF, 2 LF, 3 a mixture
};

} // namespace reference
