// SPDX-License-Identifier: MIT
// Screens and commands for checking the system on a device in the field.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// The link trace: arms the link and shows what it delivers.
void FillBluetoothDebug();
void FillFileDebug();

/// Writes "sample.txt" into the data folder: when and where it was made.
void SaveSampleFile();
/// Shows a text file; a name without a folder means the data folder's.
void LoadSampleFile(const Text& name);

/// Runs the line files through their operations, telling each step.
void FileApiCheck();
void StringToolsCheck();

} // namespace modQuorin
