// SPDX-License-Identifier: MIT
// --recover: what becomes of the records that were on the screen and not saved when a program ended.
#pragma once

#include "apps/quorin-console/console_options.h"
#include "apps/quorin-console/writer.h"
#include "apps/start/exit_status.h"
#include "backends/host/drafts.h"

namespace console {

/// Writes an object for each draft of the device's root folder, the newest first, and does with it what is asked for.
/// Returns Failure if a draft could not be put back. The form must not have been started.
start::ExitStatus Recover(Recovery what, backends::Drafts& drafts, backends::BackEnd& device, Writer& out);

} // namespace console
