// SPDX-License-Identifier: MIT
// Strikes a call that changes files: the process is killed before it, or it fails as on a full or pulled stick.
#pragma once

namespace file_calls {

enum class Blow { None, Kill, Full, Pulled, Spoilt };

/// From now on counts the calls that change a file or a folder, and strikes the one with this number, from 1. A full
/// or pulled stick fails from then on. A spoilt one reports success, and each write has a wrong byte.
void Strike(Blow blow, int number);
/// Ends the counting. Returns the number of calls.
int Counted();

} // namespace file_calls
