// SPDX-License-Identifier: MIT
#include "backends/host/free_space.h"

#include "companion/words.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace backends {

std::optional<std::uintmax_t> FreeBytes(const std::string& folder) {
    std::error_code failed;
    const std::filesystem::space_info space = std::filesystem::space(folder, failed);
    if (failed || space.capacity == 0)
        return std::nullopt;
    return space.available;
}

namespace {

/// Returns the smallest of a few numbers of megabytes that is more than these bytes: the notice is said anew when the
/// next one is reached, and not for each megabyte.
std::int64_t StepAbove(std::uintmax_t bytes) {
    constexpr std::uintmax_t Megabyte = 1'000'000;
    for (const std::int64_t step : {1, 2, 5, 10, 20})
        if (bytes < static_cast<std::uintmax_t>(step) * Megabyte)
            return step;
    return FreeSpace::Little / Megabyte;
}

} // namespace

FreeSpace::FreeSpace(BackEnd& device, std::function<std::string()> folder)
    : Device_(device), Folder_(std::move(folder)) {
    device.loop.Listen(*this);
}

bool FreeSpace::RaiseWhatIsPending() {
    constexpr auto BetweenLooks = std::chrono::minutes(1);
    const auto now = std::chrono::steady_clock::now();
    if (now - LastLook_ < BetweenLooks)
        return false;
    LastLook_ = now;
    const std::string folder = Folder_();
    const std::optional<std::uintmax_t> bytes = Find(folder);
    if (bytes && *bytes < Little)
        Device_.onlooker.notices.Raise(companion::LittleSpace(modStringTools::FromBytes(folder), StepAbove(*bytes)));
    else
        Device_.onlooker.notices.Withdraw(companion::AboutSpace);
    return false;
}

} // namespace backends
