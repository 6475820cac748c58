// SPDX-License-Identifier: MIT
// A device whose form is on a page, and what the page sees and sends.
#pragma once

#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"
#include "backends/web/page_events.h"
#include "backends/web/page_hand.h"
#include "backends/web/web_platform.h"
#include "journal/journal_lines.h"
#include "tests/support/test_device.h"

#include <string>
#include <vector>

namespace backends::web {

/// Every character is half as wide as the font is high.
FontMeasures EvenMeasures();

class PageDevice {
public:
    explicit PageDevice(DeviceOptions options = {});
    ~PageDevice();
    PageDevice(const PageDevice&) = delete;
    PageDevice& operator=(const PageDevice&) = delete;

    /// Puts a driver with the fields Place and Count and one empty download into the data folder.
    void PutDriver() const;
    void Start();
    /// Sends lines of the page.
    void Write(const std::vector<std::string>& lines);
    /// Sends lines of the page, and lets the program handle them and 200 ms pass.
    void Send(const std::vector<std::string>& lines);
    /// Chooses an item of the menus, as the page shows it.
    void Choose(const std::string& caption);
    void OpenRecord();

    /// Returns what the page was shown last.
    const journal::Line& Seen() const { return Seen_; }
    /// Returns the texts of the grid and of its heading.
    std::vector<std::string> Texts() const;
    /// Returns the line of a kind, with the present stage and more members: "\"row\":2".
    std::string Act(const std::string& kind, const std::string& more = "\"x\":0") const;

    support::TemporaryFolder Folder;
    HostDevice Host;
    PageFonts Fonts{EvenMeasures()};

private:
    NoCommands Commands_;
    SilentWatcher Watcher_;
    journal::Line Seen_;
    int Pipe_[2] = {-1, -1};

public:
    WebPlatform Platform;
    PageHand Hand{Platform};
    std::unique_ptr<PageEvents> Events;
};

} // namespace backends::web
