// SPDX-License-Identifier: MIT
// What a person sends to those who look after the program: one text with versions, settings, and what was done on a
// day. What people typed, values, names and paths are masked in it unless they ask for them.
#pragma once

#include "apps/quorin/window_places.h"
#include "backends/qt/report_dialog.h"

#include <string>
#include <utility>
#include <vector>

namespace quorin {

/// What a report is made of, besides the files.
struct ReportFacts {
    KeptPlaces Places;
    std::vector<std::pair<std::string, std::string>> Versions; ///< what, and which
};

/// Returns the days of which the journal has something for this root folder, the newest first.
std::vector<std::string> DaysOfReport(const KeptPlaces& places);

/// Returns the report. `day`: one of DaysOfReport; empty leaves the story out. `isWhole`: nothing is masked.
std::string ProblemReport(const ReportFacts& facts, const std::string& day, bool isWhole);

/// Returns a line of a settings file without what may have been typed: numbers and names such as Com1 stay.
std::string MaskedSetting(const std::string& line);

/// Writes a file that belongs to the owner alone. One that exists is replaced only if that is asked for.
backends::qt::ReportSource::Outcome SaveReport(const std::string& path, const std::string& text, bool replaces);

/// Returns the versions of the program, of Qt and of the system, and the type of the device.
std::vector<std::pair<std::string, std::string>> VersionsOfRun(std::int32_t deviceType);

} // namespace quorin
