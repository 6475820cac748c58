// SPDX-License-Identifier: MIT
// The ports of the machine for the window: the dialog in which one is chosen, what was chosen in earlier runs, and the
// offer to use an adapter that is plugged in.
#pragma once

#include "apps/quorin/window_settings.h"
#include "backends/linux/port_list.h"
#include "backends/qt/ports_dialog.h"
#include "backends/qt/qt_platform.h"
#include "backends/serial/port_probe.h"
#include "companion/ports/port_choice.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quorin {

/// Returns the pins that are remembered, and those of the command line in place of them. `wrong` gets those that are no
/// address, with the reason: someone has edited the file.
std::map<std::int32_t, backends::PortAddress> PinsWith(const WindowSettings& settings,
                                                       std::map<std::int32_t, backends::PortAddress> given,
                                                       std::vector<std::string>& wrong);

class WindowPorts final : public backends::EventSource {
public:
    /// `isSilent`: true if nothing has been received for a while, or the link is down.
    WindowPorts(backends::qt::QtPlatform& device, WindowSettings& settings, std::function<bool()> isSilent);

    void OpenDialog();
    /// Uses the adapter that was offered last.
    void UseOffered();
    /// Returns the number and address of the first port that the command line or an earlier choice gives.
    std::optional<std::pair<std::int32_t, std::string>> Given() const;
    /// Chooses that port.
    void UseGiven();
    /// Withdraws that offer until another adapter is plugged in.
    void DropOffer();

    backends::PortSurvey Survey; ///< where the ports are looked for

    /// Looks at what is plugged in in the next round, and not only when two seconds have passed.
    void LookSoon() { LastLook_ = {}; }

    bool RaiseWhatIsPending() override;

private:
    std::vector<companion::PortRow> Rows() const;
    std::vector<std::string> Names() const;
    std::string ChosenDevice() const;
    void Use(const companion::PortChoice& choice);
    void Forget(std::int32_t number);
    void DropOther(const std::string& address);
    void OfferArrival(const std::vector<std::string>& adapters);
    void OfferBoardPort(const std::vector<std::string>& adapters);
    void Offer(const std::string& path, const Text& words);
    bool IsOfUse(const std::string& path) const;
    bool LacksDevice() const;
    void WithdrawOffer();

    backends::qt::QtPlatform& Device_;
    WindowSettings& Settings_;
    std::function<bool()> IsSilent_;
    backends::PortProbe Probe_;
    std::optional<backends::qt::PortsDialog> Dialog_; ///< none until a person opens it
    companion::PluggedIn PluggedIn_;
    std::string Offered_;              ///< the path of the port that is offered; empty for none
    std::set<std::string> Refused_;    ///< those that a person did not want
    std::vector<std::string> Arrived_; ///< noticed at the last look
    std::chrono::steady_clock::time_point LastLook_{};
};

} // namespace quorin
