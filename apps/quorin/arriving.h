// SPDX-License-Identifier: MIT
// Files that a person gives to the window, by its command line, a drop or a dialog: packages are installed and a
// download is opened, both by the form, which is led there once it is free.
#pragma once

#include "apps/guide/guide.h"
#include "apps/quorin/data_folder.h"
#include "backends/qt/file_drops.h"
#include "backends/qt/offer_bar.h"
#include "backends/qt/window_box.h"
#include "companion/arrivals.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorin {

class Arriving final : public backends::EventSource {
public:
    Arriving(backends::qt::QtPlatform& device, DataFolder& data);

    /// Takes files, and names of downloads, as a person gives them. `folder`: where relative paths start. May be called
    /// at any time: the form is not touched.
    void Arrive(const std::vector<std::string>& names, const std::string& folder);
    /// Takes the sample driver, as if its package had come as a file.
    void ArriveSample();
    /// Opens a dialog for packages. It runs no loop.
    void ChooseFiles();
    /// Does the next thing that has been asked for, if the form is free. Must be called at the outermost level of the
    /// loop; may return long after.
    void Step();

    /// Shows or hides the bar.
    bool RaiseWhatIsPending() override;

private:
    void Take(const std::string& path, const std::string& name);
    void TakePackage(const std::string& path);
    void AddPackage(const Text& name, std::string_view bytes);
    bool IsInDataFolder(const std::string& path) const;
    Text DownloadAt(const std::string& path) const;
    /// Tells a problem: on standard error at once, in a box with the next step.
    void Tell(const Text& problem);
    void ShowProblems();
    void Install();
    void LeadToInstallation(const Text& name, const Text& fullName);
    /// Asks about the first package, whose `permission` the answer is.
    void Ask(const Text& question, const char* box, bool companion::Arrival::*permission);
    void OpenDownload();
    void GoHome();

    backends::qt::QtPlatform& Device_;
    DataFolder& Data_;
    apps::Guide Guide_;
    companion::Arrivals Waiting_;
    std::vector<Text> Problems_;              ///< not yet told in a box
    std::optional<modQuorin::ScreenId> Home_; ///< where the form was led away from
    bool DialogIsOpen_ = false;
    backends::qt::WindowBox Box_;
    backends::qt::OfferBar Bar_;
    backends::qt::FileDrops Drops_;
};

} // namespace quorin
