// SPDX-License-Identifier: MIT
#include "backends/host/host_device.h"

#include "backends/host/host_clock.h"
#include "src/view/platform/application.h"

namespace backends {

namespace {

DeviceClock ClockFor(const DeviceOptions& options) {
    return options.RealClock ? DeviceClock(HostTime()) : DeviceClock(options.StartMoment);
}

std::vector<HostVolume> VolumesFor(const DeviceOptions& options) {
    if (!options.Volumes.empty())
        return options.Volumes;
    const ProfileVolume& volume = ProfileOfType(options.DeviceType).Volume;
    return {{volume.Root, volume.Kilobytes}};
}

DeviceSystem SystemFor(const DeviceOptions& options) {
    const DeviceProfile& profile = ProfileOfType(options.DeviceType);
    const Text version = modStringTools::FromBytes(profile.OsVersion);
    return {options.DeviceType, options.OsVersion.value_or(version), options.User,
            options.Screen.value_or(profile.Screen)};
}

SettingsFile SettingsFor(const DeviceOptions& options) {
    return options.Settings.empty() ? SettingsFile(PathMap(options.Root), u".\\settings.ini")
                                    : SettingsFile(options.Settings);
}

std::string SettingsFolder(const DeviceOptions& options) {
    if (options.Settings.empty())
        return options.Root;
    const std::size_t slash = options.Settings.rfind('/');
    return slash == std::string::npos ? "." : options.Settings.substr(0, slash + 1);
}

} // namespace

HostDevice::HostDevice(const DeviceOptions& options)
    : volumes(VolumesFor(options), PathMap(options.Root)), hostFiles(PathMap(options.Root)), files(hostFiles, faults),
      hostDatabases(PathMap(options.Root)), databases(hostDatabases, faults), settingsFile(SettingsFor(options)),
      settings(settingsFile, faults), limits(SettingsFolder(options)), ports(options.Ports), serial(ports),
      System_(SystemFor(options)), Clock_(ClockFor(options)),
      Connections_(options.Connections != nullptr ? *options.Connections : connections) {
    const Text keptOn = settingsFile.Get(u"Quorin", modQuorin::SettingsSection, modQuorin::VolumeKey, u"");
    const bool inMemory = TraitsOf(options.DeviceType).IsMemory(keptOn); // memory can't be removed, unlike a card
    volumes.MakeFolders(inMemory ? Text() : keptOn);
}

DeviceParts HostDevice::Parts() {
    return {
        .system = System_,
        .clock = Clock_,
        .serial = serial,
        .connections = Connections_,
        .volumes = volumes,
        .files = files,
        .databases = databases,
        .settings = settings,
    };
}

} // namespace backends
