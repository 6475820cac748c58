// SPDX-License-Identifier: MIT
// The usual places of a program's data, settings and state.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace apps {

/// Returns the value of an environment variable; null if it is not set.
using Environment = std::function<const char*(const char* name)>;

const char* ProcessEnvironment(const char* name);

/// Returns `$XDG_DATA_HOME/quorin`, else `$HOME/.local/share/quorin`. An XDG value that is empty or not an absolute
/// path is ignored. Returns nothing if HOME is not an absolute path either. Creates nothing.
std::optional<std::string> DataFolder(const Environment& environment = ProcessEnvironment);

/// Returns `$XDG_CONFIG_HOME/quorin/settings.ini`, else `$HOME/.config/quorin/settings.ini`, by the same rules.
std::optional<std::string> SettingsPlace(const Environment& environment = ProcessEnvironment);

/// Returns `$XDG_STATE_HOME/quorin`, else `$HOME/.local/state/quorin`, by the same rules: for what the program keeps of
/// a run and a person does not ask for.
std::optional<std::string> StateFolder(const Environment& environment = ProcessEnvironment);

} // namespace apps
