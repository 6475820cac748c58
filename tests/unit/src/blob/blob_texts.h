// SPDX-License-Identifier: MIT
// Routines that build BLobs and read the waiting results, for the tests of this folder.
#pragma once

#include "src/blob/decoding.h"

#include <initializer_list>
#include <vector>

namespace blob_texts {

using Lines = std::initializer_list<TextView>;

/// Joins the lines. Each is followed by the line end.
inline Text Joined(Lines lines, TextView lineEnd = u"\r") {
    Text text;
    for (const TextView line : lines)
        text.append(line).append(lineEnd);
    return text;
}

/// Returns a BLob that contains the lines.
inline Text Blob(Lines lines, TextView lineEnd = u"\r") {
    return Joined({u"[BLob]"}, lineEnd) + Joined(lines, lineEnd) + Joined({u"[/BLob]"}, lineEnd);
}

/// A BLob without an origin that carries one value, in ms.
inline Text BlobOfValue(TextView value) {
    return Blob({u"[RESULT_VALUE \"" + Text(value) + u"\"]", u"[RESULT_UNIT \"ms\"]"});
}

/// Delivers all waiting results and returns their values.
inline std::vector<Text> DeliverValues() {
    std::vector<Text> values;
    while (modBLob::NextResult())
        values.push_back(modBLob::Decoder.ResultValue);
    return values;
}

} // namespace blob_texts
