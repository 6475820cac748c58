// SPDX-License-Identifier: MIT
// Makes streams that an instrument might send, and many that none would: whole BLobs, loose tags, noise, tags in other
// case, bars, missing quotes, all kinds of line ends, lost and doubled characters.
#pragma once

#include "text/text.h"

#include <random>
#include <vector>

namespace blob_streams {

class Generator {
public:
    explicit Generator(std::uint32_t seed) : random_(seed) {}

    std::size_t Below(std::size_t bound) { return random_() % bound; }
    bool OneIn(std::size_t chances) { return Below(chances) == 0; }

    /// A stream of BLobs and noise.
    Text Stream();
    /// A text that begins like a BLob and ends like one, more often than not.
    Text BlobText();
    /// A list of variables joined by bars, and a variable.
    Text VariableList();
    Text Variable();
    /// A line with some double quotes in it, or none.
    Text QuotedLine();

private:
    Text LineOfBlob();
    Text LooseLine();
    Text LineEnd();
    void AddLine(Text& text, const Text& line);
    void AddBlob(Text& text, std::size_t depth);
    void Damage(Text& text);
    const Text& OneOf(const std::vector<Text>& texts) { return texts[Below(texts.size())]; }

    std::mt19937 random_;
    std::size_t lineEnds_ = 0; ///< 0 CR, 1 CR LF, 2 LF, 3 a mixture
};

} // namespace blob_streams
