// SPDX-License-Identifier: MIT
#include "apps/quorin/window_places.h"

#include "apps/options/folders.h"
#include "backends/files/host_files.h"
#include "backends/files/left_files.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace quorin {

namespace {

/// Also of a file that does not exist yet. Empty for an empty path.
std::string WholePath(const std::string& path) {
    std::error_code failed;
    const auto whole = std::filesystem::weakly_canonical(std::filesystem::absolute(path, failed), failed);
    return path.empty() || failed ? path : whole.string();
}

} // namespace

std::string FindPlaces(Options& options) {
    const bool ownRoot = !options.Device.Root.empty();
    if (!ownRoot) {
        const auto data = apps::DataFolder();
        if (!data)
            return "--root is needed: neither XDG_DATA_HOME nor HOME is set";
        options.Device.Root = options.Demo ? *data + "-demo" : *data;
    }
    if (!options.Device.Settings.empty() || ownRoot || options.Demo)
        return {}; // settings.ini in the root folder
    const auto settings = apps::SettingsPlace();
    if (!settings)
        return "--settings is needed: neither XDG_CONFIG_HOME nor HOME is set";
    options.Device.Settings = *settings;
    return {};
}

std::string SettingsOf(const Options& options) {
    return options.Device.Settings.empty() ? options.Device.Root + "/settings.ini" : options.Device.Settings;
}

std::string CurrentFolder() {
    std::error_code gone;
    return std::filesystem::current_path(gone).string();
}

backends::StartPlace PlaceOfStarts(const std::string& root) {
    const char* const ofSession = std::getenv("XDG_RUNTIME_DIR");
    const auto state = apps::StateFolder();
    return backends::StartPlaceOf(
        root, {ofSession == nullptr || *ofSession != '/' ? std::string() : std::string(ofSession) + "/quorin",
               state ? *state + "/start" : std::string()});
}

KeptPlaces PlacesOf(const Options& options, const std::string& windowSettings) {
    const auto state = apps::StateFolder();
    return {.Root = WholePath(options.Device.Root),
            .Settings = WholePath(SettingsOf(options)),
            .WindowSettings = WholePath(windowSettings),
            .Journal = options.Journal ? WholePath(options.Journal->Folder) : std::string(),
            .Drafts = state ? WholePath(*state + "/drafts") : std::string()};
}

void RemoveLeftFiles(const Options& options) {
    backends::RemoveLeftFiles(options.Device.Root, backends::DepthOfRoot);
    backends::RemoveLeftFiles(backends::FolderOf(SettingsOf(options)), 0);
    if (const auto state = apps::StateFolder())
        backends::RemoveLeftFiles(*state + "/drafts", 0);
}

} // namespace quorin
