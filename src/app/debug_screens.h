// SPDX-License-Identifier: MIT
// Screens and commands to check the program on a device.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Fills the link trace: requests the link and lists the results it delivers.
void FillBluetoothDebug();
void FillFileDebug();

/// Writes "sample.txt" into the data folder: when and on which device it was written.
void SaveSampleFile();
/// Shows a text file; a name without a folder is looked for in the data folder.
void LoadSampleFile(const Text& name);

/// Runs the operations of line files and shows each step in a message box.
void FileApiCheck();
void StringToolsCheck();

} // namespace modQuorin
