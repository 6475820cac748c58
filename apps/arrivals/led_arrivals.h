// SPDX-License-Identifier: MIT
// Installs the packages and opens the download that a person has given to the program: the form is led there by its own
// commands, once it is free. How a person is told and asked is left to the program.
#pragma once

#include "apps/guide/guide.h"
#include "companion/arrivals.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace apps {

/// What is asked about a package before it is installed.
enum class ArrivalQuestion {
    Check,  ///< something is wrong with it
    Replace ///< the data folder has another one of its name
};

/// How a program talks with a person beside the form, which goes on meanwhile.
class ArrivalTalk {
public:
    virtual ~ArrivalTalk() = default;
    /// True if nothing is asked or told, and no hand is at the form.
    virtual bool IsFree() const = 0;
    /// Called at once with each problem, which is shown in the next step.
    virtual void Note(const Text& problem) = 0;
    virtual void Show(const Text& problems) = 0;
    /// Asks a question whose safe answer is No, and calls `answered` later.
    virtual void Ask(const Text& question, ArrivalQuestion about, std::function<void(bool)> answered) = 0;
};

class LedArrivals {
public:
    /// Both must exist as long as this.
    LedArrivals(backends::BackEnd& device, ArrivalTalk& talk) : Device_(device), Guide_(device), Talk_(talk) {}

    // These may be called at any time: the form is not touched.

    /// Takes a package, by its name without a folder and its bytes.
    void AddPackage(const Text& name, std::string_view bytes);
    /// Takes the sample driver, as if its package had come as a file.
    void AddSample();
    /// Takes a download, as a person calls it.
    void AddDownload(const Text& name) { Waiting_.AddDownload(name); }
    /// Tells a problem: at once to the log, and to the person in the next step.
    void Tell(const Text& problem);
    void DropAll() { Waiting_.DropAll(); }
    /// True if something waits, or has to be told.
    bool Any() const { return Waiting_.Any() || !Problems_.empty(); }
    /// Returns what is offered while something is in the way; empty if nothing is, or nothing waits. `isAsked`: a
    /// message box is open.
    Text Offer(bool isAsked) const;

    /// Does the next thing that has been asked for, if the form is free. Must be called at the outermost level of the
    /// loop; may return long after.
    void Step();

private:
    void ShowProblems();
    void Install();
    /// Returns true once the form has installed or refused it.
    bool LeadToInstallation(const Text& name, const Text& fullName);
    /// Asks about the first package, whose `permission` the answer is.
    void Ask(const Text& question, ArrivalQuestion about, bool companion::Arrival::*permission);
    void OpenDownload();
    void GoHome();

    backends::BackEnd& Device_;
    Guide Guide_;
    ArrivalTalk& Talk_;
    companion::Arrivals Waiting_;
    std::vector<Text> Problems_;              ///< not yet shown
    std::optional<modQuorin::ScreenId> Home_; ///< where the form was led away from
};

} // namespace apps
