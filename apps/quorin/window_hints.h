// SPDX-License-Identifier: MIT
// Shows a person who is new to the program what the next step is.
#pragma once

#include "apps/quorin/window_settings.h"
#include "backends/loop/back_end.h"
#include "companion/hints.h"
#include "src/view/screen_table.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace quorin {

/// Looks at the form in each round of the loop, and remembers what was done in the window's settings.
class WindowHints final : public backends::EventSource {
public:
    /// `portTrouble` returns what keeps the port from opening (companion::Surroundings).
    WindowHints(backends::BackEnd& device, WindowSettings& settings, std::function<std::string()> portTrouble);

    /// Returns the number and address of the first port that was given; nothing for none.
    std::function<std::optional<std::pair<std::int32_t, std::string>>()> GivenPort;

    bool RaiseWhatIsPending() override;

    bool AreOn() const { return Hints_.IsOn(); }
    /// Shows hints or not, in this run and in later ones.
    void SetOn(bool on);
    /// Looks again whether a driver is installed. Otherwise that is done when a screen appears.
    void LookForDriver() { SeenScreen_ = 0; }

private:
    companion::Surroundings Look();

    backends::BackEnd& Device_;
    WindowSettings& Settings_;
    std::function<std::string()> PortTrouble_;
    companion::Hints Hints_;
    modQuorin::ScreenId SeenScreen_ = 0;
    bool HasDriver_ = true; ///< when the screen appeared; true if nobody asks for it
};

} // namespace quorin
