// SPDX-License-Identifier: MIT
// The download that a person has before them on the page, or had last, as files for other programs.
#pragma once

#include "backends/host/host_device.h"
#include "companion/form_state.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace exporter {
struct Table;
}

namespace apps {

/// A file that a person is given.
struct GivenFile {
    std::string Name = {};
    std::string Type = {}; ///< as browsers call the types of files
    std::string Bytes = {};
    std::string Words = {}; ///< about it; empty for nothing
    std::string Why = {};   ///< why there is none, as a sentence; empty if there is
};

/// A format in which a download is given.
struct DownloadFormat {
    std::string Name;  ///< for the program
    std::string Words; ///< for a person
};

class PageDownload {
public:
    /// `root`: the root folder of the device. Both must exist as long as this.
    PageDownload(const backends::HostDevice& host, std::string root) : Host_(host), Root_(std::move(root)) {}

    /// Looks which download is on the screen. Call it in each round of events.
    void Look();
    /// Returns the name of the download for a person, "qrn0002 (North wall)"; empty if there was none yet.
    std::string Title() const;

    std::vector<DownloadFormat> Formats() const;
    /// Makes a file of the download as it was saved last. No table of the form is opened or closed.
    GivenFile Make(const std::string& format) const;

private:
    GivenFile MakeDatabase() const;
    std::string Read(exporter::Table& table) const;
    Text FullName() const;
    std::string Stem() const;
    bool IsLineDatabase() const;

    const backends::HostDevice& Host_;
    std::string Root_;
    std::optional<companion::CurrentDownload> Last_;
};

} // namespace apps
