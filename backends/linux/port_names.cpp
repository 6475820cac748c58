// SPDX-License-Identifier: MIT
#include "backends/linux/port_names.h"

#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"

#include <algorithm>
#include <sys/stat.h>

namespace backends {

bool IsCharacterDevice(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && S_ISCHR(found.st_mode);
}

bool IsBoardPort(const std::string& path) {
    std::string canonical;
    Canonical(path, canonical);
    return !NumberAfter("ttyS", NameOf(path)).empty() || !NumberAfter("ttyS", NameOf(canonical)).empty();
}

std::vector<std::string> DevicesCalled(const std::string& stem, const std::string& deviceFolder) {
    std::vector<std::string> paths;
    for (const std::string& name : NamesIn(deviceFolder)) {
        const std::string path = deviceFolder + "/" + name;
        if (!NumberAfter(stem, name).empty() && IsCharacterDevice(path))
            paths.push_back(path);
    }
    // The names are in the order of their bytes: of two numbers without leading zeros, the shorter one is smaller.
    std::stable_sort(paths.begin(), paths.end(),
                     [](const std::string& a, const std::string& b) { return a.size() < b.size(); });
    return paths;
}

std::vector<std::string> UsbAdapters(const std::string& deviceFolder) {
    std::vector<std::string> adapters = DevicesCalled("ttyUSB", deviceFolder);
    const std::vector<std::string> modems = DevicesCalled("ttyACM", deviceFolder);
    adapters.insert(adapters.end(), modems.begin(), modems.end());
    return adapters;
}

std::string PortPath(std::int32_t number, const std::string& deviceFolder) {
    if (number < 1)
        return {};
    const std::string fromZero = std::to_string(number - 1);
    const std::string bluetooth = deviceFolder + "/rfcomm" + fromZero;
    if (IsCharacterDevice(bluetooth))
        return bluetooth;
    const std::vector<std::string> adapters = UsbAdapters(deviceFolder);
    const auto place = static_cast<std::size_t>(number - 1);
    if (place < adapters.size())
        return adapters[place];
    const std::string onBoard = deviceFolder + "/ttyS" + fromZero;
    return IsCharacterDevice(onBoard) ? onBoard : std::string();
}

} // namespace backends
