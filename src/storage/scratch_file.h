// SPDX-License-Identifier: MIT
// The one scratch file, Slots.TempFile. It lies in the data folder, under a name that no other file has.
#pragma once

#include "src/storage/file_slots.h"

namespace modFileSystem {

/// Makes the scratch file for a rewrite of the file, and leaves it open. On failure it is not `valid`, and its `error`
/// says why.
void OpenTempFile(const FileHandle& rewritten);

/// Keeps a line that has no place in its file in a scratch file. The bare name of that; empty where it can't be made.
Text KeepLine(const FileHandle& handle, const Text& text);

} // namespace modFileSystem
