// SPDX-License-Identifier: MIT
// The text of a reading: as the form shows it, and as an instrument would send it.
#pragma once

#include "src/view/platform/reading_log.h"

namespace modBLob {

/// Returns the value and its unit, with a blank between them also if one of them is empty.
Text ValueAndUnitOf(const platform::Reading& reading);

/// Returns a BLob that gives this reading and no other when it is decoded. Its lines end with a carriage return. A name
/// of a variable that the decoder takes for a part of ORIGIN (`N`) changes that one, as it did when the reading came.
Text BlobOf(const platform::Reading& reading);

} // namespace modBLob
