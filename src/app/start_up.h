// SPDX-License-Identifier: MIT
// Start-up, from the form's first events to the main screen, and the reset to the state at program start.
#pragma once

namespace modQuorin {

/// Closes what is open and sets the state of every module to what it is at program start, so that a process can start
/// the program any number of times. If anything is open, the platform on which it was opened must still be installed.
void ResetModules();

/// Sets up what depends on the device: the form's layout, soft keys, grabbed keys, fonts, and the screens of the input
/// layer. Called once, by the form's load event.
void InitDisplay();

/// Sets up the application's own tables and settings, and shows the main screen. Called once, when the form is
/// activated for the first time. Opens no file and no port.
void InitApplication();

/// Sets the font size of the grids from the settings.
void LoadFontSize();

/// True for a Windows Mobile device of version 5 or later, whose two menus are hardware keys.
bool IsSoftKeyPlatform();

/// Returns the grabbed hardware keys to the platform.
void ReleaseHardwareKeys();

} // namespace modQuorin
