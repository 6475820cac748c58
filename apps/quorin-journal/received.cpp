// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/received.h"

namespace reader {

std::optional<std::string> ReceivedBytes(const Entry& entry, Job& job) {
    if (entry.Seen.Event != "received")
        return std::nullopt;
    const journal::Line line = entry.Object();
    const std::string from = TextIn(line, "from");
    if (from == "mailbox" && !job.Asked.Port)
        return TextIn(line, "text");
    if (from != "port" || job.Asked.Mailbox)
        return std::nullopt;
    auto bytes = journal::BytesOfText(TextIn(line, "bytes"));
    if (!bytes)
        job.Told.Odd(PlaceOf(entry) + ": its bytes have characters beyond U+00FF, left out");
    return bytes;
}

} // namespace reader
