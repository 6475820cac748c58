// SPDX-License-Identifier: MIT
// Half-written files of programs that were killed while they replaced a file (Replacement, host_files.h).
#pragma once

#include <string>

namespace backends {

/// Removes the files of ended programs from a folder and, to a depth of `deep`, from those beneath it: those with the
/// name of a Replacement's file whose program does not run, and which were last changed more than a day ago. Links are
/// not followed, and other users' files are left alone. What can't be removed stays: it costs nothing but its space.
void RemoveLeftFiles(const std::string& folder, int deep);

/// The folders of a device's volumes are no deeper.
inline constexpr int DepthOfRoot = 3;

} // namespace backends
