// SPDX-License-Identifier: MIT
// The one scratch file, Slots.TempFile. It is in the data folder, under a name that no other file has.
#pragma once

#include "src/storage/file_slots.h"

namespace modFileSystem {

/// Creates the scratch file for a rewrite of the file, and leaves it open. On failure it is not `valid`, and its
/// `error` says why.
void OpenTempFile(const FileHandle& rewritten);

/// Writes a line that can't be stored in its file to a scratch file. Returns the bare name of that file, or an empty
/// text if it could not be created.
Text KeepLine(const FileHandle& handle, const Text& text);

} // namespace modFileSystem
