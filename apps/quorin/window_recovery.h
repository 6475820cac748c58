// SPDX-License-Identifier: MIT
// The start of the window after a program that has ended with an unsaved record.
#pragma once

#include "backends/host/drafts.h"
#include "backends/host/end_signals.h"
#include "backends/qt/qt_platform.h"

namespace quorin {

/// Offers each draft of the root folder in a bar above the form, which is not started yet, and waits until a person has
/// decided. Returns false if the program is to end: the window was closed, or a signal came. Drafts without a decision
/// are kept.
bool RecoverRecords(backends::Drafts& drafts, backends::qt::QtPlatform& device, backends::EndSignals& signals);

} // namespace quorin
