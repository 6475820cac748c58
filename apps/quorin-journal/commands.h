// SPDX-License-Identifier: MIT
// The commands of quorin-journal, as rows: name, help, options, routine.
#pragma once

#include "apps/quorin-journal/entries.h"

namespace reader {

/// Reads the command line and runs the command. Returns the exit status.
start::ExitStatus JournalMain(int count, const char* const* words);

// Each writes its result, and what was odd, to the job's report.
void ExportRecording(Job& job);
void FollowReadings(Job& job);
void ForgetDays(Job& job);
void ListFiles(Job& job);
void ShowHistory(Job& job);
void ShowReadings(Job& job);
void VerifyTables(Job& job);
void WriteRaw(Job& job);
void WriteStory(Job& job);

} // namespace reader
