// SPDX-License-Identifier: MIT
#include "src/storage/volumes.h"

#include "src/view/platform/application.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace modFileSystem {

using platform::Device;

namespace {

constexpr std::int32_t SmallestVolumeKB = 11;

/// Returns the absolute figure: a byte count that wrapped negative on a very large volume is still usable.
std::int32_t Kilobytes(std::int32_t bytes) {
    return static_cast<std::int32_t>(std::nearbyint(std::abs(static_cast<double>(bytes) / 1024.0)));
}

void AddVolume(const Text& root) {
    std::int32_t bytes = 0;
    if (Device().volumes.Space(root, bytes) != platform::NoError)
        return;
    const std::int32_t size = Kilobytes(bytes);
    if (size < SmallestVolumeKB)
        return;
    Storage.VolumeList.push_back(root);
    if (size > Storage.BestVolumeKB) {
        Storage.BestVolume = root;
        Storage.BestVolumeKB = size;
    }
}

bool IsUsable(const Text& volume) {
    return std::find(Storage.VolumeList.begin(), Storage.VolumeList.end(), volume) != Storage.VolumeList.end();
}

Text ChosenVolume(const Text& application) {
    auto& settings = Device().settings;
    const Text stored = settings.Get(application, modQuorin::SettingsSection, modQuorin::VolumeKey, u"");
    const Text wanted = stored.empty() ? Storage.BestVolume : stored;
    // A stored volume that was removed stays in the settings, and is used again when it comes back.
    const Text chosen = IsUsable(wanted) ? wanted : Storage.BestVolume;
    if (stored.empty())
        settings.Save(application, modQuorin::SettingsSection, modQuorin::VolumeKey, chosen);
    return chosen;
}

Text FolderOfDevice(const Text& volume) {
    const platform::DeviceTraits& traits = platform::Traits();
    const bool other = volume == u"C:\\" && !traits.DataFolderOnC.empty();
    return Text(other ? traits.DataFolderOnC : traits.DataFolder);
}

Text PathOn(const Text& volume, const Text& application) {
    if (platform::Traits().IsMemory(volume) || application.empty())
        return volume;
    return volume + FolderOfDevice(volume) + application + u"\\";
}

/// Reports that the volume's root replaces the data folder. Without any volume nothing is reported here: each file that
/// can't be opened is reported by itself.
void TellReplaced(const Text& path, const Text& volume, platform::ErrorNumber why) {
    if (volume.empty())
        return;
    std::unique_ptr<platform::Folder> folder;
    const bool isOut = platform::IsMissing(Device().fileSystem.OpenFolder(volume, false, folder));
    Device().onlooker.FolderReplaced(path, isOut ? Text() : volume, why);
}

} // namespace

void EnumVolumes(bool force) {
    if (!force && !Storage.VolumeList.empty())
        return;
    Storage.VolumeList.clear();
    Storage.BestVolume.clear(); // it may have been removed
    Storage.BestVolumeKB = 0;
    const Text onlyVolume(platform::Traits().OnlyVolume);
    if (!onlyVolume.empty()) {
        Storage.VolumeList.push_back(onlyVolume);
        Storage.BestVolume = onlyVolume;
        return;
    }
    auto& volumes = Device().volumes;
    for (Text root = volumes.First(); !root.empty(); root = volumes.Next())
        AddVolume(root);
}

Text GetDataPath(const Text& appName) {
    Text path;
    const auto error = FindDataPath(appName, path);
    if (error != platform::NoError)
        platform::RuntimeFailure(u"Can't open the folder " + path + u": " + platform::ErrorText(error));
    return path;
}

platform::ErrorNumber FindDataPath(const Text& appName, Text& path) {
    if (!appName.empty())
        Storage.AppFolder = appName;
    EnumVolumesOnce();
    const Text volume = ChosenVolume(Storage.AppFolder);
    path = PathOn(volume, Storage.AppFolder);
    std::unique_ptr<platform::Folder> folder;
    const auto error = Device().fileSystem.OpenFolder(path, true, folder);
    if (error == platform::NoError)
        return error;
    // The volume's root replaces a folder that is missing and can't be created, but not one that exists.
    const auto opened = Device().fileSystem.OpenFolder(path, false, folder);
    if (!platform::IsMissing(opened))
        return opened;
    TellReplaced(path, volume, error);
    path = volume;
    return platform::NoError;
}

std::int32_t PackCode(const Text& code) {
    if (code.size() != 4)
        return 0;
    std::int64_t packed = 0;
    for (const char16_t character : code)
        packed = packed * 256 + character;
    if (packed > std::numeric_limits<std::int32_t>::max())
        platform::RuntimeFailure(u"The code \"" + code + u"\" is too large for 32 bits");
    return static_cast<std::int32_t>(packed);
}

} // namespace modFileSystem
