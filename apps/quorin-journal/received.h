// SPDX-License-Identifier: MIT
// What a line of the journal brought.
#pragma once

#include "apps/quorin-journal/entries.h"

#include <optional>
#include <string>

namespace reader {

/// Returns the bytes of the port, or the text of the mailbox, if the line has some and they were asked for.
std::optional<std::string> ReceivedBytes(const Entry& entry, Job& job);

} // namespace reader
