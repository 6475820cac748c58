// SPDX-License-Identifier: MIT
#include "apps/quorin-export/overwriting.h"

#include "backends/files/host_files.h"

namespace exporter {

std::string WhyNotOver(const std::string& path, const std::string& table, const Options& options) {
    if (path.empty())
        return {};
    std::string there;
    std::string input;
    std::string root;
    std::string folder;
    const bool isThere = backends::Canonical(path, there) == backends::NoError;
    std::vector<std::string> inputs = options.Sources; // also those that are read later
    inputs.push_back(table);
    for (const std::string& each : inputs)
        if (isThere && backends::Canonical(each, input) == backends::NoError && input == there)
            return "it is what is exported";
    const std::string above = backends::FolderOf(path);
    if (backends::Canonical(above, folder) != backends::NoError)
        return "there is no folder " + above;
    if (backends::Canonical(options.Device.Root, root) == backends::NoError &&
        ((folder + "/").rfind(root + "/", 0) == 0 || (isThere && there.rfind(root + "/", 0) == 0)))
        return "it would be among the tables of the root folder";
    return {};
}

} // namespace exporter
