// SPDX-License-Identifier: MIT
// From the form's first events to the main screen on show, and back to program start.
#pragma once

namespace modQuorin {

/// Closes what is open and puts every module's state back to what it is at program start, so that a process can start
/// the program any number of times. While something is open, the platform that it is open on must still be installed.
void ResetModules();

/// What depends on the device: the form's layout, soft keys, grabbed keys, fonts, and the screens of the input layer.
/// Runs once, from the form's load event.
void InitDisplay();

/// The application's own tables, settings, and the main screen. Runs once, from the form's first activation. No file
/// and no port is opened.
void InitApplication();

/// Takes the grids' font size from the settings.
void LoadFontSize();

/// A Windows Mobile device of version 5 or later, whose two menus are hardware keys.
bool IsSoftKeyPlatform();

/// Gives the grabbed hardware keys back to the platform.
void ReleaseHardwareKeys();

} // namespace modQuorin
