// SPDX-License-Identifier: MIT
// The results of a recording: what an instrument has sent over a line, as a file.
#pragma once

#include "src/view/platform/reading_log.h"

#include <optional>
#include <vector>

namespace companion {

struct RecordedResult {
    platform::Reading Reading;
    /// Why it does not come to a record: Origin, Connect or Shape. None if it comes there.
    std::optional<platform::Fate> Lost;
};

/// Returns the results in their order, as if each BLob had come by itself: one that is refused holds up no other.
std::vector<RecordedResult> ResultsOf(TextView recording);

/// Results that are alike: all of the same types, the same variables and the same fate.
struct ResultKind {
    platform::Reading Example;          ///< the first of them
    std::optional<platform::Fate> Lost; ///< as of a RecordedResult
    std::vector<Text> Variables;        ///< their names, without that of the instrument
    std::size_t Count = 0;
};

/// Returns the kinds in the order in which they first came.
std::vector<ResultKind> KindsOf(const std::vector<RecordedResult>& results);

/// Returns the names of a result: "Moisture" or "Moisture, M1"; an empty text if it has none.
Text NamesOf(const platform::Reading& reading);

} // namespace companion
