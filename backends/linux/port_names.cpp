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

std::vector<std::string> Adapters(const std::string& deviceFolder) {
    std::vector<std::string> paths = DevicesCalled("rfcomm", deviceFolder);
    const std::vector<std::string> usb = UsbAdapters(deviceFolder);
    paths.insert(paths.end(), usb.begin(), usb.end());
    return paths;
}

/// The type of a port without hardware is 0. A driver that reports no type has real ports.
std::vector<std::string> BoardPorts(const std::string& deviceFolder, const std::string& systemFolder) {
    std::vector<std::string> ports = DevicesCalled("ttyS", deviceFolder);
    std::erase_if(ports, [&systemFolder](const std::string& path) {
        const std::string folder = systemFolder + "/class/tty/" + NameOf(path);
        const std::string type = FirstLine(folder + "/type");
        return type.empty() ? !IsFolder(folder + "/device/driver") : type == "0";
    });
    return ports;
}

std::vector<std::string> PortNames(const std::string& deviceFolder) {
    std::vector<std::string> paths = Adapters(deviceFolder);
    for (const std::string& path : DevicesCalled("ttyS", deviceFolder))
        paths.push_back(path);
    for (const std::string& name : NamesIn(deviceFolder + "/serial/by-id"))
        paths.push_back(deviceFolder + "/serial/by-id/" + name);
    return paths;
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
    return place < adapters.size() ? adapters[place] : std::string();
}

} // namespace backends
