// SPDX-License-Identifier: MIT
// Where files are kept: the usable volumes, the data folder, the result of the last listing. Paths are the device's,
// with `\` between the parts and a trailing `\` on a folder.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <vector>

namespace modFileSystem {

/// What is known of the device's storage. Entries of the lists are numbered from 1: entry n is at index n - 1.
struct StorageState {
    std::vector<Text> VolumeList;  ///< roots of the usable volumes in the platform's order; EnumVolumes writes it
    Text BestVolume;               ///< the volume with the largest space figure; EnumVolumes writes it
    std::int32_t BestVolumeKB = 0; ///< its figure in kilobytes; EnumVolumes writes it
    Text AppFolder;                ///< last non-empty name given to GetDataPath, which writes it
    std::vector<Text> FileList;    ///< result of the last ListFiles; the line back-ends write it
};
inline StorageState Storage;

/// Updates VolumeList, BestVolume and BestVolumeKB. Without `force`, only when no volume is known yet.
void EnumVolumes(bool force);
inline void EnumVolumesAnew() {
    EnumVolumes(true);
}
inline void EnumVolumesOnce() {
    EnumVolumes(false);
}

/// Returns the data folder with its trailing `\` and creates it if it is missing. An empty name means the name given
/// last. Returns the root of the volume if the folder is missing and can't be created, or if its name is refused. Stops
/// the program if the folder exists and can't be opened at the moment: files looked for in another folder would be
/// created there.
Text GetDataPath(const Text& appName);
/// The same for callers that can do without the folder: returns the error in place of stopping the program. `path` is
/// set in both cases.
platform::ErrorNumber FindDataPath(const Text& appName, Text& path);

/// Returns a four-character code as a number, with its first character in the top byte; 0 for a text of any other
/// length. A first character above 0x7F overflows the number and is a run-time failure.
std::int32_t PackCode(const Text& code);

} // namespace modFileSystem
