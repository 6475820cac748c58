// SPDX-License-Identifier: MIT
// Files that a person gives to the window, by its command line, a drop or a dialog: packages are installed and a
// download is opened, both by the form, which is led there once it is free.
#pragma once

#include "apps/arrivals/led_arrivals.h"
#include "apps/quorin/data_folder.h"
#include "backends/qt/file_drops.h"
#include "backends/qt/offer_bar.h"
#include "backends/qt/window_box.h"

#include <functional>
#include <string>
#include <vector>

namespace quorin {

class Arriving final : public backends::EventSource, private apps::ArrivalTalk {
public:
    Arriving(backends::qt::QtPlatform& device, DataFolder& data);

    /// Takes files, and names of downloads, as a person gives them. `folder`: where relative paths start. May be called
    /// at any time: the form is not touched.
    void Arrive(const std::vector<std::string>& names, const std::string& folder);
    /// Takes the sample driver, as if its package had come as a file.
    void ArriveSample() { Led_.AddSample(); }
    /// Opens a dialog for packages. It runs no loop.
    void ChooseFiles();
    /// Does the next thing that has been asked for, if the form is free. Must be called at the outermost level of the
    /// loop; may return long after.
    void Step() { Led_.Step(); }

    /// Shows or hides the bar.
    bool RaiseWhatIsPending() override;

private:
    void Take(const std::string& path, const std::string& name);
    void TakePackage(const std::string& path);
    bool IsInDataFolder(const std::string& path) const;
    Text DownloadAt(const std::string& path) const;

    bool IsFree() const override { return Device_.IsAtRest(); }
    void Note(const Text& problem) override;
    void Show(const Text& problems) override;
    void Ask(const Text& question, apps::ArrivalQuestion about, std::function<void(bool)> answered) override;

    backends::qt::QtPlatform& Device_;
    DataFolder& Data_;
    apps::LedArrivals Led_;
    bool DialogIsOpen_ = false;
    backends::qt::WindowBox Box_;
    backends::qt::OfferBar Bar_;
    backends::qt::FileDrops Drops_;
};

} // namespace quorin
