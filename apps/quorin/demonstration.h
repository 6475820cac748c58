// SPDX-License-Identifier: MIT
// The demonstration in the window: what the buttons of the simulated instrument do.
#pragma once

#include "apps/guide/guide.h"
#include "apps/quorin/data_folder.h"
#include "apps/quorin/demo_terminal.h"
#include "backends/qt/instrument_strip.h"
#include "backends/qt/qt_platform.h"
#include "backends/qt/window_box.h"

#include <string>

namespace quorin {

/// The strip below the form, and what its buttons do.
class Demonstration final : public backends::EventSource {
public:
    /// REQUIRES: the form has been started. `ownFolder`: the full path of the demonstration's own root folder, whose
    /// data may be deleted; empty if a person has named the folder.
    Demonstration(backends::qt::QtPlatform& device, DemoTerminal& line, const DataFolder& data, std::string ownFolder);

    /// Shows the state of the instrument, and sends what is due by itself.
    bool RaiseWhatIsPending() override;
    /// Deletes the data if a person has agreed, once the form is free. Must be called at the outermost level of the
    /// loop; may return long after.
    void Step();

private:
    void PullOrPlug();
    bool MayStartAfresh() const;
    bool IsOwnData() const;
    void AskToStartAfresh();
    void StartAfresh();

    backends::qt::QtPlatform& Device_;
    DemoTerminal& Line_;
    apps::DemoInstrument Meter_;
    const DataFolder& Data_;
    std::string OwnFolder_;
    apps::Guide Guide_;
    backends::qt::WindowBox Box_;
    backends::qt::InstrumentStrip Strip_;
    std::string PinnedPath_; ///< the address of its port, as long as it has been pinned by this object
    bool AfreshWanted_ = false;
};

} // namespace quorin
