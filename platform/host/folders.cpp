// SPDX-License-Identifier: MIT
#include "platform/host/folders.h"

#include "platform/common/host_files.h"

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>

namespace platform::host {

namespace {

/// A folder that a variable names, without slashes at its end.
std::optional<std::string> FolderIn(const Environment& environment, const char* name) {
    const char* value = environment(name);
    std::string folder = value == nullptr ? "" : value;
    if (folder.empty() || folder[0] != '/')
        return std::nullopt;
    while (!folder.empty() && folder.back() == '/')
        folder.pop_back();
    return folder;
}

std::optional<std::string> Beneath(const Environment& environment, const char* variable, const std::string& inHome,
                                   const std::string& rest) {
    if (const auto folder = FolderIn(environment, variable))
        return *folder + rest;
    if (const auto home = FolderIn(environment, "HOME"))
        return *home + inHome + rest;
    return std::nullopt;
}

ErrorNumber MakeOne(const std::string& path) {
    if (::mkdir(path.c_str(), 0700) == 0)
        return common::SyncFolder(common::FolderOf(path));
    const int reason = errno;
    if (common::IsFolder(path)) // a read-only disk says that it is read-only, and not that the folder is there
        return NoError;
    return reason == EEXIST ? FileNotFound : common::FromErrno(reason);
}

} // namespace

const char* ProcessEnvironment(const char* name) {
    return std::getenv(name);
}

std::optional<std::string> DataFolder(const Environment& environment) {
    return Beneath(environment, "XDG_DATA_HOME", "/.local/share", "/quorin");
}

std::optional<std::string> SettingsFile(const Environment& environment) {
    return Beneath(environment, "XDG_CONFIG_HOME", "/.config", "/quorin/settings.ini");
}

ErrorNumber MakePrivateFolders(const std::string& path) {
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        if (const ErrorNumber error = MakeOne(path.substr(0, end)); error != NoError)
            return error;
        if (end == std::string::npos)
            return NoError;
    }
}

} // namespace platform::host
