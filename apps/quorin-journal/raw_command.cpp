// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"

namespace reader {

namespace {

void WriteReceived(const Entry& entry, Job& job) {
    const journal::Line line = entry.Object();
    const std::string from = TextIn(line, "from");
    if (from == "mailbox" && !job.Asked.Port)
        job.Told.Write(TextIn(line, "text"));
    if (from != "port" || job.Asked.Mailbox)
        return;
    if (const auto bytes = journal::BytesOfText(TextIn(line, "bytes")))
        job.Told.Write(*bytes);
    else
        job.Told.Odd(PlaceOf(entry) + ": its bytes have characters beyond U+00FF, left out");
}

} // namespace

void WriteRaw(Job& job) {
    ForEachEntry(job, [&job](const Entry& entry) {
        if (entry.Seen.Event == "received")
            WriteReceived(entry, job);
    });
}

} // namespace reader
