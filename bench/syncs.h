// SPDX-License-Identifier: MIT
// Counts the syncs of a program that this is linked into.
#pragma once

namespace bench {

/// The calls of fsync and fdatasync by this process since its start.
long SyncsSoFar();

} // namespace bench
