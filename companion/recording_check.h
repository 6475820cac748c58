// SPDX-License-Identifier: MIT
// Says where the results of a recording go with a driver package, and what no row asks for.
#pragma once

#include "companion/driver_package.h"
#include "companion/finding.h"
#include "companion/recorded_results.h"

namespace companion {

/// A field of the package; Line is 0 if it is none.
struct Destination {
    Text Field;
    std::size_t Line = 0; ///< in the package, from 1
};

struct FilledVariable {
    Text Name;
    Destination To;
};

/// Where the results of a kind go, into a record whose fields are empty.
struct FilledKind {
    ResultKind Kind;
    Destination To;
    std::vector<FilledVariable> Variables; ///< those that have a row; ORIGIN is one of them
};

std::vector<FilledKind> DestinationsOf(const DriverPackage& package, const std::vector<RecordedResult>& results);

/// Returns what of the recording goes nowhere, and which rows it does not fill, by the places in the package.
std::vector<Finding> CheckRecording(const DriverPackage& package, const std::vector<RecordedResult>& results);

/// Returns a line for a person: `Moisture, M1: 4 results such as 18.8 % → Moisture; Site → Site`.
Text WordsOf(const FilledKind& kind);

/// Returns why a kind is lost, or that no row asks for it; empty if it goes into a field.
Text WhyNowhere(const FilledKind& kind);

} // namespace companion
