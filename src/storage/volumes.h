// SPDX-License-Identifier: MIT
// Where files live: the usable volumes, the data folder, what the last listing has found. Paths are the device's, with
// `\` between the parts and a trailing `\` on a folder.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <vector>

namespace modFileSystem {

/// What is known of the device's storage. Lists are 1-based for the reader: entry n stands at n less 1.
struct StorageState {
    std::vector<Text> VolumeList;  ///< roots of the usable volumes in the platform's order; EnumVolumes writes it
    Text BestVolume;               ///< the one with the largest space figure; EnumVolumes writes it
    std::int32_t BestVolumeKB = 0; ///< its figure in kilobytes; EnumVolumes writes it
    Text AppFolder;                ///< last non-empty name given to GetDataPath, which writes it
    std::vector<Text> FileList;    ///< result of the last ListFiles, which writes it
};
inline StorageState Storage;

/// Brings VolumeList, BestVolume and BestVolumeKB up to date; without `force` only when no volume is known yet.
void EnumVolumes(bool force);
inline void EnumVolumesAnew() {
    EnumVolumes(true);
}
inline void EnumVolumesOnce() {
    EnumVolumes(false);
}

/// The data folder with its trailing `\`, made when missing. An empty name means the name given last. Falls back to the
/// root of the volume where the folder is not there and can't be made, or its name is refused. A folder that is there
/// and that the device can't open just now stops the program: what is looked for in another one would be made there.
Text GetDataPath(const Text& appName);
/// The same for who can go on without it; why the folder can't be opened.
platform::ErrorNumber FindDataPath(const Text& appName, Text& path);

/// A four-character code as a number, its first character in the top byte; 0 for a text of any other length. A first
/// character above 0x7F overflows the number and is a run-time failure.
std::int32_t PackCode(const Text& code);

} // namespace modFileSystem
