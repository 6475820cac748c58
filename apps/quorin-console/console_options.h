// SPDX-License-Identifier: MIT
// The command line of quorin-console.
#pragma once

#include "apps/options/command_line.h"
#include "apps/quorin-console/station_plan.h"
#include "backends/host/host_device.h"
#include "backends/host/journal.h"

#include <optional>
#include <string>

namespace console {

/// What to do with the drafts of records that were not saved.
enum class Recovery { None, List, Put, Forget };

struct Options {
    backends::DeviceOptions Device;
    std::string Script;     ///< file with the commands; standard input when empty
    bool ListPorts = false; ///< list the ports of the machine, and do nothing else
    bool Strict = false;
    bool PlainText = false; ///< the output is for people
    bool Verdicts = false;  ///< an event for each reading, and for each record that is saved
    Recovery Recover = Recovery::None;
    std::string Drafts;                           ///< the folder where drafts are kept; empty for none
    std::optional<backends::JournalPlan> Journal; ///< none if no journal is kept
    std::optional<StationPlan> Station;           ///< what is collected without a person
    std::string HandOver;                         ///< the folder to hand over to; empty for no hand-over
    std::string HandOverJournal;                  ///< the folder of the journal that is handed over; empty for none
    std::string Export;                           ///< the zip file to write; empty for no export
    std::string Import;                           ///< the zip file to take in; empty for no import
    std::string DeviceName;                       ///< as the folder at the target is called
    backends::ProgramName Program;
};

using apps::Reading;

Reading ReadOptions(int count, const char* const* words, Options& options);

} // namespace console
