// SPDX-License-Identifier: MIT
// The demonstration on a page: the strip of the simulated instrument, and what its buttons do.
#pragma once

#include "apps/demo/demo_instrument.h"
#include "apps/page_demo/pipe_line.h"
#include "backends/web/page_events.h"
#include "backends/web/web_platform.h"

#include <functional>
#include <string>

namespace apps {

class PageDemonstration final : public backends::EventSource {
public:
    /// `line` must be the device's port, and exist for as long as this.
    PageDemonstration(backends::web::WebPlatform& page, PipeLine& line);

    /// Takes what a person has done, if it is about the strip. May be called at any time.
    bool Take(const backends::web::PageEvent& event);
    /// Prepares the data at the first call; deletes it once it was asked for and the form is free. Must be called at
    /// the outermost level of the loop; may return long after.
    void Step();
    /// Shows the strip if it has changed, and sends what is due by itself.
    bool RaiseWhatIsPending() override;

    /// Sends the strip to the page, as JSON: its words and its buttons.
    std::function<void(const std::string& json)> Says;
    /// Called when the data was deleted and prepared anew, with what could not be deleted and why; empty for nothing.
    std::function<void(const Text& why)> Emptied;

private:
    void PullOrPlug();
    bool MayStartAfresh() const;
    std::string StripText();

    backends::web::WebPlatform& Page_;
    PipeLine& Line_;
    DemoInstrument Meter_;
    std::string Shown_;
    bool IsPrepared_ = false;
    bool AfreshWanted_ = false;
};

} // namespace apps
