// SPDX-License-Identifier: MIT
// How often a program that has this linked in has asked for its files to reach the medium.
#pragma once

namespace bench {

/// Of this process, by fsync and fdatasync, since its start.
long SyncsSoFar();

} // namespace bench
