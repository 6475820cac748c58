// SPDX-License-Identifier: MIT
#include "apps/options/folders.h"

#include <cstdlib>

namespace apps {

namespace {

/// Returns the folder that a variable names, without slashes at its end.
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

} // namespace

const char* ProcessEnvironment(const char* name) {
    return std::getenv(name);
}

std::optional<std::string> DataFolder(const Environment& environment) {
    return Beneath(environment, "XDG_DATA_HOME", "/.local/share", "/quorin");
}

std::optional<std::string> SettingsPlace(const Environment& environment) {
    return Beneath(environment, "XDG_CONFIG_HOME", "/.config", "/quorin/settings.ini");
}

std::optional<std::string> StateFolder(const Environment& environment) {
    return Beneath(environment, "XDG_STATE_HOME", "/.local/state", "/quorin");
}

} // namespace apps
