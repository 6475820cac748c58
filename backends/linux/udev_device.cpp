// SPDX-License-Identifier: MIT
#include "backends/linux/udev_names.h"

#include <libudev.h>
#include <memory>
#include <sys/stat.h>

namespace backends {

using companion::DeviceName;

namespace {

struct Release {
    void operator()(udev* context) const { udev_unref(context); }
    void operator()(udev_device* device) const { udev_device_unref(device); }
};

} // namespace

DeviceName UdevName(const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0 || !S_ISCHR(found.st_mode))
        return {};
    const std::unique_ptr<udev, Release> context(udev_new());
    if (!context)
        return {};
    const std::unique_ptr<udev_device, Release> device(udev_device_new_from_devnum(context.get(), 'c', found.st_rdev));
    if (!device)
        return {};
    return NameFromProperties([&device](const char* key) {
        const char* value = udev_device_get_property_value(device.get(), key);
        return std::string(value == nullptr ? "" : value);
    });
}

} // namespace backends
