// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/quorin-journal/received.h"
#include "backends/loop/clock.h"
#include "journal/recording.h"

namespace reader {

void ExportRecording(Job& job) {
    journal::RecordingTimes times;
    job.Told.Write(journal::RecordingHead);
    ForEachEntry(job, [&](const Entry& entry) {
        if (entry.Seen.Event == "start")
            times.BeginRun();
        const auto bytes = ReceivedBytes(entry, job);
        if (!bytes)
            return;
        const std::int64_t second = backends::MomentFromText(entry.Seen.Time).value_or(0);
        const std::int64_t wait = times.SinceLast(NumberIn(entry.Object(), "ms"), second);
        job.Told.Write(journal::RecordingLine(wait, *bytes));
    });
}

} // namespace reader
