// SPDX-License-Identifier: MIT
#include "apps/quorin/free_space.h"

#include "companion/words.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace quorin {

std::optional<std::uintmax_t> FreeBytes(const std::string& folder) {
    std::error_code failed;
    const std::filesystem::space_info space = std::filesystem::space(folder, failed);
    if (failed || space.available == 0)
        return std::nullopt;
    return space.available;
}

FreeSpace::FreeSpace(backends::BackEnd& device, std::function<std::string()> folder)
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
        Device_.onlooker.notices.Raise(
            companion::LittleSpace(modStringTools::FromBytes(folder), static_cast<std::int64_t>(*bytes / 1'000'000)));
    else
        Device_.onlooker.notices.Withdraw(companion::AboutSpace);
    return false;
}

} // namespace quorin
