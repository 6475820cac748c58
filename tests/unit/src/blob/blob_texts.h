// SPDX-License-Identifier: MIT
// How the tests of this folder write BLobs and look at the results that wait.
#pragma once

#include "src/blob/decoding.h"

#include <initializer_list>
#include <vector>

namespace blob_texts {

using Lines = std::initializer_list<TextView>;

/// The lines, each with the line end behind it.
inline Text Joined(Lines lines, TextView lineEnd = u"\r") {
    Text text;
    for (const TextView line : lines)
        text.append(line).append(lineEnd);
    return text;
}

/// The lines between a start and an end line.
inline Text Blob(Lines lines, TextView lineEnd = u"\r") {
    return Joined({u"[BLob]"}, lineEnd) + Joined(lines, lineEnd) + Joined({u"[/BLob]"}, lineEnd);
}

/// A BLob without an origin that carries one value, in ms.
inline Text BlobOfValue(TextView value) {
    return Blob({u"[RESULT_VALUE \"" + Text(value) + u"\"]", u"[RESULT_UNIT \"ms\"]"});
}

/// Delivers all results that wait, and gives their values.
inline std::vector<Text> DeliverValues() {
    std::vector<Text> values;
    while (modBLob::NextResult())
        values.push_back(modBLob::Decoder.ResultValue);
    return values;
}

} // namespace blob_texts
