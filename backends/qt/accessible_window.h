// SPDX-License-Identifier: MIT
#pragma once

namespace backends::qt {

/// Presents the program's windows to screen readers as windows. Must be called before a screen reader asks for the
/// first one; may be called again.
void InstallAccessibleWindows();

} // namespace backends::qt
