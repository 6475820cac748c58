// SPDX-License-Identifier: MIT
// The state of the link for the page: one line, which changes each second, and the readings that no row can hold.
#pragma once

#include "backends/web/web_platform.h"
#include "companion/link_watch.h"

#include <functional>
#include <string>

namespace backends::web {

class PageLink final : public EventSource {
public:
    /// `device` must exist for as long as the link is shown.
    explicit PageLink(WebPlatform& device);

    /// Called with a JSON object when it has changed: "text" and "look" of the line, "news" for a screen reader,
    /// "ports" if another port may help, "losses" with what a person must have seen.
    std::function<void(const std::string& link)> Changed;

    bool RaiseWhatIsPending() override;

private:
    WebPlatform& Device_;
    companion::LinkWatch Link_;
    std::string Shown_;
};

} // namespace backends::web
