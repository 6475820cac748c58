// SPDX-License-Identifier: MIT
// Says in time that the disk of the data is nearly full.
#pragma once

#include "backends/loop/back_end.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace backends {

/// Returns the bytes that a user may still write to the disk of a folder; nothing if that can't be found out. Some file
/// systems have no size, which is no answer.
std::optional<std::uintmax_t> FreeBytes(const std::string& folder);

/// Looks at the start and each minute.
class FreeSpace final : public EventSource {
public:
    static constexpr std::uintmax_t Little = 50'000'000; ///< bytes; a shift writes a hundredth of it

    /// `folder` returns the data folder.
    FreeSpace(BackEnd& device, std::function<std::string()> folder);

    /// Looks in the next round, and not only when a minute has passed.
    void LookSoon() { LastLook_ = {}; }

    std::function<std::optional<std::uintmax_t>(const std::string& folder)> Find = FreeBytes;

    bool RaiseWhatIsPending() override;

private:
    BackEnd& Device_;
    std::function<std::string()> Folder_;
    std::chrono::steady_clock::time_point LastLook_{};
};

} // namespace backends
