// SPDX-License-Identifier: MIT
// The output of quorin-console for a person.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace console {

/// Returns what an object of the output says to a person, as whole lines: a headline, a screen, a message box, a
/// warning, or why a command has failed. Empty for what only a program needs. A failure is on standard error already.
std::string PlainText(const nlohmann::ordered_json& object);

} // namespace console
