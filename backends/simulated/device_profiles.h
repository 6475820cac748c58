// SPDX-License-Identifier: MIT
// What a device of each kind reports of itself by default: one row a kind. What the application does differently on
// each is in src/view/platform/device_traits.h.
#pragma once

#include "src/text/text.h"
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

/// A key of a device, with the code of its key events.
struct DeviceKey {
    DeviceKey(Key key, const char* name) : Code(CodeOf(key)), Name(name) {}

    std::int32_t Code = 0;
    const char* Name = "";
};

struct ProfileVolume {
    Text Root; ///< with its trailing `\`
    std::int64_t Kilobytes = 0;
};

struct DeviceProfile {
    const char* Name = ""; ///< as in an option: "palm-hires"
    DeviceKind Kind = DeviceKind::Other;
    const char* Device = ""; ///< description for the user
    ScreenSize Screen;
    const char* OsVersion = "5.2"; ///< possible for every kind of device
    ProfileVolume Volume;          ///< its one volume
    std::vector<DeviceKey> Keys;
};

const std::vector<DeviceProfile>& DeviceProfiles();

/// Returns the profile of a device type: the first one of that type or, if there is none, that of an unknown device.
const DeviceProfile& ProfileOfType(std::int32_t deviceType);

/// Returns the profile with a name; null if there is none.
const DeviceProfile* ProfileNamed(std::string_view name);

} // namespace backends
