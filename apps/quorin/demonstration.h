// SPDX-License-Identifier: MIT
// The demonstration in the window: what the buttons of the simulated instrument do.
#pragma once

#include "apps/guide/guide.h"
#include "apps/quorin/data_folder.h"
#include "apps/quorin/demo_instrument.h"
#include "backends/qt/instrument_strip.h"
#include "backends/qt/qt_platform.h"
#include "backends/qt/window_box.h"
#include "companion/instrument_words.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quorin {

/// The instrument sends what a person asks for. By itself it sends a result each 10 seconds while the strip is ticked,
/// and none while a question is open.
class Demonstration final : public backends::EventSource {
public:
    /// REQUIRES: the form has been started. `ownFolder`: the full path of the demonstration's own root folder, whose
    /// data may be deleted; empty if a person has named the folder.
    Demonstration(backends::qt::QtPlatform& device, DemoInstrument& meter, const DataFolder& data,
                  std::string ownFolder);

    /// Shows the state of the instrument, and sends what is due by itself.
    bool RaiseWhatIsPending() override;
    /// Deletes the data if a person has agreed, once the form is free. Must be called at the outermost level of the
    /// loop; may return long after.
    void Step();

private:
    void Send(const Text& what, const std::function<bool()>& send);
    void PullOrPlug();
    void SendIfDue();
    bool MayStartAfresh() const;
    bool IsOwnData() const;
    void AskToStartAfresh();
    void StartAfresh();

    backends::qt::QtPlatform& Device_;
    DemoInstrument& Meter_;
    const DataFolder& Data_;
    std::string OwnFolder_;
    apps::Guide Guide_;
    backends::qt::WindowBox Box_;
    backends::qt::InstrumentStrip Strip_;
    companion::InstrumentState State_;
    std::string PinnedPath_;      ///< the address of its port, as long as it has been pinned by this object
    std::int64_t WaitsSince_ = 0; ///< since when the next result of its own is waited for, by the device's clock
    bool AfreshWanted_ = false;
};

} // namespace quorin
