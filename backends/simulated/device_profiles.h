// SPDX-License-Identifier: MIT
// What a device of each kind reports of itself when nothing else is said: one row a kind, beside what the application
// does on it (src/view/platform/device_traits.h).
#pragma once

#include "backends/files/host_volumes.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/keys.h"

#include <string_view>
#include <vector>

namespace backends {

using namespace platform;

struct ScreenSize {
    std::int32_t Width = 0; ///< pixels
    std::int32_t Height = 0;
    bool operator==(const ScreenSize&) const = default;
};

/// A key that a device has, by the number that its key events bear.
struct DeviceKey {
    DeviceKey(Key key, const char* name) : Code(CodeOf(key)), Name(name) {}

    std::int32_t Code = 0;
    const char* Name = "";
};

struct DeviceProfile {
    const char* Name = ""; ///< for an option: "palm-hires"
    DeviceKind Kind = DeviceKind::Other;
    const char* Device = ""; ///< for people
    ScreenSize Screen;
    const char* OsVersion = "";
    HostVolume Volume; ///< the one that it has
    std::vector<DeviceKey> Keys;
};

const std::vector<DeviceProfile>& DeviceProfiles();

/// The profile of a device type: the first of that type or, where there is none, that of a device that nothing is known
/// of.
const DeviceProfile& ProfileOfType(std::int32_t deviceType);

/// The profile of a name; nothing for a name that none has.
const DeviceProfile* ProfileNamed(std::string_view name);

} // namespace backends
