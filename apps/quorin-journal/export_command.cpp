// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/quorin-journal/received.h"
#include "journal/recording.h"

namespace reader {

void ExportRecording(Job& job) {
    journal::RecordingTimes times;
    job.Told.Write(journal::RecordingHead);
    ForEachEntry(job, [&](const Entry& entry) {
        if (entry.Seen.Event == "start")
            times.BeginRun();
        if (const auto bytes = ReceivedBytes(entry, job))
            job.Told.Write(journal::RecordingLine(times.SinceLast(entry.Object()), *bytes));
    });
}

} // namespace reader
