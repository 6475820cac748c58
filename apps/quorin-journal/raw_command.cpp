// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/quorin-journal/received.h"

namespace reader {

void WriteRaw(Job& job) {
    ForEachEntry(job, [&job](const Entry& entry) {
        if (const auto bytes = ReceivedBytes(entry, job))
            job.Told.Write(*bytes);
    });
}

} // namespace reader
