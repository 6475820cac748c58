// SPDX-License-Identifier: MIT
#include "apps/quorin/package_watch.h"

#include "backends/files/path_map.h"
#include "src/drivers/installation.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/screen_table.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>

namespace quorin {

namespace {

using HostClock = std::filesystem::file_time_type::clock;

/// Two changes of a folder this close may have the same stamp.
constexpr auto StampsDiffer = std::chrono::seconds(2);

bool IsRecent(std::int64_t stamp) {
    return HostClock::now().time_since_epoch() - HostClock::duration(stamp) < StampsDiffer;
}

} // namespace

PackageWatch::Stamps PackageWatch::StampsOfFolders() const {
    std::vector<Text> folders = modFileSystem::Storage.VolumeList;
    const Text& table = modQuorin::Paths.DriversFile;
    folders.push_back(table.substr(0, table.rfind(u'\\') + 1));
    Stamps stamps;
    for (const Text& folder : folders) {
        std::string beneath;
        if (backends::RelativePath(folder, beneath) != platform::NoError)
            continue;
        std::error_code missing;
        const auto time = std::filesystem::last_write_time(Root_ + "/" + beneath, missing);
        stamps.emplace_back(beneath, missing ? 0 : time.time_since_epoch().count());
    }
    return stamps;
}

void PackageWatch::Look() {
    constexpr std::int64_t Interval = 1000; // milliseconds
    if (modQuorin::Screens.CurrentScreen != modQuorin::ScrAddDriver) {
        Seen_.clear();
        return;
    }
    const std::int64_t now = Device_.clock.Milliseconds();
    if (Device_.Seen().grdMain.HandIsDown || now - LookedAt_ < Interval)
        return;
    LookedAt_ = now;
    const Stamps stamps = StampsOfFolders();
    const bool mayHaveChanged = stamps != Seen_ || std::any_of(stamps.begin(), stamps.end(),
                                                               [](const auto& each) { return IsRecent(each.second); });
    Seen_ = stamps;
    if (mayHaveChanged)
        modQuorin::FollowDriverPackages();
}

} // namespace quorin
